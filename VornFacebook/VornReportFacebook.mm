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
    VORN_LOG_DEBUG("[ %s ] Facebook reportEvent eventName : %s, isRealTime : %d, params : %s extraJson : %s",
                   CStr(seqID), CStr(eventName), isRealtime ? 1 : 0,
                   CStr([VornUtilsIOS jsonStringFromDict:params prettyPrint:NO]), CStr(extra));
    if ([eventName length] == 0) {
        VORN_LOG_ERROR("[ %s ] must specify the eventName", CStr(seqID));
        return;
    }
    if ([params count] > 0) {
        VORN_LOG_DEBUG("[ %s ] report with eventName : %s and has parameters", CStr(seqID), CStr(eventName));
        [[FBSDKAppEvents shared] logEvent:eventName parameters:params];
        return;
    }
    VORN_LOG_DEBUG("[ %s ] report with eventName : %s and has no parameter", CStr(seqID), CStr(eventName));
    [[FBSDKAppEvents shared] logEvent:eventName];
}

@end
