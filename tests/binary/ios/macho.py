"""Reads 64-bit Mach-O images: universal files, load commands, segments, sections and symbols.

Nothing here trusts the file. Every read is checked against the bounds of what it reads from, and what is not as it must
be ends in a MachOError; no other exception comes from a damaged file.
"""

import struct
from dataclasses import dataclass

CPU_ARM64 = 0x0100000C
CPU_X86_64 = 0x01000007

PLATFORM_IOS = 2
PLATFORM_IOS_SIMULATOR = 7

MAY_WRITE = 2
MAY_RUN = 4

_FAT_MAGIC = 0xCAFEBABE
_MAGIC_64 = 0xFEEDFACF

LC_SYMTAB = 0x02
LC_LOAD_DYLIB = 0x0C
LC_ID_DYLIB = 0x0D
LC_SEGMENT_64 = 0x19
LC_UUID = 0x1B
LC_RPATH = 0x1C
LC_CODE_SIGNATURE = 0x1D
LC_DYLD_INFO_ONLY = 0x22
LC_ENCRYPTION_INFO_64 = 0x2C
LC_BUILD_VERSION = 0x32
# Libraries that are loaded in another way than plainly: weak, re-exported, lazy, upward.
_OTHER_LOADS = (0x18, 0x1F, 0x20, 0x23)
_REQUIRED_BY_DYLD = 0x80000000

_SYMBOL_DEBUGGING = 0xE0
_SYMBOL_TYPE = 0x0E
_SYMBOL_IN_SECTION = 0x0E
_SYMBOL_EXTERNAL = 0x01

_SECTION_TYPE = 0xFF
_ZERO_FILLED = (0x01, 0x0C, 0x12)


class MachOError(Exception):
    """The file is not what a Mach-O image must be."""


class Bytes:
    """A stretch of bytes; reading outside it is a MachOError."""

    def __init__(self, data):
        self.data = data

    def __len__(self):
        return len(self.data)

    def part(self, offset, size):
        if offset < 0 or size < 0 or offset + size > len(self.data):
            raise MachOError(f"{size} bytes at {offset:#x} are outside of {len(self.data)}")
        return self.data[offset : offset + size]

    def unpack(self, layout, offset):
        return struct.unpack(layout, self.part(offset, struct.calcsize(layout)))

    def u8(self, offset):
        return self.unpack("<B", offset)[0]

    def u16(self, offset):
        return self.unpack("<H", offset)[0]

    def u32(self, offset):
        return self.unpack("<I", offset)[0]

    def u64(self, offset):
        return self.unpack("<Q", offset)[0]

    def text(self, offset):
        """The text that ends in NUL at `offset`."""
        if not 0 <= offset < len(self.data):
            raise MachOError(f"a text at {offset:#x} is outside of {len(self.data)} bytes")
        end = self.data.find(b"\0", offset)
        if end < 0:
            raise MachOError(f"the text at {offset:#x} does not end")
        try:
            return self.data[offset:end].decode()
        except UnicodeDecodeError as error:
            raise MachOError(f"the text at {offset:#x} is not UTF-8") from error

    def uleb(self, offset):
        """A number of seven bits a byte at `offset`, and the offset behind it."""
        value = shift = 0
        while True:
            byte = self.u8(offset)
            offset += 1
            value |= (byte & 0x7F) << shift
            shift += 7
            if byte < 0x80:
                return value, offset
            if shift > 63:
                raise MachOError("a number has more than 64 bits")

    def sleb(self, offset):
        value, behind = self.uleb(offset)
        if self.u8(behind - 1) & 0x40:
            value -= 1 << (7 * (behind - offset))
        return value, behind


@dataclass(frozen=True)
class Segment:
    name: str
    address: int
    size: int
    file_offset: int
    file_size: int
    protection: int  # All that its memory may ever be used for.


@dataclass(frozen=True)
class Section:
    segment: str
    name: str
    address: int
    size: int
    file_offset: int
    zero_filled: bool


@dataclass(frozen=True)
class Library:
    path: str
    current_version: str
    compatibility_version: str
    plain: bool  # Not weak, lazy, upward or re-exported.

    @property
    def name(self):
        return self.path.rsplit("/", 1)[-1]


@dataclass(frozen=True)
class Symbol:
    name: str
    address: int
    section: int  # Counted from 1 over all sections; 0 for one that is not in this image.
    external: bool


def version_text(packed):
    return f"{packed >> 16}.{packed >> 8 & 0xFF}.{packed & 0xFF}"


def read_file(path):
    """The slices of a universal file, or the one of a thin file, as (alignment exponent, Image)."""
    with open(path, "rb") as file:
        return read_slices(file.read())


def read_slices(data):
    whole = Bytes(data)
    if whole.unpack(">I", 0)[0] != _FAT_MAGIC:
        return [(None, Image(data))]
    slices = []
    for index in range(whole.unpack(">I", 4)[0]):
        cpu, _, offset, size, alignment = whole.unpack(">5I", 8 + 20 * index)
        if alignment > 31 or offset % (1 << alignment) != 0:
            raise MachOError(f"the slice at {offset:#x} is not aligned to 2^{alignment}")
        image = Image(whole.part(offset, size))
        if image.cpu != cpu:
            raise MachOError(f"the slice at {offset:#x} is for another processor than the universal header says")
        slices.append((alignment, image))
    return slices


class Image:
    """One slice. Addresses are those that the linker gave; the file holds them plainly where a rebase is due."""

    def __init__(self, data):
        self.bytes = Bytes(data)
        magic, self.cpu, self.cpu_subtype, self.file_type, count, size, self.flags, _ = self.bytes.unpack("<8I", 0)
        if magic != _MAGIC_64:
            raise MachOError(f"the magic number is {magic:#x}")
        self.segments = []
        self.sections = []
        self.libraries = []
        self.install_names = []
        self.run_paths = []
        self.uuids = []
        self.build_versions = []  # (platform, minimum system, SDK)
        self.encryptions = []  # (offset, size, kind)
        self.signatures = []  # (offset, size)
        self.dyld_infos = []  # rebase, bind, weak bind, lazy bind, exports: ten numbers, offset and size of each
        self._symbol_tables = []
        offset = 32
        for _ in range(count):
            kind, length = self.bytes.unpack("<2I", offset)
            if length < 8 or offset + length > 32 + size:
                raise MachOError(f"the load command at {offset:#x} is outside of the load commands")
            self._read_command(kind, offset, Bytes(self.bytes.part(offset, length)))
            offset += length

    def _read_command(self, kind, offset, command):
        if kind == LC_SEGMENT_64:
            self._read_segment(command)
        elif kind in (LC_LOAD_DYLIB, LC_ID_DYLIB) or kind & ~_REQUIRED_BY_DYLD in _OTHER_LOADS:
            name, _, current, compatibility = command.unpack("<4I", 8)
            library = Library(
                command.text(name), version_text(current), version_text(compatibility), kind == LC_LOAD_DYLIB
            )
            (self.install_names if kind == LC_ID_DYLIB else self.libraries).append(library)
        elif kind == LC_RPATH | _REQUIRED_BY_DYLD:
            self.run_paths.append(command.text(command.u32(8)))
        elif kind == LC_UUID:
            self.uuids.append(command.part(8, 16).hex())
        elif kind == LC_BUILD_VERSION:
            platform, minimum, sdk = command.unpack("<3I", 8)
            self.build_versions.append((platform, version_text(minimum), version_text(sdk)))
        elif kind == LC_ENCRYPTION_INFO_64:
            self.encryptions.append(command.unpack("<3I", 8))
        elif kind == LC_CODE_SIGNATURE:
            self.signatures.append(command.unpack("<2I", 8))
        elif kind == LC_DYLD_INFO_ONLY | _REQUIRED_BY_DYLD:
            self.dyld_infos.append(command.unpack("<10I", 8))
        elif kind == LC_SYMTAB:
            self._symbol_tables.append(command.unpack("<4I", 8))

    def _read_segment(self, command):
        name = _fixed_text(command.part(8, 16))
        self.segments.append(Segment(name, *command.unpack("<4Q", 24), command.u32(56)))
        for index in range(command.u32(64)):
            at = 72 + 80 * index
            address, size = command.unpack("<2Q", at + 32)
            self.sections.append(
                Section(
                    _fixed_text(command.part(at + 16, 16)),
                    _fixed_text(command.part(at, 16)),
                    address,
                    size,
                    command.u32(at + 48),
                    command.u32(at + 64) & _SECTION_TYPE in _ZERO_FILLED,
                )
            )

    def section(self, name):
        """The section of that name, or None. No two sections that matter have one name but __const."""
        found = [section for section in self.sections if section.name == name]
        return found[0] if found else None

    def contents(self, name):
        """The bytes of the section of that name; empty without one."""
        section = self.section(name)
        if section is None or section.zero_filled:
            return Bytes(b"")
        return Bytes(self.bytes.part(section.file_offset, section.size))

    def offset_of(self, address):
        """Where in the file the byte is that is loaded to `address`."""
        for segment in self.segments:
            if segment.address <= address < segment.address + min(segment.size, segment.file_size):
                return segment.file_offset + address - segment.address
        raise MachOError(f"nothing of the file is loaded to {address:#x}")

    def in_section(self, address, name):
        section = self.section(name)
        return section is not None and section.address <= address < section.address + section.size

    def memory(self, address, size):
        offset = self.offset_of(address)
        if size > 0:
            self.offset_of(address + size - 1)
        return self.bytes.part(offset, size)

    def word(self, address):
        return struct.unpack("<I", self.memory(address, 4))[0]

    def pointer(self, address):
        return struct.unpack("<Q", self.memory(address, 8))[0]

    def text(self, address):
        return self.bytes.text(self.offset_of(address))

    def texts(self):
        """All constant C texts."""
        return [text.decode(errors="replace") for text in self.contents("__cstring").data.split(b"\0") if text]

    def symbols(self):
        """The symbol table without the entries for debuggers."""
        symbols = []
        for offset, count, text_offset, text_size in self._symbol_tables:
            names = Bytes(self.bytes.part(text_offset, text_size))
            table = Bytes(self.bytes.part(offset, 16 * count))
            for index in range(count):
                name, kind, section, _, value = table.unpack("<IBBHQ", 16 * index)
                if kind & _SYMBOL_DEBUGGING:
                    continue
                if kind & _SYMBOL_TYPE != _SYMBOL_IN_SECTION:
                    section = 0
                elif not 0 < section <= len(self.sections):
                    raise MachOError(f"symbol {index} is in section {section} of {len(self.sections)}")
                symbols.append(Symbol(names.text(name), value, section, bool(kind & _SYMBOL_EXTERNAL)))
        return symbols


def _fixed_text(field):
    return field.split(b"\0", 1)[0].decode(errors="replace")
