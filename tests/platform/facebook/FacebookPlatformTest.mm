#include "FacebookPlatformTest.h"

@implementation VornTokenWatcher

- (instancetype)init {
    self = [super init];
    if (self != nil) {
        [[NSNotificationCenter defaultCenter] addObserver:self
                                                 selector:@selector(tokenDidChange:)
                                                     name:FBSDKAccessTokenDidChangeNotification
                                                   object:nil];
    }
    return self;
}

- (void)dealloc {
    [[NSNotificationCenter defaultCenter] removeObserver:self];
    [super dealloc];
}

- (void)tokenDidChange:(NSNotification*)notification {
    ++posts;
    object = [notification object];
    accessToken = [FBSDKAccessToken currentAccessToken];
    authenticationToken = [FBSDKAuthenticationToken currentAuthenticationToken];
}

@end
