// A plugin library for the tests of the plugin lookup: one proper login plugin, and one class for every fault.

#include "VornExport.h"
#include "VornProtocols.h"

#import <Foundation/Foundation.h>

@interface VornLoginSample : NSObject <VornLoginDelegate>
@end

@implementation VornLoginSample

+ (instancetype)sharedInstance {
    static VornLoginSample* sShared = nil;
    if (sShared == nil) {
        sShared = [[self alloc] init];
    }
    return sShared;
}

- (void)login:(Tarvik::Vorn::VornLoginParams)params {
}

- (void)logout:(const Tarvik::Vorn::VornBaseParams*)params {
}

@end

// Inherits everything.
@interface VornLoginSampleChild : VornLoginSample
@end

@implementation VornLoginSampleChild
@end

@interface VornLoginWithoutInstance : NSObject <VornLoginDelegate>
@end

@implementation VornLoginWithoutInstance

- (void)login:(Tarvik::Vorn::VornLoginParams)params {
}

- (void)logout:(const Tarvik::Vorn::VornBaseParams*)params {
}

@end

@interface VornLoginWithNil : VornLoginWithoutInstance
@end

@implementation VornLoginWithNil

+ (instancetype)sharedInstance {
    return nil;
}

@end

@interface VornLoginWithoutLogin : NSObject
@end

@implementation VornLoginWithoutLogin

+ (instancetype)sharedInstance {
    return nil;
}

- (void)logout:(const Tarvik::Vorn::VornBaseParams*)params {
}

@end

@interface VornLoginWithoutLogout : NSObject
@end

@implementation VornLoginWithoutLogout

+ (instancetype)sharedInstance {
    return nil;
}

- (void)login:(Tarvik::Vorn::VornLoginParams)params {
}

@end

@interface VornLoginWithoutProtocol : NSObject
@end

@implementation VornLoginWithoutProtocol

+ (instancetype)sharedInstance {
    return nil;
}

- (void)login:(Tarvik::Vorn::VornLoginParams)params {
}

- (void)logout:(const Tarvik::Vorn::VornBaseParams*)params {
}

@end
