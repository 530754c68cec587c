#include "FBSDKCoreKit/FBSDKAuthenticationToken+Control.h"

#include "CallText.h"
#include "PlatformCalls.h"
#include "StandInState.h"
#include "VornRetainPtr.h"

#include <mutex>
#include <utility>

using namespace Tarvik::Vorn;
using namespace Tarvik::Vorn::Host;

namespace {

struct AuthenticationTokenState {
    RetainPtr<NSString*> tokenString;
    RetainPtr<NSString*> nonce;
    RetainPtr<NSString*> graphDomain;
};

struct CurrentAuthenticationToken {
    std::mutex mutex;
    RetainPtr<FBSDKAuthenticationToken*> token;
};

// Never destroyed: the token is read until the process ends.
CurrentAuthenticationToken& TheCurrent() {
    static auto& current = *new CurrentAuthenticationToken;
    return current;
}

} // namespace

@implementation FBSDKAuthenticationToken

+ (instancetype)allocWithZone:(NSZone*)zone {
    return AllocateWithState<AuthenticationTokenState>(self, zone);
}

- (instancetype)initWithTokenString:(NSString*)tokenString nonce:(NSString*)nonce graphDomain:(NSString*)graphDomain {
    self = [super init];
    if (self != nil) {
        AuthenticationTokenState& state = StateOf<AuthenticationTokenState>(self);
        state.tokenString = AdoptNS<NSString*>([tokenString copy]);
        state.nonce = AdoptNS<NSString*>([nonce copy]);
        state.graphDomain = AdoptNS<NSString*>([graphDomain copy]);
    }
    return self;
}

- (void)dealloc {
    DestroyState<AuthenticationTokenState>(self);
    [super dealloc];
}

- (id)copyWithZone:(NSZone*)zone {
    return [self retain]; // Nothing of a token can change.
}

#pragma mark - NSSecureCoding

+ (BOOL)supportsSecureCoding {
    return YES;
}

- (instancetype)initWithCoder:(NSCoder*)coder {
    return [self initWithTokenString:[coder decodeObjectForKey:@"tokenString"]
                               nonce:[coder decodeObjectForKey:@"nonce"]
                         graphDomain:[coder decodeObjectForKey:@"graphDomain"]];
}

- (void)encodeWithCoder:(NSCoder*)coder {
    [coder encodeObject:[self tokenString] forKey:@"tokenString"];
    [coder encodeObject:[self nonce] forKey:@"nonce"];
    [coder encodeObject:[self graphDomain] forKey:@"graphDomain"];
}

#pragma mark - The token's data

- (NSString*)tokenString {
    return StateOf<AuthenticationTokenState>(self).tokenString.get();
}

- (NSString*)nonce {
    return StateOf<AuthenticationTokenState>(self).nonce.get();
}

- (NSString*)graphDomain {
    return StateOf<AuthenticationTokenState>(self).graphDomain.get();
}

#pragma mark - The current token

+ (FBSDKAuthenticationToken*)currentAuthenticationToken {
    CurrentAuthenticationToken& current = TheCurrent();
    const std::lock_guard lock(current.mutex);
    return [[current.token.get() retain] autorelease];
}

+ (void)setCurrentAuthenticationToken:(FBSDKAuthenticationToken*)token {
    PlatformCalls::Record("FBSDKAuthenticationToken", "setCurrentAuthenticationToken:", ObjectText(token));
    ReplaceCurrentAuthenticationToken(token);
}

#pragma mark - Control

+ (void)reset {
    ReplaceCurrentAuthenticationToken(nil);
}

@end

namespace Tarvik::Vorn::Host {

FBSDKAuthenticationToken* MakeAuthenticationToken(NSString* tokenString, NSString* graphDomain) {
    return [[[FBSDKAuthenticationToken alloc] initWithTokenString:tokenString nonce:@"nonce"
                                                      graphDomain:graphDomain] autorelease];
}

void ReplaceCurrentAuthenticationToken(FBSDKAuthenticationToken* token) {
    RetainPtr<FBSDKAuthenticationToken*> former = AdoptNS<FBSDKAuthenticationToken*>([token copy]);
    CurrentAuthenticationToken& current = TheCurrent();
    const std::lock_guard lock(current.mutex);
    std::swap(current.token, former);
}

} // namespace Tarvik::Vorn::Host
