// Every hostile text in every place of the records that the core hands to the login and the friend plugin, for every
// call: a request has one outcome, is logged whole and hands on what the rules leave of the text.

#include "CoreCalls.h"
#include "OpenThings.h"

#include "MainQueue+Control.h"

#include <algorithm>
#include <set>
#include <tuple>

namespace Tarvik::Vorn::Test {
namespace {

using ::testing::AnyOf;
using ::testing::SizeIs;
using ::testing::StartsWith;

// Three indices: a call, a place in its records, a text.
struct Cell {
    const Route* route = nullptr;
    const Place* place = nullptr;
    const HostileText* text = nullptr;
};

void PrintTo(const Cell& cell, std::ostream* out) {
    *out << cell.text->name << " as " << cell.place->name << " of " << cell.route->name;
}

bool Takes(const Route& route, const Place& place) {
    switch (place.record) {
    case PlaceOf::kParams:
        return true;
    case PlaceOf::kLogin:
        return route.isLogin;
    case PlaceOf::kRequest:
        return route.takesRequest;
    }
    return false;
}

std::vector<Cell> Cells() {
    std::vector<Cell> cells;
    for (const Route& route : Routes()) {
        for (const Place& place : Places()) {
            if (!Takes(route, place)) {
                continue;
            }
            for (const HostileText& text : HostileTexts()) {
                cells.push_back({&route, &place, &text});
            }
        }
    }
    return cells;
}

class CoreTextsTest : public FriendShareTest {
protected:
    CoreTextsTest() {
        ResultRecorder::Observe<InnerLoginRet, 101>();
        ResultRecorder::Observe<InnerLoginPluginRet, 109>();
        ResultRecorder::Observe<InnerBaseRet, 108>();
    }

    // The records die when the call has returned.
    static CoreCall CallOf(const Route& route) {
        CoreCall call;
        call.params.methodID = route.methodID;
        call.params.seqID = "s1";
        call.params.permissions = "email";
        call.request.type = route.type;
        route.fill(call.request);
        return call;
    }

    static void Make(const Route& route, const CoreCall& call) {
        CoreCall dying = call;
        route.make(dying);
    }

    // Plays a call to its end: every dialog succeeds, every upload and every saving too.
    static void PlayToTheEnd() {
        Settle();
        constexpr int kMostStages = 4;
        for (int stage = 0; stage < kMostStages && OpenThingCount() > 0; ++stage) {
            EXPECT_EQ(OpenThingCount() + ResultRecorder::Deliveries().size(), 1u) << "one thing waits, or a result";
            SucceedWithWhatIsOpen();
            Settle();
        }
    }

    void ExpectOneResult(const Route& route, const CoreCall& call) {
        const std::vector<Delivery> results = ResultRecorder::Deliveries();
        ASSERT_THAT(results, SizeIs(1));
        EXPECT_THAT(results[0].seqID, AnyOf(UpToNul(call.params.seqID), route.resultsSeqID(call)));
    }

    void ExpectLoggedWhole(const Route& route, const CoreCall& call) {
        std::vector<LogLine> lines = Lines();
        const std::vector<LogLine> ofLogin = Log().LinesOf("VornLoginFacebook.mm");
        lines.insert(lines.end(), ofLogin.begin(), ofLogin.end());
        ASSERT_FALSE(lines.empty());
        EXPECT_TRUE(lines[0].text == route.firstLine(call)) << lines[0].text.substr(0, 1'000);
        for (const LogLine& line : lines) {
            EXPECT_THAT(line.text.substr(0, call.params.seqID.size() + 9),
                        AnyOf(StartsWith("[ " + UpToNul(call.params.seqID) + " ]"),
                              StartsWith("[ " + AsNSString(call.params.seqID).value_or("") + " ]"),
                              StartsWith("facebook")));
        }
        for (const TraceLine& trace : Log().Traces()) {
            EXPECT_TRUE(trace.seqID == UpToNul(call.params.seqID));
        }
    }

    static void ExpectShown(const Route& route, const CoreCall& call) {
        const Shown shown = route.shown();
        if (!shown.empty()) {
            EXPECT_TRUE(shown == route.expected(call)) << ::testing::PrintToString(shown).substr(0, 1'000);
        }
    }

    static void ExpectNothingLeft() {
        EXPECT_EQ(OpenThingCount(), 0u);
        EXPECT_EQ(Host::LivingShareDialogCount(), 0u);
        EXPECT_EQ(Host::MainQueueDepth(), 0u);
        EXPECT_EQ(CachedResultCount<InnerBaseRet>() + CachedResultCount<InnerLoginRet>() +
                      CachedResultCount<InnerLoginPluginRet>() + CachedResultCount<InnerFriendRet>(),
                  0u);
    }

    void ExpectServed(const Route& route, const CoreCall& call) {
        route.prepare();
        Make(route, call);
        PlayToTheEnd();

        ExpectOneResult(route, call);
        ExpectLoggedWhole(route, call);
        ExpectShown(route, call);
        ExpectNothingLeft();
    }
};

class CoreTextsEverywhereTest : public CoreTextsTest, public ::testing::WithParamInterface<Cell> {};

TEST_P(CoreTextsEverywhereTest, HasOneOutcomeIsLoggedWholeAndHandedOnByTheRules) {
    const auto& [route, place, text] = GetParam();
    CoreCall call = CallOf(*route);
    place->put(call, text->bytes);

    ExpectServed(*route, call);
}

INSTANTIATE_TEST_SUITE_P(Core, CoreTextsEverywhereTest, ::testing::ValuesIn(Cells()), [](const auto& info) {
    return info.param.route->name + "_" + info.param.place->name + "_" + info.param.text->name;
});

// ---- The largest texts, one for each way through the plugins

struct LargestText {
    const char* route;
    const char* place;
    size_t mebibytes;
};

class LargestCoreTextsTest : public CoreTextsTest, public ::testing::WithParamInterface<LargestText> {};

TEST_P(LargestCoreTextsTest, IsServedLikeAnyOther) {
    const auto route =
        std::find_if(Routes().begin(), Routes().end(), [](const Route& one) { return one.name == GetParam().route; });
    const auto place =
        std::find_if(Places().begin(), Places().end(), [](const Place& one) { return one.name == GetParam().place; });
    CoreCall call = CallOf(*route);
    place->put(call, HugeText(GetParam().mebibytes * kMebibyte));

    ExpectServed(*route, call);
}

// A friend request is written as JSON several times, which takes long without optimisation.
INSTANTIATE_TEST_SUITE_P(Core, LargestCoreTextsTest,
                         ::testing::Values(LargestText{"Login", "Permissions", 16}, LargestText{"Logout", "SeqID", 16},
                                           LargestText{"ShareLink", "Link", 1},
                                           LargestText{"ShareImage", "ExtraOfRequest", 1},
                                           LargestText{"SendInvitation", "Title", 1},
                                           LargestText{"UploadVideo", "Title", 1}),
                         [](const auto& info) { return std::string(info.param.route) + "_" + info.param.place; });

// ---- That no place is forgotten

TEST(CoreTextsPlacesTest, AreAllTextsOfTheRecords) {
    // A member more or less does not compile here.
    const VornFriendReqInfo request;
    const auto& [type, user, title, desc, imagePath, thumbPath, mediaPath, link, extraOfRequest] = request;
    const VornBaseParams params;
    const auto& [methodID, seqID, channel, subChannel, extraOfParams] = params;
    static_assert(sizeof(VornLoginParams) == sizeof(VornBaseParams) + sizeof(std::string), "one text more");
    const size_t texts = 8 + 4 + 1;
    static_cast<void>(std::tie(type, user, title, desc, imagePath, thumbPath, mediaPath, link, extraOfRequest, methodID,
                               seqID, channel, subChannel, extraOfParams));

    EXPECT_THAT(Places(), SizeIs(texts));
}

TEST(CoreTextsPlacesTest, ChangeAMemberEachAndNoTwoTheSame) {
    const auto image = [](const CoreCall& call) {
        const VornFriendReqInfo& request = call.request;
        std::vector<std::string> texts{call.params.seqID, call.params.channel, call.params.subChannel,
                                       call.params.extraJson, call.params.permissions};
        for (const String* text : {&request.user, &request.title, &request.desc, &request.imagePath, &request.thumbPath,
                                   &request.mediaPath, &request.link, &request.extraJson}) {
            texts.push_back(text->toString());
        }
        return texts;
    };

    std::set<std::vector<std::string>> images{image(CoreCall())};
    for (const Place& place : Places()) {
        CoreCall call;
        place.put(call, "text");
        images.insert(image(call));
    }

    EXPECT_THAT(images, SizeIs(Places().size() + 1));
}

} // namespace
} // namespace Tarvik::Vorn::Test
