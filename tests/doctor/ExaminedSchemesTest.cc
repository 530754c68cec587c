// What the doctor says about URL schemes: the game's own and those of Facebook's apps, in the right list, in the wrong
// one, in both, in none, and in lists that are none.

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

constexpr const char* kQueries = "LSApplicationQueriesSchemes";
constexpr const char* kTypes = "CFBundleURLTypes";

class ExaminedSchemesTest : public DoctorTest {
protected:
    std::string Plist(const PlistMembers& members) const { return Write("Info.plist", XmlPlist(members)); }
    std::string PlistWithQueries(const std::vector<std::string>& schemes) const {
        return Plist(With(kQueries, ArrayValue(schemes)));
    }
    std::string PlistWithSchemes(const std::vector<std::string>& schemes) const {
        return Plist(With(kTypes, URLTypesValue(schemes)));
    }
};

// ---- Schemes of Facebook's apps

TEST_F(ExaminedSchemesTest, EachQueriedSchemeIsFoundMissing) {
    EXPECT_THAT(FoundIn(PlistWithQueries({"fb-messenger-share-api", "fbauth2"})),
                ElementsAre("queries-scheme-fbapi-missing"));
    EXPECT_THAT(FoundIn(PlistWithQueries({"fbapi", "fbauth2"})), ElementsAre("queries-scheme-messenger-missing"));
    EXPECT_THAT(FoundIn(PlistWithQueries({"fbapi", "fb-messenger-share-api"})),
                ElementsAre("queries-scheme-fbauth2-missing"));
}

TEST_F(ExaminedSchemesTest, ATextInPlaceOfTheListIsOneFindingAndNotFour) {
    const std::string path = Plist(With(kQueries, TextValue("fbapi")));

    EXPECT_THAT(FoundIn(path), ElementsAre("queries-schemes-wrong-type"));
    EXPECT_EQ(CauseOf(path, "queries-schemes-wrong-type"), "LSApplicationQueriesSchemes is a text and not an array.");
}

TEST_F(ExaminedSchemesTest, AMissingListIsOneFindingWithTheListToPaste) {
    const std::string path = Plist(Without(kQueries));

    EXPECT_THAT(FoundIn(path), ElementsAre("queries-schemes-missing"));
    EXPECT_EQ(PasteOf(path, "queries-schemes-missing"),
              "<key>LSApplicationQueriesSchemes</key>\n<array>\n  <string>fbapi</string>\n"
              "  <string>fb-messenger-share-api</string>\n  <string>fbauth2</string>\n</array>");
}

TEST_F(ExaminedSchemesTest, AnEmptyListIsOneFinding) {
    EXPECT_THAT(FoundIn(PlistWithQueries({})), ElementsAre("queries-schemes-missing"));
}

TEST_F(ExaminedSchemesTest, AnEntryThatIsNoTextExplainsTheSchemeThatIsMissing) {
    const std::string path = Plist(With(
        kQueries, "<array><string>fbapi</string><string>fb-messenger-share-api</string><integer>2</integer></array>"));

    EXPECT_THAT(FoundIn(path), ElementsAre("queries-scheme-not-text", "queries-scheme-fbauth2-missing"));
    EXPECT_EQ(PlaceOf(path, "queries-scheme-not-text"), "LSApplicationQueriesSchemes[2]");
    EXPECT_EQ(ExplanationOf(path, "queries-scheme-fbauth2-missing"), "queries-scheme-not-text");
}

TEST_F(ExaminedSchemesTest, AQueriedSchemeWithSlashesIsMisspelt) {
    const std::string path = PlistWithQueries({"fbapi://", "fb-messenger-share-api", "fbauth2"});

    EXPECT_THAT(FoundIn(path), ElementsAre("scheme-misspelt"));
    EXPECT_EQ(CauseOf(path, "scheme-misspelt"), "\"fbapi://\" should be \"fbapi\", without anything around it.");
}

TEST_F(ExaminedSchemesTest, AQueriedSchemeAmongTheGamesOwnExplainsThatItIsMissing) {
    PlistMembers members = With(kQueries, ArrayValue({"fb-messenger-share-api", "fbauth2"}));
    members[kTypes] = URLTypesValue({"fb123456", "fbapi"});

    const std::string path = Plist(members);

    EXPECT_THAT(FoundIn(path), ElementsAre("queried-scheme-in-url-types", "queries-scheme-fbapi-missing"));
    EXPECT_EQ(PlaceOf(path, "queried-scheme-in-url-types"), "CFBundleURLTypes[0].CFBundleURLSchemes[1]");
    EXPECT_EQ(ExplanationOf(path, "queries-scheme-fbapi-missing"), "queried-scheme-in-url-types");
}

TEST_F(ExaminedSchemesTest, BothSchemesForWhichTheSDKRaisesAreFoundAmongTheGamesOwn) {
    const std::string path = PlistWithSchemes({"fb123456", "fbapi", "fb-messenger-share-api"});

    EXPECT_THAT(FoundIn(path), ElementsAre("queried-scheme-in-url-types", "queried-scheme-in-url-types"));
}

TEST_F(ExaminedSchemesTest, TheThirdSchemeAmongTheGamesOwnIsAWarning) {
    EXPECT_THAT(FoundIn(PlistWithSchemes({"fb123456", "fbauth2"})), ElementsAre("facebook-scheme-claimed"));
}

// ---- The game's own scheme

TEST_F(ExaminedSchemesTest, AMissingSchemeIsProposedWithTheGamesAppID) {
    const std::string path = PlistWithSchemes({"mygame"});

    EXPECT_THAT(FoundIn(path), ElementsAre("url-scheme-missing"));
    EXPECT_THAT(PasteOf(path, "url-scheme-missing"), HasSubstr("<string>fb123456</string>"));
}

TEST_F(ExaminedSchemesTest, AMissingListOfURLTypesIsAMissingScheme) {
    const std::string path = Plist(Without(kTypes));

    EXPECT_THAT(FoundIn(path), ElementsAre("url-scheme-missing"));
    EXPECT_THAT(CauseOf(path, "url-scheme-missing"), HasSubstr("CFBundleURLTypes is missing"));
}

TEST_F(ExaminedSchemesTest, TheSchemeMayStandInAnyEntry) {
    const std::string types = "<array><dict><key>CFBundleURLName</key><string>x</string></dict>"
                              "<dict><key>CFBundleURLSchemes</key><array><string>fb123456</string></array></dict>"
                              "</array>";

    EXPECT_THAT(FoundIn(Plist(With(kTypes, types))), IsEmpty());
}

TEST_F(ExaminedSchemesTest, TheSchemeOfAnotherAppIsNamed) {
    const std::string path = PlistWithSchemes({"fb999"});

    EXPECT_THAT(FoundIn(path), ElementsAre("url-scheme-of-another-app"));
    EXPECT_THAT(CauseOf(path, "url-scheme-of-another-app"), HasSubstr("fb999"));
}

TEST_F(ExaminedSchemesTest, ASchemeWithSlashesIsMisspelt) {
    EXPECT_THAT(FoundIn(PlistWithSchemes({"fb123456://"})), ElementsAre("scheme-misspelt"));
}

TEST_F(ExaminedSchemesTest, ASchemeInTheWrongListIsOneFinding) {
    PlistMembers members = Without(kTypes);
    members[kQueries] = ArrayValue({"fbapi", "fb-messenger-share-api", "fbauth2", "fb123456"});

    const std::string path = Plist(members);

    EXPECT_THAT(FoundIn(path), ElementsAre("url-scheme-in-queries"));
    EXPECT_EQ(PlaceOf(path, "url-scheme-in-queries"), "LSApplicationQueriesSchemes[3]");
}

TEST_F(ExaminedSchemesTest, ASchemeInBothListsIsUselessInOne) {
    const std::string path = PlistWithQueries({"fbapi", "fb-messenger-share-api", "fbauth2", "fb123456"});

    EXPECT_THAT(FoundIn(path), ElementsAre("url-scheme-queried"));
}

TEST_F(ExaminedSchemesTest, TheSuffixBelongsToTheScheme) {
    PlistMembers members = With("FacebookUrlSchemeSuffix", TextValue("beta"));
    members[kTypes] = URLTypesValue({"fb123456beta"});

    EXPECT_THAT(FoundIn(Plist(members)), IsEmpty());
}

TEST_F(ExaminedSchemesTest, ASchemeWithoutItsSuffixIsFound) {
    const std::string path = Plist(With("FacebookUrlSchemeSuffix", TextValue("beta")));

    EXPECT_THAT(FoundIn(path), ElementsAre("url-scheme-without-suffix"));
    EXPECT_THAT(PasteOf(path, "url-scheme-without-suffix"), HasSubstr("fb123456beta"));
}

TEST_F(ExaminedSchemesTest, ASuffixOfAnotherTypeIsAWarningAndCountsAsNone) {
    EXPECT_THAT(FoundIn(Plist(With("FacebookUrlSchemeSuffix", "<true/>"))),
                ElementsAre("url-scheme-suffix-wrong-type"));
}

TEST_F(ExaminedSchemesTest, URLTypesThatAreNoArrayAreOneFinding) {
    const std::string path = Plist(With(kTypes, TextValue("fb123456")));

    EXPECT_THAT(FoundIn(path), ElementsAre("url-types-wrong-type"));
    EXPECT_THAT(PasteOf(path, "url-types-wrong-type"), HasSubstr("<string>fb123456</string>"));
}

TEST_F(ExaminedSchemesTest, SchemesThatAreNoArrayExplainTheSchemeThatIsMissing) {
    const std::string path =
        Plist(With(kTypes, "<array><dict><key>CFBundleURLSchemes</key><string>fb123456</string></dict></array>"));

    EXPECT_THAT(FoundIn(path), ElementsAre("url-type-wrong-type", "url-scheme-missing"));
    EXPECT_EQ(ExplanationOf(path, "url-scheme-missing"), "url-type-wrong-type");
    EXPECT_EQ(PasteOf(path, "url-type-wrong-type"),
              "<key>CFBundleURLSchemes</key>\n<array>\n  <string>fb123456</string>\n</array>");
}

TEST_F(ExaminedSchemesTest, EntriesAndSchemesOfOtherTypesAreFoundByTheirPlace) {
    const std::string entry = Plist(With(kTypes, "<array><string>fb123456</string></array>"));
    EXPECT_EQ(PlaceOf(entry, "url-type-wrong-type"), "CFBundleURLTypes[0]");

    const std::string scheme =
        Plist(With(kTypes, "<array><dict><key>CFBundleURLSchemes</key><array><true/></array></dict></array>"));
    EXPECT_EQ(PlaceOf(scheme, "url-type-wrong-type"), "CFBundleURLTypes[0].CFBundleURLSchemes[0]");
}

} // namespace
} // namespace Tarvik::Vorn::Test
