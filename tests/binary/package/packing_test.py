"""scripts/package as a program, in a copy of what it reads: the same bytes everywhere, and nothing half written."""
import hashlib
import os
import shutil
import subprocess
import tempfile
import unittest
from pathlib import Path

from package_under_test import DIST, NAME, ROOT, files

READ = ("scripts/package", "platform/ios/package", "ShareDir/Common", "VornFacebook", "build/ios")


def contents(folder):
    """Digests, because a difference between megabytes takes minutes to print."""
    return {
        each.relative_to(folder): (hashlib.sha256(each.read_bytes()).hexdigest(), each.stat().st_mode)
        for each in files(folder)
    }


class PackingTest(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory(prefix="another checkout ")
        self.addCleanup(folder.cleanup)
        self.root = Path(folder.name)
        for name in READ:
            source, target = ROOT / name, self.root / name
            target.parent.mkdir(parents=True, exist_ok=True)
            (shutil.copytree if source.is_dir() else shutil.copy)(source, target)
        self.dist = self.root / "dist"

    def package(self, *arguments, umask=-1):
        command = [self.root / "scripts/package", *arguments]
        return subprocess.run(command, capture_output=True, text=True, umask=umask, cwd="/")

    def assert_refused(self, done, *words):
        self.assertNotEqual(done.returncode, 0)
        self.assertEqual(len(done.stderr.splitlines()), 1, done.stderr)
        for word in ("scripts/package: ", *words):
            self.assertIn(word, done.stderr)
        self.assertEqual(os.listdir(self.root / "build"), ["ios"], "It leaves its folder behind.")

    def test_it_makes_the_same_bytes_in_another_folder(self):
        done = self.package(umask=0o077)
        self.assertEqual(done.returncode, 0, done.stderr)
        self.assertEqual(contents(self.dist), contents(DIST))
        self.assertEqual(os.listdir(self.root / "build"), ["ios"], "It leaves its folder behind.")

    def test_it_replaces_what_was_there(self):
        (self.dist / "VornFacebook.xcframework").mkdir(parents=True)
        (self.dist / "VornFacebook.xcframework/stale").touch()
        self.assertEqual(self.package().returncode, 0)
        self.assertEqual(contents(self.dist), contents(DIST))

    def test_without_binaries_it_says_how_to_build_them(self):
        shutil.rmtree(self.root / "build/ios")
        done = self.package()
        self.assertNotEqual(done.returncode, 0)
        self.assertIn("build/ios is missing. Run 'make ios'", done.stderr)
        self.assertFalse(self.dist.exists())

    def test_a_missing_file_leaves_dist_as_it_was(self):
        for name, remedy in (
            (f"build/ios/ios-arm64_x86_64-simulator/{NAME}.framework/{NAME}", "Run 'make ios'"),
            (f"build/ios/ios-arm64/dSYMs/{NAME}.framework.dSYM", "Run 'make ios'"),
            ("platform/ios/package/module.modulemap", "Restore it"),
            ("platform/ios/package/PrivacyInfo.xcprivacy", "Restore it"),
            ("ShareDir/Common/VornText.h", "HEADERS in scripts/package"),
        ):
            with self.subTest(name):
                self.dist.mkdir(exist_ok=True)
                (self.dist / "kept").touch()
                (self.root / name).rename(self.root / "aside")
                self.assert_refused(self.package(), f"{name} is missing. ", remedy)
                self.assertEqual(os.listdir(self.dist), ["kept"])
                (self.root / "aside").rename(self.root / name)

    def test_a_broken_property_list_is_named(self):
        (self.root / "platform/ios/package/Info.plist").write_text("<plist><dict>")
        self.assert_refused(self.package(), "platform/ios/package/Info.plist is no property list", "Mend it")
        self.assertFalse(self.dist.exists())

    def test_a_broken_binary_is_named(self):
        binary = self.root / f"build/ios/ios-arm64/{NAME}.framework/{NAME}"
        binary.write_bytes(b"no binary")
        self.assert_refused(self.package(), str(binary), "Run 'make ios'")
        self.assertFalse(self.dist.exists())

    def test_it_takes_no_arguments(self):
        self.assert_refused(self.package("--help"), "unknown argument '--help'")


if __name__ == "__main__":
    unittest.main()
