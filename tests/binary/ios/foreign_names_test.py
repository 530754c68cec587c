"""What must not be in a shipped binary: names of the Linux build's stand-ins, of the reference core and of the tests,
and traces of the machine that built it."""

import os
import re
import socket
import unittest
from pathlib import Path

from slices import BUILD, SOURCE, SliceTest, on_every_slice

# A name, and the folder of the part that it belongs to: a name that is gone from there guards nothing.
FOREIGN_NAMES = {
    "Vorn host runtime": "platform/linux",
    "PlatformCalls": "platform/linux",
    "StandInState": "platform/linux",
    "HostError": "platform/linux",
    "Host::": "platform/linux",
    "GNUstep": "platform/linux",
    "VornLocatedError": "core",
    "JsonDocument": "core",
    "rapidjson": "core",
    "vornsim": "simulator",
    "CLI11": "simulator",
    "gtest": "tests",
    "LogRecorder": "tests",
    "VORN_SUBJECT": "tests",
}
# As parts of mangled names.
MANGLED_NAMES = ["4Host", "9rapidjson", "7testing"]

# Beginnings of paths. System libraries are named by paths of the device, which begin otherwise.
MACHINE_PATHS = [
    "/home/",
    "/Users/",
    "/tmp/",
    "/var/tmp/",
    "/usr/lib/llvm",
    "/usr/include",
    "/usr/share",
]


def machine_words():
    """Paths and names of the machine that runs this test, which built the binaries."""
    paths = {str(SOURCE), str(BUILD.parents[1])}
    home = os.environ.get("HOME") or ""
    if len(Path(home).parts) > 1:
        paths.add(home + "/")
    # A short name can stand in a binary by chance.
    host = socket.gethostname()
    return sorted(paths) + MACHINE_PATHS + ([host] if len(host) >= 6 else [])


def mentions(words, data):
    return [word for word in words if word.encode() in data]


class ForeignNamesTest(SliceTest):
    def test_the_table_names_what_the_other_parts_have(self):
        suffixes = {".h", ".mm", ".cc", ".cpp", ".txt"}
        for name, folder in FOREIGN_NAMES.items():
            files = (path for path in (SOURCE / folder).rglob("*") if path.suffix in suffixes)
            known = any(name in path.read_text() for path in files)
            self.assertTrue(known, f"{name} is not a name of {folder} any more")

    @on_every_slice
    def test_the_binary_knows_nothing_of_stand_ins_core_and_tests(self, tested):
        found = mentions([*FOREIGN_NAMES, *MANGLED_NAMES], tested.image.bytes.data)
        self.assert_none(found, "parts of the Linux build are shipped")

    @on_every_slice
    def test_no_function_of_stand_ins_core_and_tests_is_linked_in(self, tested):
        names = "\n".join(symbol.name for symbol in tested.unstripped_image.symbols()).encode()
        found = mentions([*FOREIGN_NAMES, *MANGLED_NAMES], names)
        self.assert_none(found, "parts of the Linux build are linked into the library")

    @on_every_slice
    def test_the_debug_information_knows_nothing_of_stand_ins_core_and_tests(self, tested):
        found = mentions([*FOREIGN_NAMES, *MANGLED_NAMES, "platform/linux/"], tested.debug_image.bytes.data)
        self.assert_none(found, "the debug information describes parts of the Linux build")

    @on_every_slice
    def test_the_binary_has_no_path_and_no_name_of_the_machine(self, tested):
        found = mentions(machine_words(), tested.image.bytes.data)
        self.assert_none(found, "the machine is shown to the world, and two machines build two binaries")

    @on_every_slice
    def test_no_text_of_the_code_is_a_path(self, tested):
        # A file in a folder, absolute or relative; URLs, patterns and "share/send" are none.
        path = re.compile(r"(?:^|[\s\"'(])(?:\.{0,2}/)?(?:[\w.+-]+/)+[\w+-]+\.\w+$|\.\./|^/\w+/")
        found = [text for text in tested.image.texts() if path.search(text)]
        self.assert_none(found, "folders of the build are shown to the world")

    @on_every_slice
    def test_the_stripped_binary_names_only_exports_and_imports(self, tested):
        local = [symbol.name for symbol in tested.image.symbols() if symbol.section and not symbol.external]
        self.assert_none(local, "names of the plugin's inside are shipped")


if __name__ == "__main__":
    unittest.main()
