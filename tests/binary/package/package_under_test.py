"""Where the package is, and how a game compiles against it: shared by the tests of the package."""
import json
import plistlib
import subprocess
import tempfile
from pathlib import Path

ROOT = Path(__file__).resolve().parents[3]
NAME = "VornFacebook"
DIST = ROOT / "dist"
XCFRAMEWORK = DIST / f"{NAME}.xcframework"
ARCHIVE = DIST / f"{NAME}.xcframework.zip"
DEVICE = "ios-arm64"
SIMULATOR = "ios-arm64_x86_64-simulator"
LIBRARIES = (DEVICE, SIMULATOR)

# What a game is compiled for, and the library of the xcframework that Xcode takes for it.
TARGETS = {
    "arm64-apple-ios13.0": DEVICE,
    "arm64-apple-ios14.0-simulator": SIMULATOR,
    "x86_64-apple-ios13.0-simulator": SIMULATOR,
}
LIBCXX = "/usr/lib/llvm-16/include/c++/v1"


def framework(library):
    return XCFRAMEWORK / library / f"{NAME}.framework"


def binary(library):
    return framework(library) / NAME


def debug_binary(library):
    return XCFRAMEWORK / library / f"dSYMs/{NAME}.framework.dSYM/Contents/Resources/DWARF" / NAME


def headers():
    return sorted((framework(DEVICE) / "Headers").iterdir())


def plist(path):
    with path.open("rb") as file:
        return plistlib.load(file)


def files(folder):
    return sorted(path for path in folder.rglob("*") if path.is_file())


def run(*command):
    """The output of a command that must succeed."""
    done = subprocess.run([str(part) for part in command], capture_output=True, text=True)
    if done.returncode != 0:
        raise AssertionError(f"{' '.join(map(str, command))}\n{done.stdout}{done.stderr}")
    return done.stdout


def architectures(path):
    return run("llvm-lipo-16", "-archs", path).split()


class Workshop:
    """A folder of its own in which a test compiles, and the compiler as a game calls it; remove with close()."""

    def __init__(self):
        self._folder = tempfile.TemporaryDirectory(prefix="vorn-package-")
        self.folder = Path(self._folder.name)
        # Libc++'s own modules need more of the C library than our SDK declares. Its map is hidden, so that its headers are
        # read as text; nothing else is.
        self._overlay = self.folder / "overlay.json"
        hidden = {"type": "file", "name": "module.modulemap", "external-contents": "/dev/null"}
        self._overlay.write_text(
            json.dumps({"version": 0, "roots": [{"type": "directory", "name": LIBCXX, "contents": [hidden]}]})
        )

    def close(self):
        self._folder.cleanup()

    def flags(self, target):
        """Of a game's compilation with the framework on its path and without Facebook's kits' headers: all warnings are
        errors. UIKit's declarations are shared with those of the kits, so that the kits are taken out by name."""
        return [
            f"--target={target}",
            "-isysroot", ROOT / "platform/ios/iPhoneOS.sdk",
            "-isystem", self.declarations(),
            "-F", framework(TARGETS[target]).parent,
            "-Wall", "-Wextra", "-Werror",
        ]  # fmt: skip

    def declarations(self):
        """A folder with the declarations of the system's frameworks that our SDK lacks, and no others."""
        folder = self.folder / "system"
        if not folder.exists():
            folder.mkdir()
            for name in ("UIKit",):
                (folder / name).symlink_to(ROOT / "platform/frameworks" / name)
        return folder

    def cxx_flags(self):
        return ["-std=c++20", "-nostdinc++", "-isystem", ROOT / "platform/ios/include/c++", "-isystem", LIBCXX]

    def module_flags(self, cxx):
        """For @import. Each call makes a cache of its own, so that the first compilation with it builds and checks the
        module."""
        cache = tempfile.mkdtemp(prefix="modules-", dir=self.folder)
        flags = ["-fmodules", f"-fmodules-cache-path={cache}"]
        return [*flags, "-fcxx-modules", "-ivfsoverlay", self._overlay] if cxx else flags

    def source(self, name, text):
        path = self.folder / name
        path.write_text(text)
        return path
