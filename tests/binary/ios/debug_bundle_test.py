"""The debug information beside the binary, with which crash reports are read."""

import os
import unittest
from pathlib import Path

from slices import BUILD, SOURCE, SliceTest, on_every_slice, run_tool


class DebugBundleTest(SliceTest):
    @on_every_slice
    def test_the_debug_information_is_that_of_the_binary(self, tested):
        self.assert_same(tested.debug_image.uuids, tested.image.uuids, "crash reports stay addresses without names")

    @on_every_slice
    def test_the_debug_information_names_the_code_of_the_binary(self, tested):
        names = {symbol.address for symbol in tested.debug_image.symbols()}
        methods = [
            method
            for found in [*tested.metadata.classes, *tested.metadata.categories]
            for method in found.methods + found.class_methods
        ]
        missing = [method.name for method in methods if method.implementation not in names]
        self.assert_none(missing, "crash reports do not name these methods")

    @on_every_slice
    def test_the_debug_information_holds_no_path_of_the_machine_that_built_it(self, tested):
        data = tested.debug_image.bytes.data
        # The build may be that of a copy of this checkout.
        for path in {SOURCE, BUILD, BUILD.parents[1], Path(os.environ.get("HOME") or SOURCE)}:
            self.assertNotIn(str(path).encode() + b"/", data, "two checkouts do not give the same debug information")

    @on_every_slice
    def test_the_sources_are_named_by_their_places_in_the_checkout(self, tested):
        listing = run_tool(
            "VORN_LLVM_DWARFDUMP",
            "llvm-dwarfdump-16",
            "--show-sources",
            f"--arch={tested.target.architecture}",
            tested.debug_path,
        )
        sources = {line for line in listing.splitlines() if line.endswith((".mm", ".h"))}
        own = {name for name in sources if not name.startswith("/")}
        self.assertIn("./VornFacebook/VornLoginFacebook.mm", own, "a debugger finds no source")
        elsewhere = sorted(name for name in own if ".." in name or not (SOURCE / name).exists())
        self.assert_none(elsewhere, "a debugger that maps the checkout to . does not find these")


if __name__ == "__main__":
    unittest.main()
