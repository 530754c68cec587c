#include "FBSDKLoginKit/FBSDKLoginManager+Control.h"

#include "CallText.h"
#include "FBSDKCoreKit/FBSDKAccessToken+Control.h"
#include "FBSDKCoreKit/FBSDKAuthenticationToken+Control.h"
#include "FBSDKCoreKit/SDKErrors.h"
#include "History.h"
#include "InfoDictionary.h"
#include "Openings.h"
#include "PlatformCalls.h"
#include "StandInState.h"

#include <mutex>
#include <optional>
#include <utility>

using namespace Tarvik::Vorn;
using namespace Tarvik::Vorn::Host;

VORN_HOST_EXPORT NSString* const FBSDKLoginErrorDomain = @"com.facebook.sdk.login";

namespace {

constexpr const char* kClassName = "FBSDKLoginManager";

struct LoginManagerState {
    FBSDKDefaultAudience audience = FBSDKDefaultAudienceFriends;
};

// The login whose page is showing. It keeps its manager alive.
struct PendingLogin {
    RetainPtr<FBSDKLoginManager*> manager;
    RetainPtr<FBSDKLoginManagerLoginResultBlock> handler; // May be nil.
    RetainPtr<NSSet*> askedPermissions;
    RetainPtr<NSString*> scheme; // In small letters.
};

struct Logins {
    std::mutex mutex;
    std::optional<PendingLogin> pending;
    std::vector<LoginRequest> requests;
};

// Never destroyed: a login may be showing when the process ends.
Logins& TheLogins() {
    static auto& logins = *new Logins;
    return logins;
}

bool IsPermission(NSString* text) {
    const std::string characters = PlainText(text);
    return !characters.empty() && characters.find_first_not_of("abcdefghijklmnopqrstuvwxyz_") == std::string::npos;
}

bool ArePermissions(NSArray<NSString*>* texts) {
    for (NSString* text in texts) {
        if (!IsPermission(text)) {
            return false;
        }
    }
    return true;
}

// The URL scheme through which the login page comes back to the app.
NSString* SchemeOf(FBSDKSettings* settings) {
    NSString* const suffix = [settings appURLSchemeSuffix];
    return [NSString stringWithFormat:@"fb%@%@", [settings appID], suffix == nil ? @"" : suffix];
}

LoginRequest RequestFor(NSArray<NSString*>* permissions) {
    LoginRequest request;
    for (NSString* permission in permissions) {
        request.permissions.push_back(PlainText(permission));
    }
    return request;
}

void Remember(LoginRequest request) {
    if (!IsHistoryKept()) {
        return;
    }
    Logins& logins = TheLogins();
    const std::lock_guard lock(logins.mutex);
    logins.requests.push_back(std::move(request));
}

// The page takes the place of the one that is showing, if any, whose login is never answered then.
void OpenPage(PendingLogin login) {
    std::optional<PendingLogin> replaced(std::move(login));
    Logins& logins = TheLogins();
    const std::lock_guard lock(logins.mutex);
    std::swap(logins.pending, replaced);
    // What was replaced is released after the lock: that may run code of the caller's.
}

void CallHandler(const PendingLogin& login, FBSDKLoginManagerLoginResult* result, NSError* error) {
    if (login.handler) {
        login.handler.get()(result, error);
    }
}

// The login whose page is showing, which shows no longer.
std::optional<PendingLogin> TakePendingLogin() {
    Logins& logins = TheLogins();
    const std::lock_guard lock(logins.mutex);
    return std::exchange(logins.pending, std::nullopt);
}

// The same, but only a login of this manager.
std::optional<PendingLogin> TakePendingLoginOf(FBSDKLoginManager* manager) {
    Logins& logins = TheLogins();
    const std::lock_guard lock(logins.mutex);
    if (!logins.pending || logins.pending->manager.get() != manager) {
        return std::nullopt;
    }
    return std::exchange(logins.pending, std::nullopt);
}

// The login whose page is showing, which shows on.
std::optional<PendingLogin> ShowingLogin() {
    Logins& logins = TheLogins();
    const std::lock_guard lock(logins.mutex);
    return logins.pending;
}

FBSDKLoginManagerLoginResult* MakeResult(FBSDKAccessToken* token, FBSDKAuthenticationToken* authenticationToken,
                                         NSSet* granted, BOOL isCancelled) {
    NSSet* const declined = token == nil ? [NSSet set] : [token declinedPermissions];
    return [[[FBSDKLoginManagerLoginResult alloc] initWithToken:token
                                            authenticationToken:authenticationToken
                                                    isCancelled:isCancelled
                                             grantedPermissions:granted
                                            declinedPermissions:declined] autorelease];
}

} // namespace

@implementation FBSDKLoginManager

+ (instancetype)allocWithZone:(NSZone*)zone {
    return AllocateWithState<LoginManagerState>(self, zone);
}

- (instancetype)init {
    return [super init];
}

- (instancetype)initWithDefaultAudience:(FBSDKDefaultAudience)defaultAudience {
    self = [self init];
    if (self != nil) {
        StateOf<LoginManagerState>(self).audience = defaultAudience;
    }
    return self;
}

- (void)dealloc {
    DestroyState<LoginManagerState>(self);
    [super dealloc];
}

- (void)logInWithPermissions:(NSArray<NSString*>*)permissions
          fromViewController:(UIViewController*)viewController
                     handler:(FBSDKLoginManagerLoginResultBlock)handler {
    PlatformCalls::Record(
        kClassName, "logInWithPermissions:fromViewController:handler:",
        JoinArguments({QuotedList(permissions), ObjectText(viewController), handler == nil ? "nil" : "block"}));

    LoginRequest request = RequestFor(permissions);
    request.audience = StateOf<LoginManagerState>(self).audience;

    if (!ArePermissions(permissions)) {
        Remember(request);
        if (handler != nil) {
            handler(nil, MakeSDKError(FBSDKErrorDomain, FBSDKErrorInvalidArgument,
                                      @"Cannot login without a valid login configuration."));
        }
        return;
    }

    FBSDKSettings* const settings = [FBSDKSettings sharedSettings];
    NSString* const scheme = SchemeOf(settings);
    if ([settings appID] == nil || !IsURLSchemeRegistered(scheme)) {
        Remember(request);
        [NSException raise:@"InvalidOperationException"
                    format:@"%@ is not registered as a URL scheme. Please add it in your Info.plist", scheme];
    }

    // A login of this very manager whose page is still showing counts as given up by the user.
    if (const std::optional<PendingLogin> former = TakePendingLoginOf(self)) {
        CallHandler(*former, MakeResult(nil, nil, [NSSet set], YES), nil);
    }

    NSMutableSet* const asked = [NSMutableSet setWithObject:@"openid"];
    [asked addObjectsFromArray:permissions];
    for (NSString* permission in asked) {
        request.askedPermissions.insert(PlainText(permission));
    }
    request.scheme = PlainText(scheme);
    request.pageOpened = true;
    Remember(std::move(request));
    OpenPage({RetainPtr(self), AdoptNS<FBSDKLoginManagerLoginResultBlock>([handler copy]), RetainPtr<NSSet*>(asked),
              RetainPtr([scheme lowercaseString])});
    TellOpening(Opening::kLogin);
}

- (void)logOut {
    PlatformCalls::Record(kClassName, "logOut");
    ReplaceCurrentAuthenticationToken(nil);
    ReplaceCurrentAccessToken(nil);
}

#pragma mark - Control

+ (std::vector<LoginRequest>)loginRequests {
    Logins& logins = TheLogins();
    const std::lock_guard lock(logins.mutex);
    return logins.requests;
}

+ (NSUInteger)pendingLoginCount {
    Logins& logins = TheLogins();
    const std::lock_guard lock(logins.mutex);
    return logins.pending ? 1 : 0;
}

+ (NSString*)pendingScheme {
    Logins& logins = TheLogins();
    const std::lock_guard lock(logins.mutex);
    return logins.pending ? [[logins.pending->scheme.get() retain] autorelease] : nil;
}

+ (FBSDKLoginManagerLoginResultBlock)pendingHandler {
    Logins& logins = TheLogins();
    const std::lock_guard lock(logins.mutex);
    if (!logins.pending) {
        return nil;
    }
    return [[logins.pending->handler.get() retain] autorelease];
}

+ (void)reset {
    const std::optional<PendingLogin> forgotten = TakePendingLogin();
    Logins& logins = TheLogins();
    const std::lock_guard lock(logins.mutex);
    logins.requests = {};
}

@end

namespace Tarvik::Vorn::Host {

bool AnswerLogin(const LoginAnswer& answer, Closing closing) {
    @autoreleasepool {
        const std::optional<PendingLogin> login = closing == Closing::kStaysOpen ? ShowingLogin() : TakePendingLogin();
        if (!login) {
            return false;
        }
        FBSDKAuthenticationToken* const authenticationToken = answer.mAuthenticationToken.get();
        if (answer.mKind == LoginAnswer::Kind::kArguments) {
            if (authenticationToken != nil) {
                ReplaceCurrentAuthenticationToken(authenticationToken);
            }
            CallHandler(*login, answer.mResult.get(), answer.mError.get());
            return true;
        }

        FBSDKAccessToken* token = answer.mToken.get();
        NSSet* granted = token == nil ? [NSSet set] : [token permissions];
        if (answer.mGrantsWhatWasAsked) {
            granted = login->askedPermissions.get();
        }
        if ([granted count] == 0) {
            token = nil;
        }
        if (token == nil && authenticationToken == nil) {
            CallHandler(*login, MakeResult(nil, nil, [NSSet set], YES), nil);
            return true;
        }

        FBSDKAccessToken* const current = [FBSDKAccessToken currentAccessToken];
        if (token != nil && current != nil && ![[token userID] isEqualToString:[current userID]]) {
            CallHandler(*login, nil, MakeSDKError(FBSDKLoginErrorDomain, FBSDKLoginErrorUserMismatch, nil));
            return true;
        }
        ReplaceCurrentAuthenticationToken(authenticationToken);
        ReplaceCurrentAccessToken(token);
        CallHandler(*login, MakeResult(token, authenticationToken, granted, [granted count] == 0), nil);
        return true;
    }
}

} // namespace Tarvik::Vorn::Host
