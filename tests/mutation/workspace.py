"""A copy of the tree in which mutants are built and tested. The checkout itself is never written to."""

import contextlib
import os
import pathlib
import shutil
import subprocess

import programs

PRESET = "mutation"
# What a program may take: so much, and ten times what it takes without a change. Mutants that never end are noticed so.
_PATIENCE = 10.0
# Variables that steer a compiler behind the build's back.
_COMPILER_VARIABLES = ("CPATH", "C_INCLUDE_PATH", "CPLUS_INCLUDE_PATH", "OBJC_INCLUDE_PATH", "LIBRARY_PATH", "SDKROOT")


class Broken(Exception):
    """The tree does not build or does not pass its tests as it stands."""


def copy_tree(checkout, folder):
    """Brings `folder` to what stands in `checkout`, without touching what is equal: so builds stay up to date."""
    listed = subprocess.run(["git", "ls-files", "--cached", "--others", "--exclude-standard", "-z"], cwd=checkout,
                            check=True, capture_output=True, text=True).stdout.split("\0")
    wanted = {name for name in listed if name and (checkout / name).is_file()}
    for name in wanted:
        source, copy = checkout / name, folder / name
        if not copy.is_file() or copy.read_bytes() != source.read_bytes():
            copy.parent.mkdir(parents=True, exist_ok=True)
            shutil.copy(source, copy)  # With a new time, which is what the build looks at.
    for path in folder.rglob("*"):
        name = path.relative_to(folder).as_posix()
        if path.is_file() and not name.startswith("build/") and name not in wanted:
            path.unlink()


class Workspace:
    """One copy with its build folder. Not for use by two threads at once."""

    def __init__(self, checkout, number):
        self.folder = pathlib.Path(checkout) / "build" / f"mutation-{number}"
        self._checkout = pathlib.Path(checkout)
        self._build = self.folder / "build" / PRESET
        self._environment = {name: value for name, value in os.environ.items() if name not in _COMPILER_VARIABLES}
        # One cache of the compiler serves every copy. Tests stop at the first failure.
        self._environment |= {"CCACHE_NOHASHDIR": "1", "CCACHE_BASEDIR": str(self._checkout), "GTEST_FAIL_FAST": "1"}
        self._limits = {}

    def prepare(self, tried):
        """Copies and builds the tree and runs the `tried` programs on it. Raises Broken when one of them fails."""
        self.folder.mkdir(parents=True, exist_ok=True)
        copy_tree(self._checkout, self.folder)
        self._require(["cmake", "--preset", PRESET, "--log-level=WARNING"])
        if not self.build([programs.PLUGIN, *sorted({program.target for program in tried})]):
            raise Broken(f"{self.folder}: the tree does not build without a change")
        for program in tried:
            done = self._ctest(program, 300.0)
            if done.returncode != 0:
                raise Broken(f"{program.test} fails without a change:\n{done.stdout}")
            self._limits[program.test] = _PATIENCE + 10 * self._seconds(done.stdout)

    def build(self, targets):
        """Whether the targets build."""
        return self._run(["cmake", "--build", str(self._build), "-j1", "--target", *targets]).returncode == 0

    def failure(self, program):
        """How `program` ends other than well: "fails" or "takes too long"; empty when it passes."""
        done = self._ctest(program, self._limits[program.test])
        if done.returncode == 0:
            return ""
        return "takes too long" if "***Timeout" in done.stdout else "fails"

    @contextlib.contextmanager
    def changed(self, mutant):
        """The tree holds the mutant inside, and is as it was afterwards, whatever happens."""
        path = self.folder / mutant.file
        original = path.read_text()
        try:
            path.write_text(mutant.apply(original))
            yield
        finally:
            path.write_text(original)

    def _ctest(self, program, limit):
        return self._run(["ctest", "--test-dir", str(self._build), "--no-tests=error", "--output-on-failure",
                          "--timeout", str(limit), "-R", "^" + program.test.replace(".", r"\.") + "$"])

    @staticmethod
    def _seconds(output):
        return float(output.rsplit("Total Test time (real) =", 1)[-1].split()[0])

    def _run(self, command):
        return subprocess.run(command, cwd=self.folder, env=self._environment, check=False, stdin=subprocess.DEVNULL,
                              stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True, errors="replace")

    def _require(self, command):
        done = self._run(command)
        if done.returncode != 0:
            raise Broken(done.stdout)


def judge(workspace, mutant):
    """What becomes of a mutant: ("does not compile", ""), ("killed", the program that notices and how) or
    ("survived", "")."""
    built = set()
    with workspace.changed(mutant):
        for program in programs.programs_for(mutant.file):
            targets = programs.targets_before(mutant.file, program)
            if not built.issuperset(targets):
                if not workspace.build(targets):
                    return "does not compile", ""
                built.update(targets)
            failure = workspace.failure(program)
            if failure:
                return "killed", f"{program.test} {failure}"
    return "survived", ""
