// The fixture of tests that play worlds, and what they look for in a run.
#pragma once

#include "Simulation.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace Tarvik::Vorn::Test {

class PlayedWorld : public ::testing::Test {
protected:
    static void SetUpTestSuite() {
        const char* const subject = std::getenv("VORN_SUBJECT");
        ASSERT_NE(subject, nullptr) << "VORN_SUBJECT names the plugin's library";
        ASSERT_EQ(Simulator::LoadChannel(subject), "");
    }

    // A good world with these steps. `members` are further members of the world, each with a comma behind it.
    static Simulator::World WorldOf(const std::string& steps, const std::string& members = "") {
        LocatedError error;
        const std::string text = R"({"question": "q", )" + members + "\"steps\": [" + steps + "]}";
        std::optional<Simulator::World> world = Simulator::ParseWorld(text, "/nowhere/test.world.json", error);
        EXPECT_TRUE(world.has_value()) << error.text();
        return world.value_or(Simulator::World());
    }

    static Simulator::RunReport Played(const std::string& steps, const std::string& members = kFacebookPlayer,
                                       const Simulator::SimulationOptions& options = {}) {
        return Simulator::PlayWorld(WorldOf(steps, members), options);
    }

    static constexpr const char* kFacebookPlayer = R"("setting": {"player": "facebook"}, )";
    static constexpr const char* kGamingPlayer = R"("setting": {"player": "gaming"}, )";
};

// The path of a file of simulator/media.
std::string MediaFile(const std::string& name);

// A share of a link for observer 31. `more` are further members, each with a comma before it.
inline std::string ShareStep(const std::string& seqID, const std::string& answers = "", const std::string& more = "") {
    return R"({"share": {"methodID": 211, "seqID": ")" + seqID +
           R"(", "observer": 31, "type": "link", "link": "https://example.com", "answers": [)" + answers + "]" + more +
           "}}";
}

// A share of a video file for observer 31, which is saved first.
inline std::string VideoStep(const std::string& seqID, const std::string& answers = "") {
    return R"({"share": {"methodID": 211, "seqID": ")" + seqID +
           R"(", "observer": 31, "type": "video", "mediaPath": ")" + MediaFile("clip.mp4") +
           R"(", "extraJson": "{\"isAssetURL\":false}", "answers": [)" + answers + "]}}";
}

inline std::string ImageStep(const std::string& seqID, const std::string& answers = "") {
    return R"({"share": {"methodID": 211, "seqID": ")" + seqID +
           R"(", "observer": 31, "type": "image", "imagePath": ")" + MediaFile("picture.png") + R"(", "answers": [)" +
           answers + "]}}";
}

inline std::string LogoutStep(const std::string& seqID) {
    return R"({"logout": {"methodID": 112, "seqID": ")" + seqID + "\"}}";
}

// {"answer-share": {"outcome": OUTCOME, MORE}}
inline std::string ShareAnswer(const std::string& outcome, const std::string& more = "") {
    return R"({"answer-share": {"outcome": ")" + outcome + "\"" + (more.empty() ? "" : ", " + more) + "}}";
}

inline std::vector<std::string> Texts(const std::vector<Simulator::Entry>& entries, Simulator::EntryKind kind) {
    std::vector<std::string> texts;
    for (const Simulator::Entry& entry : entries) {
        if (entry.kind == kind) {
            texts.push_back(entry.text);
        }
    }
    return texts;
}

// How many entries have this as a part.
inline size_t LinesWith(const std::vector<Simulator::Entry>& entries, std::string_view part) {
    return static_cast<size_t>(std::count_if(entries.begin(), entries.end(), [part](const Simulator::Entry& entry) {
        return entry.text.find(part) != std::string::npos;
    }));
}

// Every entry as one line, for comparing runs.
inline std::vector<std::string> Lines(const std::vector<Simulator::Entry>& entries) {
    std::vector<std::string> lines;
    lines.reserve(entries.size());
    for (const Simulator::Entry& entry : entries) {
        lines.push_back(Simulator::TimeText(entry.time) + " " + std::string(NameOf(entry.kind)) + " " +
                        std::to_string(entry.request) + " " + entry.text);
    }
    return lines;
}

// What observers received: "1000 31 share-1 0" is time, observer, sequence ID, and code where there is one.
inline std::vector<std::string> Heard(const Simulator::RunReport& run) {
    std::vector<std::string> heard;
    for (const Simulator::Entry& entry : run.entries) {
        const bool isDelivery =
            entry.kind == Simulator::EntryKind::kDelivered || entry.kind == Simulator::EntryKind::kCollected;
        if (!isDelivery || !entry.result) {
            continue;
        }
        const Simulator::ResultField* const code = entry.result->Find("retCode");
        heard.push_back(std::to_string(entry.time) + " " + std::to_string(entry.result->observerID) + " " +
                        entry.result->seqID +
                        (code == nullptr ? "" : " " + std::to_string(std::get<int64_t>(code->value))));
    }
    return heard;
}

inline std::vector<std::string> Remarks(const Simulator::RunReport& run) {
    std::vector<std::string> ids;
    ids.reserve(run.audit.size());
    for (const Simulator::AuditFinding& finding : run.audit) {
        ids.push_back(finding.id);
    }
    return ids;
}

} // namespace Tarvik::Vorn::Test
