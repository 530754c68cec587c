"""Reads an image's Objective-C metadata: classes, categories and protocols with their methods, properties and ivars."""

from dataclasses import dataclass, field

from macho import MachOError

_CLASS_DATA_FLAGS = 7  # In the low bits of the pointer to a class's data.
_RELATIVE_METHODS = 0x80000000


@dataclass(frozen=True)
class Method:
    name: str
    types: str
    implementation: int  # 0 in a protocol.
    slot: int  # The address of the entry.


@dataclass(frozen=True)
class Ivar:
    name: str
    type: str
    offset: int
    alignment: int  # In bytes.
    size: int


@dataclass
class Class:
    address: int
    name: str = ""
    superclass: str = ""  # Symbols, as the image binds them.
    metaclass_isa: str = ""
    metaclass_superclass: str = ""
    instance_start: int = 0
    instance_size: int = 0
    flags: int = 0
    protocols: list = field(default_factory=list)
    methods: list = field(default_factory=list)
    class_methods: list = field(default_factory=list)
    properties: list = field(default_factory=list)
    class_properties: list = field(default_factory=list)
    ivars: list = field(default_factory=list)


@dataclass
class Category:
    address: int
    name: str
    class_symbol: str
    class_library: str
    methods: list
    class_methods: list
    protocols: list
    properties: list


@dataclass
class Protocol:
    name: str
    inherited: list
    properties: list
    # Name, types and extended types; None for extended types when the protocol has none.
    required: list
    required_class: list
    optional: list
    optional_class: list


class Metadata:
    """The metadata of one image."""

    def __init__(self, image, fixups):
        self._image = image
        self._fixups = fixups
        self.classes = [self._class(address) for address in self.listed("__objc_classlist")]
        self.categories = [self._category(address) for address in self.listed("__objc_catlist")]
        self.protocols = [self._protocol(address) for address in self.listed("__objc_protolist")]

    def listed(self, section_name):
        """The pointers in a section of pointers; none when there is no such section."""
        contents = self._image.contents(section_name)
        if len(contents) % 8 != 0:
            raise MachOError(f"{section_name} has {len(contents)} bytes")
        return [contents.u64(at) for at in range(0, len(contents), 8)]

    def class_named(self, name):
        return next((found for found in self.classes if found.name == name), None)

    def protocol_named(self, name):
        return next((found for found in self.protocols if found.name == name), None)

    def _entries(self, address, entry_size, what):
        """The addresses of a list's entries: a size, a count, entries."""
        if address == 0:
            return []
        size, count = self._image.word(address), self._image.word(address + 4)
        if size & _RELATIVE_METHODS or size & 0xFFFC != entry_size:
            raise MachOError(f"a list of {what} has entries of {size:#x} bytes")
        self._image.memory(address + 8, count * entry_size)
        return [address + 8 + index * entry_size for index in range(count)]

    def _methods(self, address):
        image = self._image
        return [
            Method(image.text(image.pointer(at)), image.text(image.pointer(at + 8)), image.pointer(at + 16), at)
            for at in self._entries(address, 24, "methods")
        ]

    def _properties(self, address):
        image = self._image
        return [
            (image.text(image.pointer(at)), image.text(image.pointer(at + 8)))
            for at in self._entries(address, 16, "properties")
        ]

    def _ivars(self, address):
        image = self._image
        ivars = []
        for at in self._entries(address, 32, "ivars"):
            offset = image.word(image.pointer(at))  # 32 bits, in a place of its own that the runtime moves.
            name, types = image.text(image.pointer(at + 8)), image.text(image.pointer(at + 16))
            ivars.append(Ivar(name, types, offset, 1 << (image.word(at + 24) & 31), image.word(at + 28)))
        return ivars

    def _protocol_names(self, address):
        if address == 0:
            return []
        image = self._image
        count = image.pointer(address)
        image.memory(address + 8, 8 * count)
        return [image.text(image.pointer(image.pointer(address + 8 + 8 * index) + 8)) for index in range(count)]

    def _class(self, address):
        image = self._image
        data = image.pointer(address + 32) & ~_CLASS_DATA_FLAGS
        metaclass = image.pointer(address)
        metadata = image.pointer(metaclass + 32) & ~_CLASS_DATA_FLAGS
        return Class(
            address=address,
            name=image.text(image.pointer(data + 24)),
            superclass=self._fixups.symbol_at(address + 8) or "",
            metaclass_isa=self._fixups.symbol_at(metaclass) or "",
            metaclass_superclass=self._fixups.symbol_at(metaclass + 8) or "",
            flags=image.word(data),
            instance_start=image.word(data + 4),
            instance_size=image.word(data + 8),
            methods=self._methods(image.pointer(data + 32)),
            protocols=self._protocol_names(image.pointer(data + 40)),
            ivars=self._ivars(image.pointer(data + 48)),
            properties=self._properties(image.pointer(data + 64)),
            class_methods=self._methods(image.pointer(metadata + 32)),
            class_properties=self._properties(image.pointer(metadata + 64)),
        )

    def _category(self, address):
        image = self._image
        binding = self._fixups.bound_at.get(address + 8)
        return Category(
            address=address,
            name=image.text(image.pointer(address)),
            class_symbol=binding.symbol if binding else "",
            class_library=binding.dylib if binding else "",
            methods=self._methods(image.pointer(address + 16)),
            class_methods=self._methods(image.pointer(address + 24)),
            protocols=self._protocol_names(image.pointer(address + 32)),
            properties=self._properties(image.pointer(address + 40)),
        )

    def _protocol(self, address):
        image = self._image
        lists = [self._methods(image.pointer(address + at)) for at in (24, 32, 40, 48)]
        has_extended_types = image.word(address + 64) >= 80 and image.pointer(address + 72) != 0
        extended = image.pointer(address + 72) if has_extended_types else None
        tables, index = [], 0
        for methods in lists:
            table = []
            for method in methods:
                types = image.text(image.pointer(extended + 8 * index)) if extended is not None else None
                table.append((method.name, method.types, types))
                index += 1
            tables.append(table)
        return Protocol(
            image.text(image.pointer(address + 8)),
            self._protocol_names(image.pointer(address + 16)),
            self._properties(image.pointer(address + 56)),
            *tables,
        )


STRING_BY_VALUE = "{std::string}"


def without_string_layout(types):
    """A type encoding with STRING_BY_VALUE wherever a std::string stands by value: how the compiler spells the inside
    of that is its own affair."""
    beginning = "{basic_string<"
    result = ""
    while True:
        before, found, rest = types.partition(beginning)
        result += before
        if not found:
            return result
        depth, end = 1, 0
        while depth > 0:
            if end == len(rest):
                raise MachOError(f"the braces of {types} do not match")
            depth += {"{": 1, "}": -1}.get(rest[end], 0)
            end += 1
        result += STRING_BY_VALUE
        types = rest[end:]
