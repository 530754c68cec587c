// The reader of Mach-O files on bytes that nobody vouches for: every number out of range is an error with its offset,
// and no beginning of a file and no changed byte makes it crash.

#include "MachOFile.h"
#include "MachOMaker.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <variant>

namespace Tarvik::Vorn::Test {
namespace {

using namespace Simulator::Doctor;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::SizeIs;

// Offset and message; "(none)" for bytes that are a Mach-O file.
std::string DamageOf(std::string_view bytes) {
    const std::variant<MachOFile, ByteError> file = ParseMachO(bytes);
    const auto* error = std::get_if<ByteError>(&file);
    return error == nullptr ? "(none)" : std::to_string(error->offset) + ": " + error->message;
}

// Offsets in the image that the maker makes: the header, the segment with its two sections, the symbols.
constexpr size_t kCommandCount = 16;
constexpr size_t kCommandBytes = 20;
constexpr size_t kSegment = 32;
constexpr size_t kFirstSection = kSegment + 72;
constexpr size_t kSymbols = kSegment + 72 + size_t{2} * 80;
constexpr size_t kInstallName = kSymbols + 24;

std::string Good() {
    return Image(GoodLibrary());
}

// The offset of the command of this kind, which the image has.
size_t CommandAt(std::string_view image, std::string_view kind) {
    return image.find(kind, kInstallName);
}

TEST(MachOFileTest, WhatTheMakerMadeIsRead) {
    const std::string bytes = Good();

    const std::variant<MachOFile, ByteError> file = ParseMachO(bytes);

    ASSERT_TRUE(std::holds_alternative<MachOFile>(file)) << DamageOf(bytes);
    ASSERT_THAT(std::get<MachOFile>(file).images, SizeIs(1));
    const MachOImage& image = std::get<MachOFile>(file).images.front();
    EXPECT_EQ(image.installName, "@rpath/VornFacebook.framework/VornFacebook");
    EXPECT_THAT(image.runPaths, ElementsAre("@executable_path/Frameworks", "@loader_path/Frameworks"));
    EXPECT_THAT(image.libraries, SizeIs(7));
    EXPECT_THAT(image.exports, SizeIs(14));
    EXPECT_EQ(image.platform, kPlatformIOS);
    EXPECT_TRUE(image.Exports("_VornFacebookVersionString"));
    EXPECT_TRUE(image.hasSignature);
    EXPECT_TRUE(image.hasClassList);
}

TEST(MachOFileTest, TextsAreFoundWholeOnly) {
    const std::string bytes = Good();
    const std::variant<MachOFile, ByteError> file = ParseMachO(bytes);
    const MachOImage& image = std::get<MachOFile>(file).images.front();

    EXPECT_TRUE(image.HasText("first"));
    EXPECT_TRUE(image.HasText("VornFriendFacebook"));
    EXPECT_FALSE(image.HasText("FriendFacebook"));
    EXPECT_FALSE(image.HasText("VornFriend"));
}

TEST(MachOFileTest, WithoutATableOfExportsTheSymbolsCount) {
    ImageRecipe recipe = GoodLibrary();
    recipe.hasExportTable = false;
    recipe.locals = {"_local"};
    const std::string bytes = Image(recipe);

    const std::variant<MachOFile, ByteError> file = ParseMachO(bytes);

    const MachOImage& image = std::get<MachOFile>(file).images.front();
    EXPECT_TRUE(image.Exports("_VornFacebookVersionString"));
    EXPECT_FALSE(image.Exports("_local"));
    EXPECT_FALSE(image.Exports("_OBJC_CLASS_$_UIApplication"));
}

TEST(MachOFileTest, WeakLibrariesAreNotRequired) {
    ImageRecipe recipe = GoodLibrary();
    recipe.libraries = {"a"};
    recipe.weakLibraries = {"b"};
    const std::string bytes = Image(recipe);

    const std::variant<MachOFile, ByteError> file = ParseMachO(bytes);

    const MachOImage& image = std::get<MachOFile>(file).images.front();
    ASSERT_THAT(image.libraries, SizeIs(2));
    EXPECT_TRUE(image.libraries[0].isRequired);
    EXPECT_FALSE(image.libraries[1].isRequired);
}

TEST(DamagedBinaries, AnotherMagicNumberIsAnError) {
    EXPECT_EQ(DamageOf(Patched(Good(), 0, 0xFEEDFACE)),
              "0: the slice is one of 32 bits, which no system since iOS 11 runs");
    EXPECT_EQ(DamageOf(Patched(Good(), 0, 1)), "0: no Mach-O image of 64 bits begins here");
    EXPECT_EQ(DamageOf(""), "0: 4 bytes are expected, which are outside of the 0 that are there");
}

TEST(DamagedBinaries, MoreLoadCommandsThanThereAreAreAnError) {
    EXPECT_THAT(DamageOf(Patched(Good(), kCommandCount, 0xFFFFFFFF)),
                HasSubstr("of 4294967295 is outside of the load commands"));
}

TEST(DamagedBinaries, LoadCommandsBehindTheFileAreAnError) {
    EXPECT_THAT(DamageOf(Patched(Good(), kCommandBytes, 0xFFFFFFF0)), HasSubstr("32: 4294967280 bytes are expected"));
}

TEST(DamagedBinaries, ALoadCommandOfAnAbsurdSizeIsAnErrorAtItsOffset) {
    const std::string wanted = "32: load command 0 of 15 is outside of the load commands";

    EXPECT_EQ(DamageOf(Patched(Good(), kSegment + 4, 0)), wanted);
    EXPECT_EQ(DamageOf(Patched(Good(), kSegment + 4, 7)), wanted);
    EXPECT_EQ(DamageOf(Patched(Good(), kSegment + 4, 0xFFFFFFFF)), wanted);
}

TEST(DamagedBinaries, ASegmentOutsideOfTheFileIsAnError) {
    EXPECT_THAT(DamageOf(Patched(Good(), kSegment + 40, 0x7FFFFFFF)), HasSubstr("2147483647: "));
    EXPECT_THAT(DamageOf(Patched(Good(), kSegment + 48 + 4, 1)), HasSubstr("bytes are expected"));
}

TEST(DamagedBinaries, MoreSectionsThanTheCommandHoldsAreAnError) {
    EXPECT_THAT(DamageOf(Patched(Good(), kSegment + 64, 3)), HasSubstr(": 16 bytes are expected"));
}

TEST(DamagedBinaries, ASectionOutsideOfTheFileIsAnError) {
    EXPECT_THAT(DamageOf(Patched(Good(), kFirstSection + 48, 0x00FFFFFF)), HasSubstr("16777215: "));
}

TEST(DamagedBinaries, SymbolsOutsideOfTheFileAreAnError) {
    EXPECT_THAT(DamageOf(Patched(Good(), kSymbols + 8, 0x00FFFFFF)), HasSubstr("16777215: "));
    EXPECT_THAT(DamageOf(Patched(Good(), kSymbols + 12, 0xFFFFFFFF)), HasSubstr("68719476720 bytes are expected"));
    EXPECT_THAT(DamageOf(Patched(Good(), kSymbols + 20, 0x00FFFFFF)), HasSubstr("16777215 bytes are expected"));
    EXPECT_THAT(DamageOf(Patched(Good(), kSymbols + 20, 3)), HasSubstr("the symbol's name is outside of the names"));
}

TEST(DamagedBinaries, ASymbolInASectionThatIsNotThereIsAnError) {
    ImageRecipe recipe = GoodLibrary();
    recipe.locals = {"_in_section_one"};
    const std::string bytes = Image(recipe);
    const auto symbols =
        static_cast<unsigned char>(bytes[kSymbols + 8]) + 256U * static_cast<unsigned char>(bytes[kSymbols + 9]);
    std::string changed = bytes;
    changed[symbols + 5] = 3;

    EXPECT_EQ(DamageOf(bytes), "(none)");
    EXPECT_EQ(DamageOf(changed), std::to_string(symbols) + ": the symbol is said to be in section 3 of 2");
}

TEST(DamagedBinaries, ATextOutsideOfItsLoadCommandIsAnError) {
    EXPECT_THAT(DamageOf(Patched(Good(), kInstallName + 8, 0xFFFF)), HasSubstr("a text is expected"));
}

TEST(DamagedBinaries, ASignatureOutsideOfTheFileIsAnError) {
    const std::string good = Good();
    const size_t command = CommandAt(good, std::string_view("\x1D\0\0\0\x10\0\0\0", 8));

    EXPECT_THAT(DamageOf(Patched(good, command + 8, 0x00FFFFFF)), HasSubstr("16777215: 16 bytes are expected"));
}

TEST(DamagedBinaries, ATableOfExportsThatLeadsOutsideOrIntoALoopIsAnError) {
    ImageRecipe recipe = GoodLibrary();
    recipe.exports = {"_a"};
    const std::string good = Image(recipe);
    const size_t root = good.find(std::string_view("\0\x01_a\0", 5));
    std::string outside = good;
    outside[root + 5] = '\x70';
    outside[root + 6] = '\x00';
    std::string loop = good;
    loop[root + 5] = '\x00';

    ASSERT_NE(root, std::string::npos);
    EXPECT_EQ(DamageOf(good), "(none)");
    EXPECT_THAT(DamageOf(outside), HasSubstr("the table of exports leads outside of itself"));
    loop[root + 6] = '\x00';
    EXPECT_THAT(DamageOf(loop), HasSubstr("the table of exports has a loop"));
}

TEST(DamagedBinaries, ASecondTableOfExportsOrSymbolsIsAnError) {
    const std::string good = Good();
    const size_t signature = CommandAt(good, std::string_view("\x1D\0\0\0\x10\0\0\0", 8));
    const size_t version = CommandAt(good, std::string_view("\x32\0\0\0\x18\0\0\0", 8));

    EXPECT_THAT(DamageOf(Patched(good, signature, 0x80000033)), HasSubstr("a second table of exports"));
    EXPECT_THAT(DamageOf(Patched(good, version, 0x02)), HasSubstr("a second table of symbols"));
}

TEST(DamagedBinaries, AUniversalFileWithAnAbsurdTableIsAnError) {
    const std::string good = GoodSimulatorBinary();
    const auto with = [&good](size_t at, unsigned char value) {
        std::string bytes = good;
        bytes[at] = static_cast<char>(value);
        return DamageOf(bytes);
    };

    EXPECT_EQ(DamageOf(good), "(none)");
    EXPECT_EQ(with(4, 0xFF), "4: the file claims to hold 4278190082 slices");
    EXPECT_EQ(with(7, 0), "4: the file claims to hold 0 slices");
    EXPECT_EQ(with(8 + 8, 0xFF), "8: slice 0 of 2 is outside of the file");
    EXPECT_EQ(with(8 + 12, 0xFF), "8: slice 0 of 2 is outside of the file");
    EXPECT_EQ(with(8 + 3, 7), "8: the slice is for another processor than the table of slices says");
}

TEST(DamagedBinaries, OffsetsOfASliceCountFromTheBeginningOfTheFile) {
    std::string bytes = GoodSimulatorBinary();
    const size_t slice = 8 + size_t{2} * 20;

    EXPECT_EQ(DamageOf(Patched(bytes, slice + kSegment + 4, 0)),
              std::to_string(slice + kSegment) + ": load command 0 of 15 is outside of the load commands");
}

// Everything that is read, once each, so that trying every byte is quick.
ImageRecipe SmallLibrary() {
    ImageRecipe recipe;
    recipe.installName = "n";
    recipe.libraries = {"l"};
    recipe.runPaths = {"r"};
    recipe.exports = {"_e"};
    recipe.imports = {"_i"};
    recipe.texts = {"t"};
    return recipe;
}

TEST(DamagedBinaries, EveryBeginningOfAFileIsAnError) {
    for (const std::string& whole : {Image(SmallLibrary()), Universal({SmallLibrary(), SmallLibrary()})}) {
        ASSERT_EQ(DamageOf(whole), "(none)");
        for (size_t size = 0; size < whole.size(); ++size) {
            EXPECT_NE(DamageOf(std::string(whole, 0, size)), "(none)") << size;
        }
    }
}

TEST(DamagedBinaries, EveryChangedByteGivesAnErrorOrAFile) {
    const std::string whole = Image(SmallLibrary());

    for (size_t at = 0; at < whole.size(); ++at) {
        for (const char value : {'\x00', '\x01', '\x7F', '\xFF'}) {
            std::string changed = whole;
            changed[at] = value;
            EXPECT_FALSE(DamageOf(changed).empty());
        }
    }
}

} // namespace
} // namespace Tarvik::Vorn::Test
