"""Unwind information: an exception must find its way through every function. A linker that does not fit the compiler
drops parts of it without a word, and then the app ends although a handler waits."""

import unittest

import unwinding
from slices import SliceTest, on_every_slice

PERSONALITY = "___gxx_personality_v0"


class UnwindTest(SliceTest):
    def functions_of(self, tested):
        """The symbols in the code of the linked binary, whose addresses are those of the stripped one."""
        image = tested.unstripped_image
        self.assert_same(
            image.section("__text").address, tested.image.section("__text").address, "the two are of different builds"
        )
        self.assert_same(image.uuids, tested.image.uuids, "the two are of different builds")
        found = [
            symbol
            for symbol in image.symbols()
            if symbol.section and image.sections[symbol.section - 1].name == "__text"
        ]
        self.assertGreater(len(found), 100, "the linked binary has lost its symbols")
        return found

    @on_every_slice
    def test_every_function_has_unwind_information(self, tested):
        info = unwinding.UnwindInfo(tested.image)
        missing = []
        for function in self.functions_of(tested):
            entry = info.entry_for(function.address)
            if entry is None or entry.says_nothing:
                missing.append(function.name)
        self.assert_none(missing, "an exception ends the app in these functions")

    @on_every_slice
    def test_the_table_covers_the_code_from_its_beginning_to_its_end(self, tested):
        info = unwinding.UnwindInfo(tested.image)
        text = tested.image.section("__text")
        self.assert_same(info.entries[0].address, text.address, "an exception ends the app in the first functions")
        # A last function's padding may lie behind the table's end.
        self.assertLess(text.address + text.size - info.end, 16, "an exception ends the app in the last functions")

    @on_every_slice
    def test_every_entry_that_refers_to_a_frame_description_has_one_for_its_function(self, tested):
        info = unwinding.UnwindInfo(tested.image)
        descriptions = unwinding.frame_descriptions(tested.image)
        for entry in info.entries:
            offset = entry.frame_description
            if offset is not None:
                self.assertIn(offset, descriptions, f"an exception ends the app in the function at {entry.address:#x}")
                self.assert_same(
                    descriptions[offset][0],
                    entry.address,
                    "an exception restores the registers of another function",
                )

    @on_every_slice
    def test_every_frame_description_is_referred_to(self, tested):
        info = unwinding.UnwindInfo(tested.image)
        used = {entry.frame_description for entry in info.entries}
        unused = [hex(at) for at in unwinding.frame_descriptions(tested.image) if at not in used]
        self.assert_none(unused, "the unwinder does not look at these descriptions")

    @on_every_slice
    def test_cleanups_and_handlers_are_found_by_the_run_time_support_of_cpp(self, tested):
        info = unwinding.UnwindInfo(tested.image)
        self.assert_same(
            [tested.fixups.symbol_at(address) for address in info.personalities],
            [PERSONALITY],
            "destructors do not run when an exception passes",
        )
        with_language_data = [entry for entry in info.entries if entry.has_language_data]
        self.assertTrue(with_language_data, "no function has cleanups")
        for entry in with_language_data:
            self.assert_same(entry.personality, 1, f"nothing reads the cleanups of the function at {entry.address:#x}")
            self.assertTrue(
                tested.image.in_section(info.language_data.get(entry.address, 0), "__gcc_except_tab"),
                f"the cleanups of the function at {entry.address:#x} are missing",
            )


if __name__ == "__main__":
    unittest.main()
