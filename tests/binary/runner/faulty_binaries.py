"""Builds the plugin's binary for the simulator on Intel anew with a fault, from what `make ios` has left: its objects, and
the commands by which they were compiled and linked.
"""

import json
import os
import pathlib
import shlex
import shutil
import subprocess
import tempfile

SOURCE = pathlib.Path(__file__).resolve().parents[3]
BUILD = SOURCE / "build/ios-simulator-x86_64"
EXPORTS = SOURCE / "platform/ios/exports.txt"
NAME = "VornFacebook"


# Variables that steer a compiler behind the commands' back.
STEERING = ("CPATH", "C_INCLUDE_PATH", "CPLUS_INCLUDE_PATH", "OBJC_INCLUDE_PATH", "LIBRARY_PATH", "SDKROOT",
            "IPHONEOS_DEPLOYMENT_TARGET")


def run(*command, **options):
    environment = {name: value for name, value in os.environ.items() if name not in STEERING}
    return subprocess.run([str(part) for part in command], capture_output=True, text=True, check=False, env=environment,
                          **options)


def checked(*command, **options):
    done = run(*command, **options)
    if done.returncode != 0:
        raise RuntimeError(f"{command[0]} failed: {done.stderr}")
    return done.stdout


def compile_commands():
    """By the name of the source: its command, as words."""
    entries = json.loads((BUILD / "compile_commands.json").read_text())
    return {pathlib.Path(entry["file"]).name: shlex.split(entry["command"]) for entry in entries}


def link_command():
    """As words, without what CMake puts around it."""
    last = checked("ninja", "-C", BUILD, "-t", "commands", NAME).splitlines()[-1]
    words = shlex.split(last)
    return words[words.index("&&") + 1 : len(words) - 1 - words[::-1].index("&&")]


def with_value(words, option, value):
    """The words with another value of an option."""
    at = words.index(option)
    return words[: at + 1] + [str(value)] + words[at + 2 :]


class Workshop:
    """A folder of its own. close() removes it."""

    def __init__(self):
        self._folder = tempfile.TemporaryDirectory()
        self.folder = pathlib.Path(self._folder.name)
        self._commands = compile_commands()

    def close(self):
        self._folder.cleanup()

    def sources(self):
        """The names of the plugin's sources."""
        return list(self._commands)

    def object_of(self, source):
        """The object that `make ios` has made of a source, as the link command names it."""
        words = self._commands[source]
        return words[words.index("-o") + 1]

    def compile(self, source, like, includes=None):
        """Compiles a source with the flags of another; returns the object. `includes` replaces the folder ShareDir/Common."""
        to = self.folder / (pathlib.Path(source).name + ".o")
        words = with_value(with_value(self._commands[like], "-o", to), "-c", source)
        if includes is not None:
            words = [f"-I{includes}" if word == f"-I{SOURCE}/ShareDir/Common" else word for word in words]
        checked(*words, cwd=BUILD)
        return to

    def copy_of_common(self):
        """A copy of ShareDir/Common, to be changed."""
        return pathlib.Path(shutil.copytree(SOURCE / "ShareDir/Common", self.folder / "Common"))

    def link(self, exports=None, without=(), objects=None, also=(), dsym=None):
        """Links the binary and strips it as `make ios` does; returns what the linker did, and the file.

        exports: a text in place of exports.txt. without: sources whose objects are left out. objects: other objects for
        sources, by their names. also: further objects. dsym: where to put the debug information.
        """
        binary = self.folder / NAME
        words = with_value(link_command(), "-o", binary)
        if exports is not None:
            list_file = self.folder / "exports.txt"
            list_file.write_text(exports)
            words = [str(list_file) if word == str(EXPORTS) else word for word in words]
        for source in without:
            words.remove(self.object_of(source))
        for source, replacement in (objects or {}).items():
            words[words.index(self.object_of(source))] = str(replacement)
        done = run(*words, *also, cwd=BUILD)
        if done.returncode == 0 and dsym is not None:
            checked("dsymutil-16", "-o", dsym, binary, cwd=BUILD)  # To which the names of objects are relative.
        if done.returncode == 0:
            checked("llvm-strip-16", "-S", "-x", binary)
        return done, binary
