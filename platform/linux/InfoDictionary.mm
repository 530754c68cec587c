#include "InfoDictionary.h"

#include "VornRetainPtr.h"

#include <mutex>

namespace Tarvik::Vorn::Host {

namespace {

NSDictionary* DefaultEntries() {
    return @{
        @"FacebookAppID" : @"1000000000000001",
        @"FacebookDisplayName" : @"Host App",
        @"FacebookClientToken" : @"0123456789abcdef0123456789abcdef",
    };
}

struct Info {
    std::mutex mutex;
    NSMutableDictionary* entries = [DefaultEntries() mutableCopy];
};

// Never destroyed: stand-ins read it until the process ends.
Info& TheInfo() {
    static auto& info = *new Info;
    return info;
}

} // namespace

id InfoValue(NSString* key) {
    Info& info = TheInfo();
    const std::lock_guard lock(info.mutex);
    return [[[info.entries objectForKey:key] retain] autorelease];
}

void SetInfoValue(NSString* key, id value) {
    Info& info = TheInfo();
    const std::lock_guard lock(info.mutex);
    if (value == nil) {
        [info.entries removeObjectForKey:key];
    } else {
        [info.entries setObject:value forKey:key];
    }
}

void RegisterURLSchemes(NSArray<NSString*>* schemes) {
    SetInfoValue(@"CFBundleURLTypes", @[ @{@"CFBundleURLSchemes" : schemes} ]);
}

BOOL IsURLSchemeRegistered(NSString* scheme) {
    NSArray* const urlTypes = InfoValue(@"CFBundleURLTypes");
    if (urlTypes == nil) {
        return YES;
    }
    for (NSDictionary* urlType in urlTypes) {
        if ([[urlType objectForKey:@"CFBundleURLSchemes"] containsObject:scheme]) {
            return YES;
        }
    }
    return NO;
}

void RegisterQueriesSchemes(NSArray<NSString*>* schemes) {
    SetInfoValue(@"LSApplicationQueriesSchemes", schemes);
}

BOOL IsQueriesSchemeListed(NSString* scheme) {
    NSArray* const listed = InfoValue(@"LSApplicationQueriesSchemes");
    if (listed == nil) {
        return YES;
    }
    NSString* const wanted = [scheme lowercaseString];
    for (NSString* candidate in listed) {
        if ([[candidate lowercaseString] isEqualToString:wanted]) {
            return YES;
        }
    }
    return NO;
}

void ResetInfoDictionary() {
    Info& info = TheInfo();
    const std::lock_guard lock(info.mutex);
    [info.entries setDictionary:DefaultEntries()];
}

} // namespace Tarvik::Vorn::Host
