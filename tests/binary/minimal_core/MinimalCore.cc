#include "MinimalCore.h"

#include "VornServices.h"

#include <cstdarg>
#include <cstdio>
#include <deque>
#include <utility>

namespace Tarvik::Vorn {
namespace Test {
namespace {

constexpr const char* kLoggerPrefix = "logger ";

std::vector<std::string> sCalls;
std::deque<std::pair<void (*)(int, void*), void*>> sMainThreadCalls;

bool IsLoggers(const std::string& call) {
    return call.starts_with(kLoggerPrefix);
}

} // namespace

void NoteCoreCall(const std::string& call) {
    sCalls.push_back(call);
}

std::vector<std::string> TakeCoreCalls() {
    return std::exchange(sCalls, {});
}

std::vector<std::string> WithoutLogger(std::vector<std::string> calls) {
    std::erase_if(calls, IsLoggers);
    return calls;
}

std::vector<std::string> OnlyLogger(std::vector<std::string> calls) {
    std::erase_if(calls, [](const std::string& call) { return !IsLoggers(call); });
    return calls;
}

void RunMainThreadCalls() {
    while (!sMainThreadCalls.empty()) {
        const auto [fn, arg] = sMainThreadCalls.front();
        sMainThreadCalls.pop_front();
        fn(42, arg);
    }
}

} // namespace Test

using Test::NoteCoreCall;

// ---- Logger

VornLogger::VornLogger(ILogLevel level, const char* tag, const char* file, const char* function, int line)
    : mLevel(level), mTag(tag), mFile(file), mFunction(function), mLine(line) {
    NoteCoreCall("logger made");
}

VornLogger::~VornLogger() {
    NoteCoreCall("logger destroyed");
}

VornLogger& VornLogger::console() {
    NoteCoreCall("logger console");
    return *this;
}

void VornLogger::writeLog(const char* format, ...) {
    char text[512];
    va_list arguments;
    va_start(arguments, format);
    std::vsnprintf(text, sizeof(text), format, arguments);
    va_end(arguments);
    NoteCoreCall("logger writes " + std::to_string(mLevel) + " " + mTag + " " + mFile + " " + mFunction + " " +
                 (mLine > 0 ? "" : "without a line ") + text);
}

// ---- Trace

VornTrace::VornTrace(const char* file, const char* function, int line, const char* seqID, const char* extraJson)
    : mFile(file), mFunction(function), mLine(line), mSeqID(seqID), mExtraJson(extraJson) {}

void VornTrace::traceLog(const char* module) {
    NoteCoreCall("trace " + std::string(mFile) + " " + mFunction + " " + (mLine > 0 ? "" : "without a line ") + mSeqID +
                 " " + mExtraJson + " " + module);
}

void VornTrace::tracePlugin(const char* name, const char* version, const char* channel, const char* sdkVersion) {
    NoteCoreCall("trace of plugin " + std::string(name) + " " + version + " " + channel + " " + sdkVersion);
}

// ---- Configuration: every key has its default.

VornConfigManager::VornConfigManager() : mState(new std::string("config")) {
    NoteCoreCall("config made");
}

VornConfigManager::~VornConfigManager() {
    delete static_cast<std::string*>(mState);
}

std::string VornConfigManager::Get(const std::string& key, const char* defaultValue) {
    NoteCoreCall(*static_cast<std::string*>(mState) + " get " + key + " " + defaultValue);
    return defaultValue;
}

// ---- JSON: the text is made of the calls.

VornJsonWriter::VornJsonWriter() : mState(new std::string) {}

VornJsonWriter::~VornJsonWriter() {
    delete static_cast<std::string*>(mState);
}

void VornJsonWriter::StartJsonConvert() {
    *static_cast<std::string*>(mState) += "<";
}

void VornJsonWriter::EndJsonConvert() {
    *static_cast<std::string*>(mState) += ">";
}

void VornJsonWriter::objectBegin() {
    *static_cast<std::string*>(mState) += "(";
}

void VornJsonWriter::objectEnd() {
    *static_cast<std::string*>(mState) += ")";
}

void VornJsonWriter::setKey(const char* key) {
    *static_cast<std::string*>(mState) += std::string(key) + ":";
}

void VornJsonWriter::convert(const char* key, int value) {
    *static_cast<std::string*>(mState) += std::string(key) + "=" + std::to_string(value) + ";";
}

void VornJsonWriter::convert(const char* key, const char* value, int flag) {
    *static_cast<std::string*>(mState) +=
        std::string(key) + "=" + (value == nullptr ? "(null)" : value) + "/" + std::to_string(flag) + ";";
}

void VornJsonWriter::convert(const char* key, const String& value, int flag) {
    convert(key, value.c_str(), flag);
}

String VornJsonWriter::GetJsonString() {
    return String(*static_cast<std::string*>(mState));
}

// ---- Result texts, records, main thread

std::string VornUtils::GetRetMsg(int code) {
    return "text of " + std::to_string(code);
}

InnerBaseRet::InnerBaseRet() : methodNameID(0), retCode(0), thirdCode(0) {}

InnerBaseRet::InnerBaseRet(int code)
    : methodNameID(0), retCode(code), retMsg(VornUtils::GetRetMsg(code)), thirdCode(0) {}

// NOLINTNEXTLINE(performance-unnecessary-value-param): the text is passed by value, as callers compiled elsewhere do.
InnerBaseRet::InnerBaseRet(int code, int otherCode, String otherText)
    : methodNameID(0), retCode(code), retMsg(VornUtils::GetRetMsg(code)), thirdCode(otherCode), thirdMsg(otherText) {}

InnerFriendRet::InnerFriendRet(int code) : InnerBaseRet(code) {}

InnerLoginPluginRet::InnerLoginPluginRet() : methodNameID(0), channelID(0) {}

void VornInnerObserverHolderDispatch(void (*fn)(int, void*), void* arg) {
    NoteCoreCall("main thread");
    Test::sMainThreadCalls.emplace_back(fn, arg);
}

} // namespace Tarvik::Vorn
