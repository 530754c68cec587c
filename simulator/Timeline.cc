#include "Timeline.h"

#include <algorithm>
#include <cstdio>
#include <thread>

namespace Tarvik::Vorn::Simulator {
namespace {

// Twelve digits: addresses of this machine have no fewer, and little else does.
constexpr size_t kAddressDigits = 12;

bool IsHexDigit(char c) {
    return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'f');
}

// Where the address ends that begins at `start` with "0x"; npos when there is none.
size_t EndOfAddress(const std::string& text, size_t start) {
    size_t end = start + 2;
    while (end < text.size() && IsHexDigit(text[end])) {
        end += 1;
    }
    return end - start - 2 == kAddressDigits ? end : std::string::npos;
}

// The thread on which this library was loaded.
const std::thread::id sMainThread = std::this_thread::get_id();

} // namespace

std::string_view NameOf(EntryKind kind) {
    switch (kind) {
    case EntryKind::kNote:
        return "note";
    case EntryKind::kWorld:
        return "world";
    case EntryKind::kCore:
        return "core";
    case EntryKind::kSystem:
        return "system";
    case EntryKind::kGame:
        return "game";
    case EntryKind::kCall:
        return "call";
    case EntryKind::kReturn:
        return "return";
    case EntryKind::kFacebook:
        return "facebook";
    case EntryKind::kApple:
        return "ios";
    case EntryKind::kLog:
        return "log";
    case EntryKind::kLogError:
        return "log error";
    case EntryKind::kTrace:
        return "trace";
    case EntryKind::kAnswer:
        return "answer";
    case EntryKind::kEvents:
        return "events";
    case EntryKind::kRecord:
        return "record";
    case EntryKind::kDelivered:
        return "delivered";
    case EntryKind::kCached:
        return "cached";
    case EntryKind::kCollected:
        return "collected";
    case EntryKind::kLost:
        return "lost";
    case EntryKind::kFault:
        return "fault";
    case EntryKind::kThrown:
        return "thrown";
    case EntryKind::kProblem:
        return "problem";
    }
    __builtin_unreachable();
}

const ResultField* ResultFacts::Find(std::string_view name) const {
    const auto found =
        std::find_if(fields.begin(), fields.end(), [name](const ResultField& field) { return field.name == name; });
    return found == fields.end() ? nullptr : &*found;
}

std::optional<int64_t> ResultFacts::Number(std::string_view name) const {
    const ResultField* const field = Find(name);
    const int64_t* const number = field == nullptr ? nullptr : std::get_if<int64_t>(&field->value);
    return number == nullptr ? std::nullopt : std::optional(*number);
}

std::string ResultFacts::Text(std::string_view name) const {
    const ResultField* const field = Find(name);
    const std::string* const text = field == nullptr ? nullptr : std::get_if<std::string>(&field->value);
    return text == nullptr ? std::string() : *text;
}

void Timeline::Add(EntryKind kind, const std::string& text) {
    const std::lock_guard lock(mMutex);
    Entry entry{mTime, std::this_thread::get_id() == sMainThread, mCause, kind, WithoutAddresses(text), std::nullopt};
    if (mListener) {
        mListener(entry);
    }
    if (mKept) {
        mEntries.push_back(std::move(entry));
    }
}

void Timeline::Add(EntryKind kind, const std::string& text, ResultFacts result) {
    const std::lock_guard lock(mMutex);
    Entry entry{mTime, std::this_thread::get_id() == sMainThread, mCause, kind, WithoutAddresses(text), std::nullopt};
    for (ResultField& field : result.fields) {
        if (std::string* const value = std::get_if<std::string>(&field.value)) {
            *value = WithoutAddresses(*value);
        }
    }
    entry.result = std::move(result);
    if (mListener) {
        mListener(entry);
    }
    if (mKept) {
        mEntries.push_back(std::move(entry));
    }
}

size_t Timeline::BeginRequest(RequestFacts request) {
    const std::lock_guard lock(mMutex);
    request.time = mTime;
    if (mKept) {
        mRequests.push_back(std::move(request));
    }
    mCause = mRequestCount++;
    return mCause;
}

void Timeline::SetCause(size_t request) {
    const std::lock_guard lock(mMutex);
    mCause = request;
}

void Timeline::SetListener(Listener listener) {
    const std::lock_guard lock(mMutex);
    mListener = std::move(listener);
}

std::string Timeline::WithoutAddresses(const std::string& text) {
    std::string result;
    size_t copied = 0;
    for (size_t at = text.find("0x"); at != std::string::npos; at = text.find("0x", at + 2)) {
        const size_t end = EndOfAddress(text, at);
        if (end == std::string::npos) {
            continue;
        }
        const std::string address = text.substr(at, end - at);
        auto known = std::find_if(mAddresses.begin(), mAddresses.end(),
                                  [&address](const auto& pair) { return pair.first == address; });
        if (known == mAddresses.end()) {
            known = mAddresses.insert(known, {address, "#" + std::to_string(mAddresses.size() + 1)});
        }
        result += text.substr(copied, at - copied) + known->second;
        copied = end;
    }
    return result + text.substr(copied);
}

std::string TimeText(Milliseconds time) {
    char text[32];
    std::snprintf(text, sizeof text, "%lld.%03lld s", static_cast<long long>(time / 1000),
                  static_cast<long long>(time % 1000));
    return text;
}

} // namespace Tarvik::Vorn::Simulator
