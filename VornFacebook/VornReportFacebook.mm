#include "VornReportFacebook.h"

#include "VornDefine.h"
#include "VornFacebookSDK.h"

using namespace Tarvik::Vorn;

@implementation VornReportFacebook

VORN_SINGLETON_FAMILY(VornReportFacebook)

#pragma mark - Requests from the core

- (BOOL)initStat {
    VORN_LOG_DEBUG("Facebook Report init"); // The application hooks start the SDK.
    return YES;
}

- (void)reportEvent:(NSString*)eventName
             params:(NSDictionary*)params
         isRealtime:(BOOL)isRealtime
              seqID:(NSString*)seqID
              extra:(NSString*)extra {
    const char* const sequence = CStr(seqID);
    const char* const name = CStr(eventName);
    VORN_LOG_DEBUG("[ %s ] Facebook reportEvent eventName : %s, isRealTime : %d, params : %s extraJson : %s", sequence,
                   name, isRealtime ? 1 : 0, CStr([VornUtilsIOS jsonStringFromDict:params prettyPrint:NO]),
                   CStr(extra));
    if ([eventName length] == 0) {
        VORN_LOG_ERROR("[ %s ] must specify the eventName", sequence);
        return;
    }
    if ([params count] > 0) {
        VORN_LOG_DEBUG("[ %s ] report with eventName : %s and has parameters", sequence, name);
        [[FBSDKAppEvents shared] logEvent:eventName parameters:params];
        return;
    }
    VORN_LOG_DEBUG("[ %s ] report with eventName : %s and has no parameter", sequence, name);
    [[FBSDKAppEvents shared] logEvent:eventName];
}

@end
