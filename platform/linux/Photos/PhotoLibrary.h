// What the user and the system do to the photo library in a test's or the simulator's place.
//
// Nothing is answered by itself. What is asked is held, first come first served, until one of the functions below ends
// it on the thread of its caller. All of them may be called on any thread.
#pragma once

#include "HostExport.h"
#include "Openings.h"
#include "VornRetainPtr.h"

#import <Photos/Photos.h>

#include <cstddef>

namespace Tarvik::Vorn::Host {

// What authorizationStatus answers from now on. Default PHAuthorizationStatusAuthorized. A device never answers
// PHAuthorizationStatusLimited there: it says "authorized" under limited access too.
VORN_HOST_EXPORT void SetPhotoAuthorization(PHAuthorizationStatus status);

// How many calls of requestAuthorization: are held: whatever the status is, since the system answers later in any case.
VORN_HOST_EXPORT size_t PendingPhotoPromptCount();

// Answers the oldest held request with the current status, as the system does when the user has decided before. False
// when none is held.
VORN_HOST_EXPORT bool AnswerPhotoPrompt();

// The user decides: the status becomes the current one, and a held request is answered with it, the oldest for index 0.
// False, and nothing changes, when there is no such request.
VORN_HOST_EXPORT bool AnswerPhotoPrompt(PHAuthorizationStatus status, size_t index = 0,
                                        Closing closing = Closing::kCloses);

// How a change ends. A value; any thread.
class VORN_HOST_EXPORT PhotoChangesOutcome {
public:
    // (YES, nil). Objects that the change block creates get this identifier; with nil they get
    // 00000000-0000-0000-0000-000000000001/L0/001 and so on, counted in hexadecimal since the last reset.
    static PhotoChangesOutcome Saved(NSString* localIdentifier = nil);

    // (NO, error). The change block has run nevertheless.
    static PhotoChangesOutcome Failed(NSError* error);

    // What the system never answers: (YES, error) and (NO, nil).
    static PhotoChangesOutcome SavedWithError(NSError* error);
    static PhotoChangesOutcome FailedWithoutError();

private:
    friend VORN_HOST_EXPORT bool RunPhotoChanges(const PhotoChangesOutcome& outcome, size_t index, Closing closing);

    BOOL mSuccess = NO;
    RetainPtr<NSError*> mError;
    RetainPtr<NSString*> mLocalIdentifier;
};

// How many calls of performChanges:completionHandler: are held.
VORN_HOST_EXPORT size_t PendingPhotoChangesCount();

// Runs a held change block, the oldest for index 0, and then its handler, both here. False when there is none at that
// place. An exception that leaves the block leaves this function, and the handler is not called. Of changes that stay
// open the block runs once all the same; each further call runs the handler alone.
VORN_HOST_EXPORT bool RunPhotoChanges(const PhotoChangesOutcome& outcome, size_t index = 0,
                                      Closing closing = Closing::kCloses);

// Forgets what is held: the blocks are released uncalled. Back to the default status and the first identifier.
VORN_HOST_EXPORT void ResetPhotoLibrary();

} // namespace Tarvik::Vorn::Host
