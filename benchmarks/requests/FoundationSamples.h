// What both columns of EntryPoints.h are given that is Foundation's. Made once, never freed.
#pragma once

#import <Foundation/Foundation.h>

namespace Tarvik::Vorn::Bench {

inline constexpr const char* kPermissions = "public_profile,email,user_friends";

inline NSString* EventName() {
    return @"level_reached";
}

inline NSDictionary* EventParameters() {
    static NSDictionary* const parameters =
        [[NSDictionary alloc] initWithObjectsAndKeys:@42, @"level", @"sunken_city", @"world", nil];
    return parameters;
}

inline NSURL* OpenedURL() {
    static NSURL* const url = [[NSURL alloc] initWithString:@"fb1000000000000001://authorize"];
    return url;
}

} // namespace Tarvik::Vorn::Bench
