// The same for friend plugins: a proper one, and one class for every fault that the other kinds do not have.

#include "VornProtocols.h"

#import <Foundation/Foundation.h>

@interface VornFriendSample : NSObject <VornFriendDelegate>
@end

@implementation VornFriendSample

+ (instancetype)sharedInstance {
    static VornFriendSample* sShared = nil;
    if (sShared == nil) {
        sShared = [[self alloc] init];
    }
    return sShared;
}

- (void)sendMessage:(const Tarvik::Vorn::VornFriendReqInfo*)reqInfo
             params:(Tarvik::Vorn::VornBaseParams*)params
         observerID:(unsigned int)observerID {
}

- (void)share:(const Tarvik::Vorn::VornFriendReqInfo*)reqInfo
        params:(Tarvik::Vorn::VornBaseParams*)params
    observerID:(unsigned int)observerID {
}

@end

@interface VornFriendWithoutShare : NSObject
@end

@implementation VornFriendWithoutShare

+ (instancetype)sharedInstance {
    return nil;
}

- (void)sendMessage:(const Tarvik::Vorn::VornFriendReqInfo*)reqInfo
             params:(Tarvik::Vorn::VornBaseParams*)params
         observerID:(unsigned int)observerID {
}

@end

@interface VornFriendWithoutMessages : NSObject
@end

@implementation VornFriendWithoutMessages

+ (instancetype)sharedInstance {
    return nil;
}

- (void)share:(const Tarvik::Vorn::VornFriendReqInfo*)reqInfo
        params:(Tarvik::Vorn::VornBaseParams*)params
    observerID:(unsigned int)observerID {
}

@end

@interface VornFriendWithoutProtocol : NSObject
@end

@implementation VornFriendWithoutProtocol

+ (instancetype)sharedInstance {
    return nil;
}

- (void)sendMessage:(const Tarvik::Vorn::VornFriendReqInfo*)reqInfo
             params:(Tarvik::Vorn::VornBaseParams*)params
         observerID:(unsigned int)observerID {
}

- (void)share:(const Tarvik::Vorn::VornFriendReqInfo*)reqInfo
        params:(Tarvik::Vorn::VornBaseParams*)params
    observerID:(unsigned int)observerID {
}

@end
