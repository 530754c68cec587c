#include "Samples.h"

#include "VornCodes.h"

namespace Tarvik::Vorn::Bench {

InnerBaseRet SampleBaseRet() {
    InnerBaseRet ret(RetCode::kSuccess);
    ret.methodNameID = MethodID::kSendMessage;
    ret.extraJson = R"({"RequestRecipients":["10150000000000001","10150000000000002"]})";
    return ret;
}

InnerFriendRet SampleFriendRet(size_t friends) {
    InnerFriendRet ret(friends == 0 ? RetCode::kNotSupported : RetCode::kSuccess);
    ret.methodNameID = 220;
    InnerPersonInfo person;
    person.coreText1 = "10150000000000001";
    person.coreText2 = "Ada Lovelace";
    person.coreText4 = "https://example.com/pictures/10150000000000001.jpg";
    for (size_t i = 0; i < friends; ++i) {
        ret.friendInfoList.push_back(person);
    }
    return ret;
}

InnerLoginRet SampleLoginRet() {
    InnerLoginRet ret;
    static_cast<InnerBaseRet&>(ret) =
        InnerBaseRet(RetCode::kThirdPartyError, -1009, "The Internet connection appears to be offline.");
    ret.methodNameID = 111;
    ret.channelID = 4;
    ret.channel = "Facebook";
    return ret;
}

InnerLoginPluginRet SampleLoginPluginRet() {
    InnerLoginPluginRet ret;
    ret.methodNameID = 111;
    ret.channelID = 4;
    ret.channel = "Facebook";
    ret.channelInfo = R"({"access_token":")" + std::string(200, 'A') + R"("})";
    return ret;
}

VornFriendReqInfo SampleRequest(int32_t type) {
    VornFriendReqInfo request;
    request.type = type;
    request.user = "10150000000000001";
    request.title = "Beat my score!";
    request.desc = "I have just reached level 42 in the \"Sunken City\". Can you do better?";
    request.imagePath = "/var/mobile/Containers/Data/Application/screenshot.png";
    request.thumbPath = "/var/mobile/Containers/Data/Application/thumbnail.png";
    request.mediaPath = "assets-library://asset/asset.mp4?id=5A3B9C7D-0042-4F6A-9C1D-7A5E8F90B1C2&ext=mp4";
    request.link = "https://example.com/game/levels/42?player=10150000000000001";
    request.extraJson = R"({"campaign":"summer","level":42})";
    return request;
}

} // namespace Tarvik::Vorn::Bench
