"""What the other tests read with: damaged files are told, and never read past their ends."""

import random
import struct
import unittest

import codesign
import macho
import unwinding
from dyldinfo import Fixups
from objcmeta import STRING_BY_VALUE, Metadata, without_string_layout
from slices import SliceTest, on_every_slice


def read_everything(data):
    image = macho.Image(data)
    image.symbols()
    Metadata(image, Fixups(image))
    codesign.read_signature(image)
    unwinding.UnwindInfo(image)
    unwinding.frame_descriptions(image)


class ReaderTest(SliceTest):
    @on_every_slice
    def test_a_whole_image_is_read(self, tested):
        read_everything(tested.image.bytes.data)

    @on_every_slice
    def test_an_image_that_was_cut_off_is_told_as_damaged(self, tested):
        data = tested.image.bytes.data
        for size in [0, 3, 31, 32, 400, *range(1000, len(data) - 2000, 9973)]:
            with self.assertRaises(macho.MachOError, msg=f"{size} bytes"):
                read_everything(data[:size])

    @on_every_slice
    def test_damage_is_told_or_harmless_but_never_another_error(self, tested):
        numbers = random.Random(1)
        data = tested.image.bytes.data
        tables = [(32, 4000), *(tested.image.dyld_infos[0][at : at + 2] for at in range(0, 10, 2))]
        for name in ("__objc_const", "__objc_data", "__unwind_info", "__eh_frame"):
            section = tested.image.section(name)
            if section is not None:  # Not every processor needs frame descriptions.
                tables.append((section.file_offset, section.size))
        for offset, size in tables:
            for _ in range(6):
                damaged = bytearray(data)
                struct.pack_into("<H", damaged, offset + numbers.randrange(size - 1), numbers.randrange(1 << 16))
                try:
                    read_everything(bytes(damaged))
                except macho.MachOError:
                    pass

    def test_numbers_of_seven_bits_a_byte_are_read_with_their_sign(self):
        self.assertEqual(macho.Bytes(b"\xe5\x8e\x26").uleb(0), (624485, 3))
        self.assertEqual(macho.Bytes(b"\xc0\xbb\x78").sleb(0), (-123456, 3))
        with self.assertRaises(macho.MachOError):
            macho.Bytes(b"\x80" * 12 + b"\0").uleb(0)
        with self.assertRaises(macho.MachOError):
            macho.Bytes(b"\x80").uleb(0)

    def test_the_inside_of_a_string_by_value_is_left_out_of_an_encoding(self):
        self.assertEqual(
            without_string_layout("v1{basic_string<char>={a={b=*}}}2{R=i{basic_string<char>=(?={c})}}3@4"),
            f"v1{STRING_BY_VALUE}2{{R=i{STRING_BY_VALUE}}}3@4",
        )
        with self.assertRaises(macho.MachOError):
            without_string_layout("v1{basic_string<char>={a")


if __name__ == "__main__":
    unittest.main()
