#include "Cause.h"

#include "VornCodes.h"

namespace Tarvik::Vorn::Simulator::Explaining {
namespace {

constexpr auto kCauses = std::to_array<Cause>({
    {.id = "share-type-unsupported",
     .requests = kShare,
     .codes = Only(RetCode::kNotSupported),
     .thirdCodes = Only(RetCode::kNotSupported),
     .texts = {"not support the share type"},
     .rank = 1,
     .what = "The request's type is none that can be shared: 10001 a link, 10002 an image, 10005 a video. 10003, an "
             "invitation, is a message.",
     .checks = {"Which type does the request in the log have?"},
     .world = "share-unsupported-type",
     .page = kRefusalPage},
    {.id = "share-method-unsupported",
     .requests = kDialogs,
     .reported = ReportedID::kUnserved,
     .codes = Only(RetCode::kNotSupported),
     .thirdCodes = Only(0),
     .texts = {"not support methodID"},
     .rank = 2,
     .what =
         "The method ID is neither 211 nor 414, a share, nor 212, a message; the plugin serves these alone. The same "
         "7, with thirdCode 0, would come of a type that slipped through to the content, which none does.",
     .checks = {"Which methodID does the core send? The result repeats it."},
     .world = "share-unsupported-method",
     .page = kRefusalPage},
    {.id = "share-link-empty",
     .requests = kShare,
     .codes = Only(RetCode::kInvalidArgument),
     .thirdCodes = Only(RetCode::kInvalidArgument),
     .texts = {"the link is null when share/send link, please check!", "invalid argument"},
     .rank = 1,
     .what = "A link is to be shared, and it is empty.",
     .checks = {"Is the link in the request's log line \"\"?", "Was another type meant?"},
     .world = "share-empty-link",
     .page = kRefusalPage},
    {.id = "share-image-illegal",
     .requests = kShare,
     .codes = Only(RetCode::kInvalidArgument),
     .thirdCodes = Only(RetCode::kInvalidArgument),
     .texts = {"illegal image data", "invalid argument"},
     .rank = 2,
     .what = "What imagePath names could not be loaded, or is no image.",
     .checks = {"Which data size does the log say? 0 bytes: the file is not there, or the download failed.",
                "Is it an image of a kind that UIImage reads, and whole?"},
     .world = "share-bad-image",
     .page = kRefusalPage},
    {.id = "image-needs-facebook-app",
     .requests = kShare,
     .reported = ReportedID::kServed,
     .codes = Only(RetCode::kAppNotInstalled),
     .thirdCodes = Only(RetCode::kAppNotInstalled),
     .texts = {"Facebook share image need app installed", "a required app is not installed"},
     .rank = 1,
     .what = "Images are shared through the Facebook app, and it is not installed.",
     .checks = {"Is the Facebook app on the device? iOS simulators have none.",
                "Can the game share a link instead? A link needs no app."},
     .world = "share-image-without-facebook-app",
     .page = kRefusalPage},
    {.id = "queries-scheme-missing",
     .requests = kShare,
     .reported = ReportedID::kServed,
     .codes = Only(RetCode::kAppNotInstalled),
     .thirdCodes = Only(RetCode::kAppNotInstalled),
     .texts = {"Facebook share image need app installed", "Facebook share video need app installed",
               "a required app is not installed"},
     .rank = 2,
     .what = "The Facebook app is installed, but the game does not list fbauth2, so iOS says that nothing opens it.",
     .checks = {"Does LSApplicationQueriesSchemes in the Info.plist of the built app list fbauth2?",
                "`vornsim doctor` on the Info.plist or the built app finds this."},
     .world = "missing-queries-scheme",
     .page = kInfoPlistPage},
    {.id = "video-needs-facebook-app",
     .requests = kShare,
     .reported = ReportedID::kServed,
     .codes = Only(RetCode::kAppNotInstalled),
     .thirdCodes = Only(RetCode::kAppNotInstalled),
     .texts = {"Facebook share video need app installed", "a required app is not installed",
               "Facebook share vedio need app installed"},
     .rank = 3,
     .what =
         "Videos are shared through the Facebook app, and it is not installed. A video that was given as a file has "
         "been saved to the photo library by then.",
     .checks = {"Is the Facebook app on the device? iOS simulators have none."},
     .world = "share-video-without-facebook-app",
     .page = kRefusalPage},
    {.id = "share-with-method-of-message",
     .requests = kShare,
     .reported = ReportedID::kMessage,
     .codes = Only(RetCode::kAppNotInstalled),
     .thirdCodes = Only(RetCode::kAppNotInstalled),
     .texts = {"Messenger isn't installed"},
     .rank = 4,
     .what =
         "share: was called with method 212, that of a message, so Messenger was to show it: the number decides, not "
         "the call.",
     .checks = {"Which methodID does the core send with share:?"},
     .world = "share-through-messenger",
     .page = kRefusalPage},
});

} // namespace

std::span<const Cause> ShareRefusalCauses() {
    return kCauses;
}

} // namespace Tarvik::Vorn::Simulator::Explaining
