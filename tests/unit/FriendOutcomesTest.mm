// What the outcomes of Facebook's share dialogs and game requests become. The plugin is told them as Facebook's SDK tells
// its delegates; which dialog they come from makes no difference.

#include "FriendTest.h"

#import <AuthenticationServices/AuthenticationServices.h>
#import <FBSDKCoreKit/FBSDKCoreKit.h>
#import <FBSDKCoreKit/FBSDKCoreKit-Swift.h>
#import <FBSDKShareKit/FBSDKShareKit.h>
#import <FBSDKShareKit/FBSDKShareKit-Swift.h>
#import <FBSDKGamingServicesKit/FBSDKGamingServicesKit-Swift.h>

namespace Tarvik::Vorn::Test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr const char* kShareCompleted = "-[VornFriendFacebook sharer:didCompleteWithResults:]";
constexpr const char* kShareFailed = "-[VornFriendFacebook sharer:didFailWithError:]";
constexpr const char* kShareCancelled = "-[VornFriendFacebook sharerDidCancel:]";
constexpr const char* kRequestCompleted = "-[VornFriendFacebook gameRequestDialog:didCompleteWithResults:]";
constexpr const char* kRequestFailed = "-[VornFriendFacebook gameRequestDialog:didFailWithError:]";
constexpr const char* kRequestCancelled = "-[VornFriendFacebook gameRequestDialogDidCancel:]";

// An error whose description is not its localized description, as those of Facebook's SDK.
NSError* FacebookError(NSInteger code) {
    return [NSError errorWithDomain:@"com.facebook.sdk.share"
                               code:code
                           userInfo:@{NSLocalizedDescriptionKey : @"for the user"}];
}

std::string DescriptionOf(id object) {
    return [[object description] UTF8String];
}

class FriendOutcomesTest : public FriendTest {
protected:
    FriendOutcomesTest() { Park(kCall); }

    id<FBSDKSharingDelegate> Sharing() const { return static_cast<id<FBSDKSharingDelegate>>(Plugin()); }
    id<FBSDKGameRequestDialogDelegate> Requests() const {
        return static_cast<id<FBSDKGameRequestDialogDelegate>>(Plugin());
    }

    void CompleteShare(NSDictionary* results) const { [Sharing() sharer:mSharer didCompleteWithResults:results]; }
    void FailShare(NSError* error) const { [Sharing() sharer:mSharer didFailWithError:error]; }
    void CancelShare() const { [Sharing() sharerDidCancel:mSharer]; }
    void CompleteRequest(NSDictionary* results) const {
        [Requests() gameRequestDialog:mDialog didCompleteWithResults:results];
    }
    void FailRequest(NSError* error) const { [Requests() gameRequestDialog:mDialog didFailWithError:error]; }
    void CancelRequest() const { [Requests() gameRequestDialogDidCancel:mDialog]; }

    // What the core is told of a completed game request.
    static InnerBaseRet CompletedWith(const std::string& extraJson) {
        InnerBaseRet ret(0);
        ret.extraJson = extraJson;
        return ret;
    }

    static const inline Call kCall{.methodID = 414, .seqID = "p1", .observerID = 32};

private:
    // The plugin asks neither for anything.
    id<FBSDKSharing> mSharer = nil;
    FBSDKGameRequestDialog* mDialog = nil;
};

// ---- Shares and messages

TEST_F(FriendOutcomesTest, ACompletedShareIsCode0AndItsResultsAreLoggedOnly) {
    NSDictionary* const results = @{@"postId" : @"1_2", @"to" : @[ @"7" ]};

    CompleteShare(results);

    EXPECT_THAT(Delivered(), ElementsAre(Result(kCall, Coded(0))));
    EXPECT_THAT(Lines(),
                ElementsAre(Debug(kFriendFile, kShareCompleted, "[ p1 ]  results : " + DescriptionOf(results))));
}

TEST_F(FriendOutcomesTest, ACompletedShareWithoutResultsIsCode0) {
    CompleteShare(@{});
    CompleteShare(nil);

    EXPECT_THAT(Delivered(), ElementsAre(Result(kCall, Coded(0)), Result(kCall, Coded(0))));
    EXPECT_EQ(Lines().at(0).text, "[ p1 ]  results : " + DescriptionOf(@{}));
    EXPECT_EQ(Lines().at(1).text, "[ p1 ]  results : ");
}

TEST_F(FriendOutcomesTest, ACancelledShareIsCode2) {
    CancelShare();

    EXPECT_THAT(Delivered(), ElementsAre(Result(kCall, Coded(2))));
    EXPECT_THAT(Lines(), ElementsAre(Debug(kFriendFile, kShareCancelled, "[ p1 ] cancel")));
}

TEST_F(FriendOutcomesTest, KeptAFailedShareHasFacebooksCodeAndDescriptionInPlaceOfThePluginsOwn) {
    NSError* const error = FacebookError(202);
    ASSERT_NE(DescriptionOf(error), "for the user");

    FailShare(error);

    InnerBaseRet expected(9999);
    expected.retCode = 202;
    expected.retMsg = DescriptionOf(error);
    EXPECT_THAT(Delivered(), ElementsAre(Result(kCall, expected)));
    EXPECT_THAT(Lines(), ElementsAre(Debug(kFriendFile, kShareFailed, "[ p1 ]error : " + DescriptionOf(error))));
}

TEST_F(FriendOutcomesTest, KeptAShareThatFailsWithCode2LooksLikeACancelledOneButForItsText) {
    NSError* const error = FacebookError(2);

    FailShare(error);

    InnerBaseRet expected(2);
    expected.retMsg = DescriptionOf(error);
    EXPECT_THAT(Delivered(), ElementsAre(Result(kCall, expected)));
}

TEST_F(FriendOutcomesTest, AFailedSharesCodeIsNarrowedTo32Bits) {
    FailShare(Host::MakeError(@"d", (3LL << 32) - 1, @"t"));

    EXPECT_THAT(Delivered().at(0).record, ::testing::HasSubstr("retCode: -1,"));
}

TEST_F(FriendOutcomesTest, AFailedShareWithoutAnErrorIsCode0WithoutAText) {
    FailShare(nil);

    InnerBaseRet expected(9999);
    expected.retCode = 0;
    expected.retMsg = "";
    EXPECT_THAT(Delivered(), ElementsAre(Result(kCall, expected)));
    EXPECT_EQ(Lines().at(0).text, "[ p1 ]error : ");
}

TEST_F(FriendOutcomesTest, ASequenceIDThatIsNotUTF8IsEmptyInTheLinesOfAShare) {
    Park({.seqID = "\xff", .observerID = 32});

    CompleteShare(@{});
    CancelShare();
    FailShare(FacebookError(1));

    EXPECT_EQ(Lines().at(0).text, "[  ]  results : " + DescriptionOf(@{}));
    EXPECT_EQ(Lines().at(1).text, "[  ] cancel");
    EXPECT_THAT(Lines().at(2).text, ::testing::StartsWith("[  ]error : "));
    EXPECT_EQ(Delivered().at(0).seqID, "");
}

// ---- Game requests

TEST_F(FriendOutcomesTest, ACompletedRequestPassesOnItsRecipientsAlone) {
    NSDictionary* const results = @{@"to" : @[ @"111", @"222" ], @"request" : @"900"};

    CompleteRequest(results);

    EXPECT_THAT(Delivered(), ElementsAre(Result(kCall, CompletedWith(R"({"RequestRecipients":["111","222"]})"))));
    EXPECT_THAT(Lines(), ElementsAre(Debug(kFriendFile, kRequestCompleted,
                                           "facebook gameRequestDialog success : " + DescriptionOf(results))));
}

TEST_F(FriendOutcomesTest, ACompletedRequestWithoutToHasNoExtraText) {
    CompleteRequest(@{});
    CompleteRequest(@{@"request" : @"900", @"to[0]" : @"111", @"TO" : @"222"});
    CompleteRequest(nil);

    const Delivery expected = Result(kCall, Coded(0));
    EXPECT_THAT(Delivered(), ElementsAre(expected, expected, expected));
}

TEST_F(FriendOutcomesTest, WhateverStandsUnderToIsPassedOn) {
    CompleteRequest(@{@"to" : @"111"});
    CompleteRequest(@{@"to" : [NSNull null]});
    CompleteRequest(@{@"to" : @{@"k" : @(1)}});
    CompleteRequest(@{@"to" : @[]});

    EXPECT_THAT(Delivered(), ElementsAre(Result(kCall, CompletedWith(R"({"RequestRecipients":"111"})")),
                                         Result(kCall, CompletedWith(R"({"RequestRecipients":null})")),
                                         Result(kCall, CompletedWith(R"({"RequestRecipients":{"k":1}})")),
                                         Result(kCall, CompletedWith(R"({"RequestRecipients":[]})"))));
}

TEST_F(FriendOutcomesTest, RecipientsWithoutAJsonFormLeaveTheExtraTextEmpty) {
    CompleteRequest(@{@"to" : [NSDate dateWithTimeIntervalSince1970:0]});

    EXPECT_THAT(Delivered(), ElementsAre(Result(kCall, Coded(0))));
}

TEST_F(FriendOutcomesTest, ACancelledRequestIsCode2) {
    CancelRequest();

    EXPECT_THAT(Delivered(), ElementsAre(Result(kCall, Coded(2))));
    EXPECT_THAT(Lines(), ElementsAre(Debug(kFriendFile, kRequestCancelled, "facebook gameRequestDialog cancel")));
}

TEST_F(FriendOutcomesTest, KeptAFailedRequestIsCode9999WithFacebooksCodeAndDescriptionBesideIt) {
    NSError* const error = FacebookError(203);

    FailRequest(error);

    InnerBaseRet expected(9999);
    expected.thirdCode = 203;
    expected.thirdMsg = DescriptionOf(error);
    EXPECT_THAT(Delivered(), ElementsAre(Result(kCall, expected)));
    EXPECT_THAT(Lines(), ElementsAre(Debug(kFriendFile, kRequestFailed,
                                           "facebook gameRequestDialog error : " + DescriptionOf(error))));
}

TEST_F(FriendOutcomesTest, AFailedRequestsCodeIsNarrowedTo32Bits) {
    FailRequest(Host::MakeError(@"d", (1LL << 32) + 9, @"t"));

    EXPECT_THAT(Delivered().at(0).record, ::testing::HasSubstr("thirdCode: 9,"));
}

TEST_F(FriendOutcomesTest, AFailedRequestWithoutAnErrorHasThirdCode0AndNoText) {
    FailRequest(nil);

    EXPECT_THAT(Delivered(), ElementsAre(Result(kCall, Coded(9999))));
    EXPECT_EQ(Lines().at(0).text, "facebook gameRequestDialog error : ");
}

// ---- Under which IDs

TEST_F(FriendOutcomesTest, AnOutcomeGoesOutUnderTheNewerRequestsIDs) {
    const Call newer{.methodID = 212, .seqID = "p2", .observerID = 31};
    Park(newer);

    CompleteShare(@{});
    CancelRequest();

    EXPECT_THAT(Delivered(), ElementsAre(Result(newer, Coded(0)), Result(newer, Coded(2))));
}

TEST_F(FriendOutcomesTest, AnOutcomeAfterAddFriendGoesToItsObserverUnderTheOlderIDs) {
    AddFriend({.methodID = 213, .seqID = "a", .observerID = 31});
    DrainMainQueue();
    ResultRecorder::ForgetDeliveries();

    CompleteShare(@{});

    EXPECT_THAT(Delivered(), ElementsAre(Result({.methodID = 414, .seqID = "p1", .observerID = 31}, Coded(0))));
}

TEST_F(FriendOutcomesTest, ASecondOutcomeIsDeliveredLikeTheFirst) {
    CompleteShare(@{});
    CancelShare();

    EXPECT_THAT(Delivered(), ElementsAre(Result(kCall, Coded(0)), Result(kCall, Coded(2))));
}

class FriendOutcomesOnThreads : public FriendOutcomesTest, public ::testing::WithParamInterface<int> {};

TEST_P(FriendOutcomesOnThreads, ReachTheObserverOnTheMainThread) {
    OnAnotherThread([this] {
        switch (GetParam()) {
        case 0:
            return CompleteShare(@{});
        case 1:
            return CancelShare();
        case 2:
            return FailShare(FacebookError(1));
        case 3:
            return CompleteRequest(@{});
        case 4:
            return CancelRequest();
        default:
            return FailRequest(FacebookError(1));
        }
    });
    EXPECT_THAT(ResultRecorder::Deliveries(), IsEmpty());

    const auto delivered = Delivered();
    ASSERT_EQ(delivered.size(), 1u);
    EXPECT_EQ(delivered[0].thread, std::this_thread::get_id());
    EXPECT_EQ(delivered[0].observerID, 32u);
}

INSTANTIATE_TEST_SUITE_P(EachOutcome, FriendOutcomesOnThreads, ::testing::Range(0, 6));

} // namespace
} // namespace Tarvik::Vorn::Test
