"""Reads what dyld does to an image when it loads it: rebases, bindings and exports, in the form that is current before
chained fix-ups."""

from dataclasses import dataclass

from macho import Bytes, MachOError

_POINTER = 8
_MASK = (1 << 64) - 1

# Ordinals that name no library.
_SPECIAL_LIBRARIES = {0: "this image", -1: "main executable", -2: "any image", -3: "weak look-up"}

EXPORT_KIND = 0x03
EXPORT_WEAK = 0x04
EXPORT_REEXPORT = 0x08
EXPORT_RESOLVER = 0x10


@dataclass(frozen=True)
class Binding:
    address: int
    symbol: str
    dylib: str  # The library's path; for a weak binding the empty text, because any image may have the symbol.
    addend: int
    may_be_missing: bool


@dataclass(frozen=True)
class Export:
    address: int
    flags: int

    @property
    def weak(self):
        return bool(self.flags & EXPORT_WEAK)


class Fixups:
    """The fix-ups of one image, by what they do."""

    def __init__(self, image):
        if len(image.dyld_infos) != 1:
            raise MachOError(f"the image has {len(image.dyld_infos)} tables of dyld information instead of one")
        numbers = image.dyld_infos[0]
        tables = [Bytes(image.bytes.part(*numbers[at : at + 2])) for at in range(0, 10, 2)]
        self._image = image
        self.rebased = set(self._read_rebases(tables[0]))
        self.bindings = self._read_bindings(tables[1])
        self.weak_bindings = self._read_bindings(tables[2], weak=True)
        self.lazy_bindings = self._read_bindings(tables[3], lazy=True)
        self.exports = _read_exports(tables[4])
        self.bound_at = {binding.address: binding for binding in self.bindings + self.lazy_bindings}

    def symbol_at(self, address):
        """The symbol that the pointer at `address` is bound to, or None."""
        binding = self.bound_at.get(address)
        return binding.symbol if binding is not None else None

    def _in_segment(self, index, offset):
        if index >= len(self._image.segments):
            raise MachOError(f"a fix-up names segment {index}")
        return (self._image.segments[index].address + offset) & _MASK

    def _checked(self, address):
        # A fix-up outside the file's bytes would write into foreign memory.
        self._image.memory(address, _POINTER)
        return address

    def _checked_count(self, count):
        if count * _POINTER > len(self._image.bytes):
            raise MachOError(f"{count} fix-ups do not fit in the image")
        return count

    def _read_rebases(self, table):
        at = address = 0
        while at < len(table):
            operation, immediate = table.u8(at) & 0xF0, table.u8(at) & 0x0F
            at += 1
            count, skip = 0, 0
            if operation == 0x00:  # Done.
                return
            if operation == 0x10:  # Set the type.
                if immediate != 1:
                    raise MachOError(f"a rebase has the type {immediate}")
            elif operation == 0x20:  # Set segment and offset.
                offset, at = table.uleb(at)
                address = self._in_segment(immediate, offset)
            elif operation == 0x30:  # Add to the address.
                offset, at = table.uleb(at)
                address += offset
            elif operation == 0x40:  # Add pointers to the address.
                address += immediate * _POINTER
            elif operation == 0x50:  # Rebase so many.
                count = immediate
            elif operation == 0x60:
                count, at = table.uleb(at)
            elif operation == 0x70:  # Rebase one, add to the address.
                count = 1
                skip, at = table.uleb(at)
            elif operation == 0x80:  # Rebase so many with gaps.
                count, at = table.uleb(at)
                skip, at = table.uleb(at)
            else:
                raise MachOError(f"{operation:#x} is no rebase operation")
            for _ in range(self._checked_count(count)):
                yield self._checked(address & _MASK)
                address += _POINTER + skip

    def _read_bindings(self, table, weak=False, lazy=False):
        bindings = []
        at = address = addend = ordinal = 0
        symbol, may_be_missing = None, False
        while at < len(table):
            operation, immediate = table.u8(at) & 0xF0, table.u8(at) & 0x0F
            at += 1
            count, skip = 0, 0
            if operation == 0x00:  # Done; among lazy bindings only with the one.
                if lazy:
                    continue
                break
            if operation == 0x10:  # Set the library.
                ordinal = immediate
            elif operation == 0x20:
                ordinal, at = table.uleb(at)
            elif operation == 0x30:  # No library; the number is negative.
                ordinal = immediate - 16 if immediate else 0
            elif operation == 0x40:  # Set symbol and flags.
                symbol, may_be_missing = table.text(at), bool(immediate & 1)
                at += len(symbol.encode()) + 1
            elif operation == 0x50:  # Set the type.
                if immediate != 1:
                    raise MachOError(f"the binding of {symbol} has the type {immediate}")
            elif operation == 0x60:
                addend, at = table.sleb(at)
            elif operation == 0x70:  # Set segment and offset.
                offset, at = table.uleb(at)
                address = self._in_segment(immediate, offset)
            elif operation == 0x80:  # Add to the address.
                offset, at = table.uleb(at)
                address = (address + offset) & _MASK
            elif operation == 0x90:  # Bind one.
                count = 1
            elif operation == 0xA0:  # Bind one, add to the address.
                count = 1
                skip, at = table.uleb(at)
            elif operation == 0xB0:  # Bind one, add pointers to the address.
                count, skip = 1, immediate * _POINTER
            elif operation == 0xC0:  # Bind so many with gaps.
                count, at = table.uleb(at)
                skip, at = table.uleb(at)
            else:
                raise MachOError(f"{operation:#x} is no bind operation")
            for _ in range(self._checked_count(count)):
                if symbol is None:
                    raise MachOError("a binding has no symbol")
                library = "" if weak else self._library(ordinal)
                bindings.append(Binding(self._checked(address), symbol, library, addend, may_be_missing))
                address = (address + _POINTER + skip) & _MASK
        return bindings

    def _library(self, ordinal):
        if ordinal <= 0:
            return _SPECIAL_LIBRARIES.get(ordinal, "an unknown place")
        if ordinal > len(self._image.libraries):
            raise MachOError(f"a binding names library {ordinal} of {len(self._image.libraries)}")
        return self._image.libraries[ordinal - 1].path


def _read_exports(trie):
    exports = {}
    seen = set()
    nodes = [(0, "")] if len(trie) else []
    while nodes:
        at, prefix = nodes.pop()
        if at in seen:
            raise MachOError("the export trie has a loop")
        seen.add(at)
        size, at = trie.uleb(at)
        if size:
            flags, behind = trie.uleb(at)
            if flags & (EXPORT_REEXPORT | EXPORT_RESOLVER):
                raise MachOError(f"{prefix} is a re-export or has a resolver")
            address, _ = trie.uleb(behind)
            exports[prefix] = Export(address, flags)
        at += size
        children = trie.u8(at)
        at += 1
        for _ in range(children):
            label = trie.text(at)
            child, at = trie.uleb(at + len(label.encode()) + 1)
            nodes.append((child, prefix + label))
    return exports
