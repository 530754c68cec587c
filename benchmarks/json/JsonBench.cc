// The JSON text of a request, which stands in several of its log lines, against RapidJSON's writer used directly.

#include "support/AllocationCount.h"
#include "support/Catch.h"
#include "support/Comparison.h"
#include "support/Figures.h"
#include "support/Samples.h"

#include "VornCodes.h"
#include "VornServices.h"

#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include <string>

namespace Tarvik::Vorn::Bench {
namespace {

constexpr double kMostTimesRapidJson = 1.2;

using Writer = rapidjson::Writer<rapidjson::StringBuffer>;

void WriteMember(Writer& writer, const char* name, const String& text) {
    writer.Key(name);
    writer.String(text.c_str(), static_cast<rapidjson::SizeType>(text.size()));
}

String WriteDirectly(const VornFriendReqInfo& request) {
    rapidjson::StringBuffer buffer;
    Writer writer(buffer);
    writer.StartObject();
    writer.Key("type");
    writer.Int(request.type);
    WriteMember(writer, "title", request.title);
    WriteMember(writer, "desc", request.desc);
    WriteMember(writer, "user", request.user);
    WriteMember(writer, "imagePath", request.imagePath);
    WriteMember(writer, "thumbPath", request.thumbPath);
    WriteMember(writer, "mediaPath", request.mediaPath);
    WriteMember(writer, "link", request.link);
    WriteMember(writer, "extraJson", request.extraJson);
    writer.EndObject();
    return {buffer.GetString()};
}

String WriteWithTheCore(const VornFriendReqInfo& request) {
    VornJsonWriter writer;
    writer.convert("", request);
    return writer.GetJsonString();
}

TEST_CASE("JSON of a request against RapidJSON", "[json]") {
    const VornFriendReqInfo request = SampleRequest(RequestType::kLink);
    REQUIRE(WriteDirectly(request).toString() == WriteWithTheCore(request).toString());

    Comparison comparison;
    comparison.Add("core", [&](Meter meter) { meter.measure([&] { return WriteWithTheCore(request); }); });
    comparison.Add("RapidJSON", [&](Meter meter) { meter.measure([&] { return WriteDirectly(request); }); });
    comparison.Run();

    const auto count = static_cast<double>(AllocationsOf([&] { WriteWithTheCore(request); }));
    const auto directCount = static_cast<double>(AllocationsOf([&] { WriteDirectly(request); }));
    Table table{"JSON text of a request", "Written by", {"ns", "allocations"}, {}};
    table.rows.push_back({"core", {comparison.Nanoseconds("core"), count}});
    table.rows.push_back({"RapidJSON", {comparison.Nanoseconds("RapidJSON"), directCount}});
    Figures& figures = Figures::Instance();
    figures.Add(table);
    figures.Add(Limit{"JSON text of a request against RapidJSON", comparison.Ratio("core", "RapidJSON"), Bound::kAtMost,
                      kMostTimesRapidJson, "times"});
}

} // namespace
} // namespace Tarvik::Vorn::Bench
