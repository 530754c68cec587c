#include "Photos/PhotoLibrary.h"

#include "CallText.h"
#include "HeldThings.h"
#include "Photos/PhotoObjects.h"
#include "PlatformCalls.h"

#include <deque>
#include <mutex>
#include <optional>
#include <utility>

using namespace Tarvik::Vorn;
using namespace Tarvik::Vorn::Host;

namespace {

constexpr const char* kClassName = "PHPhotoLibrary";

using AuthorizationHandler = void (^)(PHAuthorizationStatus);
using ChangesHandler = void (^)(BOOL, NSError*);

using HeldPrompt = RetainPtr<AuthorizationHandler>;

struct HeldChanges {
    RetainPtr<dispatch_block_t> block; // Empty once it has run.
    RetainPtr<ChangesHandler> handler;
};

struct Library {
    std::mutex mutex;
    PHAuthorizationStatus status = PHAuthorizationStatusAuthorized;
    std::deque<HeldPrompt> prompts;
    std::deque<HeldChanges> changes;
    uint64_t lastIdentifier = 0;
};

// Never destroyed: the plugin may ask until the process ends.
Library& TheLibrary() {
    static auto& library = *new Library;
    return library;
}

// The change block that runs on this thread. Change blocks nest when one of them runs another.
struct RunningChange {
    explicit RunningChange(NSString* identifier);
    ~RunningChange();
    RunningChange(const RunningChange&) = delete;
    RunningChange& operator=(const RunningChange&) = delete;

    NSString* const localIdentifier; // Not retained: the outcome keeps it. Nil for the next of the library.
    RunningChange* const outer;
};

thread_local RunningChange* sRunningChange = nullptr;

RunningChange::RunningChange(NSString* identifier)
    : localIdentifier(identifier), outer(std::exchange(sRunningChange, this)) {}

RunningChange::~RunningChange() {
    sRunningChange = outer;
}

NSString* NextIdentifier() {
    Library& library = TheLibrary();
    uint64_t number = 0;
    {
        const std::lock_guard lock(library.mutex);
        library.lastIdentifier += 1;
        number = library.lastIdentifier;
    }
    return
        [NSString stringWithFormat:@"00000000-0000-0000-0000-%012llX/L0/001", static_cast<unsigned long long>(number)];
}

bool AnswerPrompt(std::optional<PHAuthorizationStatus> decision, size_t index, Closing closing) {
    @autoreleasepool {
        Library& library = TheLibrary();
        std::optional<HeldPrompt> prompt;
        PHAuthorizationStatus status = PHAuthorizationStatusNotDetermined;
        {
            const std::lock_guard lock(library.mutex);
            prompt = TakeHeld(library.prompts, index, closing);
            if (prompt && decision) {
                library.status = *decision;
            }
            status = library.status;
        }
        if (prompt && *prompt) {
            prompt->get()(status);
        }
        return prompt.has_value();
    }
}

} // namespace

@implementation PHPhotoLibrary

+ (PHPhotoLibrary*)sharedPhotoLibrary {
    static PHPhotoLibrary* const shared = [[PHPhotoLibrary alloc] init];
    return shared;
}

+ (PHAuthorizationStatus)authorizationStatus {
    Library& library = TheLibrary();
    const std::lock_guard lock(library.mutex);
    return library.status;
}

+ (void)requestAuthorization:(void (^)(PHAuthorizationStatus))handler {
    PlatformCalls::Record(kClassName, "requestAuthorization:", handler == nil ? "nil" : "block");
    HeldPrompt prompt = AdoptNS<AuthorizationHandler>([handler copy]);
    {
        Library& library = TheLibrary();
        const std::lock_guard lock(library.mutex);
        library.prompts.push_back(std::move(prompt));
    }
    TellOpening(Opening::kPhotoPrompt);
}

- (void)performChanges:(dispatch_block_t)changeBlock completionHandler:(void (^)(BOOL, NSError*))completionHandler {
    PlatformCalls::Record(
        kClassName, "performChanges:completionHandler:",
        JoinArguments({changeBlock == nil ? "nil" : "block", completionHandler == nil ? "nil" : "block"}));
    HeldChanges changes{AdoptNS<dispatch_block_t>([changeBlock copy]),
                        AdoptNS<ChangesHandler>([completionHandler copy])};
    {
        Library& library = TheLibrary();
        const std::lock_guard lock(library.mutex);
        library.changes.push_back(std::move(changes));
    }
    TellOpening(Opening::kPhotoChanges);
}

@end

namespace Tarvik::Vorn::Host {

bool IsInsidePhotoChange() {
    return sRunningChange != nullptr;
}

PHObjectPlaceholder* NextPlaceholder() {
    NSString* const given = sRunningChange->localIdentifier;
    return MakePlaceholder(given != nil ? given : NextIdentifier());
}

void SetPhotoAuthorization(PHAuthorizationStatus status) {
    Library& library = TheLibrary();
    const std::lock_guard lock(library.mutex);
    library.status = status;
}

size_t PendingPhotoPromptCount() {
    Library& library = TheLibrary();
    const std::lock_guard lock(library.mutex);
    return library.prompts.size();
}

bool AnswerPhotoPrompt() {
    return AnswerPrompt(std::nullopt, 0, Closing::kCloses);
}

bool AnswerPhotoPrompt(PHAuthorizationStatus status, size_t index, Closing closing) {
    return AnswerPrompt(status, index, closing);
}

PhotoChangesOutcome PhotoChangesOutcome::Saved(NSString* localIdentifier) {
    PhotoChangesOutcome outcome;
    outcome.mSuccess = YES;
    outcome.mLocalIdentifier = AdoptNS<NSString*>([localIdentifier copy]);
    return outcome;
}

PhotoChangesOutcome PhotoChangesOutcome::Failed(NSError* error) {
    PhotoChangesOutcome outcome;
    outcome.mError = RetainPtr(error);
    return outcome;
}

PhotoChangesOutcome PhotoChangesOutcome::SavedWithError(NSError* error) {
    PhotoChangesOutcome outcome = Failed(error);
    outcome.mSuccess = YES;
    return outcome;
}

PhotoChangesOutcome PhotoChangesOutcome::FailedWithoutError() {
    return Failed(nil);
}

size_t PendingPhotoChangesCount() {
    Library& library = TheLibrary();
    const std::lock_guard lock(library.mutex);
    return library.changes.size();
}

bool RunPhotoChanges(const PhotoChangesOutcome& outcome, size_t index, Closing closing) {
    @autoreleasepool {
        Library& library = TheLibrary();
        std::optional<HeldChanges> changes;
        {
            const std::lock_guard lock(library.mutex);
            changes = TakeHeld(library.changes, index, closing);
            if (changes && closing == Closing::kStaysOpen) {
                library.changes[index].block = {}; // `changes` keeps it.
            }
        }
        if (!changes) {
            return false;
        }
        if (changes->block) {
            const RunningChange running(outcome.mLocalIdentifier.get());
            changes->block.get()();
        }
        if (changes->handler) {
            changes->handler.get()(outcome.mSuccess, outcome.mError.get());
        }
        return true;
    }
}

void ResetPhotoLibrary() {
    std::deque<HeldPrompt> prompts; // Released behind the lock.
    std::deque<HeldChanges> changes;
    Library& library = TheLibrary();
    const std::lock_guard lock(library.mutex);
    prompts.swap(library.prompts);
    changes.swap(library.changes);
    library.status = PHAuthorizationStatusAuthorized;
    library.lastIdentifier = 0;
}

} // namespace Tarvik::Vorn::Host
