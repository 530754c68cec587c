// The same for report plugins: a proper one, and one class for every fault that login plugins do not have.

#include "VornProtocols.h"

#import <Foundation/Foundation.h>

@interface VornReportSample : NSObject <VornReportDelegate>
@end

@implementation VornReportSample

+ (instancetype)sharedInstance {
    static VornReportSample* sShared = nil;
    if (sShared == nil) {
        sShared = [[self alloc] init];
    }
    return sShared;
}

- (BOOL)initStat {
    return YES;
}

- (void)reportEvent:(NSString*)eventName
             params:(NSDictionary*)params
         isRealtime:(BOOL)isRealtime
              seqID:(NSString*)seqID
              extra:(NSString*)extra {
}

@end

@interface VornReportWithoutStart : NSObject
@end

@implementation VornReportWithoutStart

+ (instancetype)sharedInstance {
    return nil;
}

- (void)reportEvent:(NSString*)eventName
             params:(NSDictionary*)params
         isRealtime:(BOOL)isRealtime
              seqID:(NSString*)seqID
              extra:(NSString*)extra {
}

@end

@interface VornReportWithoutEvents : NSObject
@end

@implementation VornReportWithoutEvents

+ (instancetype)sharedInstance {
    return nil;
}

- (BOOL)initStat {
    return YES;
}

@end

@interface VornReportWithoutProtocol : VornReportWithoutEvents
@end

@implementation VornReportWithoutProtocol

- (void)reportEvent:(NSString*)eventName
             params:(NSDictionary*)params
         isRealtime:(BOOL)isRealtime
              seqID:(NSString*)seqID
              extra:(NSString*)extra {
}

@end
