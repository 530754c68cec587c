#!/usr/bin/env python3
"""`vornsim --subject`: the shipped worlds against the binary that ships, and what a bad PATH is answered with.

VORN_SLICE names the binary, in its package.
"""

import difflib
import os
import pathlib
import shutil
import tempfile
import unittest

import vornsim

BINARY = pathlib.Path(os.environ["VORN_SLICE"])
XCFRAMEWORK = BINARY.parents[2]


def transcript(*arguments):
    status, output, _ = vornsim.run(*arguments)
    return status, output.splitlines()


class ShippedWorlds(unittest.TestCase):
    def assert_same_transcripts(self, *options):
        worlds = vornsim.shipped_names()
        status, here = transcript("run", *options, *worlds)
        slice_status, shipped = transcript("--subject", XCFRAMEWORK, "run", *options, *worlds)

        self.assertEqual((status, slice_status), (0, 0))
        self.assertGreater(len(here), len(worlds))
        differences = list(difflib.unified_diff(here, shipped, "library for Linux", "binary that ships", lineterm=""))
        self.assertEqual(differences[:40], [])

    def test_they_have_the_same_transcript_by_time_to_the_byte(self):
        self.assert_same_transcripts("--order", "time")

    def test_they_have_the_same_json_to_the_byte(self):
        self.assert_same_transcripts("--format", "json")


class Subjects(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)

    def assert_refused(self, *words, arguments):
        status, output, errors = vornsim.run(*arguments)

        self.assertEqual((status, output), (2, ""))
        for word in words:
            self.assertIn(word, errors)

    def test_it_may_be_a_package_a_framework_or_the_binary_before_or_behind_the_command(self):
        _, expected, _ = vornsim.run("run", "share-completed")
        for path in (XCFRAMEWORK, BINARY.parent, BINARY):
            with self.subTest(path=path.name):
                status, output, errors = vornsim.run("run", "--subject", path, "share-completed")

                self.assertEqual((status, output), (0, expected))
                self.assertRegex(errors, r"^image \S+ lies at 0x[0-9a-f]+-0x[0-9a-f]+; scripts/symbolise names places in it\n$")

    def test_a_path_that_leads_nowhere_is_named(self):
        self.assert_refused("nowhere.xcframework: there is no such file", "name a VornFacebook.xcframework",
                            arguments=("--subject", "nowhere.xcframework", "run"))

    def test_the_framework_for_devices_is_refused_with_what_it_is_for(self):
        framework = XCFRAMEWORK / "ios-arm64/VornFacebook.framework"

        self.assert_refused(str(framework / "VornFacebook"), "the file has code for iOS on arm64",
                            arguments=("--subject", framework, "run"))

    def test_a_package_without_simulators_is_refused(self):
        package = self.folder / "VornFacebook.xcframework"
        shutil.copytree(XCFRAMEWORK / "ios-arm64", package / "ios-arm64")

        self.assert_refused(f"{package}: no framework in it has code for the iOS simulator", "make package",
                            arguments=("--subject", package, "run"))

    def test_a_damaged_binary_is_refused_with_the_place(self):
        damaged = self.folder / "VornFacebook"
        damaged.write_bytes(BINARY.read_bytes()[:20000])

        self.assert_refused(f"{damaged}: at byte ", "outside of the file", "as it was received",
                            arguments=("--subject", damaged, "run"))

    def test_a_file_that_is_no_library_is_refused(self):
        text = self.folder / "text"
        text.write_text("text")

        self.assert_refused(f"{text}: this is no Mach-O file; name a", "--plugin", arguments=("--subject", text, "run"))

    def test_one_library_is_loaded_and_only_to_be_played_with(self):
        self.assert_refused("--plugin excludes --subject",
                            arguments=("--subject", BINARY, "run", "--plugin", "x.so", "share-completed"))
        self.assert_refused("--subject excludes every command but run", arguments=("--subject", BINARY, "worlds"))


if __name__ == "__main__":
    unittest.main()
