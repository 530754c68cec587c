// The moment at which something begins to wait for its answer: a login page, a dialog, a prompt, an upload. A simulator
// that answers by rules listens here instead of asking every stand-in in turn. All functions may be called on any
// thread.
#pragma once

#include "HostExport.h"

#include <functional>

namespace Tarvik::Vorn::Host {

enum class Opening {
    kLogin,         // AnswerLogin
    kShareDialog,   // AnswerShare
    kMessageDialog, // AnswerShare
    kGameRequest,   // AnswerGameRequest
    kFriendFinder,  // AnswerFriendFinder
    kPhotoPrompt,   // AnswerPhotoPrompt
    kPhotoChanges,  // RunPhotoChanges
    kImageUpload,   // AnswerImageUpload
    kVideoUpload,   // FinishVideoUpload; with FacebookProfile::k15_0 it waits until the reset.
};

using OpeningListener = std::function<void(Opening)>;

// From now on `listener` is told what opened, as the last act of the call that opened it and on that call's thread. It
// may call any platform function, and so may answer at once: the app then hears the answer inside its own call. It is
// not told of what did not open: what was refused, what had nothing to show from, and a share dialog that goes on in
// another window. It may be called on several threads at a time. What it throws leaves the call that opened something.
// An empty function ends it, and so does ResetPlatform; a call on another thread may still be under way then.
VORN_HOST_EXPORT void SetOpeningListener(OpeningListener listener);

// Whether an answer ends what it answers. Facebook or the system answering twice is a fault that can be simulated:
// with kStaysOpen the handler or the delegate is called, and the same can be answered again.
enum class Closing { kCloses, kStaysOpen };

// Tells the listener. For the stand-ins' own use, as the last act of a call.
// REQUIRES: the calling thread holds no lock of a stand-in.
void TellOpening(Opening opening);

} // namespace Tarvik::Vorn::Host
