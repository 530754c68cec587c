#import <FBSDKLoginKit/FBSDKLoginKit.h>
#import <FBSDKLoginKit/FBSDKLoginKit-Swift.h>

#include "StandInState.h"
#include "VornRetainPtr.h"

using namespace Tarvik::Vorn;
using namespace Tarvik::Vorn::Host;

namespace {

struct LoginResultState {
    RetainPtr<FBSDKAccessToken*> token;
    RetainPtr<FBSDKAuthenticationToken*> authenticationToken;
    BOOL isCancelled = NO;
    RetainPtr<NSSet*> grantedPermissions;
    RetainPtr<NSSet*> declinedPermissions;
};

} // namespace

@implementation FBSDKLoginManagerLoginResult

+ (instancetype)allocWithZone:(NSZone*)zone {
    return AllocateWithState<LoginResultState>(self, zone);
}

- (instancetype)initWithToken:(FBSDKAccessToken*)token
          authenticationToken:(FBSDKAuthenticationToken*)authenticationToken
                  isCancelled:(BOOL)isCancelled
           grantedPermissions:(NSSet<NSString*>*)grantedPermissions
          declinedPermissions:(NSSet<NSString*>*)declinedPermissions {
    self = [super init];
    if (self != nil) {
        LoginResultState& state = StateOf<LoginResultState>(self);
        state.token = RetainPtr(token);
        state.authenticationToken = RetainPtr(authenticationToken);
        state.isCancelled = isCancelled;
        state.grantedPermissions = AdoptNS<NSSet*>([grantedPermissions copy]);
        state.declinedPermissions = AdoptNS<NSSet*>([declinedPermissions copy]);
    }
    return self;
}

- (void)dealloc {
    DestroyState<LoginResultState>(self);
    [super dealloc];
}

- (FBSDKAccessToken*)token {
    return StateOf<LoginResultState>(self).token.get();
}

- (FBSDKAuthenticationToken*)authenticationToken {
    return StateOf<LoginResultState>(self).authenticationToken.get();
}

- (BOOL)isCancelled {
    return StateOf<LoginResultState>(self).isCancelled;
}

- (NSSet<NSString*>*)grantedPermissions {
    return StateOf<LoginResultState>(self).grantedPermissions.get();
}

- (NSSet<NSString*>*)declinedPermissions {
    return StateOf<LoginResultState>(self).declinedPermissions.get();
}

@end
