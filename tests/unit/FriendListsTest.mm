// Very long lists of users in a request's extra text. A program of its own: a sanitizer that records the whole stack of
// each allocation would make it the longest of all, so here it records two frames.

#include "FriendTest.h"
#include "TaggedContent.h"

#include "FBSDKGamingServicesKit/GameRequests.h"

namespace Tarvik::Vorn::Test {
namespace {

using ::testing::IsEmpty;
using ::testing::SizeIs;

constexpr int kLength = 100000;

class FriendListsTest : public FriendTest {
protected:
    // Numbers and texts by turns: [0,"1",2,...].
    static std::string LongList() {
        std::string list = "[";
        for (int i = 0; i < kLength; ++i) {
            list += i == 0 ? "" : ",";
            list += i % 2 == 0 ? std::to_string(i) : "\"" + std::to_string(i) + "\"";
        }
        return list + "]";
    }
};

TEST_F(FriendListsTest, ABatchOf100000UsersIsInvitedWhole) {
    VornFriendReqInfo request = RequestOf(10003);
    request.title = "t";
    request.desc = "d";
    request.extraJson = R"({"inviteType":"batch","userList":)" + LongList() + "}";

    SendMessage(request);

    const auto shown = Host::GameRequests();
    ASSERT_THAT(shown, SizeIs(1));
    ASSERT_THAT(shown[0].recipients, SizeIs(kLength));
    EXPECT_EQ(shown[0].recipients.front(), "0");
    EXPECT_EQ(shown[0].recipients[54321], "54321");
    EXPECT_EQ(shown[0].recipients.back(), "99999");
}

TEST_F(FriendListsTest, AShareTags100000People) {
    const RetainPtr<VornTaggedContent*> content = AdoptNS([[VornTaggedContent alloc] init]);
    VornFriendReqInfo request = RequestOf(10001);
    request.extraJson = R"({"friends":)" + LongList() + "}";

    [static_cast<id<VornTagging>>(Plugin()) setShareTaggablePeople:content.get() reqInfo:&request seqID:"s1"];

    NSArray* const people = content.get()->peopleIDs;
    ASSERT_EQ([people count], static_cast<NSUInteger>(kLength));
    EXPECT_TRUE([[people objectAtIndex:54321] isEqual:@"54321"]);
    EXPECT_TRUE([[people lastObject] isEqual:@"99999"]);
    EXPECT_THAT(Lines(), IsEmpty());
}

} // namespace
} // namespace Tarvik::Vorn::Test
