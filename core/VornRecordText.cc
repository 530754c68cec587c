#include "VornRecordText.h"

#include <string_view>

namespace Tarvik::Vorn {
namespace {

class Members {
public:
    explicit Members(std::string_view name) : mText(name) { mText += '{'; }

    Members& Add(std::string_view name, int64_t value) {
        Name(name);
        mText += std::to_string(value);
        return *this;
    }

    Members& Add(std::string_view name, const std::string& value) {
        Name(name);
        mText += '"';
        for (const char c : value) {
            AddCharacter(c);
        }
        mText += '"';
        return *this;
    }

    Members& Add(std::string_view name, const String& value) { return Add(name, value.toString()); }

    // Members that belong to the core.
    Members& AddUnlessDefault(std::string_view name, int64_t value) { return value == 0 ? *this : Add(name, value); }
    Members& AddUnlessDefault(std::string_view name, const String& value) {
        return value.empty() ? *this : Add(name, value);
    }
    Members& AddUnlessDefault(std::string_view name, const std::string& value) {
        return value.empty() ? *this : Add(name, value);
    }

    Members& AddBase(const InnerBaseRet& record) {
        return Add("methodNameID", record.methodNameID)
            .Add("retCode", record.retCode)
            .Add("retMsg", record.retMsg)
            .Add("thirdCode", record.thirdCode)
            .Add("thirdMsg", record.thirdMsg)
            .Add("extraJson", record.extraJson);
    }

    std::string Text() const { return mText + "}"; }

private:
    void Name(std::string_view name) {
        if (mText.back() != '{') {
            mText += ", ";
        }
        mText += name;
        mText += ": ";
    }

    // One line stays one line; everything else stands as it is.
    void AddCharacter(char c) {
        switch (c) {
        case '"':
            mText += "\\\"";
            break;
        case '\\':
            mText += "\\\\";
            break;
        case '\n':
            mText += "\\n";
            break;
        case '\r':
            mText += "\\r";
            break;
        case '\t':
            mText += "\\t";
            break;
        default:
            mText += c;
        }
    }

    std::string mText;
};

} // namespace

std::string RecordText(const InnerBaseRet& record) {
    return Members("InnerBaseRet").AddBase(record).Text();
}

std::string RecordText(const InnerFriendRet& record) {
    return Members("InnerFriendRet")
        .AddBase(record)
        .Add("friendInfoList", static_cast<int64_t>(record.friendInfoList.size()))
        .AddUnlessDefault("extraText", record.extraText)
        .Text();
}

std::string RecordText(const InnerLoginRet& record) {
    return Members("InnerLoginRet")
        .AddBase(record)
        .AddUnlessDefault("coreText7", record.coreText7)
        .AddUnlessDefault("coreText8", record.coreText8)
        .AddUnlessDefault("coreNumber9", record.coreNumber9)
        .AddUnlessDefault("coreNumber10", record.coreNumber10)
        .AddUnlessDefault("coreText11", record.coreText11)
        .AddUnlessDefault("coreText12", record.coreText12)
        .AddUnlessDefault("coreNumber13", record.coreNumber13)
        .AddUnlessDefault("coreText14", record.coreText14)
        .AddUnlessDefault("coreText15", record.coreText15)
        .AddUnlessDefault("coreText16", record.coreText16)
        .AddUnlessDefault("coreText17", record.coreText17)
        .AddUnlessDefault("coreFlag18", record.coreFlag18 ? 1 : 0)
        .Add("channelID", record.channelID)
        .Add("channel", record.channel)
        .AddUnlessDefault("coreText21", record.coreText21)
        .AddUnlessDefault("coreText22", record.coreText22)
        .AddUnlessDefault("coreNumber23", record.coreNumber23)
        .AddUnlessDefault("coreText24", record.coreText24)
        .AddUnlessDefault("coreText25", record.coreText25)
        .AddUnlessDefault("coreText26", record.coreText26)
        .AddUnlessDefault("coreText27", record.coreText27)
        .Text();
}

std::string RecordText(const InnerLoginPluginRet& record) {
    return Members("InnerLoginPluginRet")
        .Add("methodNameID", record.methodNameID)
        .Add("channelID", record.channelID)
        .Add("channel", record.channel)
        .Add("channelInfo", record.channelInfo)
        .AddUnlessDefault("coreText5", record.coreText5)
        .AddUnlessDefault("coreText6", record.coreText6)
        .AddUnlessDefault("coreText7", record.coreText7)
        .Text();
}

} // namespace Tarvik::Vorn
