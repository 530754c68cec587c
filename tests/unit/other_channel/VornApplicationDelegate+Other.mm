// Another channel's library, which hooks the same three methods of the core's application delegate as ours does.

#include "OtherChannel.h"

#include "VornApplicationDelegate.h"
#include "VornUtilsIOS.h"

#import <Foundation/Foundation.h>

namespace Tarvik::Vorn::Test {

std::vector<std::string>& OtherChannelCalls() {
    static std::vector<std::string> calls;
    return calls;
}

} // namespace Tarvik::Vorn::Test

using namespace Tarvik::Vorn::Test;

@interface VornApplicationDelegate (Other)
- (BOOL)other_application:(UIApplication*)application options:(NSDictionary*)options;
- (BOOL)other_application:(UIApplication*)application openURL:(NSURL*)url options:(NSDictionary*)options;
- (BOOL)other_application:(UIApplication*)application
                  openURL:(NSURL*)url
        sourceApplication:(NSString*)sourceApplication
               annotation:(id)annotation;
@end

@implementation VornApplicationDelegate (Other)

+ (void)load {
    NSString* const hooks[][2] = {
        {@"application:didFinishLaunchingWithOptions:", @"other_application:options:"},
        {@"application:openURL:sourceApplication:annotation:",
         @"other_application:openURL:sourceApplication:annotation:"},
        {@"application:openURL:options:", @"other_application:openURL:options:"},
    };
    for (const auto& hook : hooks) {
        [VornUtilsIOS swizzlingOriginalClass:NSClassFromString(@"VornApplicationDelegate")
                               swizzledClass:[self class]
                                 originalSEL:NSSelectorFromString(hook[0])
                                 swizzledSEL:NSSelectorFromString(hook[1])];
    }
}

- (BOOL)other_application:(UIApplication*)application options:(NSDictionary*)options {
    OtherChannelCalls().emplace_back("launch");
    return [self other_application:application options:options];
}

- (BOOL)other_application:(UIApplication*)application openURL:(NSURL*)url options:(NSDictionary*)options {
    OtherChannelCalls().emplace_back("open");
    return [self other_application:application openURL:url options:options];
}

- (BOOL)other_application:(UIApplication*)application
                  openURL:(NSURL*)url
        sourceApplication:(NSString*)sourceApplication
               annotation:(id)annotation {
    OtherChannelCalls().emplace_back("open from");
    return [self other_application:application openURL:url sourceApplication:sourceApplication annotation:annotation];
}

@end
