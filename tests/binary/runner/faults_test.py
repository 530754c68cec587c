#!/usr/bin/env python3
"""Faults of the binary that ships which the library for Linux cannot have, or does not show: each is put into the binary on
purpose, and the test programs say so when they run on it. Without the fault they pass: their tests NAME.slice.
"""

import os
import pathlib
import subprocess
import sys
import unittest

from faulty_binaries import EXPORTS, SOURCE, Workshop

PROGRAMS = pathlib.Path(os.environ["VORN_PROGRAMS"])
SYMBOLISE = SOURCE / "scripts/symbolise"
HOLDER = "__ZN6Tarvik4Vorn23VornInnerObserverHolderINS0_12InnerBaseRetEE"
GUARD = "__ZGVN6Tarvik4Vorn23VornInnerObserverHolderINS0_12InnerBaseRetEE"
CATEGORY = "VornApplicationDelegate+Facebook.mm"


def exports_without(*beginnings):
    lines = EXPORTS.read_text().splitlines(keepends=True)
    kept = [line for line in lines if not line.startswith(beginnings)]
    assert len(kept) < len(lines), beginnings
    return "".join(kept)


class Faults(unittest.TestCase):
    def setUp(self):
        self.workshop = Workshop()
        self.addCleanup(self.workshop.close)

    def linked(self, **how):
        done, binary = self.workshop.link(**how)
        self.assertEqual(done.returncode, 0, done.stderr)
        return binary

    def run_tests(self, program, binary, *arguments):
        """Exit status and everything printed by a test program that runs on a binary."""
        done = subprocess.run([PROGRAMS / program, "--gtest_brief=1", *arguments], stdout=subprocess.PIPE,
                              stderr=subprocess.STDOUT, text=True, timeout=300, check=False,
                              env=dict(os.environ, VORN_SUBJECT=str(binary)))
        return done.returncode, done.stdout

    def assert_reported(self, program, binary, *words):
        status, output = self.run_tests(program, binary)
        self.assertNotEqual(status, 0, output)
        for word in words:
            self.assertIn(word, output)

    def test_a_binary_linked_anew_without_a_fault_passes(self):
        status, output = self.run_tests("SharedStaticsTests", self.linked())

        self.assertEqual(status, 0, output)

    def test_an_export_left_out_splits_what_is_shared(self):
        binary = self.linked(exports=exports_without(HOLDER + "15mObserverHolderE", GUARD + "15mObserverHolderE"))

        self.assert_reported("SharedStaticsTests", binary, "AreTheSameForBothLibrariesAndThisProgram/BaseObservers",
                             "ObserverRegisteredInTheCoreIsCalledByThePlugin")

    def test_a_hidden_record_fails_the_link_and_without_its_exports_splits_what_is_shared(self):
        common = self.workshop.copy_of_common()
        records = common / "VornRecords.h"
        text = records.read_text()
        self.assertEqual(text.count("struct VORN_API InnerBaseRet "), 1)
        records.write_text(text.replace("struct VORN_API InnerBaseRet ",
                                        'struct __attribute__((visibility("hidden"))) InnerBaseRet '))
        objects = {source: self.workshop.compile(SOURCE / "VornFacebook" / source, source, common)
                   for source in self.workshop.sources() if source.startswith(("VornFriend", "VornLogin"))}

        refused, _ = self.workshop.link(objects=objects)
        self.assertNotEqual(refused.returncode, 0)
        self.assertIn("InnerBaseRet", refused.stderr)

        binary = self.linked(objects=objects, exports=exports_without(HOLDER, GUARD))
        self.assert_reported("SharedStaticsTests", binary, "ResultCachedByThePluginIsTakenByTheCore")

    def test_a_dropped_category_leaves_the_application_delegate_as_it_is(self):
        binary = self.linked(without=[CATEGORY])

        self.assert_reported("VornApplicationDelegateTests", binary, "FAILED")

    def test_a_load_method_that_uses_an_object_too_early_crashes_and_the_report_can_be_named(self):
        early = self.workshop.compile(SOURCE / "tests/binary/runner/wrong/EarlyLoad.mm", CATEGORY)
        debug = self.workshop.folder / "debug.dSYM"
        binary = self.linked(also=[early], dsym=debug)

        status, output = self.run_tests("ExportsTests", binary)
        self.assertNotEqual(status, 0, output)
        named = subprocess.run([sys.executable, SYMBOLISE, "--dsym", debug], input=output, capture_output=True, text=True,
                               check=False)

        self.assertEqual(named.returncode, 0, named.stderr)
        self.assertIn("+[VornEarlyLoad load]", named.stdout)


if __name__ == "__main__":
    unittest.main()
