// AVAsset: which files the photo library takes, read from the files themselves.
#include "AVFoundation/AVAsset+Control.h"

#include "ApplePlatformTest.h"

#import <AVFoundation/AVFoundation.h>

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <sys/stat.h>

namespace Tarvik::Vorn::Test {
namespace {

using ::testing::IsEmpty;

bool IsCompatible(NSURL* url) {
    return [[AVAsset assetWithURL:url] isCompatibleWithSavedPhotosAlbum] != NO;
}

std::string BigEndian(uint64_t number, int length) {
    std::string bytes;
    for (int i = length - 1; i >= 0; --i) {
        bytes += static_cast<char>(number >> (8 * i));
    }
    return bytes;
}

std::string Box(const std::string& type, const std::string& contents) {
    return BigEndian(contents.size() + 8, 4) + type + contents;
}

// The same with its size as the longer number.
std::string LongBox(const std::string& type, const std::string& contents) {
    return BigEndian(1, 4) + type + BigEndian(contents.size() + 16, 8) + contents;
}

std::string Brand(const std::string& major, const std::string& others = "") {
    return Box("ftyp", major + std::string(4, '\0') + others);
}

std::string Handler(const std::string& kind) {
    return Box("hdlr", std::string(8, '\0') + kind + std::string(13, '\0'));
}

std::string Track(const std::string& kind) {
    return Box("trak", Box("tkhd", "12345678") + Box("mdia", Box("mdhd", "1234") + Handler(kind)));
}

std::string Movie(const std::string& tracks) {
    return Box("moov", Box("mvhd", "1234") + tracks);
}

// A file for each text that a test looks at.
class AVAssetFacts : public ApplePlatformTest {
protected:
    AVAssetFacts() {
        std::string name = (std::filesystem::temp_directory_path() / "vorn-asset-XXXXXX").string();
        mFolder = mkdtemp(name.data());
    }
    ~AVAssetFacts() override { std::filesystem::remove_all(mFolder); }

    NSURL* FileOf(const std::string& bytes) {
        const std::string path = mFolder / "movie";
        std::ofstream(path, std::ios::binary) << bytes;
        return [NSURL fileURLWithPath:[NSString stringWithUTF8String:path.c_str()]];
    }

    bool IsMovie(const std::string& bytes) { return IsCompatible(FileOf(bytes)); }

    std::filesystem::path mFolder;
};

#pragma mark - Real files

TEST_F(AVAssetFacts, ClipsAreTaken) {
    EXPECT_TRUE(IsCompatible(MediaURL("clip.mp4")));
    EXPECT_TRUE(IsCompatible(MediaURL("clip.mov")));
}

TEST_F(AVAssetFacts, OtherFilesAreNot) {
    EXPECT_FALSE(IsCompatible(MediaURL("picture.png")));
    EXPECT_FALSE(IsCompatible(MediaURL("picture.jpg")));
    EXPECT_FALSE(IsCompatible(MediaURL("text.png")));
    EXPECT_FALSE(IsCompatible(MediaURL("sound.m4a")));
}

class AVAssetOfClip : public AVAssetFacts, public ::testing::WithParamInterface<const char*> {
protected:
    static std::string Bytes() {
        std::ifstream file(std::string(VORN_MEDIA "/") + GetParam(), std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }
};

INSTANTIATE_TEST_SUITE_P(All, AVAssetOfClip, ::testing::Values("clip.mp4", "clip.mov"));

TEST_P(AVAssetOfClip, IsNotTakenWhenItsEndIsMissing) {
    const std::string bytes = Bytes();
    ASSERT_TRUE(IsMovie(bytes));

    for (size_t length = 0; length < bytes.size(); length += 29) {
        ASSERT_FALSE(IsMovie(bytes.substr(0, length))) << length << " bytes of " << bytes.size();
    }
}

TEST_P(AVAssetOfClip, DoesNoHarmWithAByteChanged) {
    std::string bytes = Bytes();

    for (size_t i = 0; i < bytes.size(); i += 5) {
        @autoreleasepool {
            bytes[i] = static_cast<char>(~bytes[i]);
            IsMovie(bytes);
            bytes[i] = static_cast<char>(~bytes[i]);
        }
    }
}

#pragma mark - What is no file

TEST_F(AVAssetFacts, WhatIsNoFileIsNotTaken) {
    EXPECT_FALSE(IsCompatible(MediaURL("missing.mp4")));
    EXPECT_FALSE(IsCompatible(MediaURL("")));
    EXPECT_FALSE(IsCompatible([NSURL URLWithString:@"https://host/clip.mp4"]));
    EXPECT_FALSE(IsCompatible(nil));
}

TEST_F(AVAssetFacts, APathWithoutTheFileSchemeIsNotTaken) {
    EXPECT_FALSE(IsCompatible([NSURL URLWithString:MediaPath("clip.mp4")]));
}

TEST_F(AVAssetFacts, APipeIsNotWaitedFor) {
    const std::string path = mFolder / "pipe";
    ASSERT_EQ(mkfifo(path.c_str(), 0600), 0);

    EXPECT_FALSE(IsCompatible([NSURL fileURLWithPath:[NSString stringWithUTF8String:path.c_str()]]));
}

#pragma mark - The container

TEST_F(AVAssetFacts, AMovieIsABrandAndAVideoTrack) {
    EXPECT_TRUE(IsMovie(Brand("isom") + Movie(Track("vide"))));
}

TEST_F(AVAssetFacts, WithoutAVideoTrackThereIsNoMovie) {
    EXPECT_FALSE(IsMovie(Brand("isom") + Movie(Track("soun"))));
    EXPECT_FALSE(IsMovie(Brand("isom") + Movie("")));
    EXPECT_FALSE(IsMovie(Brand("isom")));
}

TEST_F(AVAssetFacts, TheVideoTrackMayStandAnywhere) {
    EXPECT_TRUE(IsMovie(Brand("isom") + Movie(Track("vide") + Track("soun"))));
    EXPECT_TRUE(IsMovie(Brand("isom") + Movie(Track("soun") + Track("vide"))));
}

TEST_F(AVAssetFacts, AVideoHandlerOutsideOfATracksMediaDoesNotCount) {
    EXPECT_FALSE(IsMovie(Brand("isom") + Movie(Handler("vide"))));
    EXPECT_FALSE(IsMovie(Brand("isom") + Movie(Box("trak", Handler("vide")))));
    EXPECT_FALSE(IsMovie(Brand("isom") + Track("vide")));
    EXPECT_FALSE(IsMovie(Brand("isom") + Movie(Box("udta", Box("mdia", Handler("vide"))))));
}

class AVAssetBrand : public AVAssetFacts, public ::testing::WithParamInterface<const char*> {};

INSTANTIATE_TEST_SUITE_P(All, AVAssetBrand,
                         ::testing::Values("qt  ", "isom", "iso2", "iso3", "iso4", "iso5", "iso6", "mp41", "mp42",
                                           "avc1", "M4V ", "M4VH", "M4VP", "3gp4", "3gp5", "3gp6", "3gp7", "3g2a"));

TEST_P(AVAssetBrand, IsAMovies) {
    EXPECT_TRUE(IsMovie(Brand(GetParam()) + Movie(Track("vide"))));
}

TEST_F(AVAssetFacts, AnotherBrandIsNotAMovies) {
    EXPECT_FALSE(IsMovie(Brand("heic", "mif1") + Movie(Track("vide"))));
}

TEST_F(AVAssetFacts, OneOfTheOtherBrandsIsEnough) {
    EXPECT_TRUE(IsMovie(Brand("abcd", "efghisom") + Movie(Track("vide"))));
}

TEST_F(AVAssetFacts, TheVersionBehindTheBrandIsNoBrand) {
    EXPECT_FALSE(IsMovie(Box("ftyp", "abcdisom") + Movie(Track("vide"))));
}

TEST_F(AVAssetFacts, AnEmptyBrandBoxIsNotAMovies) {
    EXPECT_FALSE(IsMovie(Box("ftyp", "") + Movie(Track("vide"))));
}

TEST_F(AVAssetFacts, QuickTimeNeedsNoBrand) {
    EXPECT_TRUE(IsMovie(Movie(Track("vide"))));
    for (const char* const first : {"mdat", "wide", "free", "skip"}) {
        EXPECT_TRUE(IsMovie(Box(first, "1234") + Movie(Track("vide")))) << first;
    }
}

TEST_F(AVAssetFacts, OtherFirstBoxesNeedABrand) {
    EXPECT_FALSE(IsMovie(Box("junk", "1234") + Movie(Track("vide"))));
    EXPECT_FALSE(IsMovie(Box("junk", "1234") + Brand("isom") + Movie(Track("vide"))));
}

TEST_F(AVAssetFacts, SizesMayBeLongerNumbers) {
    EXPECT_TRUE(IsMovie(Brand("isom") + LongBox("mdat", "1234") + LongBox("moov", Track("vide"))));
}

TEST_F(AVAssetFacts, TheLastBoxMayGoOnToTheEndOfTheFile) {
    EXPECT_TRUE(IsMovie(Brand("isom") + Movie(Track("vide")) + BigEndian(0, 4) + "mdat1234"));
}

TEST_F(AVAssetFacts, OnlyTheLastBoxMay) {
    const std::string endlessTrack = BigEndian(0, 4) + "trak" + Box("mdia", Handler("vide"));

    EXPECT_FALSE(IsMovie(Brand("isom") + Box("moov", endlessTrack) + Box("free", "")));
}

TEST_F(AVAssetFacts, BoxesThatDoNotFitAreNotTaken) {
    const std::string movie = Brand("isom") + Movie(Track("vide"));
    ASSERT_TRUE(IsMovie(movie));

    EXPECT_FALSE(IsMovie(movie + BigEndian(13, 4) + "free1234")) << "one byte more than there are";
    EXPECT_FALSE(IsMovie(movie + BigEndian(7, 4) + "free")) << "smaller than its own header";
    EXPECT_FALSE(IsMovie(movie + BigEndian(0xffffffff, 4) + "free"));
    EXPECT_FALSE(IsMovie(movie + BigEndian(1, 4) + "free")) << "without its long size";
    EXPECT_FALSE(IsMovie(movie + BigEndian(1, 4) + "free" + BigEndian(8, 8))) << "smaller than its own header";
    EXPECT_FALSE(IsMovie(movie + BigEndian(1, 4) + "free" + BigEndian(~uint64_t{0}, 8)));
    EXPECT_FALSE(IsMovie(movie + BigEndian(1, 4) + "free" + BigEndian(uint64_t{1} << 63, 8)));
    EXPECT_FALSE(IsMovie(movie + "1234567")) << "less than a header";
}

TEST_F(AVAssetFacts, ABoxMayNotReachBeyondTheOneAroundIt) {
    const std::string handler = BigEndian(100, 4) + "hdlr" + std::string(8, '\0') + "vide";
    const std::string movie = Movie(Box("trak", Box("mdia", handler)));

    EXPECT_FALSE(IsMovie(Brand("isom") + movie + Box("free", std::string(200, '\0'))));
}

TEST_F(AVAssetFacts, AHandlerTooShortForItsKindIsNotTaken) {
    const std::string handler = Box("hdlr", std::string(8, '\0') + "vid");

    EXPECT_FALSE(IsMovie(Brand("isom") + Movie(Box("trak", Box("mdia", handler)) + Track("vide"))));
}

TEST_F(AVAssetFacts, AFileOfNothingButHeadersIsGivenUp) {
    std::string boxes = Brand("isom") + Movie(Track("vide"));
    for (int i = 0; i < 10'000; ++i) {
        boxes += Box("free", "");
    }

    EXPECT_FALSE(IsMovie(boxes));
}

#pragma mark - The asset

TEST_F(AVAssetFacts, TheFileIsReadWhenItIsAskedFor) {
    AVAsset* const asset = [AVAsset assetWithURL:FileOf("")];
    const bool before = [asset isCompatibleWithSavedPhotosAlbum] != NO;

    FileOf(Brand("isom") + Movie(Track("vide")));

    EXPECT_FALSE(before);
    EXPECT_TRUE([asset isCompatibleWithSavedPhotosAlbum]);
}

TEST_F(AVAssetFacts, ACopyIsTheAssetItself) {
    AVAsset* const asset = [AVAsset assetWithURL:MediaURL("clip.mp4")];

    const RetainPtr<AVAsset*> copy = AdoptNS<AVAsset*>([asset copy]);

    EXPECT_EQ(copy.get(), asset);
}

TEST_F(AVAssetFacts, AssetsAreNotRecorded) {
    IsCompatible(MediaURL("clip.mp4"));

    EXPECT_THAT(RecordedCalls(), IsEmpty());
}

#pragma mark - What a test decides

TEST_F(AVAssetFacts, ATestCanDecideWhateverTheFileHolds) {
    Host::SetVideoCompatibility(true);
    EXPECT_TRUE(IsCompatible(MediaURL("text.png")));
    EXPECT_TRUE(IsCompatible(nil));

    Host::SetVideoCompatibility(false);
    EXPECT_FALSE(IsCompatible(MediaURL("clip.mp4")));
}

TEST_F(AVAssetFacts, TheFileDecidesAgainAfterwards) {
    Host::SetVideoCompatibility(false);

    Host::SetVideoCompatibility(std::nullopt);

    EXPECT_TRUE(IsCompatible(MediaURL("clip.mp4")));
}

TEST_F(AVAssetFacts, TheFileDecidesAgainAfterAReset) {
    Host::SetVideoCompatibility(false);

    Host::ResetPlatform();

    EXPECT_TRUE(IsCompatible(MediaURL("clip.mp4")));
}

} // namespace
} // namespace Tarvik::Vorn::Test
