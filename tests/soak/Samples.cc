#include "Samples.h"

namespace Tarvik::Vorn::Soak {
namespace {

constexpr const char* kNoText = "\xff\xfe"; // Not UTF-8.

std::string Media(const char* name) {
    return std::string(VORN_MEDIA) + "/" + name;
}

std::vector<SeqSample> MakeSeqIDs() {
    std::vector<SeqSample> seqIDs{{""}, {""}, {kNoText, false}, {"%s%n"}, {"\xd1\x8f \"quoted\""}};
    for (int i = 0; i < 60; ++i) {
        seqIDs.push_back({"seq-" + std::to_string(i)});
    }
    return seqIDs;
}

Samples MakeSamples() {
    Samples samples;
    samples.links = {
        {"https://example.com/game?a=b", URLKind::kWeb},
        {"http://example.com", URLKind::kWeb},
        {"", URLKind::kNone},
        {"ftp://example.com/game", URLKind::kOther},
        {"https://exam ple.com", URLKind::kNone},
        {kNoText, URLKind::kNone},
    };
    samples.images = {
        {Media("picture.png"), true},
        {Media("picture.jpg"), true},
        {Media("text.png"), false},
        {Media("missing.png"), false},
        {"", false},
        {kNoText, false},
    };
    samples.videos = {
        {"assets-library://asset/asset.mp4?id=A&ext=mp4", URLKind::kLibrary},
        {Media("clip.mp4"), URLKind::kOther, true, true, true},
        {Media("clip.mov"), URLKind::kOther, true, true, true},
        {Media("sound.m4a"), URLKind::kOther, true, true, false},
        {Media("missing.mp4"), URLKind::kOther},
        {"file://" + Media("clip.mp4"), URLKind::kFile, true, false, false},
        {"no url", URLKind::kNone},
        {"", URLKind::kNone},
        {kNoText, URLKind::kNone, false},
    };
    samples.extras = {
        {""},
        {"{}"},
        {"{"},
        {kNoText},
        {R"({"isAssetURL":true,"friends":["1",2,"3"]})"},
        {R"({"isAssetURL":null,"friends":"1"})"},
        {R"({"isAssetURL":false})", true},
        {R"({"isAssetURL":false,"friends":["1",{}]})", true},
        {R"({"isAssetURL":"NO","friends":[1,2]})", true},
        {R"({"inviteType":"batch","userList":["1",2]})", false, true, true},
        {R"({"inviteType":"batch","userList":["1",null]})", false, true, false},
        {R"({"inviteType":"batch","userList":{}})", false, true, false},
        {R"({"inviteType":"batch"})", false, true, false},
        {R"({"inviteType":1,"userList":["1"]})"},
    };
    samples.seqIDs = MakeSeqIDs();
    samples.permissions = {
        {"public_profile,email", true, {"public_profile", "email"}, {"email", "gaming_profile", "gaming_user_picture"}},
        {"email", true, {"email"}, {"email", "gaming_profile", "gaming_user_picture"}},
        {kNoText, true, {}, {"gaming_profile", "gaming_user_picture"}},
        {"", false, {""}, {"", "gaming_profile", "gaming_user_picture"}},
        {"email, name", false, {"email", " name"}, {"email", " name", "gaming_profile", "gaming_user_picture"}},
    };
    return samples;
}

} // namespace

const Samples& TheSamples() {
    static const auto& samples = *new Samples(MakeSamples());
    return samples;
}

} // namespace Tarvik::Vorn::Soak
