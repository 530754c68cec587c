"""What a slice costs a game: bytes, work at load and bytes per class; and where the figures stand that were accepted last."""

import re
from pathlib import Path

BASELINE = Path(__file__).resolve().with_name("sizes_baseline.json")

_OF_CLASS = re.compile(r"^(?:___\d+|___)?[-+]\[(\w+(?:\(\w+\))?) ")


def _bytes_per_class(image):
    """The code of each class's methods and their blocks. Functions that several classes share are nobody's."""
    text = image.section("__text")
    end = text.address + text.size
    starts = {}
    for symbol in image.symbols():
        if symbol.section and text.address <= symbol.address < end:
            starts.setdefault(symbol.address, symbol.name)
    sizes = {}
    addresses = sorted(starts)
    for address, behind in zip(addresses, [*addresses[1:], end], strict=True):
        of_class = _OF_CLASS.match(starts[address])
        if of_class:
            sizes[of_class[1]] = sizes.get(of_class[1], 0) + behind - address
    return sizes


def figures_of(tested):
    """The figures of a slice by their names."""
    sections = tested.image.sections

    def bytes_of(*segments):
        return sum(section.size for section in sections if section.segment in segments)

    figures = {
        "code": tested.image.section("__text").size,
        "text segment": bytes_of("__TEXT"),
        "data segments": bytes_of("__DATA", "__DATA_CONST"),
        "initialisers": len(tested.metadata.listed("__mod_init_func")),
        "imports": len({binding.symbol for binding in tested.fixups.bindings + tested.fixups.lazy_bindings}),
    }
    for name, size in sorted(_bytes_per_class(tested.unstripped_image).items()):
        figures[f"code of {name}"] = size
    return figures


def table(figures):
    """The figures of all slices, side by side, as a Markdown table."""
    slices = list(figures)
    names = list(dict.fromkeys(name for of_slice in figures.values() for name in of_slice))
    lines = ["| | " + " | ".join(slices) + " |", "|---|" + "---:|" * len(slices)]
    for name in names:
        lines.append(f"| {name} | " + " | ".join(f"{figures[of].get(name, 0):,}" for of in slices) + " |")
    return "\n".join(lines)
