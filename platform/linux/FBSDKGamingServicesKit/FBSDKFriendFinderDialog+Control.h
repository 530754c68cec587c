// What a test or the simulator sees and decides of Facebook's friend finder.
//
// Each friend finder that could be opened is held until AnswerFriendFinder ends it on the thread of its caller.
#pragma once

#include "HostExport.h"
#include "Openings.h"
#include "VornRetainPtr.h"

#import <Foundation/Foundation.h>

#include <cstddef>

namespace Tarvik::Vorn::Host {

// How a friend finder ends. A value; any thread.
class VORN_HOST_EXPORT FriendFinderAnswer {
public:
    // The user comes back to the app, by Facebook's URL or by hand: YES without an error. With
    // FacebookProfile::kAsDocumented only the URL means success; see Closed.
    static FriendFinderAnswer Returned();

    // The user closes the finder. Every release of the SDK takes it for a return; FacebookProfile::kAsDocumented answers
    // NO without an error.
    static FriendFinderAnswer Closed();

    // The page could not be opened: NO, Core 13.
    static FriendFinderAnswer NotOpened();

    // Exactly these two arguments, also where the SDK would never pass them.
    static FriendFinderAnswer Exactly(bool success, NSError* error);

private:
    friend VORN_HOST_EXPORT bool AnswerFriendFinder(const FriendFinderAnswer& answer, size_t index, Closing closing);

    enum class Kind { kReturned, kClosed, kExactly };

    Kind mKind = Kind::kReturned;
    bool mSuccess = false;
    RetainPtr<NSError*> mError;
};

// Ends an open friend finder, the one that has been open longest for index 0: calls its handler on this thread. Returns
// false, and does nothing, when there is no such finder. Any thread; an exception that the handler throws passes
// through.
VORN_HOST_EXPORT bool AnswerFriendFinder(const FriendFinderAnswer& answer, size_t index = 0,
                                         Closing closing = Closing::kCloses);

// How many friend finders are open. Any thread.
VORN_HOST_EXPORT size_t OpenFriendFinderCount();

// Forgets all friend finders; their handlers are released uncalled.
VORN_HOST_EXPORT void ResetFriendFinders();

} // namespace Tarvik::Vorn::Host
