"""Property lists, app folders and binaries that are made to exhaust the doctor, or to make it read what is not theirs: a
message, within bounds."""

import io
import os
import plistlib
import struct
import unittest
import zipfile

from program import SecurityTest, run

SECRET = "the-content-of-another-file"


def xml(inside, doctype=""):
    return f'<?xml version="1.0"?>\n{doctype}<plist version="1.0"><dict><key>a</key>{inside}</dict></plist>'


def laughing():
    """Ten entities, each of which is ten of the one before."""
    entities = '<!ENTITY e0 "ha">' + "".join(
        f'<!ENTITY e{i} "{f"&e{i - 1};" * 10}">' for i in range(1, 10))
    return xml("<string>&e9;</string>", f"<!DOCTYPE plist [{entities}]>\n")


def binary_plist(objects, count=None, top=0, table=None):
    """A binary property list of objects given as bytes; what its trailer says may be wrong."""
    body, offsets = b"bplist00", []
    for item in objects:
        offsets.append(len(body))
        body += item
    end = len(body)
    body += b"".join(struct.pack(">H", offset) for offset in offsets)
    return body + struct.pack(">6xBBQQQ", 2, 1, len(objects) if count is None else count, top,
                              end if table is None else table)


class BundlesTest(SecurityTest):
    def assert_refused(self, path, words=""):
        status, output, errors = run("doctor", path)
        self.assertEqual((status, output), (2, b""), path)
        self.assertRegex(errors.decode(), r"^vornsim: .*; .*\n$")
        self.assertIn(words, errors.decode())

    def test_entities_are_not_expanded(self):
        self.assert_refused(self.write("Info.plist", laughing()), "a part of its own in [ ]")

    def test_another_file_is_not_read_for_an_entity(self):
        secret = self.write("secret", SECRET)
        for declaration in [f'<!DOCTYPE plist [<!ENTITY x SYSTEM "file://{secret}">]>',
                            f'<!DOCTYPE plist [<!ENTITY % x SYSTEM "{secret}"> %x;]>',
                            f'<!DOCTYPE plist SYSTEM "file://{secret}">']:
            path = self.write("Info.plist", xml("<string>&x;</string>", declaration))
            status, output, errors = run("doctor", path)
            self.assertEqual(status, 2, declaration)
            self.assertNotIn(SECRET.encode(), output + errors)

    def test_a_property_list_in_which_everything_is_nested_is_refused(self):
        self.assert_refused(self.write("Info.plist", xml("<array>" * 500_000)), "more than 64 values are nested")
        self.assert_refused(self.write("Info.plist", xml("<dict><key>a</key>" * 300_000)), "nested")

    def test_a_binary_property_list_with_absurd_counts_is_refused(self):
        for absurd in [binary_plist([b"\xd0"], count=1 << 62), binary_plist([b"\xd0"], count=2_000_000_000),
                       binary_plist([b"\xd0"], top=1 << 62), binary_plist([b"\xd0"], table=1 << 62),
                       binary_plist([b"\xdf\x13" + b"\x7f" + b"\xff" * 7]),
                       binary_plist([b"\xd1\x01\x02", b"\x51k", b"\xaf\x12\x77\x35\x94\x00"]),
                       binary_plist([b"\xd1\x01\x02", b"\x51k", b"\x4f\x13" + b"\x00\x00\x7f" + b"\xff" * 5]),
                       binary_plist([b"\xd1\x01\x00", b"\x51k"])]:
            self.assert_refused(self.write("Info.plist", absurd))

    def test_a_zip_by_mistake_is_called_one(self):
        content = io.BytesIO()
        with zipfile.ZipFile(content, "w", zipfile.ZIP_DEFLATED) as archive:
            archive.writestr("VornFacebook.xcframework/Info.plist", "x" * 10_000_000)
        for name in ["VornFacebook.xcframework.zip", "Game.app", "Info.plist", "VornFacebook.framework"]:
            self.assert_refused(self.write(name, content.getvalue()))

    def app(self, name="Game.app", **more):
        info = {"CFBundlePackageType": "APPL", "CFBundleExecutable": "Game"} | more
        self.write(f"{name}/Info.plist", plistlib.dumps(info))
        return self.folder / name

    def test_links_that_lead_in_circles_end(self):
        app = self.app()
        os.symlink("Game", app / "Game")
        os.symlink(".", app / "Frameworks")
        os.symlink("PrivacyInfo.xcprivacy", app / "PrivacyInfo.xcprivacy")
        status, output, _ = run("doctor", app)
        self.assertEqual(status, 1)
        self.assertNotEqual(output, b"")

        os.symlink(app, self.folder / "Circle.app")
        os.symlink("Infinite.app", self.folder / "Infinite.app")
        self.assertEqual(run("doctor", self.folder / "Circle.app")[0], 1)
        self.assert_refused(self.folder / "Infinite.app")

    def test_a_folder_that_holds_itself_many_times_ends(self):
        app = self.app()
        frameworks = app / "Frameworks"
        frameworks.mkdir()
        for number in range(200):
            os.symlink(frameworks, frameworks / f"Kit{number}.framework")
        self.assertEqual(run("doctor", app)[0], 1)

    def test_pipes_and_devices_inside_of_an_app_are_not_waited_for(self):
        app = self.app()
        os.mkfifo(app / "Game")
        os.mkfifo(app / "PrivacyInfo.xcprivacy")
        (app / "Frameworks/VornFacebook.framework").mkdir(parents=True)
        os.mkfifo(app / "Frameworks/VornFacebook.framework/VornFacebook")
        os.symlink("/dev/zero", app / "Frameworks/VornFacebook.framework/Info.plist")
        self.assertEqual(run("doctor", app)[0], 1)

        other = self.folder / "Other.app"
        other.mkdir()
        os.mkfifo(other / "Info.plist")
        self.assertIn(run("doctor", other)[0], (1, 2))

    def test_a_binary_that_claims_everything_is_refused(self):
        absurd = 0xFFFFFFFF
        for header in [struct.pack("<8I", 0xFEEDFACF, 0x0100000C, 0, 6, absurd, absurd, 0, 0),
                       struct.pack("<8I", 0xFEEDFACF, 0x0100000C, 0, 6, 1, 16, 0, 0) + struct.pack("<4I", 0x19, 0, 0, 0),
                       struct.pack(">2I", 0xCAFEBABE, absurd),
                       struct.pack(">7I", 0xCAFEBABE, 1, 0x0100000C, 0, absurd, absurd, 14),
                       struct.pack(">2I", 0xCAFEBABF, absurd)]:
            self.assert_refused(self.write("VornFacebook", header))


if __name__ == "__main__":
    unittest.main()
