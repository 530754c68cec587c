// The records: every operation of the texts, the array and the result and parameter records, with their oddities.
// Layout is asserted where the records are declared. Records that cannot be had the normal way (a text of more than
// 4 GiB, a text without a buffer) are laid out by hand, byte for byte as the core would hand them over.

#include "VornRecords.h"
#include "VornServices.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <memory>
#include <string>

namespace Tarvik::Vorn::Test {
namespace {

using ::testing::IsEmpty;

// A String with the given members, never destroyed: it does not own its buffer.
class ForgedString {
public:
    ForgedString(const char* data, uint64_t size) {
        std::memcpy(mBytes.data(), &data, sizeof(data));
        std::memcpy(mBytes.data() + 8, &size, sizeof(size));
    }

    const String& get() const { return *reinterpret_cast<const String*>(mBytes.data()); }

private:
    alignas(String) std::array<char, sizeof(String)> mBytes{};
};

std::string BytesOf(const String& text) {
    return {text.c_str(), text.size() + 1};
}

// ---- String

TEST(VornString, IsEmptyWithAOneByteBufferByDefault) {
    const String text;

    EXPECT_EQ(text.size(), 0u);
    EXPECT_TRUE(text.empty());
    ASSERT_NE(text.c_str(), nullptr);
    EXPECT_STREQ(text.c_str(), "");
    EXPECT_EQ(text.toString(), "");
}

TEST(VornString, FromNullIsEmptyWithAValidBuffer) {
    const String text(static_cast<const char*>(nullptr));

    EXPECT_TRUE(text.empty());
    ASSERT_NE(text.c_str(), nullptr);
    EXPECT_STREQ(text.c_str(), "");
    EXPECT_EQ(text.toString(), "");
}

TEST(VornString, FromACTextCopiesItWithItsNul) {
    std::string source = "request";
    const String text(source.c_str());
    source[0] = 'X';

    EXPECT_EQ(text.size(), 7u);
    EXPECT_EQ(BytesOf(text), std::string("request\0", 8));
    EXPECT_FALSE(text.empty());
}

TEST(VornString, FromAStandardTextTakesItsLength) {
    const String text(std::string("grüße"));

    EXPECT_EQ(text.size(), 7u);
    EXPECT_EQ(text.toString(), "grüße");
}

TEST(VornString, KeptFromAStandardTextWithANulInsideHoldsZerosBehindIt) {
    const String text(std::string("ab\0cd", 5));

    EXPECT_EQ(text.size(), 5u);
    EXPECT_EQ(BytesOf(text), std::string("ab\0\0\0\0", 6));
    EXPECT_EQ(text.toString(), "ab");
}

TEST(VornString, CopyHasABufferOfItsOwn) {
    auto original = std::make_unique<String>("original");
    const String copy(*original);
    original.reset();

    EXPECT_EQ(copy.size(), 8u);
    EXPECT_EQ(copy.toString(), "original");
}

TEST(VornString, KeptCopyConstructorTakesTheLengthModulo32Bits) {
    const ForgedString huge("abcdef", (uint64_t{1} << 32) + 3);

    const String copy(huge.get());

    EXPECT_EQ(copy.size(), 3u);
    EXPECT_EQ(BytesOf(copy), std::string("abc\0", 4));
}

TEST(VornString, CopyOfATextWithoutABufferIsEmpty) {
    const ForgedString bare(nullptr, 0);

    const String copy(bare.get());

    EXPECT_TRUE(copy.empty());
    EXPECT_STREQ(copy.c_str(), "");
}

TEST(VornString, WithoutABufferReadsAsTheEmptyText) {
    const ForgedString bare(nullptr, 0);

    EXPECT_EQ(bare.get().toString(), "");
    EXPECT_TRUE(bare.get().empty());
}

TEST(VornString, AssignedACTextReplacesTheOldOne) {
    String text("a rather long first text");

    text = "second";

    EXPECT_EQ(text.size(), 6u);
    EXPECT_EQ(BytesOf(text), std::string("second\0", 7));
}

TEST(VornString, KeptAssigningNullDoesNotFreeTheOldBuffer) {
    String text("still read by someone");
    char* const old = const_cast<char*>(text.c_str());

    text = static_cast<const char*>(nullptr);

    EXPECT_TRUE(text.empty());
    EXPECT_STREQ(text.c_str(), "");
    EXPECT_NE(text.c_str(), old);
    EXPECT_STREQ(old, "still read by someone");
    std::free(old);
}

TEST(VornString, AssignmentCopiesTheOther) {
    String text("first");
    const String other("the second text");

    text = other;

    EXPECT_EQ(text.toString(), "the second text");
    EXPECT_NE(text.c_str(), other.c_str());
}

TEST(VornString, AssignmentKeepsTheWholeLength) {
    // Room for the length is all that is asked for, so the source may be short: the copy stops at its NUL.
    constexpr uint64_t kLength = uint64_t{1} << 20;
    const ForgedString padded("abc", kLength);
    String text;

    text = padded.get();

    EXPECT_EQ(text.size(), kLength);
    EXPECT_EQ(text.toString(), "abc");
    EXPECT_EQ(text.c_str()[kLength], '\0');
}

TEST(VornString, SelfAssignmentChangesNothing) {
    String text("unchanged");
    const char* const buffer = text.c_str();
    const String& same = text;

    text = same;

    EXPECT_EQ(text.c_str(), buffer);
    EXPECT_EQ(text.toString(), "unchanged");
}

TEST(VornString, ThatIsAllZerosCanBeAssignedTo) {
    alignas(String) std::array<char, sizeof(String)> zeros{};
    auto* text = reinterpret_cast<String*>(zeros.data());

    *text = String("assigned");

    EXPECT_EQ(text->toString(), "assigned");
    text->~String();
}

TEST(VornString, DestructionLeavesNoBufferBehind) {
    alignas(String) std::array<char, sizeof(String)> memory{};
    auto* text = new (memory.data()) String("gone");

    text->~String();

    EXPECT_THAT(memory, ::testing::Each('\0'));
}

// ---- Vector

using Persons = Vector<InnerPersonInfo, 16>;

InnerPersonInfo Person(const char* name, int32_t number) {
    InnerPersonInfo person;
    person.coreText1 = name;
    person.coreNumber3 = number;
    person.coreText8 = "last";
    return person;
}

TEST(VornVector, HasRoomForItsTemplateArgument) {
    const Persons persons;

    EXPECT_EQ(persons.size(), 0u);
    EXPECT_EQ(persons.capacity(), 16u);
    EXPECT_TRUE(persons.empty());
}

TEST(VornVector, CopyOfAnEmptyOneStillHasTheWholeCapacity) {
    const Persons empty;

    Persons copy(empty);

    EXPECT_EQ(copy.size(), 0u);
    EXPECT_EQ(copy.capacity(), 16u);
    const char* bytes = reinterpret_cast<const char*>(copy.begin());
    EXPECT_TRUE(std::all_of(bytes, bytes + 16 * sizeof(InnerPersonInfo), [](char c) { return c == 0; }));
}

TEST(VornVector, CopyAssignsItsElementsIntoZeroedMemory) {
    auto original = std::make_unique<Persons>();
    original->push_back(Person("Ada", 1));
    original->push_back(Person("Grace", 2));

    const Persons copy(*original);
    original.reset();

    ASSERT_EQ(copy.size(), 2u);
    EXPECT_EQ(copy.capacity(), 16u);
    EXPECT_EQ(copy[0].coreText1.toString(), "Ada");
    EXPECT_EQ(copy[1].coreText1.toString(), "Grace");
    EXPECT_EQ(copy[1].coreNumber3, 2);
    EXPECT_EQ(copy[1].coreText8.toString(), "last");
    EXPECT_EQ(copy[1].coreText5.toString(), "");
}

TEST(VornVector, DoublesWhenItIsFull) {
    Vector<InnerPersonInfo, 2> persons;
    for (int32_t i = 0; i < 5; ++i) {
        persons.push_back(Person("someone", i));
    }

    EXPECT_EQ(persons.size(), 5u);
    EXPECT_EQ(persons.capacity(), 8u);
    for (uint32_t i = 0; i < 5; ++i) {
        EXPECT_EQ(persons[i].coreNumber3, static_cast<int32_t>(i));
        EXPECT_EQ(persons[i].coreText1.toString(), "someone");
    }
}

TEST(VornVector, WithoutRoomGrowsToOneElementAndDoublesFromThere) {
    Vector<InnerPersonInfo, 0> persons;

    persons.push_back(Person("first", 1));
    EXPECT_EQ(persons.capacity(), 1u);
    persons.push_back(Person("second", 2));

    EXPECT_EQ(persons.capacity(), 2u);
    EXPECT_EQ(persons[0].coreText1.toString(), "first");
    EXPECT_EQ(persons[1].coreText1.toString(), "second");
}

TEST(VornVector, DestructionLeavesNoArrayBehind) {
    alignas(Persons) std::array<char, sizeof(Persons)> memory{};
    auto* persons = new (memory.data()) Persons();

    persons->~Persons();

    const void* array = memory.data();
    std::memcpy(&array, memory.data() + 8, sizeof(array));
    EXPECT_EQ(array, nullptr);
}

TEST(VornVector, AnElementOfItselfCanBeAddedWhileItGrows) {
    Vector<InnerPersonInfo, 1> persons;
    persons.push_back(Person("first", 1));

    persons.push_back(persons[0]);

    ASSERT_EQ(persons.size(), 2u);
    EXPECT_EQ(persons[1].coreText1.toString(), "first");
}

TEST(VornVector, AssignmentReplacesTheElements) {
    Persons one;
    one.push_back(Person("one", 1));
    Persons two;
    two.push_back(Person("two", 2));
    two.push_back(Person("three", 3));

    one = two;

    ASSERT_EQ(one.size(), 2u);
    EXPECT_EQ(one[1].coreText1.toString(), "three");
    EXPECT_EQ(two[1].coreText1.toString(), "three");
}

// ---- Results

void FillBase(InnerBaseRet& record) {
    record.methodNameID = 11;
    record.retCode = 12;
    record.retMsg = "message";
    record.thirdCode = 13;
    record.thirdMsg = "third";
    record.extraJson = "{}";
}

void ExpectFilledBase(const InnerBaseRet& record) {
    EXPECT_EQ(record.methodNameID, 11);
    EXPECT_EQ(record.retCode, 12);
    EXPECT_EQ(record.retMsg.toString(), "message");
    EXPECT_EQ(record.thirdCode, 13);
    EXPECT_EQ(record.thirdMsg.toString(), "third");
    EXPECT_EQ(record.extraJson.toString(), "{}");
}

TEST(VornRecordsTest, BaseResultIsCopiedMovedAndAssignedWhole) {
    auto original = std::make_unique<InnerBaseRet>(0);
    FillBase(*original);

    const InnerBaseRet copy(*original);
    InnerBaseRet assigned(0);
    assigned = *original;
    const InnerBaseRet moved(std::move(*original));
    original.reset();

    ExpectFilledBase(copy);
    ExpectFilledBase(assigned);
    ExpectFilledBase(moved);
}

TEST(VornRecordsTest, FriendResultIsCopiedWithItsList) {
    auto original = std::make_unique<InnerFriendRet>(0);
    FillBase(*original);
    original->friendInfoList.push_back(Person("Ada", 7));
    original->extraText = "extra";

    const InnerFriendRet copy(*original);
    const InnerFriendRet moved(std::move(*original));
    original.reset();

    for (const InnerFriendRet* record : {&copy, &moved}) {
        ExpectFilledBase(*record);
        ASSERT_EQ(record->friendInfoList.size(), 1u);
        EXPECT_EQ(record->friendInfoList[0].coreText1.toString(), "Ada");
        EXPECT_EQ(record->extraText.toString(), "extra");
    }
}

TEST(VornRecordsTest, LoginResultStartsEmptyInEveryField) {
    alignas(InnerLoginRet) std::array<char, sizeof(InnerLoginRet)> memory;
    memory.fill('\x5a'); // What is not initialised would keep this.

    auto* record = new (memory.data()) InnerLoginRet;

    EXPECT_EQ(record->methodNameID, 0);
    EXPECT_EQ(record->retCode, 0);
    EXPECT_EQ(record->coreNumber9, 0);
    EXPECT_EQ(record->coreNumber10, 0);
    EXPECT_EQ(record->coreNumber13, 0);
    EXPECT_FALSE(record->coreFlag18);
    EXPECT_EQ(record->channelID, 0);
    EXPECT_EQ(record->coreNumber23, 0);
    for (const String* text :
         {&record->coreText7, &record->coreText8, &record->coreText11, &record->coreText12, &record->coreText14,
          &record->coreText15, &record->coreText16, &record->coreText17, &record->channel, &record->coreText21,
          &record->coreText22, &record->coreText24, &record->coreText25, &record->coreText26, &record->coreText27}) {
        EXPECT_TRUE(text->empty());
        EXPECT_NE(text->c_str(), nullptr);
    }
    record->~InnerLoginRet();
}

TEST(VornRecordsTest, LoginResultIsCopiedMemberByMember) {
    auto original = std::make_unique<InnerLoginRet>();
    FillBase(*original);
    original->coreText7 = "7";
    original->coreText8 = "8";
    original->coreNumber9 = int64_t{1} << 40;
    original->coreNumber10 = 10;
    original->coreText12 = "12";
    original->coreNumber13 = 13;
    original->coreText17 = "17";
    original->coreFlag18 = true;
    original->channelID = 4;
    original->channel = "Facebook";
    original->coreNumber23 = -(int64_t{1} << 41);
    original->coreText27 = "27";

    const InnerLoginRet copy(*original);
    const InnerLoginRet moved(std::move(*original));
    original.reset();

    for (const InnerLoginRet* record : {&copy, &moved}) {
        ExpectFilledBase(*record);
        EXPECT_EQ(record->coreText7.toString(), "7");
        EXPECT_EQ(record->coreText8.toString(), "8");
        EXPECT_EQ(record->coreNumber9, int64_t{1} << 40);
        EXPECT_EQ(record->coreNumber10, 10);
        EXPECT_EQ(record->coreText12.toString(), "12");
        EXPECT_EQ(record->coreNumber13, 13);
        EXPECT_EQ(record->coreText17.toString(), "17");
        EXPECT_TRUE(record->coreFlag18);
        EXPECT_EQ(record->channelID, 4);
        EXPECT_EQ(record->channel.toString(), "Facebook");
        EXPECT_EQ(record->coreNumber23, -(int64_t{1} << 41));
        EXPECT_EQ(record->coreText27.toString(), "27");
    }
}

TEST(VornRecordsTest, LoginReplyMoveLeavesTheSourceTextsEmpty) {
    InnerLoginPluginRet original;
    original.methodNameID = 5;
    original.channelID = 4;
    original.channel = "a channel name too long for the short form";
    original.channelInfo = "{\"access_token\":\"abcdefghijklmnopqrstuvwxyz\"}";
    original.coreText7 = "seven";
    const InnerLoginPluginRet copy(original);

    const InnerLoginPluginRet moved(std::move(original));

    for (const InnerLoginPluginRet* record : {&copy, &moved}) {
        EXPECT_EQ(record->methodNameID, 5);
        EXPECT_EQ(record->channelID, 4);
        EXPECT_EQ(record->channel, "a channel name too long for the short form");
        EXPECT_EQ(record->channelInfo, "{\"access_token\":\"abcdefghijklmnopqrstuvwxyz\"}");
        EXPECT_EQ(record->coreText7, "seven");
    }
    EXPECT_THAT(original.channel, IsEmpty());     // NOLINT(bugprone-use-after-move): what a move leaves is the point.
    EXPECT_THAT(original.channelInfo, IsEmpty()); // NOLINT(bugprone-use-after-move)
}

TEST(VornRecordsTest, WaitingResultOwnsCopiesOfWhatItIsMadeFrom) {
    auto result = std::make_unique<InnerBaseRet>(0);
    FillBase(*result);
    auto seqID = std::make_unique<String>("s1");

    const VornCallBackParams<InnerBaseRet> waiting(*result, 4000000000u, *seqID);
    result.reset();
    seqID.reset();
    const VornCallBackParams<InnerBaseRet> copy(waiting);

    ExpectFilledBase(copy.mRet);
    EXPECT_EQ(copy.mObserverID, 4000000000u);
    EXPECT_EQ(copy.mSeqID.toString(), "s1");
}

// ---- Parameters

TEST(VornRecordsTest, RequestIsCopiedWhole) {
    auto original = std::make_unique<VornFriendReqInfo>();
    original->type = 10001;
    original->user = "user";
    original->title = "title";
    original->desc = "desc";
    original->imagePath = "image";
    original->thumbPath = "thumb";
    original->mediaPath = "media";
    original->link = "link";
    original->extraJson = "extra";

    const VornFriendReqInfo copy(*original);
    original.reset();

    EXPECT_EQ(copy.type, 10001);
    EXPECT_EQ(copy.user.toString(), "user");
    EXPECT_EQ(copy.title.toString(), "title");
    EXPECT_EQ(copy.desc.toString(), "desc");
    EXPECT_EQ(copy.imagePath.toString(), "image");
    EXPECT_EQ(copy.thumbPath.toString(), "thumb");
    EXPECT_EQ(copy.mediaPath.toString(), "media");
    EXPECT_EQ(copy.link.toString(), "link");
    EXPECT_EQ(copy.extraJson.toString(), "extra");
}

TEST(VornRecordsTest, KeptRequestIsWrittenWithUserBehindDesc) {
    VornFriendReqInfo request;
    request.type = 10001;
    request.user = "u";
    request.title = "t";
    request.desc = "d";
    request.imagePath = "i";
    request.thumbPath = "th";
    request.mediaPath = "m";
    request.link = "l";
    request.extraJson = "{\"k\":1}";

    const std::string json = VornJsonManager::ToJson(request, "");

    EXPECT_EQ(json, R"({"type":10001,"title":"t","desc":"d","user":"u","imagePath":"i","thumbPath":"th",)"
                    R"("mediaPath":"m","link":"l","extraJson":"{\"k\":1}"})");
}

TEST(VornRecordsTest, RequestIsWrittenAsANestedObjectUnderItsKey) {
    VornFriendReqInfo request;
    request.type = 1;
    VornJsonWriter writer;

    writer.StartJsonConvert();
    writer.convert("request", request);
    writer.convert("after", 2);
    writer.EndJsonConvert();

    EXPECT_EQ(writer.GetJsonString().toString(),
              R"({"request":{"type":1,"title":"","desc":"","user":"","imagePath":"","thumbPath":"",)"
              R"("mediaPath":"","link":"","extraJson":""},"after":2})");
}

TEST(VornRecordsTest, LoginParametersMoveLeavesTheSourceTextsEmpty) {
    VornLoginParams original;
    original.methodID = 3;
    original.seqID = "a sequence ID that is longer than the short form";
    original.permissions = "public_profile,email,user_friends,and_more";

    const VornLoginParams moved(std::move(original));

    EXPECT_EQ(moved.methodID, 3);
    EXPECT_EQ(moved.seqID, "a sequence ID that is longer than the short form");
    EXPECT_EQ(moved.permissions, "public_profile,email,user_friends,and_more");
    EXPECT_THAT(original.seqID, IsEmpty());       // NOLINT(bugprone-use-after-move)
    EXPECT_THAT(original.permissions, IsEmpty()); // NOLINT(bugprone-use-after-move)
}

} // namespace
} // namespace Tarvik::Vorn::Test
