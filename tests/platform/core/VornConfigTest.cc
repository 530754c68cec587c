// The configuration of the reference core: values, the file they come from, and every error in such a file at its
// place.

#include "VornConfig.h"
#include "VornServices.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <latch>
#include <optional>
#include <string>
#include <thread>
#include <vector>

namespace Tarvik::Vorn::Test {
namespace {

class Config : public ::testing::Test {
protected:
    Config() : mDirectory(MakeDirectory()) { ResetConfig(); }
    ~Config() override {
        ResetConfig();
        std::filesystem::remove_all(mDirectory);
    }
    Config(const Config&) = delete;
    Config& operator=(const Config&) = delete;

    static std::string Get(const std::string& key, const char* defaultValue = "(default)") {
        return VornSingleton<VornConfigManager>::GetInstance()->Get(key, defaultValue);
    }

    std::string Path(const std::string& name = "config.json") const { return (mDirectory / name).string(); }

    // Loads a file with this content.
    std::optional<LocatedError> Load(const std::string& content) const {
        std::ofstream(Path(), std::ios::binary) << content;
        return LoadConfigFile(Path());
    }

    // The error of loading this content, without the path of the file in front; "(none)" when it was loaded.
    std::string ErrorOf(const std::string& content) const {
        const auto error = Load(content);
        if (!error) {
            return "(none)";
        }
        EXPECT_EQ(error->file, Path());
        const std::string text = error->text();
        return text.substr(std::min(text.size(), Path().size() + 1));
    }

private:
    // A directory of its own for every test: other builds may run theirs at the same time.
    static std::filesystem::path MakeDirectory() {
        std::string name = ::testing::TempDir() + "/VornConfigTest.XXXXXX";
        if (mkdtemp(name.data()) == nullptr) {
            ADD_FAILURE() << "no directory " << name;
        }
        return name;
    }

    std::filesystem::path mDirectory;
};

TEST_F(Config, AbsentKeyHasTheDefault) {
    EXPECT_EQ(Get("FACEBOOK_LOGIN_MODE", "App"), "App");
}

TEST_F(Config, NullDefaultCountsAsEmpty) {
    EXPECT_EQ(Get("FACEBOOK_APP_ID", nullptr), "");
}

TEST_F(Config, SetValueIsShownUntilItIsRemoved) {
    SetConfigValue("FACEBOOK_LOGIN_MODE", "Game");
    const std::string set = Get("FACEBOOK_LOGIN_MODE");
    SetConfigValue("FACEBOOK_LOGIN_MODE", "App");
    const std::string replaced = Get("FACEBOOK_LOGIN_MODE");
    RemoveConfigValue("FACEBOOK_LOGIN_MODE");

    EXPECT_EQ(set, "Game");
    EXPECT_EQ(replaced, "App");
    EXPECT_EQ(Get("FACEBOOK_LOGIN_MODE"), "(default)");
}

TEST_F(Config, EmptyValueIsAValue) {
    SetConfigValue("FACEBOOK_LOGIN_MODE", "");

    EXPECT_EQ(Get("FACEBOOK_LOGIN_MODE"), "");
}

TEST_F(Config, RemovingAnAbsentKeyDoesNothing) {
    SetConfigValue("a", "1");

    RemoveConfigValue("b");

    EXPECT_EQ(Get("a"), "1");
}

TEST_F(Config, ResetMakesEveryKeyAbsent) {
    SetConfigValue("a", "1");
    SetConfigValue("b", "2");

    ResetConfig();

    EXPECT_EQ(Get("a"), "(default)");
    EXPECT_EQ(Get("b"), "(default)");
}

TEST_F(Config, EveryManagerShowsTheSameConfiguration) {
    SetConfigValue("a", "1");
    VornConfigManager other;

    EXPECT_EQ(other.Get("a", ""), "1");
}

// ---- Files

TEST_F(Config, FileGivesItsValues) {
    const auto error = Load("{\"FACEBOOK_APP_ID\": \"1234\", \"FACEBOOK_DISPLAYNAME\": \"Größe\\n\", \"empty\": \"\"}");

    EXPECT_FALSE(error) << error->text();
    EXPECT_EQ(Get("FACEBOOK_APP_ID"), "1234");
    EXPECT_EQ(Get("FACEBOOK_DISPLAYNAME"), "Größe\n");
    EXPECT_EQ(Get("empty"), "");
}

TEST_F(Config, FileReplacesTheWholeConfiguration) {
    SetConfigValue("before", "1");

    const auto error = Load("{\"after\": \"2\"}");

    EXPECT_FALSE(error);
    EXPECT_EQ(Get("before"), "(default)");
    EXPECT_EQ(Get("after"), "2");
}

TEST_F(Config, FileWithAnEmptyObjectMakesEveryKeyAbsent) {
    SetConfigValue("before", "1");

    const auto error = Load("{}");

    EXPECT_FALSE(error);
    EXPECT_EQ(Get("before"), "(default)");
}

TEST_F(Config, MissingFileIsNamedWithoutALine) {
    const auto error = LoadConfigFile(Path("missing.json"));

    ASSERT_TRUE(error);
    EXPECT_EQ(error->text(), Path("missing.json") + ": cannot be read: No such file or directory; "
                                                    "check the path and the permissions");
}

TEST_F(Config, DirectoryIsNoFile) {
    const auto error = LoadConfigFile(std::filesystem::path(Path()).parent_path().string());

    ASSERT_TRUE(error);
    EXPECT_EQ(error->message, "cannot be read: Is a directory");
    EXPECT_EQ(error->line, 0u);
}

TEST_F(Config, BrokenJsonIsShownAtItsPlace) {
    EXPECT_EQ(ErrorOf("{\n  \"a\": \"1\"\n  \"b\": \"2\"\n}"),
              "3:3: a comma or } is expected here; put a comma between two members, and } behind the last");
}

TEST_F(Config, TopLevelMustBeAnObject) {
    EXPECT_EQ(ErrorOf("\n [\"a\"]"), "2:2: the configuration is an array, not an object; write an object");
}

TEST_F(Config, ValueMustBeAText) {
    const std::string remedy = ", not a text; write a text in double quotes";

    EXPECT_EQ(ErrorOf("{\"a\": 1}"), "1:7: \"a\" is an integer" + remedy);
    EXPECT_EQ(ErrorOf("{\"a\": 1.5}"), "1:7: \"a\" is a number" + remedy);
    EXPECT_EQ(ErrorOf("{\"a\": true}"), "1:7: \"a\" is a boolean" + remedy);
    EXPECT_EQ(ErrorOf("{\"a\": null}"), "1:7: \"a\" is null" + remedy);
    EXPECT_EQ(ErrorOf("{\"a\": []}"), "1:7: \"a\" is an array" + remedy);
    EXPECT_EQ(ErrorOf("{\"a\": {\"b\": \"c\"}}"), "1:7: \"a\" is an object" + remedy);
}

TEST_F(Config, KeyMustNotBeGivenTwice) {
    EXPECT_EQ(ErrorOf("{\n\"a\": \"1\",\n\"b\": \"2\",\n \"a\": \"1\"}"),
              "4:2: the key \"a\" is given twice, first in line 2; remove one of the two");
}

TEST_F(Config, ErrorLeavesTheConfigurationAsItWas) {
    SetConfigValue("a", "before");
    const std::vector<std::string> faulty = {"{\"a\": \"after\"", "[]", "{\"a\": \"after\", \"b\": 1}",
                                             "{\"a\": \"after\", \"a\": \"x\"}", ""};

    for (const std::string& content : faulty) {
        EXPECT_NE(ErrorOf(content), "(none)") << content;
        EXPECT_EQ(Get("a"), "before") << content;
        EXPECT_EQ(Get("b"), "(default)") << content;
    }
}

// ---- Threads

TEST_F(Config, ReadersSeeWholeConfigurationsWhileItIsReplaced) {
    constexpr int kReaders = 3;
    constexpr int kRounds = 200;
    ASSERT_FALSE(Load("{\"a\": \"1111111111111111111111111111111\"}"));
    const std::string first = Get("a");
    const std::string second = "2222222222222222222222222222222";
    std::atomic<bool> stop = false;
    std::atomic<int> strange = 0;
    std::latch start(kReaders + 1);
    std::vector<std::thread> readers;
    readers.reserve(kReaders);
    for (int i = 0; i < kReaders; ++i) {
        readers.emplace_back([&] {
            start.arrive_and_wait();
            while (!stop) {
                const std::string value = Get("a");
                strange += value == first || value == second ? 0 : 1;
            }
        });
    }

    start.arrive_and_wait();
    for (int i = 0; i < kRounds; ++i) {
        SetConfigValue("a", second);
        SetConfigValue("b" + std::to_string(i), "x");
        RemoveConfigValue("b" + std::to_string(i));
        EXPECT_FALSE(LoadConfigFile(Path()));
    }
    stop = true;
    for (std::thread& reader : readers) {
        reader.join();
    }

    EXPECT_EQ(strange, 0);
}

} // namespace
} // namespace Tarvik::Vorn::Test
