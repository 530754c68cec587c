// The fixture of tests that read worlds.
#pragma once

#include "World.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <optional>
#include <string>

namespace Tarvik::Vorn::Test {

class WorldTest : public ::testing::Test {
protected:
    WorldTest() {
        std::string pattern = ::testing::TempDir() + "world-XXXXXX";
        mFolder = mkdtemp(pattern.data());
    }

    ~WorldTest() override { std::filesystem::remove_all(mFolder); }

    std::string Path() const { return (mFolder / "test.world.json").string(); }

    std::optional<Simulator::World> Load(const std::string& text, LocatedError& error) const {
        std::ofstream(Path()) << text;
        return Simulator::LoadWorld(Path(), error);
    }

    // A world whose steps begin in the first column of line 4.
    static std::string StepsOf(const std::string& steps) {
        return "{\n  \"question\": \"test\",\n  \"steps\": [\n" + steps + "\n  ]\n}\n";
    }

    // The last step of a world that is expected to be good.
    template <class T>
    T TheStep(const std::string& step) const {
        LocatedError error;
        const auto world = Load(StepsOf(step), error);
        if (!world || world->steps.empty() || !std::holds_alternative<T>(world->steps.back().action)) {
            ADD_FAILURE() << "not read as this step: " << step << " " << error.text();
            return {};
        }
        return std::get<T>(world->steps.back().action);
    }

    // The same for an answer, with everything before it that can be answered.
    template <class T>
    T TheAnswer(const std::string& step) const {
        return TheStep<T>(R"({"login": {"methodID": 1, "seqID": "l", "permissions": ""}},
            {"add-friend": {"methodID": 1, "seqID": "a", "observer": 1}},
            {"send-message": {"methodID": 1, "seqID": "i", "observer": 1, "type": "invitation"}},
            {"share": {"methodID": 1, "seqID": "s", "observer": 1, "type": "link"}},
)" + step);
    }

private:
    std::filesystem::path mFolder;
};

} // namespace Tarvik::Vorn::Test
