"""The layouts of the shared records, read from the debug information: a device's are those of the Linux build, on which
all behaviour is tested.

VORN_SUBJECT names the Linux build of the library; build/asan's is the default.
"""

import functools
import os
import re
import unittest
from dataclasses import dataclass

from slices import SOURCE, SliceTest, on_every_slice, run_tool

STD_STRING = "basic_string<char, std::__1::char_traits<char>, std::__1::allocator<char> >"

# Their sizes. The members are compared.
RECORDS = {
    "String": 16,
    "Vector<Tarvik::Vorn::InnerPersonInfo, 16U>": 16,
    "InnerBaseRet": 64,
    "InnerPersonInfo": 120,
    "InnerFriendRet": 96,
    "InnerLoginRet": 344,
    "InnerLoginPluginRet": 128,
    "VornFriendReqInfo": 136,
    "VornBaseParams": 104,
    "VornLoginParams": 128,
    "VornCallBackParams<Tarvik::Vorn::InnerBaseRet>": 88,
    "VornCallBackParams<Tarvik::Vorn::InnerFriendRet>": 120,
    "VornCallBackParams<Tarvik::Vorn::InnerLoginRet>": 368,
    "VornCallBackParams<Tarvik::Vorn::InnerLoginPluginRet>": 152,
}


@dataclass(frozen=True)
class Layout:
    size: int
    members: tuple  # (offset, name, type); a base class has no name.


def host_library():
    return os.environ.get("VORN_SUBJECT") or SOURCE / "build" / "asan" / "lib" / "libVornFacebook.so"


def _attribute(block, name):
    match = re.search(rf"DW_AT_{name}\t\((.*)\)$", block, re.MULTILINE)
    return match[1] if match else None


def _type(block):
    match = re.search(r'"(.*)"', _attribute(block, "type") or "")
    return match[1] if match else None


@functools.cache
def layouts(path, architecture=None):
    """By name, every layout that a record or std::string is defined with; more than one when the sources disagree."""
    names = [f"--name={name}" for name in (*RECORDS, STD_STRING)]
    arch = [f"--arch={architecture}"] if architecture else []
    listing = run_tool("VORN_LLVM_DWARFDUMP", "llvm-dwarfdump-16", *names, *arch, "--show-children", path)
    found = {}
    # One block for each entry; how far it is indented says whose child it is.
    blocks = re.findall(r"^0x[0-9a-f]+:( *)(DW_TAG_\w+)(.*(?:\n(?!0x).*)*)", listing, re.MULTILINE)
    name = size = None
    members = []
    for indent, tag, block in [*blocks, (" ", "end", "")]:
        depth = len(indent)
        if depth == 1:
            if name is not None:
                found.setdefault(name, set()).add(Layout(size, tuple(members)))
            name, members = None, []
            if tag in ("DW_TAG_structure_type", "DW_TAG_class_type") and _attribute(block, "byte_size"):
                name, size = _attribute(block, "name").strip('"'), int(_attribute(block, "byte_size"), 16)
        elif depth == 3 and name is not None and tag in ("DW_TAG_member", "DW_TAG_inheritance"):
            offset = _attribute(block, "data_member_location")
            if offset is not None:  # Otherwise it is static.
                members.append((int(offset, 16), (_attribute(block, "name") or "").strip('"'), _type(block)))
    return found


class RecordLayoutsTest(SliceTest):
    def layout_of(self, found, name, where):
        self.assertIn(name, found, f"{where} has no debug information of {name}")
        self.assertEqual(len(found[name]), 1, f"{where} has more than one layout of {name}: {found[name]}")
        return next(iter(found[name]))

    def slice_layouts(self, tested):
        return layouts(tested.debug_path, tested.target.architecture)

    @on_every_slice
    def test_every_record_has_its_size(self, tested):
        for name, size in RECORDS.items():
            self.assert_same(
                self.layout_of(self.slice_layouts(tested), name, tested.name).size,
                size,
                f"core and plugin read {name} beyond its end, or its neighbour's fields",
            )

    @on_every_slice
    def test_every_member_lies_where_it_lies_in_the_linux_build(self, tested):
        host = layouts(host_library())
        for name in RECORDS:
            expected = self.layout_of(host, name, "the Linux build")
            self.assertTrue(expected.members, f"{name} has no members")
            self.assert_same(
                self.layout_of(self.slice_layouts(tested), name, tested.name),
                expected,
                f"a device reads the members of {name} elsewhere than the tests do",
            )

    @on_every_slice
    def test_a_standard_string_has_24_bytes_here_and_there(self, tested):
        for found, where in ((self.slice_layouts(tested), tested.name), (layouts(host_library()), "the Linux build")):
            self.assert_same(
                self.layout_of(found, STD_STRING, where).size,
                24,
                "every member behind a std::string lies elsewhere for the core",
            )


if __name__ == "__main__":
    unittest.main()
