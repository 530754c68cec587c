// The fixture of tests that read scenario files.
#pragma once

#include "Scenario.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <optional>
#include <string>

namespace Tarvik::Vorn::Test {

class ScenarioTest : public ::testing::Test {
protected:
    ScenarioTest() {
        std::string pattern = ::testing::TempDir() + "scenario-XXXXXX";
        mFolder = mkdtemp(pattern.data());
    }

    ~ScenarioTest() override { std::filesystem::remove_all(mFolder); }

    std::string Path() const { return (mFolder / "test.scenario.json").string(); }

    std::optional<Simulator::Scenario> Load(const std::string& text, LocatedError& error) const {
        std::ofstream(Path()) << text;
        return Simulator::LoadScenario(Path(), error);
    }

    // A scenario whose steps begin in the first column of line 4.
    static std::string StepsOf(const std::string& steps) {
        return "{\n  \"title\": \"test\",\n  \"steps\": [\n" + steps + "\n  ]\n}\n";
    }

    // The only step of a scenario that is expected to be good.
    template <class T>
    T TheStep(const std::string& step) const {
        LocatedError error;
        const auto scenario = Load(StepsOf(step), error);
        if (!scenario || scenario->steps.size() != 1 || !std::holds_alternative<T>(scenario->steps[0])) {
            ADD_FAILURE() << "not read as this step: " << step << " " << error.text();
            return {};
        }
        return std::get<T>(scenario->steps[0]);
    }

private:
    std::filesystem::path mFolder;
};

} // namespace Tarvik::Vorn::Test
