// What a test or the simulator sees and decides of a login.
//
// One login page shows at a time. It is held until AnswerLogin (LoginAnswer.h) ends it on the thread of its caller, or
// until another manager's login replaces it: then its handler is released uncalled, as the SDK does. Whether the app
// has registered its URL scheme is decided in InfoDictionary.h; by default it has.
#pragma once

#include "FBSDKLoginKit/LoginAnswer.h"

#include <set>
#include <string>
#include <vector>

namespace Tarvik::Vorn::Host {

// One call of logInWithPermissions:fromViewController:handler:.
struct LoginRequest {
    std::vector<std::string> permissions;   // As they were passed.
    std::set<std::string> askedPermissions; // What the page asks for: without duplicates, and with "openid".
    FBSDKDefaultAudience audience = FBSDKDefaultAudienceFriends;
    std::string scheme; // The URL scheme through which the page comes back: "fb" and the app ID.
    // False when the login ended before: refused permissions, or an exception. askedPermissions and scheme are empty then.
    bool pageOpened = false;
};

} // namespace Tarvik::Vorn::Host

@interface FBSDKLoginManager (Control)

// Every login since the last reset, in order. Any thread.
+ (std::vector<Tarvik::Vorn::Host::LoginRequest>)loginRequests;

// 1 while a login page is showing, otherwise 0. Any thread.
+ (NSUInteger)pendingLoginCount;

// The URL scheme through which the showing page comes back, in small letters, autoreleased; nil when none is showing.
// Any thread.
+ (nullable NSString*)pendingScheme;

// The handler of the login whose page is showing, autoreleased; nil when there is none. With it a test can call a
// handler twice, or after another login has replaced its own. Any thread.
+ (nullable FBSDKLoginManagerLoginResultBlock)pendingHandler;

// Forgets all logins; the handler of a showing one is released uncalled. The current tokens stay.
+ (void)reset;

@end
