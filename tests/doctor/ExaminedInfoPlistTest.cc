// What the doctor says about the keys of an Info.plist, but for URL schemes: each key right, missing, empty and of a
// wrong type, in XML and in binary.

#include "DoctorTest.h"
#include "PlistMaker.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

namespace Tarvik::Vorn::Test {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

class ExaminedInfoPlistTest : public DoctorTest {
protected:
    std::string Plist(const PlistMembers& members) const { return Write("Info.plist", XmlPlist(members)); }
};

TEST_F(ExaminedInfoPlistTest, AGameInOrderHasNoFindings) {
    const std::string path = Plist(GoodMembers());

    EXPECT_THAT(FoundIn(path), IsEmpty());
}

TEST_F(ExaminedInfoPlistTest, ABinaryPropertyListIsReadLikeAnXmlOne) {
    const std::string good = Write("Good.plist", BinaryPlist(GoodMembers()));
    const std::string bad = Write("Bad.plist", BinaryPlist(Without("FacebookClientToken")));

    EXPECT_THAT(FoundIn(good), IsEmpty());
    EXPECT_THAT(FoundIn(bad), ElementsAre("client-token-missing"));
}

TEST_F(ExaminedInfoPlistTest, AMissingAppIDExplainsWhyTheURLSchemeIsNotChecked) {
    const std::string path = Plist(Without("FacebookAppID"));

    EXPECT_THAT(FoundIn(path), ElementsAre("app-id-missing", "url-scheme-unchecked"));
    EXPECT_EQ(ExplanationOf(path, "url-scheme-unchecked"), "app-id-missing");
}

TEST_F(ExaminedInfoPlistTest, AMissingAppIDIsProposedAfterTheURLScheme) {
    const std::string path = Plist(Without("FacebookAppID"));

    EXPECT_EQ(PasteOf(path, "app-id-missing"), "<key>FacebookAppID</key>\n<string>123456</string>");
}

TEST_F(ExaminedInfoPlistTest, AnEmptyAppIDIsFound) {
    const std::string path = Plist(With("FacebookAppID", TextValue(" ")));

    EXPECT_THAT(FoundIn(path), ElementsAre("app-id-empty", "url-scheme-unchecked"));
}

TEST_F(ExaminedInfoPlistTest, AnAppIDThatIsANumberIsFoundAndProposedAsAText) {
    const std::string path = Plist(With("FacebookAppID", "<integer>77</integer>"));

    EXPECT_THAT(FoundIn(path), ElementsAre("app-id-wrong-type", "url-scheme-unchecked"));
    EXPECT_EQ(CauseOf(path, "app-id-wrong-type"), "FacebookAppID is a number and not a text.");
    EXPECT_EQ(PasteOf(path, "app-id-wrong-type"), "<key>FacebookAppID</key>\n<string>77</string>");
}

TEST_F(ExaminedInfoPlistTest, AnAppIDWithOtherCharactersThanDigitsIsFound) {
    const std::string path = Plist(With("FacebookAppID", TextValue("fb123456")));

    EXPECT_THAT(FoundIn(path), ElementsAre("app-id-not-digits", "url-scheme-unchecked"));
    EXPECT_THAT(CauseOf(path, "app-id-not-digits"), HasSubstr("\"fb123456\""));
}

TEST_F(ExaminedInfoPlistTest, ABuildSettingInASourceIsANoteAndItsSchemeIsCompared) {
    PlistMembers members = With("FacebookAppID", TextValue("$(FACEBOOK_APP_ID)"));
    members["CFBundleURLTypes"] = URLTypesValue({"fb$(FACEBOOK_APP_ID)"});

    const std::string path = Plist(members);

    EXPECT_THAT(FoundIn(path), ElementsAre("build-setting"));
    EXPECT_EQ(PlaceOf(path, "build-setting"), "FacebookAppID");
}

TEST_F(ExaminedInfoPlistTest, TheKeysThatAreNeededAreFoundMissing) {
    EXPECT_THAT(FoundIn(Plist(Without("FacebookClientToken"))), ElementsAre("client-token-missing"));
    EXPECT_THAT(FoundIn(Plist(Without("FacebookDisplayName"))), ElementsAre("display-name-missing"));
    EXPECT_THAT(FoundIn(Plist(Without("NSPhotoLibraryUsageDescription"))), ElementsAre("photo-text-missing"));
    EXPECT_THAT(FoundIn(Plist(Without("NSPhotoLibraryAddUsageDescription"))), ElementsAre("photo-add-text-missing"));
}

TEST_F(ExaminedInfoPlistTest, TheKeysThatAreNeededAreFoundEmpty) {
    const std::string empty = TextValue("");

    EXPECT_THAT(FoundIn(Plist(With("FacebookClientToken", empty))), ElementsAre("client-token-empty"));
    EXPECT_THAT(FoundIn(Plist(With("FacebookDisplayName", empty))), ElementsAre("display-name-empty"));
    EXPECT_THAT(FoundIn(Plist(With("NSPhotoLibraryUsageDescription", empty))), ElementsAre("photo-text-empty"));
    EXPECT_THAT(FoundIn(Plist(With("NSPhotoLibraryAddUsageDescription", empty))), ElementsAre("photo-add-text-empty"));
}

TEST_F(ExaminedInfoPlistTest, TheKeysThatAreNeededAreFoundToBeOfAnotherType) {
    const std::string other = "<array/>";

    EXPECT_THAT(FoundIn(Plist(With("FacebookClientToken", other))), ElementsAre("client-token-wrong-type"));
    EXPECT_THAT(FoundIn(Plist(With("FacebookDisplayName", other))), ElementsAre("display-name-wrong-type"));
    EXPECT_THAT(FoundIn(Plist(With("NSPhotoLibraryUsageDescription", other))), ElementsAre("photo-text-wrong-type"));
    EXPECT_THAT(FoundIn(Plist(With("NSPhotoLibraryAddUsageDescription", other))),
                ElementsAre("photo-add-text-wrong-type"));
}

TEST_F(ExaminedInfoPlistTest, AMissingTrackingTextIsANote) {
    const std::string path = Plist(Without("NSUserTrackingUsageDescription"));

    EXPECT_THAT(FoundIn(path), ElementsAre("tracking-text-missing"));
    EXPECT_THAT(FaultsIn(path), IsEmpty());
}

TEST_F(ExaminedInfoPlistTest, ASceneManifestIsANoteAboutForwarding) {
    const std::string path = Plist(With("UIApplicationSceneManifest", "<dict/>"));

    EXPECT_THAT(FoundIn(path), ElementsAre("scene-manifest"));
    EXPECT_THAT(FaultsIn(path), IsEmpty());
}

TEST_F(ExaminedInfoPlistTest, AMissingMinimumSystemIsANote) {
    EXPECT_THAT(FoundIn(Plist(Without("MinimumOSVersion"))), ElementsAre("minimum-os-missing"));
}

TEST_F(ExaminedInfoPlistTest, OnlySystemsBeforeThirteenAreTooOld) {
    EXPECT_THAT(FoundIn(Plist(With("MinimumOSVersion", TextValue("12.4")))), ElementsAre("minimum-os-too-old"));
    EXPECT_THAT(FoundIn(Plist(With("MinimumOSVersion", TextValue("13")))), IsEmpty());
    EXPECT_THAT(FoundIn(Plist(With("MinimumOSVersion", TextValue("15.1")))), IsEmpty());
}

TEST_F(ExaminedInfoPlistTest, AMinimumSystemThatIsNoVersionIsFound) {
    EXPECT_THAT(FoundIn(Plist(With("MinimumOSVersion", TextValue("latest")))), ElementsAre("minimum-os-unreadable"));
    EXPECT_THAT(FoundIn(Plist(With("MinimumOSVersion", "<integer>13</integer>"))),
                ElementsAre("minimum-os-unreadable"));
}

TEST_F(ExaminedInfoPlistTest, ErrorsComeBeforeWarningsAndWarningsBeforeNotes) {
    const std::string path = Plist({});

    EXPECT_THAT(FoundIn(path), ElementsAre("app-id-missing", "client-token-missing", "photo-text-missing",
                                           "queries-schemes-missing", "display-name-missing", "photo-add-text-missing",
                                           "minimum-os-missing", "tracking-text-missing", "url-scheme-unchecked"));
}

} // namespace
} // namespace Tarvik::Vorn::Test
