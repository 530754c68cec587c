#include "VornUtilsIOS.h"

#include "MinimalCore.h"
#include "VornApplicationDelegate.h"

#import <objc/runtime.h>

#include <string>

using namespace Tarvik::Vorn::Test;

@implementation VornUtilsIOS

+ (NSString*)jsonStringFromDict:(NSDictionary*)dict prettyPrint:(BOOL)prettyPrint {
    NoteCoreCall("jsonStringFromDict");
    return @"{}";
}

+ (NSDictionary*)dictFromJsonString:(NSString*)json {
    NoteCoreCall("dictFromJsonString");
    return nil;
}

+ (void)swizzlingOriginalClass:(Class)originalClass
                 swizzledClass:(Class)swizzledClass
                   originalSEL:(SEL)originalSEL
                   swizzledSEL:(SEL)swizzledSEL {
    NoteCoreCall("swizzling " + std::string(sel_getName(originalSEL)));
}

+ (UIViewController*)getRootViewController {
    NoteCoreCall("getRootViewController");
    return nil;
}

+ (void)loadImageWithUri:(NSString*)uri complete:(void (^)(BOOL success, NSData* data, NSError* error))complete {
    NoteCoreCall("loadImageWithUri");
}

@end

@implementation VornApplicationDelegate
@end
