// What waits for an answer, and in which place.

#include "OpenThings.h"

#include <gtest/gtest.h>

#include <optional>

namespace Tarvik::Vorn::Test {
namespace {

using namespace Tarvik::Vorn::Simulator;
using Host::Opening;

std::optional<OpenThings::Thing> OldestOf(const OpenThings& open, Opening opening, size_t index = 0) {
    return open.FindWhere(index, [opening](const OpenThings::Thing& thing) { return thing.opening == opening; });
}

TEST(OpenThingsTest, ThingsAreFoundByTheirNumberUntilTheyAreRemoved) {
    OpenThings open;
    const OpenThings::Thing share = open.Add(Opening::kShareDialog, 4);
    const OpenThings::Thing upload = open.Add(Opening::kImageUpload, 5);

    open.Remove(share);

    EXPECT_FALSE(open.Find(share.number));
    ASSERT_TRUE(open.Find(upload.number));
    EXPECT_EQ(open.Find(upload.number)->request, 5u);
    EXPECT_EQ(open.Find(upload.number)->opening, Opening::kImageUpload);
}

TEST(OpenThingsTest, NumbersAreNeverUsedAgain) {
    OpenThings open;
    const OpenThings::Thing first = open.Add(Opening::kShareDialog, 0);
    open.Remove(first);

    const OpenThings::Thing second = open.Add(Opening::kShareDialog, 0);

    EXPECT_NE(first.number, second.number);
}

TEST(OpenThingsTest, TheOldestComesFirst) {
    OpenThings open;
    open.Add(Opening::kShareDialog, 1);
    open.Add(Opening::kImageUpload, 2);
    open.Add(Opening::kShareDialog, 3);

    EXPECT_EQ(OldestOf(open, Opening::kShareDialog)->request, 1u);
    EXPECT_EQ(OldestOf(open, Opening::kShareDialog, 1)->request, 3u);
    EXPECT_FALSE(OldestOf(open, Opening::kShareDialog, 2));
}

TEST(OpenThingsTest, ShareAndMessageDialogsWaitInOneRow) {
    OpenThings open;
    const OpenThings::Thing message = open.Add(Opening::kMessageDialog, 1);
    const OpenThings::Thing invitation = open.Add(Opening::kGameRequest, 2);
    const OpenThings::Thing share = open.Add(Opening::kShareDialog, 3);

    EXPECT_EQ(open.IndexOf(message), 0u);
    EXPECT_EQ(open.IndexOf(share), 1u);
    EXPECT_EQ(open.IndexOf(invitation), 0u);
}

TEST(OpenThingsTest, OtherThingsHaveARowOfTheirOwn) {
    OpenThings open;
    open.Add(Opening::kImageUpload, 1);
    const OpenThings::Thing video = open.Add(Opening::kVideoUpload, 2);
    open.Add(Opening::kPhotoPrompt, 3);
    const OpenThings::Thing changes = open.Add(Opening::kPhotoChanges, 4);

    EXPECT_EQ(open.IndexOf(video), 0u);
    EXPECT_EQ(open.IndexOf(changes), 0u);
}

TEST(OpenThingsTest, ALoginTakesThePlaceOfTheFormerOne) {
    OpenThings open;
    const OpenThings::Thing first = open.Add(Opening::kLogin, 1);
    const OpenThings::Thing share = open.Add(Opening::kShareDialog, 2);

    const OpenThings::Thing second = open.Add(Opening::kLogin, 3);

    EXPECT_FALSE(open.Find(first.number));
    EXPECT_TRUE(open.Find(share.number));
    EXPECT_EQ(open.IndexOf(second), 0u);
}

TEST(OpenThingsTest, DialogsDoNotReplaceEachOther) {
    OpenThings open;
    const OpenThings::Thing first = open.Add(Opening::kShareDialog, 1);
    open.Add(Opening::kShareDialog, 2);

    EXPECT_TRUE(open.Find(first.number));
}

TEST(OpenThingsTest, WhatIsPutBackStandsBehindAllOthersAndKeepsItsNumber) {
    OpenThings open;
    const OpenThings::Thing first = open.Add(Opening::kShareDialog, 1);
    const OpenThings::Thing second = open.Add(Opening::kShareDialog, 2);

    open.PutBack(first);

    EXPECT_EQ(open.IndexOf(second), 0u);
    EXPECT_EQ(open.IndexOf(first), 1u);
    EXPECT_TRUE(open.Find(first.number));
}

TEST(OpenThingsTest, WhatWasRemovedCanBePutBackOnce) {
    OpenThings open;
    const OpenThings::Thing first = open.Add(Opening::kShareDialog, 1);
    open.Remove(first);

    open.PutBack(first);
    open.PutBack(first);

    EXPECT_EQ(OldestOf(open, Opening::kShareDialog)->number, first.number);
    EXPECT_FALSE(OldestOf(open, Opening::kShareDialog, 1));
}

TEST(OpenThingsTest, WhatHasStayedOpenKeepsItsPlace) {
    OpenThings open;
    open.Add(Opening::kVideoUpload, 1);
    const OpenThings::Thing second = open.Add(Opening::kVideoUpload, 2);
    const OpenThings::Thing third = open.Add(Opening::kVideoUpload, 3);

    const size_t place = open.Remove(second);
    open.PutBackAt(place, second);

    EXPECT_EQ(place, 1u);
    EXPECT_EQ(open.IndexOf(second), 1u);
    EXPECT_EQ(open.IndexOf(third), 2u);
}

TEST(OpenThingsTest, AThingKnowsTheSequenceIDOfItsRequest) {
    OpenThings open;

    EXPECT_EQ(open.Add(Opening::kLogin, 1, "login-1").seqID, "login-1");
}

} // namespace
} // namespace Tarvik::Vorn::Test
