"""The exported constants: the version record and the words that link the Facebook SDK's categories."""

import struct
import unittest

from link_words import WORDS
from slices import SliceTest, on_every_slice

VERSION_TEXT = b"@(#)PROGRAM:VornFacebook  PROJECT:VornDev-1\n\0"
VERSION_NUMBER = 1.0


class ExportedDataTest(SliceTest):
    def address_of(self, tested, symbol):
        export = tested.fixups.exports.get(symbol)
        self.assertIsNotNone(export, f"{symbol} is not exported")
        return export.address

    @on_every_slice
    def test_the_version_text_has_two_blanks_a_line_feed_and_a_nul(self, tested):
        address = self.address_of(tested, "_VornFacebookVersionString")
        self.assert_same(
            tested.image.memory(address, len(VERSION_TEXT)),
            VERSION_TEXT,
            "tools that look for the version of a binary read another one",
        )

    @on_every_slice
    def test_the_version_number_is_one(self, tested):
        address = self.address_of(tested, "_VornFacebookVersionNumber")
        (number,) = struct.unpack("<d", tested.image.memory(address, 8))
        self.assert_same(number, VERSION_NUMBER, "an app that compares the version number takes the wrong way")

    @on_every_slice
    def test_the_version_record_cannot_be_written(self, tested):
        for symbol in ("_VornFacebookVersionString", "_VornFacebookVersionNumber"):
            address = self.address_of(tested, symbol)
            self.assertTrue(
                any(
                    section.segment == "__TEXT" and section.address <= address < section.address + section.size
                    for section in tested.image.sections
                ),
                f"{symbol} lies in memory that can be written",
            )

    @on_every_slice
    def test_the_ten_words_lie_in_the_order_of_the_headers(self, tested):
        words = {
            export.address: name
            for name, export in tested.fixups.exports.items()
            if name.startswith("_FBLink_")
        }
        self.assert_same(
            [words[address] for address in sorted(words)],
            [f"_FBLink_{name}" for name, _ in WORDS],
            "the words are not those of the SDK's headers",
        )

    @on_every_slice
    def test_every_word_is_bound_to_its_symbol_in_the_library_that_has_it(self, tested):
        for name, library in WORDS:
            binding = tested.fixups.bound_at.get(self.address_of(tested, f"_FBLink_{name}"))
            self.assertIsNotNone(binding, f"the word {name} is bound to nothing and stays null")
            self.assert_same(
                (binding.symbol, binding.dylib, binding.addend, binding.may_be_missing),
                (f"_FBLinkable_{name}", library, 0, False),
                "the category is not loaded, and Facebook's SDK stops at the first message to it",
            )


if __name__ == "__main__":
    unittest.main()
