// Damaged images: every offset and every size that the runner reads may be wrong, and the answer is an error, never a
// crash. Nothing of these images is run.

#include "PreparedImage.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstring>
#include <fstream>
#include <iterator>
#include <string>

namespace Tarvik::Vorn::Test {
namespace {

using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;

const std::string& ProbeBytes() {
    static const std::string& bytes = *new std::string([] {
        std::ifstream in(VORN_IMAGES "/Probe", std::ios::binary);
        return std::string(std::istreambuf_iterator<char>(in), {});
    }());
    return bytes;
}

// Every import is found, at an address that is never called.
std::optional<void*> FindAnything(std::string_view /*symbol*/) {
    static int somewhere = 0;
    return &somewhere;
}

// What is wrong with these bytes; empty when nothing is.
std::string ProblemOf(std::string bytes) {
    const auto prepared = Runner::PreparedImage::Prepare(std::move(bytes), FindAnything);
    const auto* const problem = std::get_if<std::string>(&prepared);
    return problem == nullptr ? "" : *problem;
}

std::string With(size_t at, uint32_t value) {
    std::string bytes = ProbeBytes();
    std::memcpy(bytes.data() + at, &value, sizeof(value));
    return bytes;
}

uint32_t WordAt(size_t at) {
    uint32_t word = 0;
    std::memcpy(&word, ProbeBytes().data() + at, sizeof(word));
    return word;
}

// Where the load command of that kind begins: the first one, or the one behind `skipped` others.
size_t CommandAt(uint32_t kind, unsigned skipped = 0) {
    size_t at = 32;
    for (uint32_t index = 0; index < WordAt(16); ++index) {
        if (WordAt(at) == kind && skipped-- == 0) {
            return at;
        }
        at += WordAt(at + 4);
    }
    ADD_FAILURE() << "the probe has no load command " << kind;
    return 0;
}

constexpr uint32_t kSegment = 0x19;
constexpr uint32_t kDyldInfo = 0x80000022;

// Where in the file the section of that name is described.
size_t SectionAt(const std::string& name) {
    const size_t at = ProbeBytes().find(name + std::string(16 - name.size(), '\0'));
    EXPECT_NE(at, std::string::npos) << name;
    return at;
}

// Where in the file the contents of that section are.
size_t ContentsOf(const std::string& name) {
    return WordAt(SectionAt(name) + 48);
}

TEST(DamagedImagesTest, TheProbeIsSound) {
    EXPECT_THAT(ProblemOf(ProbeBytes()), IsEmpty());
}

TEST(DamagedImagesTest, WhatIsNoImageIsSaidToBeNone) {
    EXPECT_THAT(ProblemOf(""), HasSubstr("at byte 0 of the file"));
    EXPECT_THAT(ProblemOf(std::string(100, 'x')), HasSubstr("no Mach-O image of 64 bits begins here"));
}

TEST(DamagedImagesTest, ATruncatedFileIsRefusedWhereverItEnds) {
    const size_t size = ProbeBytes().size();
    for (size_t length = 0; length + 1 < size; length += length < 4096 ? 13 : 509) {
        EXPECT_THAT(ProblemOf(ProbeBytes().substr(0, length)), Not(IsEmpty())) << length << " bytes of " << size;
    }
}

TEST(DamagedImagesTest, ALoadCommandOfAbsurdSizeIsNamed) {
    const size_t segment = CommandAt(kSegment);
    for (const uint32_t size : {0U, 7U, 0x7FFFFFFFU, 0xFFFFFFFFU}) {
        EXPECT_THAT(ProblemOf(With(segment + 4, size)), HasSubstr("load command 0 of ")) << size;
    }
    EXPECT_THAT(ProblemOf(With(16, 0xFFFFFFFF)), HasSubstr("load command "));
}

TEST(DamagedImagesTest, ASegmentOutsideOfTheFileOrOfAnyMemoryIsRefused) {
    const size_t segment = CommandAt(kSegment);

    EXPECT_THAT(ProblemOf(With(segment + 40, 0x7FFFFFFF)), HasSubstr("outside of the "));
    EXPECT_THAT(ProblemOf(With(segment + 36, 0x7FFFFFFF)), HasSubstr("absurdly large"));
    EXPECT_THAT(ProblemOf(With(segment + 28, 0xFFFFFFFF)), HasSubstr("absurdly large"));
    EXPECT_THAT(ProblemOf(With(segment + 24, 1)), HasSubstr("does not begin with a page"));
    EXPECT_THAT(ProblemOf(With(segment + 32, 1)), HasSubstr("smaller than its contents"));
    EXPECT_THAT(ProblemOf(With(segment + 64, 1000)), HasSubstr("outside of "));
}

TEST(DamagedImagesTest, ASectionOutsideOfTheImageIsRefused) {
    EXPECT_THAT(ProblemOf(With(SectionAt("__bss") + 40, 0x7FFFFFFF)), HasSubstr("the section is outside of the image"));
    EXPECT_THAT(ProblemOf(With(SectionAt("__bss") + 36, 1)), HasSubstr("the section is outside of the image"));
}

TEST(DamagedImagesTest, OpcodesOutsideOfTheFileAreRefused) {
    const size_t info = CommandAt(kDyldInfo);
    for (size_t field = 8; field < 40; field += 4) {
        EXPECT_THAT(ProblemOf(With(info + field, 0x7FFFFFFF)), HasSubstr("outside of the ")) << field;
    }
}

// The first opcodes of the probe's rebases: the kind of fixup, then segment and offset.
TEST(DamagedImagesTest, FixupsOutsideOfTheirSegmentsAreRefused) {
    const size_t rebases = WordAt(CommandAt(kDyldInfo) + 8);

    // Segment 15; segment 0, which is code; a count of 2^28 or more.
    EXPECT_THAT(ProblemOf(With(rebases, 0x51002F11)), HasSubstr("there is no segment 15"));
    EXPECT_THAT(ProblemOf(With(rebases, 0x51002011)), HasSubstr("a fixup is outside of the segments"));
    EXPECT_THAT(ProblemOf(With(rebases, 0xFFFFFF62)), Not(IsEmpty()));
    EXPECT_THAT(ProblemOf(With(rebases, 0xF0F0F0F0)), HasSubstr("there is no rebase opcode 15"));
}

TEST(DamagedImagesTest, RecordsThatLeadOutsideOfTheImageAreRefused) {
    EXPECT_THAT(ProblemOf(With(ContentsOf("__objc_classlist") + 4, 0x7FFF)), HasSubstr("leads outside of the image"));
    EXPECT_THAT(ProblemOf(With(ContentsOf("__objc_selrefs") + 4, 0x7FFF)), HasSubstr("leads outside of the image"));
    EXPECT_THAT(ProblemOf(With(ContentsOf("__objc_catlist") + 4, 0x7FFF)), HasSubstr("leads outside of the image"));
    EXPECT_THAT(ProblemOf(With(ContentsOf("__cfstring") + 28, 0x7FFF)), HasSubstr("outside of the "));
    EXPECT_THAT(ProblemOf(With(ContentsOf("__mod_init_func") + 4, 0x7FFF)), HasSubstr("an initialiser is outside"));
}

TEST(DamagedImagesTest, UnwindEntriesThatLeadOutsideAreRefused) {
    const size_t entries = ContentsOf("__unwind_info");

    EXPECT_THAT(ProblemOf(With(entries + 20, 0x7FFFFFFF)), HasSubstr("of its memory: "));
    EXPECT_THAT(ProblemOf(With(entries + 24, 0x7FFFFFFF)), HasSubstr("of its memory: "));
}

// Whatever is in a word: it is read, or it is refused.
TEST(DamagedImagesTest, NoWordOfTheFileMakesItCrash) {
    const size_t size = ProbeBytes().size();
    for (size_t at = 0; at + 4 <= size; at += at < 4096 ? 12 : 132) {
        for (const uint32_t value : {0xFFFFFFFFU, 0x80000001U}) {
            ProblemOf(With(at, value));
        }
    }
}

} // namespace
} // namespace Tarvik::Vorn::Test
