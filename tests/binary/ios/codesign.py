"""Reads the code signature that is embedded in an image."""

import hashlib
from dataclasses import dataclass

from macho import Bytes, MachOError

_SUPER_BLOB = 0xFADE0CC0
_CODE_DIRECTORY = 0xFADE0C02
_CODE_DIRECTORY_SLOT = 0

FLAG_AD_HOC = 0x2
FLAG_LINKER_SIGNED = 0x20000
SHA256 = 2


@dataclass(frozen=True)
class Signature:
    offset: int
    size: int
    slots: list  # The kinds of the blobs.
    flags: int
    identifier: str
    hash_kind: int
    page_size: int
    code_limit: int  # How many bytes from the image's start are hashed.
    code_segment_limit: int
    hashes: list


def read_signature(image):
    if len(image.signatures) != 1:
        raise MachOError(f"the image has {len(image.signatures)} signatures instead of one")
    offset, size = image.signatures[0]
    whole = Bytes(image.bytes.part(offset, size))
    magic, length, count = whole.unpack(">3I", 0)
    if magic != _SUPER_BLOB or length > size:
        raise MachOError("the signature's beginning is damaged")
    slots = dict(whole.unpack(">2I", 12 + 8 * index) for index in range(count))
    if _CODE_DIRECTORY_SLOT not in slots:
        raise MachOError("the signature has no code directory")
    at = slots[_CODE_DIRECTORY_SLOT]
    directory = Bytes(whole.part(at, whole.unpack(">I", at + 4)[0]))
    magic, _, _, flags, hashes, identifier, _, pages, limit = directory.unpack(">9I", 0)
    if magic != _CODE_DIRECTORY:
        raise MachOError("the code directory's beginning is damaged")
    hash_size, hash_kind, _, page_exponent = directory.unpack(">4B", 36)
    return Signature(
        offset,
        size,
        sorted(slots),
        flags,
        directory.text(identifier),
        hash_kind,
        1 << (page_exponent & 31),
        limit,
        directory.unpack(">Q", 72)[0],
        [directory.part(hashes + index * hash_size, hash_size) for index in range(pages)],
    )


def hashes_of(image, signature):
    """What the hashes of the signed pages must be."""
    return [
        hashlib.sha256(image.bytes.part(at, min(signature.page_size, signature.code_limit - at))).digest()
        for at in range(0, signature.code_limit, signature.page_size)
    ]
