// What the audit remarks, each with a smallest case and a neighbouring one that is no remark.

#include "Audit.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace Tarvik::Vorn::Test {
namespace {

using namespace Tarvik::Vorn::Simulator;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::SizeIs;

RequestFacts Request(const std::string& seqID) {
    RequestFacts facts;
    facts.seqID = seqID;
    facts.kind = "share";
    facts.title = "share of a link";
    facts.observerID = 31;
    return facts;
}

RequestFacts Invitation(const std::string& seqID) {
    RequestFacts facts = Request(seqID);
    facts.kind = "send-message";
    facts.title = "invitation";
    return facts;
}

// A result that a request causes.
Entry Result(size_t request, const std::string& seqID, int64_t retCode = 0, const std::string& retMsg = "",
             unsigned observer = 31) {
    Entry entry;
    entry.request = request;
    entry.kind = EntryKind::kRecord;
    entry.result = ResultFacts{"InnerBaseRet", observer, seqID, {{"retCode", retCode}, {"retMsg", retMsg}}};
    return entry;
}

Entry WithExtraJson(Entry entry, const std::string& extraJson) {
    entry.result->fields.push_back({"extraJson", extraJson});
    return entry;
}

Entry Of(EntryKind kind, size_t request, const std::string& text) {
    Entry entry;
    entry.kind = kind;
    entry.request = request;
    entry.text = text;
    return entry;
}

std::vector<std::string> Finished(Audit& audit, const std::vector<std::string>& cached = {}) {
    std::vector<std::string> ids;
    for (const AuditFinding& finding : audit.Finish(cached)) {
        ids.push_back(finding.id);
    }
    return ids;
}

TEST(AuditTest, EveryIdentifierIsThereOnce) {
    EXPECT_THAT(AuditIDs(),
                ElementsAre("unanswered", "wrong-request", "given-twice", "never-collected", "lost", "off-main-thread",
                            "dropped-event", "not-a-cancel", "no-recipients", "exception", "unused-answer"));
}

TEST(AuditTest, ARequestWithoutAResultIsUnanswered) {
    Audit audit;
    audit.Begin(0, Request("a"), true);

    EXPECT_THAT(audit.Unanswered(), ElementsAre("a"));
    EXPECT_THAT(Finished(audit), ElementsAre("unanswered"));
}

TEST(AuditTest, ARequestWithAResultIsAnswered) {
    Audit audit;
    audit.Begin(0, Request("a"), true);
    audit.See(Result(0, "a"));

    EXPECT_THAT(audit.Unanswered(), IsEmpty());
    EXPECT_THAT(Finished(audit), IsEmpty());
}

TEST(AuditTest, ARequestThatAwaitsNothingIsNotUnanswered) {
    Audit audit;
    audit.Begin(0, Request("a"), false);

    EXPECT_THAT(audit.Unanswered(), IsEmpty());
    EXPECT_THAT(Finished(audit), IsEmpty());
}

TEST(AuditTest, AResultOfAnotherRequestIsNoAnswer) {
    Audit audit;
    audit.Begin(0, Request("a"), true);
    audit.Begin(1, Request("b"), true);
    audit.See(Result(1, "b"));

    EXPECT_THAT(audit.Unanswered(), ElementsAre("a"));
}

TEST(AuditTest, ADeliveryIsNoSecondResult) {
    Audit audit;
    audit.Begin(0, Request("a"), true);
    audit.See(Result(0, "a"));
    Entry delivery = Result(0, "a");
    delivery.kind = EntryKind::kDelivered;
    audit.See(delivery);

    EXPECT_THAT(Finished(audit), IsEmpty());
}

TEST(AuditTest, AResultUnderAnotherSequenceIDIsAWrongRequest) {
    Audit audit;
    audit.Begin(0, Request("a"), true);
    audit.See(Result(0, "b"));

    const std::vector<AuditFinding> findings = audit.Finish({});

    ASSERT_THAT(findings, SizeIs(1));
    EXPECT_EQ(findings[0].id, "wrong-request");
    EXPECT_EQ(findings[0].request, 0u);
    EXPECT_THAT(findings[0].text, HasSubstr("The outcome of \"a\" goes out under the IDs of \"b\": "));
}

TEST(AuditTest, AResultWithoutASequenceIDIsAWrongRequest) {
    Audit audit;
    audit.Begin(0, Request("a"), true);
    audit.See(Result(0, ""));

    EXPECT_THAT(audit.Finish({}).front().text, HasSubstr("under the IDs of no request"));
}

TEST(AuditTest, AResultForAnotherObserverIsAWrongRequest) {
    Audit audit;
    audit.Begin(0, Request("a"), true);
    audit.See(Result(0, "a", 0, "", 32));

    const std::vector<AuditFinding> findings = audit.Finish({});

    ASSERT_THAT(findings, SizeIs(1));
    EXPECT_EQ(findings[0].id, "wrong-request");
    EXPECT_THAT(findings[0].text, HasSubstr("goes to observer 32 instead of 31."));
}

TEST(AuditTest, ARequestWithoutAnObserverOfItsOwnMayReachAny) {
    Audit audit;
    RequestFacts login = Request("a");
    login.observerID.reset();
    audit.Begin(0, login, true);
    audit.See(Result(0, "a", 0, "", 101));

    EXPECT_THAT(Finished(audit), IsEmpty());
}

TEST(AuditTest, ASecondResultIsGivenTwiceAndAThirdOneTooIsSaidOnce) {
    Audit audit;
    audit.Begin(0, Request("a"), true);
    audit.See(Result(0, "a"));
    audit.See(Result(0, "a"));
    audit.See(Result(0, "a"));

    EXPECT_THAT(Finished(audit), ElementsAre("given-twice"));
}

TEST(AuditTest, TwoRequestsUnderOneSequenceIDHaveAResultEach) {
    Audit audit;
    audit.Begin(0, Request("a"), true);
    audit.Begin(1, Request("a"), true);
    audit.See(Result(0, "a"));
    audit.See(Result(1, "a"));

    EXPECT_THAT(Finished(audit), IsEmpty());
}

TEST(AuditTest, AResultThatStillWaitsIsNeverCollected) {
    Audit audit;

    EXPECT_THAT(Finished(audit, {"a", "b"}), ElementsAre("never-collected", "never-collected"));
}

TEST(AuditTest, AResultThatReachesNobodyIsLost) {
    Audit audit;
    audit.See(Of(EntryKind::kLost, 0, "nobody observes it"));

    const std::vector<AuditFinding> findings = audit.Finish({});

    ASSERT_THAT(findings, SizeIs(1));
    EXPECT_EQ(findings[0].id, "lost");
    EXPECT_EQ(findings[0].text, "A result reaches nobody: nobody observes it.");
}

TEST(AuditTest, ACachedResultIsNotLost) {
    Audit audit;
    audit.See(Of(EntryKind::kCached, 0, "under \"a\""));

    EXPECT_THAT(Finished(audit), IsEmpty());
}

TEST(AuditTest, WhatIsShownOffTheMainThreadIsRemarked) {
    Audit audit;
    audit.SeeShownOffMainThread(3, "FBSDKShareDialog show");

    const std::vector<AuditFinding> findings = audit.Finish({});

    ASSERT_THAT(findings, SizeIs(1));
    EXPECT_EQ(findings[0].id, "off-main-thread");
    EXPECT_EQ(findings[0].request, 3u);
    EXPECT_THAT(findings[0].text, HasSubstr("FBSDKShareDialog show is called on another thread"));
}

TEST(AuditTest, ADroppedEventIsRemarkedWithItsReason) {
    Audit audit;
    audit.SeeDroppedEvent(1, "level", "hero", "it is null");

    EXPECT_EQ(audit.Finish({}).front().text, "Facebook drops the event \"level\" because of \"hero\": it is null.");
}

TEST(AuditTest, CodeTwoWithoutTheTextOfACancelIsNoCancel) {
    Audit audit;
    audit.Begin(0, Request("a"), true);
    audit.See(Result(0, "a", 2, "something was refused"));

    EXPECT_THAT(Finished(audit), ElementsAre("not-a-cancel"));
}

TEST(AuditTest, ACancelAndOtherCodesAreNotRemarked) {
    Audit audit;
    audit.Begin(0, Request("a"), true);
    audit.See(Result(0, "a", 2, "cancelled by the user"));
    audit.Begin(1, Request("b"), true);
    audit.See(Result(1, "b", 3, "something was refused"));

    EXPECT_THAT(Finished(audit), IsEmpty());
}

TEST(AuditTest, AnInvitationThatDoesNotSayWhomItWentToIsRemarked) {
    Audit audit;
    audit.Begin(0, Invitation("a"), true);
    audit.See(Result(0, "a"));

    EXPECT_THAT(Finished(audit), ElementsAre("no-recipients"));
}

TEST(AuditTest, AnInvitationWithRecipientsOrWithoutSuccessIsNotRemarked) {
    Audit audit;
    audit.Begin(0, Invitation("a"), true);
    audit.See(WithExtraJson(Result(0, "a"), "{}"));
    audit.Begin(1, Invitation("b"), true);
    audit.See(Result(1, "b", 9999));
    audit.Begin(2, Request("c"), true);
    audit.See(Result(2, "c"));

    EXPECT_THAT(Finished(audit), IsEmpty());
}

TEST(AuditTest, AnExceptionIsRemarkedAndAFaultIsNot) {
    Audit audit;
    audit.See(Of(EntryKind::kThrown, 0, "Name: reason"));
    audit.See(Of(EntryKind::kFault, 0, "the next call raises"));

    const std::vector<AuditFinding> findings = audit.Finish({});

    ASSERT_THAT(findings, SizeIs(1));
    EXPECT_EQ(findings[0].id, "exception");
    EXPECT_THAT(findings[0].text, HasSubstr("(Name: reason)"));
}

TEST(AuditTest, AnUnusedAnswerIsRemarked) {
    Audit audit;
    audit.SeeUnusedAnswer(0, "a", "answer-share");

    EXPECT_THAT(audit.Finish({}).front().text,
                HasSubstr("Request \"a\" has an answer of the kind \"answer-share\" that nothing has asked for"));
}

TEST(AuditTest, AHundredRemarksOfAKindAreKeptAndTheRestIsCounted) {
    Audit audit;
    for (size_t i = 0; i < 105; ++i) {
        audit.See(Of(EntryKind::kLost, i, "x"));
    }
    audit.See(Of(EntryKind::kThrown, 0, "x"));

    const std::vector<AuditFinding> findings = audit.Finish({});

    ASSERT_THAT(findings, SizeIs(102));
    EXPECT_EQ(findings.back().id, "lost");
    EXPECT_EQ(findings.back().text, "And 5 more of these.");
}

TEST(AuditTest, UnansweredRequestsAreRememberedHoweverManyThereAre) {
    Audit audit;
    for (size_t i = 0; i < 5000; ++i) {
        audit.Begin(i, Request(std::to_string(i)), true);
    }

    EXPECT_THAT(audit.Unanswered(), SizeIs(5000));
}

TEST(AuditTest, ASecondResultIsNoticedHoweverManyRequestsAreUnanswered) {
    Audit audit;
    for (size_t i = 0; i < 2000; ++i) {
        audit.Begin(i, Request(std::to_string(i)), true);
    }
    audit.See(Result(1999, "1999"));
    audit.Begin(2000, Request("2000"), true);
    audit.See(Result(1999, "1999"));

    EXPECT_THAT(Finished(audit), Contains("given-twice"));
}

TEST(AuditTest, AThousandAnsweredRequestsAreRemembered) {
    Audit audit;
    for (size_t i = 0; i < 1001; ++i) {
        audit.Begin(i, Request(std::to_string(i)), true);
        audit.See(Result(i, std::to_string(i)));
    }
    audit.See(Result(0, "0"));
    EXPECT_THAT(audit.Finish({}), IsEmpty());

    audit.See(Result(1, "1"));

    EXPECT_THAT(Finished(audit), ElementsAre("given-twice"));
}

} // namespace
} // namespace Tarvik::Vorn::Test
