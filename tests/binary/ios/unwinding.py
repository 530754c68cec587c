"""Reads the unwind information of an image: the compact table and the frame descriptions that it refers to."""

import bisect
from dataclasses import dataclass

from macho import CPU_ARM64, CPU_X86_64, MachOError

_KIND_MASK = 0x0F000000
_DWARF_KIND = {CPU_ARM64: 0x03000000, CPU_X86_64: 0x04000000}
_DWARF_OFFSET = 0x00FFFFFF
_HAS_LANGUAGE_DATA = 0x40000000
_PERSONALITY = 0x30000000

_REGULAR_PAGE = 2
_COMPRESSED_PAGE = 3


@dataclass(frozen=True)
class Entry:
    address: int
    encoding: int
    cpu: int

    @property
    def says_nothing(self):
        return self.encoding & _KIND_MASK == 0

    @property
    def frame_description(self):
        """The offset in __eh_frame of the frame description that has the rest, or None."""
        if self.encoding & _KIND_MASK != _DWARF_KIND[self.cpu]:
            return None
        return self.encoding & _DWARF_OFFSET

    @property
    def has_language_data(self):
        return bool(self.encoding & _HAS_LANGUAGE_DATA)

    @property
    def personality(self):
        """Which of the personalities, from 1; 0 for none."""
        return (self.encoding & _PERSONALITY) >> 28


class UnwindInfo:
    """The compact table: entries by address, each good up to the next one's address."""

    def __init__(self, image):
        table = image.contents("__unwind_info")
        version, common, common_count, personality, self.personality_count, index, index_count = table.unpack("<7I", 0)
        if version != 1 or index_count == 0:
            raise MachOError("the unwind table has another version, or no pages")
        self._base = image.segments[0].address
        self.entries = []
        self.personalities = [
            self._base + table.u32(personality + 4 * at) for at in range(self.personality_count)
        ]
        self.language_data = {}
        pages = [table.unpack("<3I", index + 12 * at) for at in range(index_count)]
        for (start, page, data), (_, _, data_end) in zip(pages, pages[1:]):
            shared = [table.u32(common + 4 * at) for at in range(common_count)]
            for address, encoding in self._page(table, page, start, shared):
                self.entries.append(Entry(self._base + address, encoding, image.cpu))
            for at in range(data, data_end, 8):
                function, language_data = table.unpack("<2I", at)
                self.language_data[self._base + function] = self._base + language_data
        self.end = self._base + pages[-1][0]
        self._starts = [entry.address for entry in self.entries]
        if self._starts != sorted(set(self._starts)):
            raise MachOError("the unwind table is not in the order of addresses")

    @staticmethod
    def _page(table, page, start, shared):
        kind = table.u32(page)
        first, count = table.unpack("<2H", page + 4)
        if kind == _REGULAR_PAGE:
            return [table.unpack("<2I", page + first + 8 * at) for at in range(count)]
        if kind != _COMPRESSED_PAGE:
            raise MachOError(f"a page of the unwind table has the kind {kind}")
        own_at, own_count = table.unpack("<2H", page + 8)
        encodings = shared + [table.u32(page + own_at + 4 * at) for at in range(own_count)]
        result = []
        for at in range(count):
            packed = table.u32(page + first + 4 * at)
            if packed >> 24 >= len(encodings):
                raise MachOError("an unwind entry names an encoding that is not there")
            result.append((start + (packed & 0xFFFFFF), encodings[packed >> 24]))
        return result

    def entry_for(self, address):
        """The entry that covers the address, or None."""
        if address >= self.end:
            return None
        at = bisect.bisect_right(self._starts, address)
        return self.entries[at - 1] if at > 0 else None


def frame_descriptions(image):
    """The functions that __eh_frame describes, by the description's offset: (first address, size)."""
    section = image.section("__eh_frame")
    frames = image.contents("__eh_frame")
    descriptions = {}
    at = 0
    while at < len(frames):
        length = frames.u32(at)
        if length == 0:
            break
        frames.part(at + 4, length)
        if frames.u32(at + 4) != 0:  # Otherwise what several descriptions have in common.
            # The function as a distance from the field that names it.
            distance, size = frames.unpack("<qQ", at + 8)
            descriptions[at] = (section.address + at + 8 + distance, size)
        at += 4 + length
    return descriptions
