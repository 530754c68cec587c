// The fixture of the tests that share: an app that has Facebook and Messenger, real media, and a core whose loader and
// main queue are driven by the test.
#pragma once

#include "FBSDKGamingServicesKit/GamingUploads.h"
#include "FBSDKShareKit/ShareDialogs.h"
#include "FriendTest.h"
#include "Photos/PhotoLibrary.h"
#include "UIKit/UIApplication+Control.h"
#include "VornImageLoader.h"

#import <objc/runtime.h>

#include <cstring>
#include <memory>
#include <new>
#include <string>
#include <vector>

// The plugin's own methods that its front calls.
@protocol VornSharing

- (void)sendOrShareLinkOrIMG:(const Tarvik::Vorn::VornFriendReqInfo&)reqInfo
                    methodID:(int)methodID
                       seqID:(std::string)seqID
                  observerID:(int)observerID;

- (void)createFacebookLinkOrImageContent:(const Tarvik::Vorn::VornFriendReqInfo&)reqInfo
                                methodID:(int)methodID
                                   seqID:(std::string)seqID
                                complete:(void (^)(id content, Tarvik::Vorn::InnerBaseRet built))complete;

- (void)saveVideoAndShare:(const Tarvik::Vorn::VornFriendReqInfo&)reqInfo
                 methodID:(int)methodID
                    seqID:(std::string)seqID
                 complete:(void (^)(id content, Tarvik::Vorn::InnerBaseRet built))complete;

@end

namespace Tarvik::Vorn::Test {

inline constexpr const char* kPipeline = "-[VornFriendFacebook sendOrShareLinkOrIMG:methodID:seqID:observerID:]";
inline constexpr const char* kBuilder =
    "-[VornFriendFacebook createFacebookLinkOrImageContent:methodID:seqID:complete:]";
inline constexpr const char* kSaver = "-[VornFriendFacebook saveVideoAndShare:methodID:seqID:complete:]";
inline constexpr const char* kTagger = "-[VornFriendFacebook setShareTaggablePeople:reqInfo:seqID:]";

// A block of a method: 1 for one that stands in the method itself, 2 for one that stands in such a block. The compiler counts
// anew behind each block that owns something.
inline std::string BlockOf(const std::string& method, int number) {
    return method + "_block_invoke" + (number == 1 ? "" : "_" + std::to_string(number));
}

// A small real file of simulator/media.
std::string MediaPath(const std::string& name);

inline VornFriendReqInfo LinkRequest(const std::string& link = "https://example.com/game") {
    VornFriendReqInfo request = RequestOf(10001);
    request.link = link;
    return request;
}

inline VornFriendReqInfo ImageRequest(const std::string& path = MediaPath("picture.png")) {
    VornFriendReqInfo request = RequestOf(10002);
    request.title = "A picture";
    request.link = "https://example.com/picture";
    request.imagePath = path;
    return request;
}

// A video that the share dialog can take as it is.
inline VornFriendReqInfo VideoRequest(const std::string& url = "assets-library://asset/asset.mp4?id=A&ext=mp4") {
    VornFriendReqInfo request = RequestOf(10005);
    request.title = "A video";
    request.mediaPath = url;
    return request;
}

// A video file that must be saved to the photo library first.
inline VornFriendReqInfo VideoFileRequest(const std::string& path = MediaPath("clip.mp4")) {
    VornFriendReqInfo request = VideoRequest(path);
    request.extraJson = R"({"isAssetURL":false})";
    return request;
}

class FriendShareTest : public FriendTest {
protected:
    // Lets everything happen that waits for no answer: image loads, and what is posted to the main queue.
    static void Settle() {
        WaitForImageLoads();
        DrainMainQueue();
    }

    static std::vector<Delivery> Delivered() {
        Settle();
        return ResultRecorder::Deliveries();
    }

    static void RemoveFacebookApp() { Host::SetAppInstalled(Host::InstalledApp::kFacebook, false); }
    static void RemoveMessenger() { Host::SetAppInstalled(Host::InstalledApp::kMessenger, false); }

    // Shares from a record that is destroyed, and whose memory is overwritten, as soon as the call has returned.
    void ShareFromDyingRecord(const VornFriendReqInfo& request, const Call& call) const {
        alignas(VornFriendReqInfo) unsigned char memory[sizeof(VornFriendReqInfo)];
        alignas(VornBaseParams) unsigned char paramsMemory[sizeof(VornBaseParams)];
        auto* const dying = new (memory) VornFriendReqInfo(request);
        auto* const dyingParams = new (paramsMemory) VornBaseParams(ParamsOf(call));

        [Plugin() share:dying params:dyingParams observerID:call.observerID];

        std::destroy_at(dying);
        std::destroy_at(dyingParams);
        std::memset(memory, 0xa5, sizeof memory);
        std::memset(paramsMemory, 0xa5, sizeof paramsMemory);
    }

    // The content of the only dialog that was shown; nil, and a failed test, when there is not one.
    static id OnlyContent() {
        const auto shown = Host::ShownDialogs();
        EXPECT_EQ(shown.size(), 1u);
        return shown.size() == 1 ? shown[0].content.get() : nil;
    }

    static std::string TextOf(NSURL* url) { return url == nil ? "(nil)" : [[url absoluteString] UTF8String]; }

    // A result that leaves the method ID 0.
    static Delivery ResultWithout(const Call& call, InnerBaseRet ret) {
        Call withoutMethod = call;
        withoutMethod.methodID = 0;
        return Result(withoutMethod, std::move(ret));
    }

    // Shares a request of a type that the builder makes no content for, with a builder that makes some nevertheless.
    void ShareWithContentForAnyType(int type, const Call& call) const {
        using Complete = void (^)(id content, InnerBaseRet built);
        const Method builder = class_getInstanceMethod(object_getClass(Plugin()), @selector
                                                       (createFacebookLinkOrImageContent:methodID:seqID:complete:));
        const IMP own = method_setImplementation(
            builder,
            reinterpret_cast<IMP>(+[](id, SEL, const VornFriendReqInfo&, int, const std::string&, Complete complete) {
                complete(AdoptNS([[FBSDKShareLinkContent alloc] init]).get(), InnerBaseRet(0));
            }));
        [static_cast<id<VornSharing>>(Plugin()) sendOrShareLinkOrIMG:RequestOf(type)
                                                            methodID:call.methodID
                                                               seqID:call.seqID
                                                          observerID:static_cast<int>(call.observerID)];
        method_setImplementation(builder, own);
        Settle();
    }

    // The lines from the pipeline's entry on, without those of the holder.
    std::vector<LogLine> LinesAfterEntry() {
        std::vector<LogLine> lines = Lines();
        if (!lines.empty()) {
            lines.erase(lines.begin());
        }
        return lines;
    }
};

} // namespace Tarvik::Vorn::Test
