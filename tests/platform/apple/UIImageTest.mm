// UIImage: what is decoded, what is refused, and that no bytes do harm.
#include "UIKit/UIImage+Control.h"

#include "ApplePlatformTest.h"

#include <png.h>
#include <turbojpeg.h>

#include <memory>

namespace Tarvik::Vorn::Test {
namespace {

using ::testing::IsEmpty;

class UIImageFacts : public ApplePlatformTest {
protected:
    static std::string BytesOf(const std::string& name) {
        NSData* const data = [NSData dataWithContentsOfFile:MediaPath(name)];
        EXPECT_NE(data, nil) << name;
        return std::string(static_cast<const char*>([data bytes]), [data length]);
    }

    static UIImage* Decode(const std::string& bytes) {
        return [UIImage imageWithData:[NSData dataWithBytes:bytes.data() length:bytes.size()]];
    }
};

std::string MakePNG(int width, int height) {
    png_image image = {};
    image.version = PNG_IMAGE_VERSION;
    image.width = static_cast<png_uint_32>(width);
    image.height = static_cast<png_uint_32>(height);
    image.format = PNG_FORMAT_GRAY;
    const std::string pixels(PNG_IMAGE_SIZE(image), '\0');
    std::string bytes(PNG_IMAGE_PNG_SIZE_MAX(image), '\0');
    png_alloc_size_t length = bytes.size();
    EXPECT_NE(png_image_write_to_memory(&image, bytes.data(), &length, 0, pixels.data(), 0, nullptr), 0);
    bytes.resize(length);
    return bytes;
}

std::string MakeJPEGOf(TJPF format, TJSAMP subsampling, int width, int height) {
    const size_t length =
        static_cast<size_t>(width) * static_cast<size_t>(height) * static_cast<size_t>(tjPixelSize[format]);
    const std::vector<unsigned char> pixels(length);
    const std::unique_ptr<void, decltype(&tjDestroy)> encoder(tjInitCompress(), &tjDestroy);
    unsigned char* bytes = nullptr;
    unsigned long size = 0;
    EXPECT_EQ(tjCompress2(encoder.get(), pixels.data(), width, 0, height, format, &bytes, &size, subsampling, 75, 0),
              0);
    const std::unique_ptr<unsigned char, decltype(&tjFree)> owner(bytes, &tjFree);
    return std::string(reinterpret_cast<const char*>(bytes), size);
}

std::string MakeJPEG(int width, int height) {
    return MakeJPEGOf(TJPF_GRAY, TJSAMP_GRAY, width, height);
}

#pragma mark - What is decoded

class UIImageOfFile : public UIImageFacts, public ::testing::WithParamInterface<const char*> {};

INSTANTIATE_TEST_SUITE_P(All, UIImageOfFile, ::testing::Values("picture.png", "picture.jpg"));

TEST_P(UIImageOfFile, HasTheSizeOfThePicture) {
    UIImage* const image = Decode(BytesOf(GetParam()));

    ASSERT_NE(image, nil);
    EXPECT_EQ([image size].width, 64);
    EXPECT_EQ([image size].height, 48);
}

TEST_P(UIImageOfFile, HasPixels) {
    EXPECT_TRUE(Host::HasPixels(Decode(BytesOf(GetParam()))));
}

TEST_P(UIImageOfFile, MayHaveBytesBehindIt) {
    EXPECT_NE(Decode(BytesOf(GetParam()) + "more"), nil);
}

TEST_P(UIImageOfFile, IsNilForEveryBeginningOfTheBytes) {
    const std::string bytes = BytesOf(GetParam());

    for (size_t length = 0; length < bytes.size(); ++length) {
        ASSERT_EQ(Decode(bytes.substr(0, length)), nil) << length << " bytes of " << bytes.size();
    }
}

TEST_P(UIImageOfFile, DoesNoHarmWithAnyByteChanged) {
    std::string bytes = BytesOf(GetParam());

    for (size_t i = 0; i < bytes.size(); ++i) {
        @autoreleasepool {
            const int change = i % 3 == 0 ? 0xff : i % 3 == 1 ? 0x80 : 0x01;
            bytes[i] = static_cast<char>(bytes[i] ^ change);
            UIImage* const image = Decode(bytes);
            EXPECT_EQ(image != nil, Host::HasPixels(image));
            bytes[i] = static_cast<char>(bytes[i] ^ change);
        }
    }
}

class UIImageOfMaker : public UIImageFacts, public ::testing::WithParamInterface<std::string (*)(int, int)> {};

INSTANTIATE_TEST_SUITE_P(All, UIImageOfMaker, ::testing::Values(&MakePNG, &MakeJPEG),
                         [](const auto& maker) { return maker.param == &MakePNG ? "PNG" : "JPEG"; });

TEST_P(UIImageOfMaker, WidthAndHeightAreNotMixedUp) {
    UIImage* const image = Decode(GetParam()(3, 2));

    EXPECT_EQ([image size].width, 3);
    EXPECT_EQ([image size].height, 2);
}

TEST_F(UIImageFacts, AJPEGMayHaveThePrintersColors) {
    constexpr size_t kTransform = 11; // Where Adobe's segment tells how the colors are written, counted from its name.
    std::string bytes = MakeJPEGOf(TJPF_CMYK, TJSAMP_444, 3, 2);
    const size_t adobe = bytes.find("Adobe");
    ASSERT_NE(adobe, std::string::npos);

    EXPECT_NE(Decode(bytes), nil); // As YCCK.
    bytes[adobe + kTransform] = 0; // As they are.
    EXPECT_NE(Decode(bytes), nil);
}

TEST_F(UIImageFacts, TheDescriptionHasTheSizeAndNoAddress) {
    EXPECT_EQ(Text([Decode(MakePNG(2, 3)) description]), "<UIImage: 2x3>");
}

TEST_F(UIImageFacts, AnImageThatNobodyDecodedHasNoPixels) {
    UIImage* const image = [[[UIImage alloc] init] autorelease];

    EXPECT_FALSE(Host::HasPixels(image));
    EXPECT_TRUE(NSEqualSizes([image size], NSZeroSize));
    EXPECT_EQ(Text([image description]), "<UIImage: 0x0>");
}

TEST_F(UIImageFacts, NilHasNoPixels) {
    EXPECT_FALSE(Host::HasPixels(nil));
}

TEST_F(UIImageFacts, DecodingIsNotRecorded) {
    Decode(MakePNG(1, 1));

    EXPECT_THAT(RecordedCalls(), IsEmpty());
}

#pragma mark - What is refused

TEST_F(UIImageFacts, NoBytesAreNoImage) {
    EXPECT_EQ([UIImage imageWithData:Nothing()], nil);
    EXPECT_EQ([UIImage imageWithData:[NSData data]], nil);
}

class UIImageOfForeignFile : public UIImageFacts, public ::testing::WithParamInterface<const char*> {};

INSTANTIATE_TEST_SUITE_P(All, UIImageOfForeignFile,
                         ::testing::Values("truncated.png", "text.png", "clip.mp4", "sound.m4a"));

TEST_P(UIImageOfForeignFile, IsNil) {
    EXPECT_EQ(Decode(BytesOf(GetParam())), nil);
}

// A whole image of one pixel each.
TEST_F(UIImageFacts, OtherFormatsAreNoImages) {
    const std::string gif("GIF89a\x01\0\x01\0\x80\0\0\0\0\0\xff\xff\xff,\0\0\0\0\x01\0\x01\0\0\x02\x02\x44\x01\0;", 35);
    const std::string portable = "P5 1 1 255\n\x7f";

    EXPECT_EQ(Decode(gif), nil);
    EXPECT_EQ(Decode(portable), nil);
}

TEST_F(UIImageFacts, AThumbnailsEndIsNotTheEndOfATruncatedJPEG) {
    const std::string whole = BytesOf("picture.jpg");
    const std::string thumbnail("\xff\xe1\x00\x06\xff\xd8\xff\xd9", 8); // A segment that holds an end marker.
    const std::string withThumbnail = whole.substr(0, 2) + thumbnail + whole.substr(2);

    EXPECT_NE(Decode(withThumbnail), nil);
    EXPECT_EQ(Decode(withThumbnail.substr(0, withThumbnail.size() - 2)), nil);
}

TEST_F(UIImageFacts, AJPEGWithMoreCodesThanATableHoldsIsNil) {
    std::string bytes = BytesOf("picture.jpg");
    const size_t table = bytes.find("\xff\xc4");
    ASSERT_NE(table, std::string::npos);
    const std::string overfull = std::string("\xff\xc4\x01\x15\0", 5) + std::string(14, '\0') + "\xff\x03" +
                                 std::string(258, '\x01'); // 255 codes and 3.

    bytes.insert(table, overfull);

    EXPECT_EQ(Decode(bytes), nil);
    EXPECT_EQ(Decode("\xff" + bytes), nil);
}

TEST_P(UIImageOfMaker, IsAtMost16384PixelsWide) {
    EXPECT_NE(Decode(GetParam()(16384, 1)), nil);
    EXPECT_EQ(Decode(GetParam()(16385, 1)), nil);
}

TEST_P(UIImageOfMaker, IsAtMost16384PixelsHigh) {
    EXPECT_NE(Decode(GetParam()(1, 16384)), nil);
    EXPECT_EQ(Decode(GetParam()(1, 16385)), nil);
}

TEST_P(UIImageOfMaker, HasAtMost64MillionPixels) {
    EXPECT_EQ(Decode(GetParam()(8192, 8193)), nil);
}

TEST_F(UIImageFacts, ThreadsDecodeAtTheSameTime) {
    const std::string bytes = BytesOf("picture.jpg");
    const auto work = [&bytes] {
        @autoreleasepool {
            for (int i = 0; i < 20; ++i) {
                EXPECT_TRUE(Host::HasPixels(Decode(bytes)));
                EXPECT_EQ(Decode("no image"), nil);
            }
        }
    };

    std::thread other(work);
    work();
    other.join();
}

} // namespace
} // namespace Tarvik::Vorn::Test
