"""How many machine instructions each path takes: what callgrind counted while vorn-instructions ran."""

import os
import pathlib
import re
import subprocess
import tempfile

SOURCE = pathlib.Path(__file__).resolve().parents[2]
BASELINE = pathlib.Path(__file__).resolve().with_name("baseline.json")
RUNS = 50  # Of each path; Main.mm has the same number.

_BUILD = SOURCE / "build" / "host"


class CountError(Exception):
    """The instructions could not be counted; the text says why."""


def read_dump(text):
    """The name and the instructions of one dump of callgrind; None for one that the program did not ask for."""
    name = re.search(r"^desc: Trigger: Client Request: (.+)$", text, re.MULTILINE)
    total = re.search(r"^totals: (\d+)$", text, re.MULTILINE)
    if name is None:
        return None
    if total is None:
        raise CountError(f"callgrind counted nothing for {name[1]}")
    return name[1], int(total[1])


def _run(command, environment=None):
    try:
        done = subprocess.run(command, env=environment, capture_output=True, text=True, errors="replace", check=False)
    except OSError as problem:
        raise CountError(f"{problem}; scripts/setup installs what is missing") from problem
    if done.returncode != 0:
        raise CountError(f"{' '.join(map(str, command))} ended with status {done.returncode}:\n{done.stderr}")


def _without_debug_information(folder):
    """Copies of the program and its libraries that Valgrind 3.19 can read, which knows no DWARF 5."""
    program = _BUILD / "bin" / "vorn-instructions"
    if not program.exists():
        raise CountError(f"{program} is missing; scripts/build host vorn-instructions VornFacebook makes it")
    for path in (program, *(_BUILD / "lib").glob("*.so")):
        _run(["llvm-strip-16", "--strip-debug", "-o", folder / path.name, path])
    return folder / program.name


def count():
    """The instructions of one run by the paths' names, in the order of the program."""
    with tempfile.TemporaryDirectory(prefix="vorn-instructions-") as name:
        folder = pathlib.Path(name)
        environment = os.environ | {
            "HOME": name,
            "LD_LIBRARY_PATH": name,
            "VORN_SUBJECT": str(folder / "libVornFacebook.so"),
        }
        program = _without_debug_information(folder)
        options = ["--tool=callgrind", "--collect-atstart=no", f"--callgrind-out-file={folder}/counts"]
        _run(["valgrind", *options, program], environment)
        dumps = sorted(folder.glob("counts.*"), key=lambda path: int(path.suffix[1:]))
        counted = [read_dump(path.read_text()) for path in dumps]
    figures = {name: round(total / RUNS) for name, total in filter(None, counted)}
    if not figures:
        raise CountError("callgrind wrote no figure")
    return figures


def table(figures, accepted):
    """The figures beside the accepted ones, as a Markdown table."""
    lines = ["| path | instructions | accepted |", "|---|---:|---:|"]
    for name, figure in figures.items():
        lines.append(f"| {name} | {figure:,} | " + (f"{accepted[name]:,} |" if name in accepted else "none |"))
    return "\n".join(lines)
