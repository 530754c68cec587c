// Between whom the entries of a timeline are drawn.
#include "report/Lanes.h"

#include <gtest/gtest.h>

namespace Tarvik::Vorn::Simulator {

// Found by GoogleTest through the enumeration's namespace.
void PrintTo(const Way& way, std::ostream* out) {
    *out << kLaneNames[static_cast<size_t>(way.from)] << " -> " << kLaneNames[static_cast<size_t>(way.to)];
}

namespace Test {
namespace {

TEST(LanesTest, CallsGoFromTheCoreToThePluginAndReturn) {
    EXPECT_EQ(WayOf(EntryKind::kCall, ""), (Way{Lane::kCore, Lane::kPlugin}));
    EXPECT_EQ(WayOf(EntryKind::kReturn, ""), (Way{Lane::kPlugin, Lane::kCore}));
    EXPECT_EQ(WayOf(EntryKind::kThrown, ""), (Way{Lane::kPlugin, Lane::kCore}));
    EXPECT_EQ(WayOf(EntryKind::kRecord, ""), (Way{Lane::kPlugin, Lane::kCore}));
}

TEST(LanesTest, ThePluginCallsFacebookAndTheSystem) {
    EXPECT_EQ(WayOf(EntryKind::kFacebook, ""), (Way{Lane::kPlugin, Lane::kFacebook}));
    EXPECT_EQ(WayOf(EntryKind::kApple, ""), (Way{Lane::kPlugin, Lane::kSystem}));
}

TEST(LanesTest, AnAnswerComesFromFacebookWhenItSaysSoAndFromTheSystemOtherwise) {
    EXPECT_EQ(WayOf(EntryKind::kAnswer, "Facebook ends the login"), (Way{Lane::kFacebook, Lane::kPlugin}));
    EXPECT_EQ(WayOf(EntryKind::kAnswer, "the user allows it"), (Way{Lane::kSystem, Lane::kPlugin}));
}

TEST(LanesTest, ResultsReachTheGameOrAreOnTheirWayToIt) {
    for (const EntryKind kind : {EntryKind::kDelivered, EntryKind::kCollected, EntryKind::kLost}) {
        EXPECT_EQ(WayOf(kind, ""), (Way{Lane::kCore, Lane::kGame}));
    }
    EXPECT_EQ(WayOf(EntryKind::kCached, ""), (Way{Lane::kCore, Lane::kCore}));
}

TEST(LanesTest, TheSystemTellsTheCoreAndTheGameAnswersIt) {
    EXPECT_EQ(WayOf(EntryKind::kSystem, ""), (Way{Lane::kSystem, Lane::kCore}));
    EXPECT_EQ(WayOf(EntryKind::kGame, ""), (Way{Lane::kGame, Lane::kCore}));
}

TEST(LanesTest, WhatThePluginWritesIsANoteOnIt) {
    for (const EntryKind kind : {EntryKind::kLog, EntryKind::kLogError, EntryKind::kTrace}) {
        EXPECT_EQ(WayOf(kind, "Facebook"), (Way{Lane::kPlugin, Lane::kPlugin}));
    }
}

TEST(LanesTest, OtherNotesStandWhereTheyHappen) {
    EXPECT_EQ(WayOf(EntryKind::kCore, ""), (Way{Lane::kCore, Lane::kCore}));
    EXPECT_EQ(WayOf(EntryKind::kEvents, ""), (Way{Lane::kFacebook, Lane::kFacebook}));
    EXPECT_EQ(WayOf(EntryKind::kWorld, ""), (Way{Lane::kSystem, Lane::kSystem}));
    EXPECT_EQ(WayOf(EntryKind::kFault, ""), (Way{Lane::kSystem, Lane::kSystem}));
}

} // namespace
} // namespace Test
} // namespace Tarvik::Vorn::Simulator
