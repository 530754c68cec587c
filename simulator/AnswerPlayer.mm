#include "AnswerPlayer.h"

#include "FBSDKCoreKit/FBSDKAccessToken+Control.h"
#include "FBSDKCoreKit/FBSDKAuthenticationToken+Control.h"
#include "FBSDKGamingServicesKit/FBSDKFriendFinderDialog+Control.h"
#include "FBSDKGamingServicesKit/GameRequests.h"
#include "FBSDKGamingServicesKit/GamingUploads.h"
#include "FBSDKLoginKit/LoginAnswer.h"
#include "FBSDKShareKit/ShareDialogs.h"
#include "PhotoPermissions.h"
#include "Photos/PhotoLibrary.h"
#include "VornDefine.h"

#include <algorithm>
#include <initializer_list>
#include <iterator>

namespace Tarvik::Vorn::Simulator {
namespace {

NSError* MakeError(const ReportedError& error) {
    return [NSError errorWithDomain:MakeNSString(error.domain)
                               code:static_cast<NSInteger>(error.code)
                           userInfo:@{NSLocalizedDescriptionKey : MakeNSString(error.message)}];
}

// Nil for an empty text.
NSString* OptionalText(const std::string& text) {
    return text.empty() ? nil : MakeNSString(text);
}

NSArray* TextList(const std::vector<std::string>& texts) {
    NSMutableArray* const list = [NSMutableArray array];
    for (const std::string& text : texts) {
        [list addObject:MakeNSString(text)];
    }
    return list;
}

Host::LoginAnswer AnswerOf(const AnswerLoginStep& step) {
    using Outcome = AnswerLoginStep::Outcome;
    FBSDKAuthenticationToken* const authentication =
        step.graphDomain.empty()
            ? nil
            : Host::MakeAuthenticationToken(@"authentication-token", MakeNSString(step.graphDomain));
    switch (step.outcome) {
    case Outcome::kSuccess:
        return Host::LoginAnswer::Success(
            Host::MakeAccessToken(MakeNSString(step.token), @"user", @[ @"public_profile" ]), authentication);
    case Outcome::kLimited:
        return Host::LoginAnswer::LimitedLogin(authentication);
    case Outcome::kCancelled:
        return Host::LoginAnswer::Cancelled();
    case Outcome::kNothingGranted:
        return Host::LoginAnswer::NothingGranted();
    case Outcome::kBrowserNotOpened:
        return Host::LoginAnswer::BrowserNotOpened();
    case Outcome::kErrorMessage:
        return Host::LoginAnswer::ErrorMessage(MakeNSString(step.message));
    case Outcome::kError: {
        NSDictionary* const userInfo = @{NSLocalizedDescriptionKey : MakeNSString(step.message)};
        return Host::LoginAnswer::Failed([NSError errorWithDomain:MakeNSString(step.domain)
                                                             code:static_cast<NSInteger>(step.code)
                                                         userInfo:userInfo]);
    }
    }
    __builtin_unreachable();
}

Host::FriendFinderAnswer AnswerOf(const AnswerFriendFinderStep& step) {
    using Outcome = AnswerFriendFinderStep::Outcome;
    switch (step.outcome) {
    case Outcome::kReturned:
        return Host::FriendFinderAnswer::Returned();
    case Outcome::kClosed:
        return Host::FriendFinderAnswer::Closed();
    case Outcome::kNotOpened:
        return Host::FriendFinderAnswer::NotOpened();
    case Outcome::kError:
        return Host::FriendFinderAnswer::Exactly(false, MakeError(step.error));
    }
    __builtin_unreachable();
}

Host::GameRequestAnswer AnswerOf(const AnswerGameRequestStep& step) {
    using Outcome = AnswerGameRequestStep::Outcome;
    switch (step.outcome) {
    case Outcome::kSent:
        return Host::GameRequestAnswer::Sent(MakeNSString(step.requestID), TextList(step.recipients));
    case Outcome::kCancelButton:
        return Host::GameRequestAnswer::CancelButton();
    case Outcome::kClosed:
        return Host::GameRequestAnswer::Closed();
    case Outcome::kPageError:
        return Host::GameRequestAnswer::ErrorOfThePage();
    case Outcome::kWithoutResults:
        return Host::GameRequestAnswer::WithoutResults();
    case Outcome::kError:
        return Host::GameRequestAnswer::Failed(MakeError(step.error));
    }
    __builtin_unreachable();
}

Host::ShareAnswer AnswerOf(const AnswerShareStep& step) {
    using Outcome = AnswerShareStep::Outcome;
    switch (step.outcome) {
    case Outcome::kCompleted:
        return Host::ShareAnswer::Completed(OptionalText(step.postID));
    case Outcome::kCancelled:
        return Host::ShareAnswer::Cancelled();
    case Outcome::kReturned:
        return Host::ShareAnswer::ReturnedToApp();
    case Outcome::kAppError:
        return Host::ShareAnswer::ErrorOfTheApp();
    case Outcome::kNotOpened:
        return Host::ShareAnswer::NotOpened();
    case Outcome::kError:
        return Host::ShareAnswer::Failed(MakeError(step.error));
    }
    __builtin_unreachable();
}

Host::PhotoChangesOutcome AnswerOf(const FinishSavingStep& step) {
    return step.outcome == FinishSavingStep::Outcome::kSaved
               ? Host::PhotoChangesOutcome::Saved(OptionalText(step.asset))
               : Host::PhotoChangesOutcome::Failed(MakeError(step.error));
}

Host::ImageUploadAnswer AnswerOf(const AnswerImageUploadStep& step) {
    using Outcome = AnswerImageUploadStep::Outcome;
    switch (step.outcome) {
    case Outcome::kUploaded:
        return Host::ImageUploadAnswer::Uploaded(MakeNSString(step.photoID));
    case Outcome::kWithoutID:
        return Host::ImageUploadAnswer::Uploaded(nil);
    case Outcome::kDialogNotOpened:
        return Host::ImageUploadAnswer::MediaDialogNotOpened(MakeNSString(step.photoID));
    case Outcome::kError:
        return Host::ImageUploadAnswer::Exactly(false, nil, MakeError(step.error));
    }
    __builtin_unreachable();
}

Host::VideoUploadAnswer AnswerOf(const AnswerVideoUploadStep& step) {
    using Outcome = AnswerVideoUploadStep::Outcome;
    switch (step.outcome) {
    case Outcome::kUploaded:
        return Host::VideoUploadAnswer::Uploaded(MakeNSString(step.videoID));
    case Outcome::kServerRefused:
        return Host::VideoUploadAnswer::RefusedByServer();
    case Outcome::kMalformed:
        return Host::VideoUploadAnswer::Malformed();
    case Outcome::kError:
        return Host::VideoUploadAnswer::Failed(MakeError(step.error));
    }
    __builtin_unreachable();
}

// The two visitors below have one function per kind of answer.
struct Giver {
    size_t index;
    Host::Closing closing;

    bool operator()(const AnswerLoginStep& step) const { return Host::AnswerLogin(AnswerOf(step), closing); }
    bool operator()(const AnswerFriendFinderStep& step) const {
        return Host::AnswerFriendFinder(AnswerOf(step), index, closing);
    }
    bool operator()(const AnswerGameRequestStep& step) const {
        return Host::AnswerGameRequest(AnswerOf(step), index, closing);
    }
    bool operator()(const AnswerShareStep& step) const { return Host::AnswerShare(AnswerOf(step), index, closing); }
    bool operator()(const AnswerPhotoPromptStep& step) const {
        return Host::AnswerPhotoPrompt(StatusOf(step.permission), index, closing);
    }
    bool operator()(const FinishSavingStep& step) const {
        return Host::RunPhotoChanges(AnswerOf(step), index, closing);
    }
    bool operator()(const AnswerImageUploadStep& step) const {
        return Host::AnswerImageUpload(AnswerOf(step), index, closing);
    }
    bool operator()(const UploadProgressStep& step) const {
        return Host::FireVideoProgress(step.sent, step.sent, step.expected, index);
    }
    bool operator()(const AnswerVideoUploadStep& step) const {
        return Host::FinishVideoUpload(AnswerOf(step), index, closing);
    }
};

struct Describer {
    std::string operator()(const AnswerLoginStep& /*step*/) const { return "Facebook ends the login"; }
    std::string operator()(const AnswerFriendFinderStep& /*step*/) const { return "Facebook ends the friend finder"; }
    std::string operator()(const AnswerGameRequestStep& /*step*/) const { return "Facebook ends the game request"; }
    std::string operator()(const AnswerShareStep& /*step*/) const { return "Facebook ends the dialog"; }
    std::string operator()(const AnswerPhotoPromptStep& step) const {
        return std::string("the user's answer about the photo library is \"") + NameOf(step.permission) + "\",";
    }
    std::string operator()(const FinishSavingStep& /*step*/) const { return "the photo library ends its change"; }
    std::string operator()(const AnswerImageUploadStep& /*step*/) const {
        return "Facebook ends the upload of the image";
    }
    std::string operator()(const UploadProgressStep& step) const {
        return "Facebook tells that " + std::to_string(step.sent) + " of " + std::to_string(step.expected) +
               " bytes are uploaded,";
    }
    std::string operator()(const AnswerVideoUploadStep& /*step*/) const {
        return "Facebook ends the upload of the video";
    }
};

// What is known of each kind of answer, in the order of the alternatives.
struct AnswerKind {
    std::string_view name;
    const char* missing;
    std::initializer_list<Host::Opening> openings;
};

const AnswerKind& KindOf(const Answer& answer) {
    using Host::Opening;
    static const AnswerKind kinds[] = {
        {"answer-login", "no login is under way; put a \"login\" step before this answer", {Opening::kLogin}},
        {"answer-friend-finder",
         "no friend finder is open; put an \"add-friend\" of a gaming login before this answer",
         {Opening::kFriendFinder}},
        {"answer-game-request",
         "no such game request is open; put a \"send-message\" of type \"invitation\" before this answer",
         {Opening::kGameRequest}},
        {"answer-share",
         "no such dialog is open; put a \"share\" or a \"send-message\" before this answer",
         {Opening::kShareDialog, Opening::kMessageDialog}},
        {"answer-photo-prompt",
         "nobody has asked for the photo library; put a \"share\" of a video before this answer",
         {Opening::kPhotoPrompt}},
        {"finish-saving",
         "nothing is being saved; put a \"share\" of a video file before this answer",
         {Opening::kPhotoChanges}},
        {"answer-image-upload",
         "no such image is being uploaded; put a \"share\" of an image with a gaming login before this answer",
         {Opening::kImageUpload}},
        {"upload-progress",
         "no such video is being uploaded; put a \"share\" of a video with a gaming login before this step",
         {Opening::kVideoUpload}},
        {"answer-video-upload",
         "no such video is being uploaded, or its upload never ends; put a \"share\" of a video with a gaming login "
         "before this answer",
         {Opening::kVideoUpload}},
    };
    static_assert(std::size(kinds) == std::variant_size_v<Answer>);
    return kinds[answer.index()];
}

} // namespace

std::string_view NameOf(const Answer& answer) {
    return KindOf(answer).name;
}

std::string Described(const Answer& answer) {
    return std::visit(Describer(), answer);
}

std::string WhatIsMissing(const Answer& answer) {
    return KindOf(answer).missing;
}

const AnswerManner& MannerOf(const Answer& answer) {
    return std::visit([](const auto& step) -> const AnswerManner& { return step.manner; }, answer);
}

bool IsFor(const Answer& answer, Host::Opening opening) {
    const auto& openings = KindOf(answer).openings;
    return std::find(openings.begin(), openings.end(), opening) != openings.end();
}

bool Ends(const Answer& answer) {
    return !std::holds_alternative<UploadProgressStep>(answer);
}

bool Give(const Answer& answer, size_t index, Host::Closing closing) {
    return std::visit(Giver{index, closing}, answer);
}

} // namespace Tarvik::Vorn::Simulator
