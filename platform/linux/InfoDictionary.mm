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
    bool isWhole = false; // Given by SetInfoDictionary: what is missing has no default.
};

// Never destroyed: stand-ins read it until the process ends.
Info& TheInfo() {
    static auto& info = *new Info;
    return info;
}

BOOL IsWhole() {
    Info& info = TheInfo();
    const std::lock_guard lock(info.mutex);
    return info.isWhole ? YES : NO;
}

// `value` if it is a list, otherwise nil: an entry of another type counts as not there.
NSArray* ListOrNil(id value) {
    return [value isKindOfClass:[NSArray class]] ? value : nil;
}

BOOL Claims(NSArray* urlTypes, NSString* scheme) {
    for (const id urlType in urlTypes) {
        if ([urlType isKindOfClass:[NSDictionary class]] &&
            [ListOrNil([urlType objectForKey:@"CFBundleURLSchemes"]) containsObject:scheme]) {
            return YES;
        }
    }
    return NO;
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

void SetInfoDictionary(NSDictionary* entries) {
    Info& info = TheInfo();
    const std::lock_guard lock(info.mutex);
    [info.entries setDictionary:entries == nil ? @{} : entries];
    info.isWhole = true;
}

void RegisterURLSchemes(NSArray<NSString*>* schemes) {
    SetInfoValue(@"CFBundleURLTypes", @[ @{@"CFBundleURLSchemes" : schemes} ]);
}

BOOL IsURLSchemeRegistered(NSString* scheme) {
    NSArray* const urlTypes = ListOrNil(InfoValue(@"CFBundleURLTypes"));
    return urlTypes == nil ? !IsWhole() : Claims(urlTypes, scheme);
}

BOOL IsURLSchemeClaimed(NSString* scheme) {
    return Claims(ListOrNil(InfoValue(@"CFBundleURLTypes")), scheme);
}

void RegisterQueriesSchemes(NSArray<NSString*>* schemes) {
    SetInfoValue(@"LSApplicationQueriesSchemes", schemes);
}

BOOL IsQueriesSchemeListed(NSString* scheme) {
    NSArray* const listed = ListOrNil(InfoValue(@"LSApplicationQueriesSchemes"));
    if (listed == nil) {
        return !IsWhole();
    }
    NSString* const wanted = [scheme lowercaseString];
    for (const id candidate in listed) {
        if ([candidate isKindOfClass:[NSString class]] && [[candidate lowercaseString] isEqualToString:wanted]) {
            return YES;
        }
    }
    return NO;
}

void ResetInfoDictionary() {
    Info& info = TheInfo();
    const std::lock_guard lock(info.mutex);
    [info.entries setDictionary:DefaultEntries()];
    info.isWhole = false;
}

} // namespace Tarvik::Vorn::Host
