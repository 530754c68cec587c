// Helpers of the core that need Objective-C. Implemented by the core; class methods only.
#pragma once

#include "VornExport.h"

#import <Foundation/Foundation.h>

@class UIViewController;

VORN_API
@interface VornUtilsIOS : NSObject

// The JSON text of `dict`, UTF-8, compact unless `prettyPrint`. Nil when `dict` is nil or holds something that has no
// JSON form. Autoreleased. Any thread.
+ (NSString*)jsonStringFromDict:(NSDictionary*)dict prettyPrint:(BOOL)prettyPrint;

// The object that `json` holds. Nil when `json` is nil, is not valid JSON or holds anything but an object. Integers of
// 64 bits are exact, booleans are boolean numbers, null is NSNull. Autoreleased. Any thread.
+ (NSDictionary*)dictFromJsonString:(NSString*)json;

// Exchanges two instance methods: afterwards `originalSEL` on objects of `originalClass` runs the implementation that
// `swizzledClass` has for `swizzledSEL`, and `swizzledSEL` on them runs what `originalSEL` ran before. Where that was
// nothing, `swizzledSEL` answers zero (NO, nil). Superclasses do not change. Main thread, before the methods are used.
+ (void)swizzlingOriginalClass:(Class)originalClass
                 swizzledClass:(Class)swizzledClass
                   originalSEL:(SEL)originalSEL
                   swizzledSEL:(SEL)swizzledSEL;

// The app's root view controller: the key window's. Nil while there is none. Main thread.
+ (UIViewController*)getRootViewController;

// Loads the bytes of the image that `uri` names: a path, or a URL of a scheme that the core knows. Calls `complete`
// exactly once, on a thread of the core's, with (YES, bytes, nil) or (NO, nil, error). The bytes need not be an image.
// Does nothing when `complete` is nil. Any thread.
+ (void)loadImageWithUri:(NSString*)uri complete:(void (^)(BOOL success, NSData* data, NSError* error))complete;

@end
