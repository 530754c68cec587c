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


def count():
    """The instructions of one run by the paths' names, in the order of the program."""
    with tempfile.TemporaryDirectory(prefix="vorn-instructions-") as folder:
        command = [
            "valgrind", "--tool=callgrind", "--collect-atstart=no", f"--callgrind-out-file={folder}/counts",
            _BUILD / "bin" / "vorn-instructions",
        ]  # fmt: skip
        environment = os.environ | {"VORN_SUBJECT": str(_BUILD / "lib" / "libVornFacebook.so"), "HOME": folder}
        try:
            done = subprocess.run(command, env=environment, capture_output=True, text=True, check=False)
        except OSError as problem:
            raise CountError(f"{problem}; scripts/setup installs valgrind") from problem
        if done.returncode != 0:
            raise CountError(f"{command[-1]} under callgrind ended with status {done.returncode}:\n{done.stderr}")
        dumps = sorted(pathlib.Path(folder).glob("counts.*"), key=lambda path: int(path.suffix[1:]))
        counted = [read_dump(path.read_text()) for path in dumps]
    figures = {name: round(total / RUNS) for name, total in filter(None, counted)}
    if not figures:
        raise CountError("callgrind wrote no figure: the headers of valgrind were missing when it was built")
    return figures


def table(figures, accepted):
    """The figures beside the accepted ones, as a Markdown table."""
    lines = ["| path | instructions | accepted |", "|---|---:|---:|"]
    for name, figure in figures.items():
        lines.append(f"| {name} | {figure:,} | " + (f"{accepted[name]:,} |" if name in accepted else "none |"))
    return "\n".join(lines)
