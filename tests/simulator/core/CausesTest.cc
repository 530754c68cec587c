// Every entry of a request's processing names that request.

#include "PlayedWorld.h"

#include <gmock/gmock.h>

#include <set>

namespace Tarvik::Vorn::Test {
namespace {

using namespace Tarvik::Vorn::Simulator;
using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Not;

class CausesTest : public PlayedWorld {
protected:
    // The requests of all entries of these kinds.
    static std::vector<size_t> Causes(const RunReport& run, const std::set<EntryKind>& kinds) {
        std::vector<size_t> causes;
        for (const Entry& entry : run.entries) {
            if (kinds.contains(entry.kind)) {
                causes.push_back(entry.request);
            }
        }
        return causes;
    }

    // What the plugin does, and what follows.
    static const std::set<EntryKind>& Processing() {
        static const std::set<EntryKind> kinds{
            EntryKind::kCall,  EntryKind::kReturn, EntryKind::kFacebook, EntryKind::kApple,     EntryKind::kLog,
            EntryKind::kTrace, EntryKind::kAnswer, EntryKind::kRecord,   EntryKind::kDelivered, EntryKind::kLogError};
        return kinds;
    }

    // The requests under which results with each sequence ID were delivered.
    static std::vector<std::string> Deliveries(const RunReport& run) {
        std::vector<std::string> deliveries;
        for (const Entry& entry : run.entries) {
            if (entry.kind == EntryKind::kDelivered) {
                deliveries.push_back(std::to_string(entry.request) + " " + entry.result->seqID);
            }
        }
        return deliveries;
    }
};

TEST_F(CausesTest, AllThatOneRequestCausesIsItsOwn) {
    const RunReport run = Played(ShareStep("a", ShareAnswer("completed", R"("after": "1 s")")));

    EXPECT_THAT(Causes(run, Processing()), Not(IsEmpty()));
    EXPECT_THAT(Causes(run, Processing()), Each(0u));
}

TEST_F(CausesTest, SoIsWhatHappensOnOtherThreads) {
    const std::string answers = R"({"answer-image-upload": {"outcome": "uploaded", "photoID": "7", "after": "1 s",
        "thread": "background"}})";
    const RunReport run = Played(R"({"share": {"methodID": 211, "seqID": "a", "observer": 31, "type": "image",
        "thread": "background", "imagePath": ")" VORN_MEDIA R"(/picture.png", "answers": [)" +
                                     answers + "]}}",
                                 kGamingPlayer);

    EXPECT_THAT(Heard(run), ElementsAre("1000 31 a 0"));
    EXPECT_TRUE(
        std::any_of(run.entries.begin(), run.entries.end(), [](const Entry& entry) { return !entry.onMainThread; }));
    EXPECT_THAT(Causes(run, Processing()), Each(0u));
}

TEST_F(CausesTest, WhatAnAnswerCausesBelongsToTheRequestThatOpenedIt) {
    const RunReport run =
        Played(ShareStep("a") + "," + ShareStep("b") + "," + ShareAnswer("completed", R"("of": "a")") + "," +
               ShareAnswer("cancelled", R"("of": "b")"));

    EXPECT_THAT(Deliveries(run), ElementsAre("0 b", "1 b"));
}

TEST_F(CausesTest, PlannedAnswersOutOfOrderBelongToTheirRequests) {
    const RunReport run = Played(ShareStep("a", ShareAnswer("completed", R"("after": "9 s", "thread": "background")")) +
                                 "," + ShareStep("b", ShareAnswer("cancelled", R"("after": "1 s")")));

    EXPECT_THAT(Deliveries(run), ElementsAre("1 b", "0 b"));
    EXPECT_THAT(Causes(run, {EntryKind::kAnswer}), ElementsAre(1u, 0u));
}

TEST_F(CausesTest, AChainOfAnswersBelongsToOneRequest) {
    const RunReport run =
        Played(VideoStep("a", R"({"finish-saving": {"outcome": "saved", "after": "5 s", "thread": "background"}},)" +
                                  ShareAnswer("completed", R"("after": "5 s")")) +
               "," + ShareStep("b", ShareAnswer("completed", R"("after": "7 s")")));

    EXPECT_THAT(Causes(run, {EntryKind::kAnswer}), ElementsAre(0u, 1u, 0u));
    EXPECT_THAT(Causes(run, {EntryKind::kDelivered}), ElementsAre(1u, 0u));
}

TEST_F(CausesTest, WhatBelongsToNoRequestNamesNone) {
    const RunReport run = Played(ShareStep("a", ShareAnswer("completed")) +
                                 R"(,{"note": "x"}, {"launch": {}}, {"activate": {}}, {"collect": {}})");

    const auto note = std::find_if(run.entries.begin(), run.entries.end(),
                                   [](const Entry& entry) { return entry.kind == EntryKind::kNote; });
    ASSERT_NE(note, run.entries.end());
    for (auto entry = note; entry != run.entries.end(); ++entry) {
        EXPECT_EQ(entry->request, kNoRequest) << entry->text;
    }
}

TEST_F(CausesTest, ARequestWhoseAllocationFailsKeepsItsEntries) {
    const RunReport run = Played(R"({"fail-allocation": {"nth": 1000000}},)" + LogoutStep("a"));

    EXPECT_THAT(Causes(run, Processing()), Each(0u));
    EXPECT_EQ(run.entries.back().text, "the request needs fewer than 1000000 allocations, and none has failed");
    EXPECT_EQ(run.entries.back().request, 0u);
}

TEST_F(CausesTest, RequestsAreDescribed) {
    const RunReport run = Played(R"({"wait": "2 s"},)" + ShareStep("a") + "," + LogoutStep("b") +
                                 R"(,{"report": {"event": "level", "seqID": "c"}})");

    ASSERT_EQ(run.requests.size(), 3u);
    EXPECT_EQ(run.requests[0].seqID, "a");
    EXPECT_EQ(run.requests[0].kind, "share");
    EXPECT_EQ(run.requests[0].title, "share of a link");
    EXPECT_EQ(run.requests[0].observerID, 31u);
    EXPECT_EQ(run.requests[0].methodID, 211);
    EXPECT_EQ(run.requests[0].time, 2000);
    EXPECT_EQ(run.requests[1].observerID, 108u);
    EXPECT_EQ(run.requests[2].title, "event \"level\"");
    EXPECT_EQ(run.requests[2].observerID, std::nullopt);
}

} // namespace
} // namespace Tarvik::Vorn::Test
