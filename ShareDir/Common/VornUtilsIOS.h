// Helpers of the core that need Objective-C. Implemented by the core; class methods only.
#pragma once

#include "VornExport.h"

#import <Foundation/Foundation.h>

VORN_API
@interface VornUtilsIOS : NSObject

// The JSON text of `dict`, UTF-8, compact unless `prettyPrint`. Nil when `dict` is nil or holds something that has no
// JSON form. Autoreleased. Any thread.
+ (NSString*)jsonStringFromDict:(NSDictionary*)dict prettyPrint:(BOOL)prettyPrint;

// The object that `json` holds. Nil when `json` is nil, is not valid JSON or holds anything but an object. Integers of
// 64 bits are exact, booleans are boolean numbers, null is NSNull. Autoreleased. Any thread.
+ (NSDictionary*)dictFromJsonString:(NSString*)json;

@end
