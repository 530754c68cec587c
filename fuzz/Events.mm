// Events: any name, any parameters, nested, nil or with keys that are no texts. Facebook gets what the core gave.

#include "FBSDKCoreKit/FBSDKAppEvents+Control.h"
#include "VornText.h"
#include "VornUtilsIOS.h"
#include "support/Answering.h"
#include "support/FuzzTarget.h"
#include "support/PluginSession.h"
#include "support/Results.h"
#include "support/Texts.h"

namespace Tarvik::Vorn::Fuzz {
namespace {

constexpr int kDeepest = 4;
constexpr int kMostMembers = 4;
constexpr int kMostChained = 600; // Deeper than JSON may be nested.

id TakeNumber(FuzzedDataProvider& bytes) {
    switch (bytes.ConsumeIntegralInRange(0, 4)) {
    case 0:
        return [NSNumber numberWithLongLong:bytes.ConsumeIntegral<int64_t>()];
    case 1:
        return [NSNumber numberWithUnsignedLongLong:bytes.ConsumeIntegral<uint64_t>()];
    case 2:
        return [NSNumber numberWithDouble:bytes.ConsumeFloatingPoint<double>()];
    case 3:
        return [NSNumber numberWithDouble:bytes.PickValueInArray({__builtin_nan(""), __builtin_inf()})];
    default:
        return [NSNumber numberWithBool:bytes.ConsumeBool() ? YES : NO];
    }
}

// A text of any two UTF-16 units, each of which may be half of a surrogate pair.
NSString* TakeUnits(FuzzedDataProvider& bytes) {
    const auto first = bytes.ConsumeIntegral<unichar>();
    const auto second = bytes.ConsumeIntegral<unichar>();
    return [NSString stringWithFormat:@"%C%C", first, second];
}

// One list in another, many times.
id Chained(id value, int times) {
    for (; times > 0; --times) {
        value = @[ value ];
    }
    return value;
}

NSDictionary* TakeDictionary(FuzzedDataProvider& bytes, int depth);

// Never nil. The depth bounds the recursion.
id TakeValue(FuzzedDataProvider& bytes, int depth) {
    switch (bytes.ConsumeIntegralInRange(0, depth == kDeepest ? 4 : 7)) {
    case 0: {
        NSString* const text = TakeString(bytes);
        return text == nil ? @"" : text;
    }
    case 1:
        return TakeNumber(bytes);
    case 2:
        return [NSNull null];
    case 3:
        return TakeUnits(bytes);
    case 4:
        return [NSDate dateWithTimeIntervalSince1970:0];
    case 5:
        return @[ TakeValue(bytes, depth + 1) ];
    case 6:
        return Chained(TakeValue(bytes, depth + 1), bytes.ConsumeIntegralInRange(0, kMostChained));
    default:
        return TakeDictionary(bytes, depth + 1);
    }
}

// Keys that are no texts too, but no number that differs from itself: GNUstep would never find it again.
id TakeKey(FuzzedDataProvider& bytes) {
    switch (bytes.ConsumeIntegralInRange(0, 3)) {
    case 0:
        return [NSNull null];
    case 1:
        return [NSNumber numberWithLongLong:bytes.ConsumeIntegral<int64_t>()];
    case 2:
        return TakeUnits(bytes);
    default: {
        NSString* const text = TakeString(bytes);
        return text == nil ? @"" : text;
    }
    }
}

NSDictionary* TakeDictionary(FuzzedDataProvider& bytes, int depth) {
    NSMutableDictionary* const dictionary = [NSMutableDictionary dictionary];
    for (int left = bytes.ConsumeIntegralInRange(0, kMostMembers); left > 0; --left) {
        id const key = TakeKey(bytes);
        [dictionary setObject:TakeValue(bytes, depth) forKey:key];
    }
    return dictionary;
}

void RequireReported(NSString* name, NSDictionary* params) {
    const std::vector<Host::AppEvent> events = [FBSDKAppEvents events];
    if ([name length] == 0) {
        return Require(events.empty(), "an event without a name is not reported");
    }
    Require(events.size() == 1, "the event is reported once");
    const Host::AppEvent& event = events[0];
    const bool hasParams = [params count] > 0;
    Require([event.name.get() isEqualToString:name], "the event has its name");
    Require(event.form == (hasParams ? Host::AppEventForm::kWithParameters : Host::AppEventForm::kNameOnly),
            "only parameters that are there are reported");
    Require(!hasParams || [event.parameters.get() isEqualToDictionary:params], "the event has its parameters");
    Require(event.accepted == event.rule.empty(), "a dropped event breaks a rule");
}

// The JSON form of what has one can be read again.
void RequireReadableForm(NSDictionary* params) {
    for (const BOOL isPretty : {NO, YES}) {
        NSString* const json = [VornUtilsIOS jsonStringFromDict:params prettyPrint:isPretty];
        if (json != nil) {
            RequireJsonObject(CStr(json));
            Require([[VornUtilsIOS dictFromJsonString:json] count] == [params count], "the JSON has every member");
        }
    }
}

} // namespace
} // namespace Tarvik::Vorn::Fuzz

int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    using namespace Tarvik::Vorn;
    using namespace Tarvik::Vorn::Fuzz;
    FuzzedDataProvider bytes(data, size);
    const PluginSession session;
    NSString* const name = bytes.ConsumeBool() ? TakeString(bytes) : TakeUnits(bytes);
    NSDictionary* const params = bytes.ConsumeBool() ? TakeDictionary(bytes, 0) : nil;
    [session.report() reportEvent:name
                           params:params
                       isRealtime:bytes.ConsumeBool() ? YES : NO
                            seqID:TakeString(bytes)
                            extra:TakeString(bytes)];
    PluginSession::Settle();

    Require(DeliveredResults().empty(), "nothing is reported back");
    RequireReported(name, params);
    RequireReadableForm(params);
    return 0;
}
