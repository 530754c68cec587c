#!/usr/bin/env python3
"""scripts/symbolise as a program, on reports that are written here. VORN_SLICE names the binary, in its package."""

import os
import pathlib
import subprocess
import tempfile
import unittest

SOURCE = pathlib.Path(__file__).resolve().parents[3]
BINARY = pathlib.Path(os.environ["VORN_SLICE"])
DSYM = BINARY.parents[1] / "dSYMs/VornFacebook.framework.dSYM"
METHOD = "+[VornApplicationDelegate(Facebook) load]"
BEGIN = 0x7F0000000000
WHERE = f"image {BINARY} lies at {BEGIN:#x}-{BEGIN + 0x100000:#x}; scripts/symbolise names places in it\n"


def place_of(symbol):
    """The place of a function in the image, by its debug information."""
    listing = subprocess.run(["llvm-nm-16", "--arch=x86_64", DSYM / "Contents/Resources/DWARF/VornFacebook"],
                             capture_output=True, text=True, check=True).stdout
    (line,) = [line for line in listing.splitlines() if line.endswith(" " + symbol)]
    return int(line.split()[0], 16)


class Symbolise(unittest.TestCase):
    def symbolise(self, report, *arguments):
        return subprocess.run([SOURCE / "scripts/symbolise", *arguments], input=report, capture_output=True, text=True,
                              check=False)

    def assert_refused(self, done, *words):
        self.assertEqual(done.returncode, 1)
        self.assertEqual(len(done.stderr.splitlines()), 1, done.stderr)
        for word in ("scripts/symbolise: ", *words):
            self.assertIn(word, done.stderr)

    def test_a_place_in_the_image_gets_function_file_and_line(self):
        frame = f"    #3 {BEGIN + place_of(METHOD) + 9:#x}  (<unknown module>)\n"

        done = self.symbolise(WHERE + frame)

        self.assertEqual(done.returncode, 0, done.stderr)
        self.assertRegex(done.stdout.replace(WHERE + frame, ""),
                         r"^    0x7f\w+ is \+\[VornApplicationDelegate\(Facebook\) load\] "
                         r"\S*VornFacebook/VornApplicationDelegate\+Facebook\.mm:\d+\n$")

    def test_everything_else_stays_as_it_is(self):
        report = f"before {BEGIN:#x}\n{WHERE}nothing\n#1 0x55550000 in main\n"

        self.assertEqual(self.symbolise(report).stdout, report)

    def test_the_report_may_be_a_file_and_the_debug_information_elsewhere(self):
        with tempfile.NamedTemporaryFile("w", suffix=".txt") as file:
            file.write(WHERE.replace(str(BINARY), "/nowhere else/VornFacebook") + f"{BEGIN + place_of(METHOD) + 9:#x}\n")
            file.flush()

            done = self.symbolise("", "--dsym", DSYM, file.name)

        self.assertIn(METHOD, done.stdout)

    def test_a_report_without_an_image_is_refused(self):
        self.assert_refused(self.symbolise("#1 0x7f0000000000\n"), "no line says where an image lies", "Give the whole output")

    def test_missing_debug_information_is_named(self):
        self.assert_refused(self.symbolise(WHERE.replace(str(BINARY), "/nowhere/A.framework/A")),
                            "/nowhere/dSYMs/A.framework.dSYM", "Name the dSYM of /nowhere/A.framework/A with --dsym")

    def test_a_missing_report_is_named(self):
        self.assert_refused(self.symbolise("", "/nowhere.txt"), "/nowhere.txt")


if __name__ == "__main__":
    unittest.main()
