// Sends and shares: content, decision, dialogs, uploads.

#include "Model.h"

namespace Tarvik::Vorn::Soak {

#pragma mark - Content

void Model::Pipeline(const Shared& request) {
    const auto decideLater = [this, request](Built built) {
        Post(request, [this, request, built = std::move(built)] { Decide(request, built); });
    };
    switch (request->type) {
    case 10001:
        if (request->link.text.empty()) {
            Outcome refusal = Explained(11, 11, "the link is null when share/send link, please check!");
            refusal.methodID = request->methodID;
            return decideLater({std::nullopt, refusal});
        }
        return decideLater({Content{request->link.url}, {}});
    case 10002:
        mLoads.push_back({request, [request, decideLater] {
                              if (request->image.isImage) {
                                  return decideLater({Content{request->link.url}, {}});
                              }
                              Outcome refusal = Explained(11, 11, "illegal image data");
                              refusal.methodID = request->methodID;
                              decideLater({std::nullopt, refusal});
                          }});
        return;
    default:
        return BuildVideo(request);
    }
}

// No refusal of a video has the method ID.
void Model::BuildVideo(const Shared& request) {
    const auto refuseLater = [this, request](int code) {
        Post(request, [this, request, code] { Decide(request, {std::nullopt, Coded(code)}); });
    };
    const VideoSample& video = request->video;
    if (video.text.empty()) {
        return refuseLater(11);
    }
    if (!request->extra.isVideoFile) {
        if (video.url == URLKind::kNone) {
            return refuseLater(11);
        }
        const Content content{video.url, video.url == URLKind::kFile};
        return Post(request, [this, request, content] { Decide(request, {content, {}}); });
    }
    switch (world.photos) {
    case PhotoAccess::kNotDetermined:
        return AskForPhotos(request);
    case PhotoAccess::kRestricted:
    case PhotoAccess::kDenied:
        return refuseLater(12);
    case PhotoAccess::kAuthorized:
        return SaveVideo(request);
    case PhotoAccess::kLimited:
        return fates.Settle(request->number, Fate::kLimited);
    }
}

void Model::AskForPhotos(const Shared& request) {
    Call("PHPhotoLibrary", "requestAuthorization:");
    Wait(Waiting::kPhotoPrompt, request, [this, request](const Answer& answer) {
        switch (answer.ending) {
        case Ending::kSuccess:
            world.photos = PhotoAccess::kAuthorized;
            return SaveVideo(request);
        case Ending::kCancel:
            world.photos = PhotoAccess::kDenied;
            break;
        case Ending::kError:
            world.photos = PhotoAccess::kRestricted;
            break;
        case Ending::kOdd:
            world.photos = PhotoAccess::kLimited;
            break;
        }
        Post(request, [this, request] { Decide(request, {std::nullopt, Coded(12)}); });
    });
}

void Model::SaveVideo(const Shared& request) {
    const VideoSample& video = request->video;
    const int refusal = !video.isText ? 11 : world.isVideoCompatible.value_or(video.isMovie) ? 0 : 8;
    if (refusal != 0) {
        return Post(request, [this, request, refusal] { Decide(request, {std::nullopt, Coded(refusal)}); });
    }
    Call("PHPhotoLibrary", "performChanges:completionHandler:");
    struct Change {
        bool hasRun = false;
        bool isCreated = false;
    };
    const auto change = std::make_shared<Change>();
    Wait(Waiting::kPhotoChanges, request, [this, request, change](const Answer& answer) {
        if (!std::exchange(change->hasRun, true)) {
            Call("PHAssetChangeRequest", "creationRequestForAssetFromVideoAtFileURL:");
            change->isCreated = request->video.fileExists;
        }
        VideoSaved(request, answer.ending == Ending::kSuccess || answer.ending == Ending::kOdd, change->isCreated);
    });
}

void Model::VideoSaved(const Shared& request, bool isSaved, bool isCreated) {
    Built built;
    if (!isSaved) {
        built.refusal = Coded(8);
    } else if (IsGaming()) {
        built.content = Content{URLKind::kFile, request->video.fileExists};
    } else if (isCreated) {
        built.content = Content{URLKind::kLibrary, false};
    } else {
        built.refusal = Coded(11);
    }
    Post(request, [this, request, built] { Decide(request, built); });
}

#pragma mark - Decision

void Model::Decide(const Shared& request, const Built& built) {
    if (!built.content) {
        return CommitOwn(request, built.refusal, built.refusal.methodID != 0);
    }
    switch (request->methodID) {
    case 211:
    case 414:
        return ShowShareDialog(request, *built.content);
    case 212:
        return ShowMessageDialog(request, *built.content);
    default:
        return CommitOwn(request, Coded(7));
    }
}

void Model::ShowShareDialog(const Shared& request, const Content& content) {
    Call("FBSDKShareDialog", "initWithViewController:content:delegate:");
    const bool isLink = request->type == 10001;
    const bool isVideo = request->type == 10005;
    if (!isLink && IsGaming()) {
        return isVideo ? UploadVideo(request, content) : UploadImage(request);
    }
    Call("UIApplication", "canOpenURL:");
    if (!isLink && !world.hasFacebook) {
        return CommitOwn(request, Explained(15, 15,
                                            isVideo ? "Facebook share video need app installed"
                                                    : "Facebook share image need app installed"));
    }
    Call("FBSDKShareDialog", "setMode:");
    Call("FBSDKShareDialog", "show");
    const bool isBadLink = isLink && (content.url == URLKind::kOther || content.url == URLKind::kFile);
    const bool isMissingLink = isLink && !world.hasFacebook && content.url == URLKind::kNone;
    const bool isBadVideo = isVideo && content.url != URLKind::kLibrary;
    if (isBadLink || isMissingLink || isBadVideo) {
        return SharerFailed(request, 2);
    }
    if (!world.hasFacebook && !world.findsViewController) {
        return fates.Settle(request->number, Fate::kNotOpened);
    }
    Wait(Waiting::kShareDialog, request, [this, request](const Answer& answer) { EndDialog(request, answer); });
}

void Model::ShowMessageDialog(const Shared& request, const Content& content) {
    Call("FBSDKMessageDialog", "initWithContent:delegate:");
    if (!world.hasMessenger || !world.isMessengerAllowed) {
        return CommitOwn(request, Explained(15, 15, "Messenger isn't installed"));
    }
    Call("FBSDKMessageDialog", "setDelegate:");
    Call("FBSDKMessageDialog", "setShareContent:");
    Call("FBSDKMessageDialog", "show");
    const bool isBadLink = request->type == 10001 && (content.url == URLKind::kOther || content.url == URLKind::kFile);
    const bool isBadVideo = request->type == 10005 && content.url != URLKind::kLibrary;
    if (isBadLink || isBadVideo) {
        return SharerFailed(request, 2);
    }
    Wait(Waiting::kShareDialog, request, [this, request](const Answer& answer) { EndDialog(request, answer); });
}

#pragma mark - Outcomes of dialogs

void Model::EndDialog(const Shared& request, const Answer& answer) {
    switch (answer.ending) {
    case Ending::kSuccess:
        return CommitParked(request, Coded(0));
    case Ending::kCancel:
        return CommitParked(request, Coded(2));
    case Ending::kError:
        return SharerFailed(request, answer.code);
    case Ending::kOdd:
        return fates.Settle(request->number, Fate::kDropped);
    }
}

void Model::SharerFailed(const Shared& request, int code) {
    Outcome outcome = Coded(code);
    outcome.message.reset();
    CommitParked(request, outcome);
}

#pragma mark - Uploads

void Model::UploadImage(const Shared& request) {
    Call("FBSDKGamingImageUploader", "uploadImageWithConfiguration:andResultCompletion:");
    Wait(Waiting::kImageUpload, request, [this, request](const Answer& answer) {
        if (answer.ending == Ending::kOdd) {
            return fates.Settle(request->number, Fate::kDropped);
        }
        EndUpload(request, answer, "load image error");
    });
}

void Model::UploadVideo(const Shared& request, const Content& content) {
    const auto bar = std::make_shared<Bar>();
    Call("UIProgressView", "initWithProgressViewStyle:");
    Call("UIProgressView", "setTrackTintColor:");
    Call("UIProgressView", "setProgressTintColor:");
    Call("UIProgressView", "setFrame:");
    Call("UIProgressView", "setHidden:");
    if (world.hasWindow) {
        Call("UIView", "addSubview:");
        bar->isOnView = true;
        mBars += 1;
        Call("UIView", "bringSubviewToFront:");
    }
    Call("FBSDKGamingVideoUploader", "uploadVideoWithConfiguration:completion:andProgressHandler:");
    if (!content.hasContents) {
        CommitOwn(request, Explained(9999, 2, std::nullopt));
        return TakeAway(*bar);
    }
    Wait(Waiting::kVideoUpload, request, [this, request, bar](const Answer& answer) {
        EndUpload(request, answer, "load video error");
        TakeAway(*bar);
    });
}

void Model::EndUpload(const Shared& request, const Answer& answer, const char* fallback) {
    switch (answer.ending) {
    case Ending::kSuccess:
        return CommitOwn(request, Explained(0, 0, "load image success"));
    case Ending::kCancel:
        return CommitOwn(request, Explained(9999, 0, fallback));
    case Ending::kError:
    case Ending::kOdd:
        return CommitOwn(request, Explained(9999, answer.code, answer.text));
    }
}

void Model::TakeAway(Bar& bar) {
    Call("UIProgressView", "setHidden:");
    Call("UIProgressView", "removeFromSuperview");
    if (std::exchange(bar.isOnView, false)) {
        mBars -= 1;
    }
}

} // namespace Tarvik::Vorn::Soak
