// The report as JSON: a stable format, which docs/output.md documents key by key.
#include "ReportTest.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidjson/document.h>

#include <fstream>
#include <map>
#include <regex>

namespace Tarvik::Vorn::Simulator::Test {
namespace {

using testing::HasSubstr;

std::string Json(const std::vector<RunReport>& runs) {
    return Printed([&](std::FILE* out) { PrintJson(runs, out); });
}

// The keys of every object in their order, by the object's path: "runs[].entries[]".
using Keys = std::map<std::string, std::vector<std::string>>;

void CollectKeys(const rapidjson::Value& value, const std::string& path, Keys& keys) {
    if (value.IsArray()) {
        for (const rapidjson::Value& element : value.GetArray()) {
            CollectKeys(element, path + "[]", keys);
        }
    }
    if (!value.IsObject()) {
        return;
    }
    std::vector<std::string> names;
    for (const auto& member : value.GetObject()) {
        names.emplace_back(member.name.GetString());
        CollectKeys(member.value, path.empty() ? names.back() : path + "." + names.back(), keys);
    }
    keys[path] = names;
}

// The same from the documentation: a heading, "#### `path`" or "#### The document", and rows "| `key` | ...".
Keys DocumentedKeys() {
    const std::regex heading("#### (?:The document|`([^`]*)`)");
    const std::regex row("\\| `([^`]+)` \\|.*");
    std::ifstream document(VORN_OUTPUT_DOCUMENT);
    Keys keys;
    std::string path;
    bool inObject = false;
    for (std::string line; std::getline(document, line);) {
        std::smatch found;
        if (std::regex_match(line, found, heading)) {
            path = found[1];
            inObject = true;
        } else if (line.starts_with("#")) {
            inObject = false;
        } else if (inObject && std::regex_match(line, found, row)) {
            keys[path].push_back(found[1]);
        }
    }
    return keys;
}

TEST(JsonReportTest, NoRunsAreAnEmptyList) {
    EXPECT_EQ(Json({}), "{\n  \"format\": 1,\n  \"runs\": []\n}\n");
}

TEST(JsonReportTest, EveryMemberOfARunIsThere) {
    RunReport run = RunWithRequests();
    run.requests.resize(1);
    run.entries = {MakeEntry(EntryKind::kDelivered, "to the game", 0, 12345)};
    run.entries[0].result = ResultFacts{"InnerBaseRet", 31, "s1", {{"retMsg", "success"}, {"retCode", 0}}};
    run.audit = {{"order", "It is wrong.", kNoRequest}};
    run.hasExpectations = true;
    run.mismatches = {{"a", "b", 12, 7}};

    EXPECT_EQ(Json({run}), R"json({
  "format": 1,
  "runs": [
    {
      "name": "tour",
      "path": "tour.world.json",
      "question": "What happens?",
      "seed": 7,
      "profile": "18.1",
      "holds": false,
      "problem": "",
      "requests": [
        {
          "seqID": "s1",
          "kind": "share",
          "title": "share of a link",
          "method": 211,
          "observer": 31,
          "time": 10
        }
      ],
      "entries": [
        {
          "time": 12345,
          "thread": "main",
          "request": 0,
          "kind": "delivered",
          "text": "to the game",
          "result": {
            "record": "InnerBaseRet",
            "observer": 31,
            "seqID": "s1",
            "fields": {
              "retMsg": "success",
              "retCode": 0
            }
          }
        }
      ],
      "audit": [
        {
          "id": "order",
          "text": "It is wrong.",
          "request": null
        }
      ],
      "hasExpectations": true,
      "mismatches": [
        {
          "expected": "a",
          "found": "b",
          "line": 12,
          "column": 7
        }
      ]
    }
  ]
}
)json");
}

TEST(JsonReportTest, WhatIsNotThereIsNull) {
    RunReport run = RunWithRequests();
    run.entries = {MakeEntry(EntryKind::kLog, "line"), MakeEntry(EntryKind::kLog, "line", 9)};
    run.entries[0].onMainThread = false;

    rapidjson::Document document;
    document.Parse(Json({run}).c_str());

    const rapidjson::Value& printed = document["runs"][0];
    EXPECT_TRUE(printed["requests"][1]["observer"].IsNull());
    EXPECT_TRUE(printed["entries"][0]["request"].IsNull());
    EXPECT_TRUE(printed["entries"][0]["result"].IsNull());
    EXPECT_TRUE(printed["entries"][1]["request"].IsNull());
    EXPECT_STREQ(printed["entries"][0]["thread"].GetString(), "background");
}

TEST(JsonReportTest, TheGreatestNumbersKeepTheirValue) {
    RunReport run = RunWithRequests();
    run.seed = UINT64_MAX;
    run.requests[0].observerID = UINT32_MAX;

    EXPECT_THAT(Json({run}), HasSubstr("\"seed\": 18446744073709551615,"));
    EXPECT_THAT(Json({run}), HasSubstr("\"observer\": 4294967295,"));
}

TEST(JsonReportTest, ARunHoldsWhenEveryStepWasPlayedAndNothingFailed) {
    RunReport run = EmptyRun();
    EXPECT_THAT(Json({run}), HasSubstr("\"holds\": true,"));

    run.problem = "no login";

    EXPECT_THAT(Json({run}), HasSubstr("\"holds\": false,\n      \"problem\": \"no login\","));
}

TEST(JsonReportTest, HostileTextsComeBackAsTheyAre) {
    const std::string text = "\"\\</script>\x1b\x01\n\t\r é \xe2\x80\xae";
    rapidjson::Document document;

    document.Parse(Json({RunFullOf(text)}).c_str());

    ASSERT_FALSE(document.HasParseError());
    const rapidjson::Value& run = document["runs"][0];
    EXPECT_EQ(run["name"].GetString(), text);
    EXPECT_EQ(run["entries"][3]["result"]["fields"][text.c_str()].GetString(), text);
    EXPECT_EQ(run["mismatches"][0]["found"].GetString(), text);
}

TEST(JsonReportTest, BytesThatAreNoUtf8AreReplaced) {
    rapidjson::Document document;

    document.Parse<rapidjson::kParseValidateEncodingFlag>(Json({RunFullOf("a\xff")}).c_str());

    ASSERT_FALSE(document.HasParseError());
    EXPECT_STREQ(document["runs"][0]["question"].GetString(), "a\xef\xbf\xbd");
    EXPECT_TRUE(document["runs"][0]["entries"][0]["result"]["fields"].HasMember("a\xef\xbf\xbd"));
}

TEST(JsonReportTest, SeveralRunsStandInTheirOrder) {
    RunReport second = EmptyRun();
    second.name = "second";
    rapidjson::Document document;

    document.Parse(Json({EmptyRun(), second}).c_str());

    ASSERT_EQ(document["runs"].Size(), 2U);
    EXPECT_STREQ(document["runs"][1]["name"].GetString(), "second");
}

TEST(JsonReportTest, TheDocumentListsEveryKeyInItsOrder) {
    rapidjson::Document document;
    document.Parse(Json({RunFullOf("text")}).c_str());
    Keys printed;
    CollectKeys(document, "", printed);
    printed.erase("runs[].entries[].result.fields"); // Whatever the record has.

    EXPECT_EQ(printed, DocumentedKeys());
}

TEST(JsonReportTest, TheDocumentListsEveryKindOfEntry) {
    std::ifstream document(VORN_OUTPUT_DOCUMENT);
    ASSERT_TRUE(document);
    const std::string text((std::istreambuf_iterator<char>(document)), std::istreambuf_iterator<char>());

    for (int kind = 0; kind <= static_cast<int>(EntryKind::kProblem); ++kind) {
        EXPECT_THAT(text, HasSubstr("\n| `" + std::string(NameOf(static_cast<EntryKind>(kind))) + "` | "));
    }
}

} // namespace
} // namespace Tarvik::Vorn::Simulator::Test
