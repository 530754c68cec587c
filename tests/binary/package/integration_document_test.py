"""docs/INTEGRATION.md says what the sources say, and its property list can be copied."""
import plistlib
import re
import unittest

from package_under_test import ROOT

DOCUMENT = (ROOT / "docs/INTEGRATION.md").read_text()


def source(name):
    return (ROOT / "VornFacebook" / name).read_text()


class PropertyListTest(unittest.TestCase):
    def setUp(self):
        blocks = re.findall(r"^```xml\n(.*?)^```$", DOCUMENT, re.DOTALL | re.MULTILINE)
        self.assertEqual(len(blocks), 1, "The document has one property list to copy.")
        text = f'<?xml version="1.0" encoding="UTF-8"?><plist version="1.0"><dict>{blocks[0]}</dict></plist>'
        self.values = plistlib.loads(text.encode())

    def test_it_has_every_key_and_no_other(self):
        self.assertEqual(
            set(self.values),
            {
                "FacebookAppID",
                "FacebookClientToken",
                "FacebookDisplayName",
                "CFBundleURLTypes",
                "LSApplicationQueriesSchemes",
                "NSPhotoLibraryUsageDescription",
                "NSPhotoLibraryAddUsageDescription",
                "NSUserTrackingUsageDescription",
            },
        )

    def test_the_url_scheme_is_fb_and_the_app_id(self):
        schemes = [scheme for each in self.values["CFBundleURLTypes"] for scheme in each["CFBundleURLSchemes"]]
        self.assertEqual(schemes, ["fb" + self.values["FacebookAppID"]], "A login would raise an exception.")

    def test_the_queried_schemes_are_those_of_the_sdk_and_of_the_plugin(self):
        schemes = self.values["LSApplicationQueriesSchemes"]
        self.assertEqual(schemes, ["fbapi", "fb-messenger-share-api", "fbauth2"])
        asked = re.findall(r'canOpenURL:\[NSURL URLWithString:@"([^:"]+)', source("VornFriendFacebook.mm"))
        self.assertTrue(asked)
        self.assertLessEqual(set(asked), set(schemes), "iOS would answer NO, and the plugin refuse with code 15.")

    def test_values_are_texts_that_are_not_empty(self):
        for key, value in self.values.items():
            if not isinstance(value, list):
                self.assertIsInstance(value, str, key)
                self.assertTrue(value, key)

    def test_each_key_has_a_reason(self):
        for key in [*self.values, *self.values["LSApplicationQueriesSchemes"]]:
            self.assertRegex(DOCUMENT, rf"(?m)^\| .*`{re.escape(key)}`.* \| \S", f"{key} has no row with its reason.")


class TextTest(unittest.TestCase):
    def test_it_tells_the_configuration_keys_of_the_plugin_and_no_others(self):
        sources = "".join(each.read_text() for each in sorted((ROOT / "VornFacebook").glob("*.mm")))
        self.assertEqual(set(re.findall(r"`(FACEBOOK_\w+)`", DOCUMENT)), set(re.findall(r'"(FACEBOOK_\w+)"', sources)))

    def test_it_tells_the_kits_that_the_plugin_loads(self):
        stubs = {each.stem for each in (ROOT / "platform/ios/frameworks").glob("FBSDK*.framework")}
        self.assertTrue(stubs)
        row = next(line for line in DOCUMENT.splitlines() if line.startswith("| `FBSDKCoreKit_Basics`"))
        self.assertEqual(set(re.findall(r"`(FBSDK\w+)`", row.split("|")[1])), stubs)

    def test_its_links_lead_somewhere(self):
        for link in re.findall(r"\]\(([^)#:]+)\)", DOCUMENT):
            self.assertTrue((ROOT / "docs" / link).is_file(), link)


if __name__ == "__main__":
    unittest.main()
