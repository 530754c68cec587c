// Plays the steps of FriendSteps.h: takes the part of the core that calls the friend plugin, of the player, of Facebook's
// dialogs and of the system. Main thread; what a step answers "on another thread" it waits for.
#pragma once

#include "FriendSteps.h"
#include "Transcript.h"

#import "VornProtocols.h"

#include <functional>

namespace Tarvik::Vorn::Simulator {

class FriendPlayer {
public:
    // Both are borrowed for the player's life.
    FriendPlayer(id<VornFriendDelegate> plugin, Transcript& transcript) : mPlugin(plugin), mTranscript(transcript) {}

    // Each returns false, with the reason in the transcript, when the step cannot be played.
    bool operator()(const PlayerStep& step) const;
    bool operator()(const ProfileStep& step) const;
    bool operator()(const AppsStep& step) const;
    bool operator()(const QueriesSchemesStep& step) const;
    bool operator()(const PhotoPermissionStep& step) const;
    bool operator()(const AnswerPhotoPromptStep& step) const;
    bool operator()(const SendMessageStep& step) const;
    bool operator()(const ShareStep& step) const;
    bool operator()(const AddFriendStep& step) const;
    bool operator()(const QueryFriendsStep& step) const;
    bool operator()(const AnswerFriendFinderStep& step) const;
    bool operator()(const AnswerGameRequestStep& step) const;
    bool operator()(const AnswerShareStep& step) const;
    bool operator()(const FinishSavingStep& step) const;
    bool operator()(const AnswerImageUploadStep& step) const;
    bool operator()(const UploadProgressStep& step) const;
    bool operator()(const AnswerVideoUploadStep& step) const;

private:
    // Tells what happens and on which thread, and lets it happen there. `missing` is said when there was nothing to answer.
    bool Answer(const std::string& what, bool background, const std::string& missing,
                const std::function<bool()>& answer) const;

    id<VornFriendDelegate> mPlugin;
    Transcript& mTranscript;
};

// "the main thread" or "another thread": where this is called.
const char* ThreadName();

} // namespace Tarvik::Vorn::Simulator
