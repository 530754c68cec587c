"""What the image imports: exactly what the link stubs of platform/ios offer, library by library."""

import unittest

from slices import SOURCE, SliceTest, all_slices, on_every_slice

# Offered as a class by its plain name; its two symbols are one entry.
CLASS_PREFIXES = ("_OBJC_CLASS_$_", "_OBJC_METACLASS_$_")
# A method that returns a record is sent in another way on Intel, and there only.
ONLY_ON_SOME = {("libobjc.A.dylib", "_objc_msgSend_stret")}


def read_stub(path):
    """The install name's last part, and the entries: symbols, and classes as "class NAME"."""
    library, kind, entries = None, None, set()
    for line in path.read_text().splitlines():
        words = line.split()
        if line.startswith("install-name:"):
            library = words[1].strip("'").rsplit("/", 1)[-1]
        elif line.startswith("    ") and line.endswith(":") and not line.startswith("     "):
            kind = words[0]
        elif line.startswith("      - "):
            entries.add("class " + words[1] if kind == "objc-classes:" else words[1])
    return library, entries


def offered():
    """(library, entry) for each entry of each stub."""
    stubs = [read_stub(path) for path in sorted((SOURCE / "platform" / "ios").rglob("*.tbd"))]
    return {(library, entry) for library, entries in stubs for entry in entries}


def imported(tested):
    entries = set()
    for binding in tested.fixups.bindings + tested.fixups.lazy_bindings:
        entry = binding.symbol
        for prefix in CLASS_PREFIXES:
            if entry.startswith(prefix):
                entry = "class " + entry[len(prefix) :]
        entries.add((binding.dylib.rsplit("/", 1)[-1], entry))
    return entries


class ImportsTest(SliceTest):
    def test_the_stubs_can_be_read(self):
        self.assertIn(("libobjc.A.dylib", "class NSObject"), offered())
        self.assertIn(("libc++.1.dylib", "__Znwm"), offered())
        self.assertIn(("VornCore", "__ZN6Tarvik4Vorn10VornLogger7consoleEv"), offered())

    @on_every_slice
    def test_the_image_imports_nothing_that_no_stub_offers(self, tested):
        self.assert_none(sorted(imported(tested) - offered()), "the library does not load where these are missing")

    def test_every_symbol_of_a_stub_is_imported(self):
        everything = set().union(*(imported(tested) for tested in all_slices()))
        self.assert_none(sorted(offered() - everything), "the stubs promise the plugin what it does not need any more")

    @on_every_slice
    def test_the_slices_import_the_same_but_for_what_is_of_the_processor(self, tested):
        everything = set().union(*(imported(other) for other in all_slices()))
        self.assert_none(
            sorted(everything - imported(tested) - ONLY_ON_SOME), "what works on one kind of machine fails on this one"
        )

    @on_every_slice
    def test_no_import_may_be_missing(self, tested):
        bindings = tested.fixups.bindings + tested.fixups.lazy_bindings
        self.assert_none(
            sorted(binding.symbol for binding in bindings if binding.may_be_missing),
            "the library loads without these and crashes later",
        )

    @on_every_slice
    def test_every_undefined_symbol_is_bound(self, tested):
        bound = {binding.symbol for binding in tested.fixups.bindings + tested.fixups.lazy_bindings}
        undefined = {symbol.name for symbol in tested.image.symbols() if not symbol.section}
        self.assert_same(undefined, bound, "the symbol table promises other imports than are bound")


if __name__ == "__main__":
    unittest.main()
