"""What the image exports: everything that platform/ios/exports.txt lists and nothing else."""

import unittest

import shared_statics
from dyldinfo import EXPORT_KIND
from link_words import WORDS
from slices import SOURCE, SliceTest, on_every_slice

CLASSES = ["VornFriendFacebook", "VornLoginFacebook", "VornReportFacebook"]
CLASS_SYMBOLS = [f"_OBJC_{kind}_$_{name}" for name in CLASSES for kind in ("CLASS", "METACLASS")]
VERSION_SYMBOLS = ["_VornFacebookVersionNumber", "_VornFacebookVersionString"]
LINK_WORD_SYMBOLS = [f"_FBLink_{name}" for name, _ in WORDS]

# One per process, whichever image has it first.
WEAK = shared_statics.ALL + LINK_WORD_SYMBOLS
STRONG = CLASS_SYMBOLS + VERSION_SYMBOLS

# Weak imports that a program may replace.
REPLACEABLE = ["__ZdlPv", "__Znwm"]


def listed_exports():
    lines = (SOURCE / "platform" / "ios" / "exports.txt").read_text().splitlines()
    return [line for line in lines if line and not line.startswith("#")]


class ExportsTest(SliceTest):
    def test_the_list_of_exports_names_the_contract_with_core_and_tools(self):
        self.assert_same(sorted(listed_exports()), sorted(WEAK + STRONG), "the core finds other names than agreed")

    @on_every_slice
    def test_the_image_exports_the_list_and_nothing_else(self, tested):
        exported, listed = set(tested.fixups.exports), set(listed_exports())
        self.assert_none(sorted(listed - exported), "the core or the app does not find these symbols")
        self.assert_none(sorted(exported - listed), "these symbols can clash with ones of the app's other libraries")

    @on_every_slice
    def test_the_symbol_table_shows_the_same_exports(self, tested):
        external = {symbol.name for symbol in tested.image.symbols() if symbol.external and symbol.section}
        self.assert_same(external, set(listed_exports()), "an app's link finds other symbols than its launch")

    @on_every_slice
    def test_what_is_shared_with_other_images_is_weak_and_the_rest_is_not(self, tested):
        exports = tested.fixups.exports
        self.assert_same(
            sorted(name for name, export in exports.items() if export.weak),
            sorted(WEAK),
            "core and plugin have maps of their own each, and no result arrives; or another image's class is taken",
        )

    @on_every_slice
    def test_every_export_is_plain_data_inside_the_image(self, tested):
        for name, export in tested.fixups.exports.items():
            self.assertEqual(export.flags & EXPORT_KIND, 0, f"{name} is thread-local or absolute")
            inside = any(
                section.address <= export.address < section.address + section.size
                for section in tested.image.sections
                if section.name != "__text"
            )
            self.assertTrue(inside, f"{name} is exported at {export.address:#x}, where no data is")

    @on_every_slice
    def test_the_plugin_itself_asks_for_the_shared_statics_by_name(self, tested):
        self.assert_same(
            sorted({binding.symbol for binding in tested.fixups.weak_bindings}),
            sorted(shared_statics.ALL + REPLACEABLE),
            "the plugin uses its own maps although the core's were there first: its results reach no observer",
        )

    @on_every_slice
    def test_every_shared_static_is_reached_through_one_bound_pointer_only(self, tested):
        image = tested.image
        own = {export.address: name for name, export in tested.fixups.exports.items() if name in shared_statics.ALL}
        bound = {binding.address for binding in tested.fixups.weak_bindings}
        direct = [
            own[image.pointer(address)]
            for address in tested.fixups.rebased
            if address not in bound and image.pointer(address) in own
        ]
        self.assert_none(direct, "a pointer leads to the plugin's own copy of a static that the core has as well")


if __name__ == "__main__":
    unittest.main()
