// A game's own test of its share button: no device, no account, no network. The simulator plays the player, Facebook
// and iOS; between them and the button is the real plugin, whose library VORN_SUBJECT names.

#include "Simulation.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <optional>
#include <string>
#include <vector>

namespace {

using namespace Tarvik::Vorn::Simulator;

// ---- The game

// Asks the player to share, and gives up waiting after a minute: a dialog may stay open for ever.
class ShareButton {
public:
    enum class State { kReady, kWaiting, kThanking };

    static constexpr Milliseconds kPatience = 60'000;

    void Press(Milliseconds now) {
        mState = State::kWaiting;
        mPressed = now;
    }

    void Hear(int64_t retCode) {
        if (mState == State::kWaiting) {
            mState = retCode == 0 ? State::kThanking : State::kReady;
        }
    }

    void Tick(Milliseconds now) {
        if (mState == State::kWaiting && now - mPressed >= kPatience) {
            mState = State::kReady;
        }
    }

    State state() const { return mState; }

private:
    State mState = State::kReady;
    Milliseconds mPressed = 0;
};

// ---- Its test

class ShareButtonTest : public ::testing::Test {
protected:
    // Once for all tests: the library stays loaded.
    static void SetUpTestSuite() {
        const char* const plugin = std::getenv("VORN_SUBJECT");
        ASSERT_NE(plugin, nullptr) << "VORN_SUBJECT must name libVornFacebook.so";
        ASSERT_EQ(LoadChannel(plugin), "");
    }

    // A world with one step, the button's share, and with what becomes of the dialog that it opens.
    void BeginWorld(const std::string& answers) {
        Tarvik::Vorn::LocatedError error;
        const std::optional<World> world = ParseWorld(R"({ "question": "What does the share button make of it?",
            "setting": {"player": "facebook"},
            "steps": [{"share": {"methodID": 211, "seqID": "share-1", "observer": 31, "type": "link",
                                 "link": "https://example.com", "answers": [)" +
                                                          answers + "]}}]}",
                                                      "share-button", error);
        ASSERT_TRUE(world.has_value()) << error.text();
        mSimulation.emplace(*world);
    }

    // The press makes the core call the plugin: the world's next step.
    void PressButton() {
        mButton.Press(mSimulation->time());
        ASSERT_TRUE(mSimulation->PlayNext()) << mSimulation->problem();
        RunFrame();
    }

    void PassTime(Milliseconds time) {
        mSimulation->Wait(time);
        RunFrame();
    }

    // Answers the dialog now, as the test likes.
    void AnswerDialog(AnswerShareStep::Outcome outcome) {
        AnswerShareStep answer;
        answer.outcome = outcome;
        ASSERT_TRUE(mSimulation->Play(answer)) << mSimulation->problem();
        RunFrame();
    }

    // How often the plugin has called this of the Facebook SDK.
    size_t CallsOf(const std::string& call) const {
        size_t count = 0;
        for (const Entry& entry : mSimulation->timeline().entries()) {
            const bool isIt = entry.kind == EntryKind::kFacebook && entry.text.starts_with(call);
            count += isIt ? 1 : 0;
        }
        return count;
    }

    ShareButton::State state() const { return mButton.state(); }
    Simulation& simulation() { return *mSimulation; }

private:
    // What the game's loop does: it hears the results that are new, and looks at the clock.
    void RunFrame() {
        const std::vector<ResultFacts> results = mSimulation->Results();
        for (; mHeard < results.size(); ++mHeard) {
            const std::optional<int64_t> retCode = results[mHeard].Number("retCode");
            ASSERT_TRUE(retCode.has_value()) << results[mHeard].record << " has no retCode";
            mButton.Hear(*retCode);
        }
        mButton.Tick(mSimulation->time());
    }

    ShareButton mButton;
    std::optional<Simulation> mSimulation;
    size_t mHeard = 0;
};

TEST_F(ShareButtonTest, ThanksForAShare) {
    BeginWorld(R"({"answer-share": {"outcome": "completed", "after": "3 s"}})");

    PressButton();
    PassTime(3'000);

    EXPECT_EQ(state(), ShareButton::State::kThanking);
    EXPECT_EQ(CallsOf("FBSDKShareDialog show"), 1u);
}

TEST_F(ShareButtonTest, IsReadyAgainWhenThePlayerClosesTheDialog) {
    BeginWorld(R"({"answer-share": {"outcome": "cancelled", "after": "3 s"}})");

    PressButton();
    PassTime(3'000);

    EXPECT_EQ(state(), ShareButton::State::kReady);
    ASSERT_EQ(simulation().Results().size(), 1u);
    EXPECT_EQ(simulation().Results().front().seqID, "share-1");
}

TEST_F(ShareButtonTest, IsReadyAgainAfterAMinuteWithoutAnAnswer) {
    BeginWorld("");

    PressButton();
    PassTime(ShareButton::kPatience - 1);
    EXPECT_EQ(state(), ShareButton::State::kWaiting);
    PassTime(1);

    EXPECT_EQ(state(), ShareButton::State::kReady);
    EXPECT_TRUE(simulation().Results().empty());
    const RunReport report = simulation().Finish();
    ASSERT_EQ(report.audit.size(), 1u);
    EXPECT_EQ(report.audit.front().id, "unanswered");
}

TEST_F(ShareButtonTest, DoesNotThankForAnAnswerThatComesTooLate) {
    BeginWorld("");

    PressButton();
    PassTime(ShareButton::kPatience);
    AnswerDialog(AnswerShareStep::Outcome::kCompleted);

    EXPECT_EQ(state(), ShareButton::State::kReady);
    EXPECT_EQ(simulation().Results().size(), 1u);
}

} // namespace
