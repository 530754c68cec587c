"""A program that compiles and links against the package as Xcode would do it, for devices and both kinds of simulator."""
import re
import sys
import unittest
from pathlib import Path

HERE = Path(__file__).resolve().parent
sys.path.insert(0, str(HERE.parent / "package"))
from package_under_test import ROOT, TARGETS, Workshop, framework, run  # noqa: E402

# What the sources take from the framework. The holder's statics are both sides' own, weak, and become one by their names.
TAKEN = {
    "_OBJC_CLASS_$_VornLoginFacebook",
    "_OBJC_CLASS_$_VornReportFacebook",
    "_VornFacebookVersionNumber",
    "_VornFacebookVersionString",
}
SHARED = {
    "__ZN6Tarvik4Vorn23VornInnerObserverHolderINS0_13InnerLoginRetEE15mObserverHolderE",
    "__ZGVN6Tarvik4Vorn23VornInnerObserverHolderINS0_13InnerLoginRetEE15mObserverHolderE",
}


class ConsumerTest(unittest.TestCase):
    def setUp(self):
        self.workshop = Workshop()
        self.addCleanup(self.workshop.close)

    def compile_program(self, target):
        """Without automatic reference counting, whose runtime calls our link stubs do not offer; headers_test.py has it."""
        out = self.workshop.folder
        run("clang++-16", *self.workshop.flags(target), *self.workshop.cxx_flags(), *self.workshop.module_flags(cxx=True),
            "-fno-objc-arc", "-Os", "-c", "-o", out / "main.o", HERE / "main.mm")  # fmt: skip
        run("clang++-16", *self.workshop.flags(target), *self.workshop.cxx_flags(),
            "-fno-objc-arc", "-Os", "-c", "-o", out / "Including.o", HERE / "Including.mm")  # fmt: skip
        run("clang-16", *self.workshop.flags(target), *self.workshop.module_flags(cxx=False),
            "-fno-objc-arc", "-Os", "-c", "-o", out / "Importer.o", HERE / "Importer.m")  # fmt: skip
        return [out / "main.o", out / "Including.o", out / "Importer.o"]

    def link_program(self, target, objects):
        program = self.workshop.folder / "Game"
        slice_folder = framework(TARGETS[target]).parent
        run("clang++-16", f"--target={target}", "-isysroot", ROOT / "platform/ios/iPhoneOS.sdk",
            "--ld-path=/usr/bin/ld64.lld-16", "-mlinker-version=711", "-nostdlib++", "-Wl,-fatal_warnings",
            "-F", slice_folder, "-F", ROOT / "platform/ios/frameworks", "-rpath", "@executable_path/Frameworks",
            "-framework", "VornFacebook", "-framework", "VornCore", "-framework", "Foundation", "-framework", "UIKit",
            "-lobjc", "-lc++", "-o", program, *objects)  # fmt: skip
        return program

    def programs(self):
        for target in TARGETS:
            yield self.link_program(target, self.compile_program(target))

    def test_a_game_links_and_finds_everything_where_the_loader_will(self):
        for program in self.programs():
            undefined = run("llvm-nm-16", "-m", "-u", program)
            self.assertEqual(
                set(re.findall(r"(\S+) \(from VornFacebook\)", undefined)),
                TAKEN,
                "The game would not start on a device: the loader looks for a symbol in another library.",
            )

            libraries = run("llvm-objdump-16", "--macho", "--dylibs-used", program)
            self.assertIn(
                "@rpath/VornFacebook.framework/VornFacebook (",
                libraries,
                "The game would not start on a device: the loader would not look in the app's Frameworks folder.",
            )

            bound = run("llvm-objdump-16", "--macho", "--weak-bind", program)
            exported = run("llvm-objdump-16", "--macho", "--exports-trie", program)
            for symbol in SHARED:
                for where in (bound, exported):
                    self.assertIn(symbol, where, "Game and plugin would each have observers of their own on a device.")


if __name__ == "__main__":
    unittest.main()
