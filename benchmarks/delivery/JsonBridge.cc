#include "JsonBridge.h"

#include <rapidjson/document.h>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>
#include <type_traits>

namespace Tarvik::Vorn::Bench {
namespace {

using Writer = rapidjson::Writer<rapidjson::StringBuffer>;
using Document = rapidjson::Document;
using Value = rapidjson::Value;

// A record or its constant counterpart: one list of members serves writing and reading.
template <class Record, class T>
concept Is = std::is_same_v<std::remove_const_t<Record>, T>;

template <Is<InnerBaseRet> Record, class Visitor>
void VisitMembers(Record& record, Visitor& visit) {
    visit("methodNameID", record.methodNameID);
    visit("retCode", record.retCode);
    visit("retMsg", record.retMsg);
    visit("thirdCode", record.thirdCode);
    visit("thirdMsg", record.thirdMsg);
    visit("extraJson", record.extraJson);
}

template <class Record>
auto& BaseOf(Record& record) {
    using Base = std::conditional_t<std::is_const_v<Record>, const InnerBaseRet, InnerBaseRet>;
    return static_cast<Base&>(record);
}

template <Is<InnerPersonInfo> Record, class Visitor>
void VisitMembers(Record& record, Visitor& visit) {
    visit("coreText1", record.coreText1);
    visit("coreText2", record.coreText2);
    visit("coreNumber3", record.coreNumber3);
    visit("coreText4", record.coreText4);
    visit("coreText5", record.coreText5);
    visit("coreText6", record.coreText6);
    visit("coreText7", record.coreText7);
    visit("coreText8", record.coreText8);
}

template <Is<InnerFriendRet> Record, class Visitor>
void VisitMembers(Record& record, Visitor& visit) {
    VisitMembers(BaseOf(record), visit);
    visit("friendInfoList", record.friendInfoList);
    visit("extraText", record.extraText);
}

template <Is<InnerLoginRet> Record, class Visitor>
void VisitMembers(Record& record, Visitor& visit) {
    VisitMembers(BaseOf(record), visit);
    visit("coreText7", record.coreText7);
    visit("coreText8", record.coreText8);
    visit("coreNumber9", record.coreNumber9);
    visit("coreNumber10", record.coreNumber10);
    visit("coreText11", record.coreText11);
    visit("coreText12", record.coreText12);
    visit("coreNumber13", record.coreNumber13);
    visit("coreText14", record.coreText14);
    visit("coreText15", record.coreText15);
    visit("coreText16", record.coreText16);
    visit("coreText17", record.coreText17);
    visit("coreFlag18", record.coreFlag18);
    visit("channelID", record.channelID);
    visit("channel", record.channel);
    visit("coreText21", record.coreText21);
    visit("coreText22", record.coreText22);
    visit("coreNumber23", record.coreNumber23);
    visit("coreText24", record.coreText24);
    visit("coreText25", record.coreText25);
    visit("coreText26", record.coreText26);
    visit("coreText27", record.coreText27);
}

template <Is<InnerLoginPluginRet> Record, class Visitor>
void VisitMembers(Record& record, Visitor& visit) {
    visit("methodNameID", record.methodNameID);
    visit("channelID", record.channelID);
    visit("channel", record.channel);
    visit("channelInfo", record.channelInfo);
    visit("coreText5", record.coreText5);
    visit("coreText6", record.coreText6);
    visit("coreText7", record.coreText7);
}

class MemberWriter {
public:
    explicit MemberWriter(Writer& writer) : mWriter(writer) {}

    template <size_t N, class T>
    void operator()(const char (&name)[N], const T& value) {
        mWriter.Key(name, N - 1);
        Write(value);
    }

private:
    void Write(int32_t value) { mWriter.Int(value); }
    void Write(int64_t value) { mWriter.Int64(value); }
    void Write(bool value) { mWriter.Bool(value); }
    void Write(const String& text) { mWriter.String(text.c_str(), static_cast<rapidjson::SizeType>(text.size())); }
    void Write(const std::string& text) { mWriter.String(text.data(), static_cast<rapidjson::SizeType>(text.size())); }
    void Write(const Vector<InnerPersonInfo, 16>& people) {
        mWriter.StartArray();
        for (const InnerPersonInfo& person : people) {
            mWriter.StartObject();
            VisitMembers(person, *this);
            mWriter.EndObject();
        }
        mWriter.EndArray();
    }

    Writer& mWriter;
};

// Expects the members in the order in which they are written; a member that is elsewhere is looked for.
class MemberReader {
public:
    explicit MemberReader(const Value& object) : mObject(object), mNext(object.MemberBegin()) {}

    template <size_t N, class T>
    void operator()(const char (&name)[N], T& value) {
        const bool isNext = mNext != mObject.MemberEnd() && mNext->name.GetStringLength() == N - 1 &&
                            std::memcmp(mNext->name.GetString(), name, N - 1) == 0;
        const auto found = isNext ? mNext : mObject.FindMember(name);
        if (found != mObject.MemberEnd()) {
            Read(found->value, value);
            mNext = found + 1;
        }
    }

private:
    static void Read(const Value& json, int32_t& value) { value = json.GetInt(); }
    static void Read(const Value& json, int64_t& value) { value = json.GetInt64(); }
    static void Read(const Value& json, bool& value) { value = json.GetBool(); }
    static void Read(const Value& json, String& text) { text = json.GetString(); }
    static void Read(const Value& json, std::string& text) { text.assign(json.GetString(), json.GetStringLength()); }
    static void Read(const Value& json, Vector<InnerPersonInfo, 16>& people) {
        for (const Value& entry : json.GetArray()) {
            InnerPersonInfo person;
            MemberReader members(entry);
            VisitMembers(person, members);
            people.push_back(person);
        }
    }

    const Value& mObject;
    Value::ConstMemberIterator mNext;
};

template <class T>
T MakeEmpty() {
    if constexpr (std::is_same_v<T, InnerFriendRet>) {
        return InnerFriendRet(0);
    } else {
        return T();
    }
}

} // namespace

template <class T>
std::string WriteResult(const T& ret, unsigned int observerID, const String& seqID) {
    static thread_local rapidjson::StringBuffer buffer;
    buffer.Clear();
    Writer writer(buffer);
    writer.StartObject();
    MemberWriter members(writer);
    members("observerID", static_cast<int32_t>(observerID));
    members("seqID", seqID);
    writer.Key("result", 6);
    writer.StartObject();
    VisitMembers(ret, members);
    writer.EndObject();
    writer.EndObject();
    return {buffer.GetString(), buffer.GetSize()};
}

template <class T>
void ReadResult(std::string& text) {
    std::array<char, 8192> tree;  // NOLINT(cppcoreguidelines-pro-type-member-init): RapidJSON fills what it uses.
    std::array<char, 4096> stack; // NOLINT(cppcoreguidelines-pro-type-member-init)
    rapidjson::MemoryPoolAllocator<> treeAllocator(tree.data(), tree.size());
    rapidjson::MemoryPoolAllocator<> stackAllocator(stack.data(), stack.size());
    rapidjson::GenericDocument<rapidjson::UTF8<>, rapidjson::MemoryPoolAllocator<>, rapidjson::MemoryPoolAllocator<>>
        document(&treeAllocator, stack.size() / 2, &stackAllocator);
    document.ParseInsitu(text.data());
    if (document.HasParseError() || !document.IsObject()) {
        return;
    }
    int32_t observerID = 0;
    String seqID;
    MemberReader envelope(document);
    envelope("observerID", observerID);
    envelope("seqID", seqID);
    const auto result = document.FindMember("result");
    const auto& observers = VornInnerObserverHolder<T>::mObserverHolder;
    const auto observer = observers.find(observerID);
    if (result == document.MemberEnd() || observer == observers.end()) {
        return;
    }
    T ret = MakeEmpty<T>();
    MemberReader members(result->value);
    VisitMembers(ret, members);
    observer->second(ret, seqID.c_str());
}

template std::string WriteResult(const InnerBaseRet&, unsigned int, const String&);
template std::string WriteResult(const InnerFriendRet&, unsigned int, const String&);
template std::string WriteResult(const InnerLoginRet&, unsigned int, const String&);
template std::string WriteResult(const InnerLoginPluginRet&, unsigned int, const String&);

template void ReadResult<InnerBaseRet>(std::string& text);
template void ReadResult<InnerFriendRet>(std::string& text);
template void ReadResult<InnerLoginRet>(std::string& text);
template void ReadResult<InnerLoginPluginRet>(std::string& text);

} // namespace Tarvik::Vorn::Bench
