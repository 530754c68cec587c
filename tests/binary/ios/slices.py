"""The three slices under test and what every test of them needs.

VORN_IOS_BUILD names another folder than build/ios; the binaries with their symbols lie beside it, in PRESET/lib.
"""

import functools
import os
import subprocess
import unittest
from dataclasses import dataclass
from pathlib import Path

import macho
from dyldinfo import Fixups
from objcmeta import Metadata

SOURCE = Path(__file__).resolve().parents[3]
BUILD = Path(os.environ.get("VORN_IOS_BUILD") or SOURCE / "build" / "ios").resolve()
NAME = "VornFacebook"
BINARY = Path(f"{NAME}.framework") / NAME
DEBUG_BUNDLE = Path("dSYMs") / f"{NAME}.framework.dSYM"
DEBUG_BINARY = DEBUG_BUNDLE / "Contents" / "Resources" / "DWARF" / NAME


@dataclass(frozen=True)
class Target:
    preset: str  # By which the slice is called here.
    folder: str  # The folder in build/ios.
    cpu: int
    platform: int
    minimum_system: str
    architecture: str  # As llvm calls it.
    alignment: int | None  # Of the slice in a universal file, as a power of two.


TARGETS = (
    Target("ios-arm64", "ios-arm64", macho.CPU_ARM64, macho.PLATFORM_IOS, "13.0.0", "arm64", None),
    Target(
        "ios-simulator-x86_64",
        "ios-arm64_x86_64-simulator",
        macho.CPU_X86_64,
        macho.PLATFORM_IOS_SIMULATOR,
        "13.0.0",
        "x86_64",
        12,
    ),
    Target(
        "ios-simulator-arm64",
        "ios-arm64_x86_64-simulator",
        macho.CPU_ARM64,
        macho.PLATFORM_IOS_SIMULATOR,
        "14.0.0",
        "arm64",
        14,
    ),
)


class Slice:
    """A slice with everything that is read from it, each on first use."""

    def __init__(self, target):
        self.target = target

    @property
    def name(self):
        return self.target.preset

    @property
    def binary_path(self):
        return BUILD / self.target.folder / BINARY

    @property
    def debug_path(self):
        return BUILD / self.target.folder / DEBUG_BINARY

    def _of_target(self, path):
        found = [(alignment, image) for alignment, image in macho.read_file(path) if image.cpu == self.target.cpu]
        if len(found) != 1:
            raise macho.MachOError(f"{path} has {len(found)} slices for {self.target.architecture} instead of one")
        return found[0]

    @functools.cached_property
    def image(self):
        return self._of_target(self.binary_path)[1]

    @functools.cached_property
    def alignment(self):
        return self._of_target(self.binary_path)[0]

    @functools.cached_property
    def debug_image(self):
        return self._of_target(self.debug_path)[1]

    @functools.cached_property
    def unstripped_image(self):
        """The binary as it was linked, with all its symbols. Its code and data are those of `image`."""
        return self._of_target(BUILD.parent / self.target.preset / "lib" / NAME)[1]

    @functools.cached_property
    def fixups(self):
        return Fixups(self.image)

    @functools.cached_property
    def metadata(self):
        return Metadata(self.image, self.fixups)


@functools.cache
def all_slices():
    return tuple(Slice(target) for target in TARGETS)


def on_every_slice(test):
    """Makes a test that takes a slice one that runs on all three, each with its own result."""

    @functools.wraps(test)
    def run(self):
        for tested in all_slices():
            with self.subTest(slice=tested.name):
                test(self, tested)

    return run


def run_tool(variable, default, *arguments):
    """The output of an LLVM tool, which the environment variable names or the path has."""
    command = [os.environ.get(variable) or default, *map(str, arguments)]
    done = subprocess.run(command, capture_output=True, text=True, errors="replace", check=False)
    if done.returncode != 0:
        raise RuntimeError(f"{' '.join(command)}: {done.stderr}")
    return done.stdout


class SliceTest(unittest.TestCase):
    maxDiff = None

    def assert_same(self, actual, expected, breaks):
        """assertEqual, with what the difference would break."""
        self.assertEqual(actual, expected, f"\nThen {breaks}")

    def assert_none(self, found, breaks):
        """Fails when there is something in `found`, naming it."""
        if found:
            self.fail(f"{found}\nThen {breaks}")
