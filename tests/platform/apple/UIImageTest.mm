// UIImage: what is decoded, what is refused, and that no bytes do harm.
#include "UIKit/UIImage+Control.h"

#include "ApplePlatformTest.h"

#include <cstdint>

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

std::string BigEndian(size_t number, int length) {
    std::string bytes;
    for (int i = length - 1; i >= 0; --i) {
        bytes += static_cast<char>(number >> (8 * i));
    }
    return bytes;
}

// A chunk with a checksum of zero, which the decoder does not look at.
std::string Chunk(const std::string& type, const std::string& contents) {
    return BigEndian(contents.size(), 4) + type + contents + std::string(4, '\0');
}

// A black PNG, its pixels uncompressed.
std::string MakePNG(size_t width, size_t height) {
    constexpr size_t kMostInBlock = 65535;
    std::string compressed = "\x78\x01";
    for (size_t rest = (width + 1) * height; rest > 0;) {
        const size_t length = std::min(rest, kMostInBlock);
        rest -= length;
        const std::string size = BigEndian(length, 2);
        compressed += rest == 0 ? '\1' : '\0';
        compressed += {size[1], size[0], static_cast<char>(~size[1]), static_cast<char>(~size[0])};
        compressed.append(length, '\0');
    }
    compressed += std::string(4, '\0');
    const std::string header = BigEndian(width, 4) + BigEndian(height, 4) + std::string("\x08\0\0\0\0", 5);
    return "\x89PNG\r\n\x1a\n" + Chunk("IHDR", header) + Chunk("IDAT", compressed) + Chunk("IEND", "");
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
    constexpr size_t kChecksum = 4; // A PNG's last bytes; nothing is missing without them.

    for (size_t length = 0; length + kChecksum < bytes.size(); ++length) {
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

TEST_F(UIImageFacts, WidthAndHeightAreNotMixedUp) {
    UIImage* const image = Decode(MakePNG(3, 2));

    EXPECT_EQ([image size].width, 3);
    EXPECT_EQ([image size].height, 2);
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

// A whole image of one pixel each: the decoder knows the formats, and is built without them.
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

TEST_F(UIImageFacts, ImagesAreAtMost16384PixelsWide) {
    EXPECT_NE(Decode(MakePNG(16384, 1)), nil);
    EXPECT_EQ(Decode(MakePNG(16385, 1)), nil);
}

TEST_F(UIImageFacts, ImagesHaveAtMost64MillionPixels) {
    EXPECT_EQ(Decode(MakePNG(8192, 8193)), nil);
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
