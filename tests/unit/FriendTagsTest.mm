// The people that a share tags: which lists are set on the content, which are left alone, and what the log says then.

#include "FriendTest.h"
#include "TaggedContent.h"

namespace Tarvik::Vorn::Test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr const char* kTag = "-[VornFriendFacebook setShareTaggablePeople:reqInfo:seqID:]";

class FriendTagsTest : public FriendTest {
protected:
    FriendTagsTest() : mContent(AdoptNS([[VornTaggedContent alloc] init])) {}

    void Tag(const std::string& extraJson, const std::string& seqID = "t1") {
        VornFriendReqInfo request = RequestOf(10001);
        request.extraJson = extraJson;
        [static_cast<id<VornTagging>>(Plugin()) setShareTaggablePeople:mContent.get() reqInfo:&request seqID:seqID];
    }

    int Calls() const { return mContent.get()->calls; }

    std::vector<std::string> People() const {
        std::vector<std::string> people;
        for (NSString* person in mContent.get()->peopleIDs) {
            people.emplace_back([person UTF8String]);
        }
        return people;
    }

    NSArray* List() const { return mContent.get()->peopleIDs; }

private:
    RetainPtr<VornTaggedContent*> mContent;
};

class FriendTagsMissing : public FriendTagsTest, public ::testing::WithParamInterface<const char*> {};

TEST_P(FriendTagsMissing, LeaveTheContentAloneWithALineOfProgress) {
    Tag(GetParam());

    EXPECT_EQ(Calls(), 0);
    EXPECT_THAT(Lines(),
                ElementsAre(Debug(kFriendFile, kTag, "[ t1 ] friends in extraJson is null, not set taggable people")));
}

INSTANTIATE_TEST_SUITE_P(Table, FriendTagsMissing,
                         ::testing::Values("", "{}", "no json", "[\"1\"]", R"({"Friends":["1"]})", "\xff",
                                           R"({"friends":["1"]} x)"));

class FriendTagsNoArray : public FriendTagsTest, public ::testing::WithParamInterface<const char*> {};

TEST_P(FriendTagsNoArray, LeaveTheContentAloneWithALineOfError) {
    Tag(std::string(R"({"friends":)") + GetParam() + "}");

    EXPECT_EQ(Calls(), 0);
    EXPECT_THAT(Lines(), ElementsAre(Error(kFriendFile, kTag, "[ t1 ] friends in extraJson is not array")));
}

INSTANTIATE_TEST_SUITE_P(Table, FriendTagsNoArray,
                         ::testing::Values("null", R"("123")", "123", "true", "{}", R"({"0":"1"})"));

class FriendTagsElements : public FriendTagsTest, public ::testing::WithParamInterface<const char*> {};

TEST_P(FriendTagsElements, ThatAreNeitherTextNorNumberLeaveTheContentAlone) {
    Tag(std::string(R"({"friends":["123",)") + GetParam() + "]}");

    EXPECT_EQ(Calls(), 0);
    EXPECT_THAT(Lines(), ElementsAre(Error(kFriendFile, kTag, "[ t1 ] friends in extraJson is not number or string")));
}

INSTANTIATE_TEST_SUITE_P(Table, FriendTagsElements, ::testing::Values("{}", R"({"id":"1"})", "[]", "null"));

TEST_F(FriendTagsTest, TextsAndNumbersAreTaggedInTheirOrder) {
    Tag(R"({"friends":["123",456,"0789"],"other":1})");

    EXPECT_THAT(People(), ElementsAre("123", "456", "0789"));
    EXPECT_EQ(Calls(), 1);
    EXPECT_THAT(Lines(), IsEmpty());
}

TEST_F(FriendTagsTest, ANumberMayComeFirst) {
    Tag(R"({"friends":[456,"123"]})");

    EXPECT_THAT(People(), ElementsAre("456", "123"));
}

TEST_F(FriendTagsTest, NumbersBecomeTheirDecimalText) {
    Tag(R"({"friends":[0,-5,1234567890123456789,9223372036854775807,18446744073709551615,1.5,-0.25,true,false]})");

    EXPECT_THAT(People(), ElementsAre("0", "-5", "1234567890123456789", "9223372036854775807", "18446744073709551615",
                                      "1.5", "-0.25", "1", "0"));
}

TEST_F(FriendTagsTest, AnEmptyListIsSetWithoutALine) {
    Tag(R"({"friends":[]})");

    EXPECT_EQ(Calls(), 1);
    ASSERT_NE(List(), nil);
    EXPECT_EQ([List() count], 0u);
    EXPECT_THAT(Lines(), IsEmpty());
}

TEST_F(FriendTagsTest, TheListOnTheContentCannotBeChanged) {
    Tag(R"({"friends":["1"]})");

    EXPECT_FALSE([List() isKindOfClass:[NSMutableArray class]]);
}

TEST_F(FriendTagsTest, AnEmptySequenceIDPrintsAsEmpty) {
    Tag("", "");

    EXPECT_EQ(Lines().at(0).text, "[  ] friends in extraJson is null, not set taggable people");
}

TEST_F(FriendTagsTest, NothingIsCommitted) {
    Tag(R"({"friends":["1"]})");
    Tag(R"({"friends":[null]})");

    EXPECT_THAT(Delivered(), IsEmpty());
}

} // namespace
} // namespace Tarvik::Vorn::Test
