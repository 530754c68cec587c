"""The C++ initialisers that run when the library is loaded: those of the shared maps and no other.

Every source file that uses VornInnerObserverHolder<T> gets an initialiser for each of T's two maps, which does nothing
when the map's guard says that another one, in this image or in the core, was first. So the number of initialisers
follows from which files use which results: two for each of a file's results.
"""

import re
import unittest

import shared_statics
from slices import SOURCE, SliceTest, on_every_slice, run_tool

RESULTS_BY_FILE = {
    "VornFriendFacebook.mm": ["InnerBaseRet", "InnerFriendRet"],
    "VornLoginFacebook.mm": ["InnerBaseRet", "InnerLoginPluginRet", "InnerLoginRet"],
}

# Per pointer: which map it initialises.
EXPECTED = sorted(
    (result, name) for results in RESULTS_BY_FILE.values() for result in results for name in shared_statics.MAPS
)


def symbols_used_by(tested, starts):
    """By the functions' addresses, the symbols that each uses, in their order, up to the jump that ends it."""
    listing = run_tool(
        "VORN_LLVM_OBJDUMP",
        "llvm-objdump-16",
        "--macho",
        f"--arch={tested.target.architecture}",
        "--disassemble",
        "--no-show-raw-insn",
        tested.binary_path,
    )
    used, current = {}, None
    for line in listing.splitlines():
        instruction = re.match(r"\s*([0-9a-f]+):\s", line)
        if instruction is None:
            continue
        address = int(instruction[1], 16)
        if address in starts:
            current = used.setdefault(address, [])
        symbol = re.search(r"(literal pool symbol address|symbol stub for): (\S+)", line)
        if current is not None and symbol:
            current.append(symbol[2])
            if symbol[1] == "symbol stub for":
                current = None
    return used


class InitialisersTest(SliceTest):
    def test_the_sources_use_the_results_of_the_table(self):
        used = {}
        for path in sorted((SOURCE / "VornFacebook").glob("*.mm")):
            results = sorted(set(re.findall(r"VornInnerObserverHolder<(\w+)>::", path.read_text())))
            if results:
                used[path.name] = results
        self.assert_same(used, RESULTS_BY_FILE, "the expectations of this test are those of older sources")

    @on_every_slice
    def test_there_is_one_initialiser_for_each_map_in_each_file_that_uses_it(self, tested):
        self.assert_same(
            len(tested.metadata.listed("__mod_init_func")),
            len(EXPECTED),
            "a map is not made before its first use, or foreign code runs when the library is loaded",
        )

    @on_every_slice
    def test_every_initialiser_is_guarded_and_makes_a_shared_map(self, tested):
        starts = tested.metadata.listed("__mod_init_func")
        symbols = symbols_used_by(tested, starts)
        made = []
        for start in starts:
            used = symbols.get(start)
            result_and_map = next(
                (
                    (result, name)
                    for result in shared_statics.RESULTS
                    for name in shared_statics.MAPS
                    if used == [
                        shared_statics.holder_guard(result, name),
                        shared_statics.holder_map(result, name),
                        "___cxa_atexit",
                    ]
                ),
                None,
            )
            self.assertIsNotNone(
                result_and_map,
                f"the initialiser at {start:#x} uses {used}: without asking the map's guard it empties the core's map",
            )
            made.append(result_and_map)
        self.assert_same(sorted(made), EXPECTED, "a map is used before it is made")

    @on_every_slice
    def test_nothing_is_initialised_in_another_way(self, tested):
        names = {section.name for section in tested.image.sections}
        self.assert_none(names & {"__init_offsets", "__mod_term_func"}, "the system runs code that nobody expects")


if __name__ == "__main__":
    unittest.main()
