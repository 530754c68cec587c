// Records as text: every member that counts, in order; texts in quotes on one line.

#include "VornRecordText.h"

#include <gtest/gtest.h>

namespace Tarvik::Vorn::Test {
namespace {

void FillBase(InnerBaseRet& record) {
    record.methodNameID = 1;
    record.retCode = -2;
    record.retMsg = "message";
    record.thirdCode = 3;
    record.thirdMsg = "third";
    record.extraJson = "{}";
}

TEST(VornRecordText, ShowsABaseResultMemberByMember) {
    InnerBaseRet record;
    FillBase(record);

    EXPECT_EQ(RecordText(record), "InnerBaseRet{methodNameID: 1, retCode: -2, retMsg: \"message\", thirdCode: 3, "
                                  "thirdMsg: \"third\", extraJson: \"{}\"}");
}

TEST(VornRecordText, KeepsEveryTextOnOneLineInQuotes) {
    InnerBaseRet record;
    record.thirdMsg = "a \"quote\", a \\, two\nlines\r and a\ttab, grüße";

    EXPECT_EQ(RecordText(record), "InnerBaseRet{methodNameID: 0, retCode: 0, retMsg: \"\", thirdCode: 0, "
                                  "thirdMsg: \"a \\\"quote\\\", a \\\\, two\\nlines\\r and a\\ttab, grüße\", "
                                  "extraJson: \"\"}");
}

TEST(VornRecordText, ShowsHowManyFriendsThereAre) {
    InnerFriendRet record(0);
    record.retMsg = "";
    record.friendInfoList.push_back(InnerPersonInfo());
    record.extraText = "more";

    EXPECT_EQ(RecordText(record), "InnerFriendRet{methodNameID: 0, retCode: 0, retMsg: \"\", thirdCode: 0, "
                                  "thirdMsg: \"\", extraJson: \"\", friendInfoList: 1, extraText: \"more\"}");
}

TEST(VornRecordText, LeavesOutMembersOfTheCoreThatAreDefaults) {
    InnerLoginRet record;
    record.channelID = 4;
    record.channel = "Facebook";

    EXPECT_EQ(RecordText(record), "InnerLoginRet{methodNameID: 0, retCode: 0, retMsg: \"\", thirdCode: 0, "
                                  "thirdMsg: \"\", extraJson: \"\", channelID: 4, channel: \"Facebook\"}");
}

TEST(VornRecordText, ShowsEveryMemberOfALoginResultThatIsSet) {
    InnerLoginRet record;
    FillBase(record);
    for (String* text :
         {&record.coreText7, &record.coreText8, &record.coreText11, &record.coreText12, &record.coreText14,
          &record.coreText15, &record.coreText16, &record.coreText17, &record.channel, &record.coreText21,
          &record.coreText22, &record.coreText24, &record.coreText25, &record.coreText26, &record.coreText27}) {
        *text = "t";
    }
    record.coreNumber9 = int64_t{1} << 40;
    record.coreNumber10 = 10;
    record.coreNumber13 = 13;
    record.coreFlag18 = true;
    record.channelID = 19;
    record.coreNumber23 = 23;

    EXPECT_EQ(RecordText(record),
              "InnerLoginRet{methodNameID: 1, retCode: -2, retMsg: \"message\", thirdCode: 3, thirdMsg: \"third\", "
              "extraJson: \"{}\", coreText7: \"t\", coreText8: \"t\", coreNumber9: 1099511627776, coreNumber10: 10, "
              "coreText11: \"t\", coreText12: \"t\", coreNumber13: 13, coreText14: \"t\", coreText15: \"t\", "
              "coreText16: \"t\", coreText17: \"t\", coreFlag18: 1, channelID: 19, channel: \"t\", coreText21: \"t\", "
              "coreText22: \"t\", coreNumber23: 23, coreText24: \"t\", coreText25: \"t\", coreText26: \"t\", "
              "coreText27: \"t\"}");
}

TEST(VornRecordText, ShowsALoginReply) {
    InnerLoginPluginRet record;
    record.methodNameID = 1;
    record.channelID = 4;
    record.channel = "Facebook";
    record.channelInfo = "{\"k\":1}";
    record.coreText7 = "seven";

    EXPECT_EQ(RecordText(record), "InnerLoginPluginRet{methodNameID: 1, channelID: 4, channel: \"Facebook\", "
                                  "channelInfo: \"{\\\"k\\\":1}\", coreText7: \"seven\"}");
}

} // namespace
} // namespace Tarvik::Vorn::Test
