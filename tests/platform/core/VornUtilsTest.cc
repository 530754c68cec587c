// Result texts, and the record constructors that are the core's and use them.

#include "VornCodes.h"
#include "VornRecords.h"
#include "VornServices.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstring>
#include <limits>
#include <map>
#include <new>
#include <string>
#include <utility>

namespace Tarvik::Vorn::Test {
namespace {

const std::map<int, std::string> kTexts = {
    {RetCode::kSuccess, "success"},
    {RetCode::kCancelled, "cancelled by the user"},
    {RetCode::kNotSupported, "not supported by the channel"},
    {RetCode::kSystemRefused, "refused by the operating system"},
    {RetCode::kNotInGamingMode, "the login is not in gaming mode"},
    {RetCode::kInvalidArgument, "invalid argument"},
    {RetCode::kNeedSystemPermission, "a system permission is missing"},
    {RetCode::kAppNotInstalled, "a required app is not installed"},
    {RetCode::kThirdPartyError, "error of the channel's SDK"},
};

// A record made in memory that is not zero before, so that members nobody sets show.
template <class T>
class InDirtyMemory {
public:
    template <class... Args>
    explicit InDirtyMemory(Args&&... args) {
        std::memset(mMemory, 0xa5, sizeof mMemory);
        mRecord = new (mMemory) T(std::forward<Args>(args)...);
    }
    ~InDirtyMemory() { mRecord->~T(); }
    InDirtyMemory(const InDirtyMemory&) = delete;
    InDirtyMemory& operator=(const InDirtyMemory&) = delete;

    const T& operator*() const { return *mRecord; }

private:
    alignas(T) unsigned char mMemory[sizeof(T)];
    T* mRecord;
};

TEST(ResultTexts, EveryCodeHasItsText) {
    for (const auto& [code, text] : kTexts) {
        EXPECT_EQ(VornUtils::GetRetMsg(code), text);
    }
}

TEST(ResultTexts, UnknownCodeIsNamed) {
    EXPECT_EQ(VornUtils::GetRetMsg(42), "unknown result code 42");
    EXPECT_EQ(VornUtils::GetRetMsg(-1), "unknown result code -1");
    EXPECT_EQ(VornUtils::GetRetMsg(std::numeric_limits<int>::min()), "unknown result code -2147483648");
}

TEST(RecordConstructors, ResultWithoutACodeIsEmpty) {
    const InDirtyMemory<InnerBaseRet> record;

    EXPECT_EQ((*record).methodNameID, 0);
    EXPECT_EQ((*record).retCode, 0);
    EXPECT_EQ((*record).retMsg.toString(), "");
    EXPECT_EQ((*record).thirdCode, 0);
    EXPECT_EQ((*record).thirdMsg.toString(), "");
    EXPECT_EQ((*record).extraJson.toString(), "");
}

TEST(RecordConstructors, ResultWithACodeHasItsText) {
    for (const auto& [code, text] : kTexts) {
        const InDirtyMemory<InnerBaseRet> record(code);

        EXPECT_EQ((*record).methodNameID, 0);
        EXPECT_EQ((*record).retCode, code);
        EXPECT_EQ((*record).retMsg.toString(), text);
        EXPECT_EQ((*record).thirdCode, 0);
        EXPECT_EQ((*record).thirdMsg.toString(), "");
        EXPECT_EQ((*record).extraJson.toString(), "");
    }
}

TEST(RecordConstructors, ResultWithThreeArgumentsHasTheThirdPartysCodeAndText) {
    const InDirtyMemory<InnerBaseRet> record(RetCode::kThirdPartyError, -7, String("their text"));

    EXPECT_EQ((*record).methodNameID, 0);
    EXPECT_EQ((*record).retCode, 9999);
    EXPECT_EQ((*record).retMsg.toString(), "error of the channel's SDK");
    EXPECT_EQ((*record).thirdCode, -7);
    EXPECT_EQ((*record).thirdMsg.toString(), "their text");
    EXPECT_EQ((*record).extraJson.toString(), "");
}

TEST(RecordConstructors, ResultWithAnUnknownCodeHasATextToo) {
    const InDirtyMemory<InnerBaseRet> record(42);

    EXPECT_EQ((*record).retCode, 42);
    EXPECT_EQ((*record).retMsg.toString(), "unknown result code 42");
}

TEST(RecordConstructors, FriendResultIsAResultWithAnEmptyList) {
    const InDirtyMemory<InnerFriendRet> record(RetCode::kInvalidArgument);

    EXPECT_EQ((*record).methodNameID, 0);
    EXPECT_EQ((*record).retCode, 11);
    EXPECT_EQ((*record).retMsg.toString(), "invalid argument");
    EXPECT_EQ((*record).thirdCode, 0);
    EXPECT_TRUE((*record).friendInfoList.empty());
    EXPECT_EQ((*record).extraText.toString(), "");
}

TEST(RecordConstructors, LoginReplyIsEmpty) {
    const InDirtyMemory<InnerLoginPluginRet> record;

    EXPECT_EQ((*record).methodNameID, 0);
    EXPECT_EQ((*record).channelID, 0);
    EXPECT_EQ((*record).channel + (*record).channelInfo, "");
    EXPECT_EQ((*record).coreText5 + (*record).coreText6 + (*record).coreText7, "");
}

} // namespace
} // namespace Tarvik::Vorn::Test
