// Property lists that are damaged, cut off, or made to exhaust whoever reads them: an error with its place, never a
// crash.

#include "DoctorTest.h"
#include "PlistFile.h"
#include "PlistMaker.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace Tarvik::Vorn::Test {
namespace {

using namespace Simulator::Doctor;
using ::testing::HasSubstr;
using ::testing::StartsWith;

// "(none)" for bytes that are a property list.
std::string DamageOf(std::string_view bytes) {
    const std::variant<Plist, LocatedError> plist = ParsePlist("f.plist", bytes);
    const auto* error = std::get_if<LocatedError>(&plist);
    return error == nullptr ? "(none)" : error->text();
}

std::string Xml(const std::string& inside) {
    return "<plist version=\"1.0\">\n" + inside + "\n</plist>\n";
}

// ---- XML

TEST(DamagedXml, ATagThatIsClosedByAnotherIsFoundInItsLine) {
    EXPECT_EQ(DamageOf(Xml("<dict>\n  <key>a</string>\n</dict>")),
              "f.plist:3:9: </string> closes what is not open; </key> is expected here");
}

TEST(DamagedXml, ColumnsAreCharacters) {
    EXPECT_THAT(DamageOf(Xml("<dict><key>\xC3\xA4</string></dict>")), StartsWith("f.plist:2:13: "));
}

TEST(DamagedXml, ATagThatIsNotClosedIsFoundWhereItBegins) {
    EXPECT_THAT(DamageOf("<plist>\n<dict>\n"), StartsWith("f.plist:2:1: <dict> is not closed"));
}

TEST(DamagedXml, AKeyWithoutAValueIsFound) {
    EXPECT_THAT(DamageOf(Xml("<dict><key>a</key></dict>")), HasSubstr("the last <key> of the dictionary has no value"));
    EXPECT_THAT(DamageOf(Xml("<dict><key>a</key><key>b</key></dict>")), HasSubstr("a <key> stands where a value"));
    EXPECT_THAT(DamageOf(Xml("<dict><string>a</string></dict>")), HasSubstr("<string> stands where a <key> belongs"));
}

TEST(DamagedXml, AnAmpersandByItselfIsFound) {
    EXPECT_EQ(DamageOf(Xml("<dict><key>a</key><string>Me & You</string></dict>")),
              "f.plist:2:30: & begins nothing that XML knows; write &amp; for the character itself");
}

TEST(DamagedXml, OtherThingsThatNoPropertyListHasAreFound) {
    EXPECT_THAT(DamageOf(Xml("<dict><key>a</key><text>b</text></dict>")), HasSubstr("<text> is no tag"));
    EXPECT_THAT(DamageOf(Xml("<dict>text</dict>")), HasSubstr("text stands outside of a value"));
    EXPECT_THAT(DamageOf(Xml("<dict><![CDATA[text]]></dict>")), HasSubstr("text stands outside of a value"));
    EXPECT_THAT(DamageOf(Xml("<dict><key>a<string>b</string></key></dict>")), HasSubstr("stands inside of <key>"));
    EXPECT_THAT(DamageOf(Xml("<dict/><dict/>")), HasSubstr("there is a second value"));
    EXPECT_THAT(DamageOf(Xml("")), HasSubstr("the property list is empty"));
    EXPECT_THAT(DamageOf("<dict/>"), HasSubstr("<dict> stands where it cannot"));
    EXPECT_THAT(DamageOf("<?xml version=\"1.0\"?>\n"), HasSubstr("there is no <plist>"));
    EXPECT_THAT(DamageOf("<plist><!-- "), HasSubstr("the comment does not end"));
    EXPECT_THAT(DamageOf("<plist><di"), HasSubstr("the tag does not end"));
    EXPECT_THAT(DamageOf("<!DOCTYPE plist [<!ENTITY a \"b\">]>" + Xml("<dict/>")),
                HasSubstr("a part of its own in [ ]"));
}

TEST(DamagedXml, AnEscapedNulIsFound) {
    EXPECT_THAT(DamageOf(Xml("<dict><key>k&#0;k</key><true/></dict>")), HasSubstr("cannot be read"));
    EXPECT_THAT(DamageOf(Xml("<dict><key>k</key><string>v&#0;v</string></dict>")), HasSubstr("cannot be read"));
}

TEST(DamagedXml, CommentsSectionsEntitiesAndAByteOrderMarkAreNoDamage) {
    const std::string text =
        "\xEF\xBB\xBF" + Xml("<!-- <x> --><dict><key>a&amp;</key><string><![CDATA[<b>]]></string></dict>");

    const std::variant<Plist, LocatedError> plist = ParsePlist("f.plist", text);

    ASSERT_TRUE(std::holds_alternative<Plist>(plist)) << DamageOf(text);
    const PlistValue* value = std::get<Plist>(plist).root.Member("a&");
    ASSERT_NE(value, nullptr);
    EXPECT_EQ(value->text, "<b>");
}

TEST(DamagedXml, AnotherValueThanADictionaryAtTheTopIsAnError) {
    EXPECT_THAT(DamageOf(Xml("<array/>")), HasSubstr("the property list holds an array at its top"));
}

TEST(DamagedXml, NestingHasALimit) {
    const auto nested = [](size_t depth) {
        std::string open;
        std::string close;
        for (size_t index = 0; index < depth; ++index) {
            open += "<array>";
            close += "</array>";
        }
        return Xml("<dict><key>a</key>" + open + close + "</dict>");
    };

    EXPECT_EQ(DamageOf(nested(63)), "(none)");
    EXPECT_THAT(DamageOf(nested(64)), HasSubstr("more than 64 values are nested in one another"));
    EXPECT_THAT(DamageOf(nested(200'000)), HasSubstr("more than 64 values are nested in one another"));
}

TEST(DamagedXml, EveryBeginningOfAPropertyListIsAnErrorOrAPropertyList) {
    const std::string whole = XmlPlist(GoodMembers());
    const size_t shortest = whole.find("</plist>") + std::string_view("</plist>").size();

    for (size_t size = 0; size < whole.size(); ++size) {
        EXPECT_EQ(DamageOf(whole.substr(0, size)) == "(none)", size >= shortest) << size;
    }
}

// ---- Binary

// A binary property list of objects whose bytes are given; one byte for each offset and reference.
std::string Binary(const std::vector<std::string>& objects) {
    std::string bytes = "bplist00";
    std::string table;
    for (const std::string& object : objects) {
        table += static_cast<char>(bytes.size());
        bytes += object;
    }
    const auto tableOffset = static_cast<char>(bytes.size());
    bytes += table + std::string(6, '\0') + "\x01\x01";
    bytes += std::string(7, '\0') + static_cast<char>(objects.size());
    bytes += std::string(8, '\0');
    bytes += std::string(7, '\0') + tableOffset;
    return bytes;
}

const std::string kEmptyDictionary = "\xD0";

TEST(DamagedBinary, ASmallPropertyListIsRead) {
    EXPECT_EQ(DamageOf(Binary({"\xD1\x01\x02", "\x51k", "\x09"})), "(none)");
}

TEST(DamagedBinary, AReferenceBehindTheObjectsIsFoundAtItsOffset) {
    EXPECT_EQ(DamageOf(Binary({"\xD1\x01\x07", "\x51k"})), "f.plist: at byte offset 0xa: object 7 of 2 is referred to; "
                                                           "the file is damaged or cut off; build or copy it anew");
}

TEST(DamagedBinary, AnObjectThatContainsItselfIsFound) {
    EXPECT_THAT(DamageOf(Binary({std::string("\xD1\x01\x00", 3), "\x51k"})), HasSubstr("the object contains itself"));
}

TEST(DamagedBinary, AKeyThatIsNoTextIsFound) {
    EXPECT_THAT(DamageOf(Binary({"\xD1\x01\x01", "\x09"})), HasSubstr("the key of a dictionary is no text"));
}

// The library that reads property lists ends the process over one.
TEST(DamagedBinary, AKeyWithANulInItIsFoundAtItsOffset) {
    EXPECT_THAT(DamageOf(Binary({"\xD1\x01\x02", std::string("\x53k\0k", 4), "\x09"})),
                HasSubstr("0xb: the key of a dictionary has a NUL in it"));
    EXPECT_THAT(DamageOf(Binary({"\xD1\x01\x02", std::string("\x62\0k\0\0", 5), "\x09"})),
                HasSubstr("0xb: the key of a dictionary has a NUL in it"));
}

TEST(DamagedBinary, AKeyOfTwoByteCharactersIsRead) {
    EXPECT_EQ(DamageOf(Binary({"\xD1\x01\x02", std::string("\x62\x01\x00\x00k", 5), "\x09"})), "(none)");
}

TEST(DamagedBinary, AValueWithANulInItIsRead) {
    EXPECT_EQ(DamageOf(Binary({"\xD1\x01\x02", "\x51k", std::string("\x53v\0v", 4)})), "(none)");
}

TEST(DamagedBinary, AnObjectThatIsLargerThanTheFileIsFound) {
    EXPECT_THAT(DamageOf(Binary({std::string("\x5F\x12\x7F\xFF\xFF\xFF", 6)})),
                HasSubstr("claims to have 2147483647 parts"));
    EXPECT_THAT(DamageOf(Binary({std::string("\xDF\x13\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF", 10)})),
                HasSubstr("claims to have"));
    EXPECT_THAT(DamageOf(Binary({"\x4E"})), HasSubstr("0x9: 14 bytes are expected"));
}

TEST(DamagedBinary, AnUnknownTypeIsFound) {
    EXPECT_THAT(DamageOf(Binary({"\xD1\x01\x02", "\x51k", "\xF0"})), HasSubstr("unknown type 0xf"));
}

TEST(DamagedBinary, ATrailerWithAbsurdNumbersIsFound) {
    const std::string good = Binary({kEmptyDictionary});
    const size_t trailer = good.size() - 32;
    const auto with = [&good](size_t at, char value) {
        std::string bytes = good;
        bytes[at] = value;
        return DamageOf(bytes);
    };

    EXPECT_EQ(DamageOf(good), "(none)");
    EXPECT_THAT(with(trailer + 6, 9), HasSubstr("the file's last 32 bytes"));
    EXPECT_THAT(with(trailer + 7, 0), HasSubstr("the file's last 32 bytes"));
    EXPECT_THAT(with(trailer + 8, 1), HasSubstr("claims to hold"));
    EXPECT_THAT(with(trailer + 16, 1), HasSubstr("is referred to"));
    EXPECT_THAT(with(trailer + 24, 1), HasSubstr("the table of objects is outside of the file"));
    EXPECT_THAT(with(trailer + 31, 4), HasSubstr("the table of objects is outside of the file"));
}

TEST(DamagedBinary, ReferencesThatWouldGrowWithoutLimitAreFound) {
    // Each array holds the next one fifteen times through a count of its own, eleven deep.
    std::vector<std::string> objects{"\xD1\x01\x02", "\x51k"};
    for (char next = 3; next < 14; ++next) {
        objects.push_back("\xAE" + std::string(14, next));
    }
    objects.emplace_back("\x09");

    EXPECT_THAT(DamageOf(Binary(objects)), HasSubstr("would grow beyond 64 MB"));
}

TEST(DamagedBinary, NestingHasALimit) {
    const auto nested = [](char depth) {
        std::vector<std::string> objects{"\xD1\x01\x02", "\x51k"};
        for (char index = 1; index < depth; ++index) {
            objects.push_back(std::string("\xA1") + static_cast<char>(index + 2));
        }
        objects.emplace_back("\xA0");
        return Binary(objects);
    };

    EXPECT_EQ(DamageOf(nested(63)), "(none)");
    EXPECT_THAT(DamageOf(nested(65)), HasSubstr("more than 64 values are nested in one another"));
}

TEST(DamagedBinary, EveryBeginningOfAPropertyListIsAnError) {
    const std::string whole = BinaryPlist(GoodMembers());

    ASSERT_EQ(DamageOf(whole), "(none)");
    for (size_t size = 0; size < whole.size(); ++size) {
        EXPECT_NE(DamageOf(whole.substr(0, size)), "(none)") << size;
    }
}

TEST(DamagedBinary, EveryChangedByteGivesAnErrorOrAPropertyList) {
    const std::string whole =
        BinaryPlist({{"a", TextValue("b")}, {"c", ArrayValue({"d"})}, {"e", "<true/>"}, {"f", "<integer>1</integer>"}});

    for (size_t at = 0; at < whole.size(); ++at) {
        for (const char value : {'\x00', '\x7F', '\xFF'}) {
            std::string changed = whole;
            changed[at] = value;
            EXPECT_FALSE(DamageOf(changed).empty());
        }
    }
}

// ---- Files

class DamagedPlistFile : public DoctorTest {};

TEST_F(DamagedPlistFile, AFileOfMoreThanSixteenMegabytesIsNotRead) {
    const std::string path = Write("Info.plist", "<plist>" + std::string(size_t{17} << 20U, ' '));

    EXPECT_EQ(ErrorOf(path),
              path + ": the file is larger than 16 MB and was not read; name the file that the game ships");
}

TEST_F(DamagedPlistFile, TheErrorNamesFileLineAndColumn) {
    const std::string path = Write("Info.plist", "<plist>\n<dict>\n<key>a</key>\n</dict>\n</plist>\n");

    EXPECT_EQ(ErrorOf(path), path + ":4:1: the last <key> of the dictionary has no value; "
                                    "add the value, or remove the key");
}

} // namespace
} // namespace Tarvik::Vorn::Test
