// NSError as Apple documents it: 64-bit codes, the texts made from domain and code, a user info that is never nil, and
// equality by value. GNUstep's errors keep 32 bits of the code, have one short text for every purpose and compare by
// address.
//
// A category, so that subclasses of NSError have all of it too. On this runtime its methods replace those of the class.

#import <Foundation/Foundation.h>

#include <bit>
#include <cstring>

namespace {

NSString* const kCodeKey = @"NSCode";
NSString* const kDomainKey = @"NSDomain";
NSString* const kUserInfoKey = @"NSUserInfo";

// Apple writes its own domains short in texts for people: (Cocoa error 4.)
NSString* ShownDomain(NSString* domain) {
    if ([domain isEqualToString:NSCocoaErrorDomain]) {
        return @"Cocoa";
    }
    if ([domain isEqualToString:NSOSStatusErrorDomain]) {
        return @"OSStatus";
    }
    return domain;
}

// The text of a key. Foundation's own keys have another text here than on Apple.
NSString* ShownKey(id key) {
    NSDictionary* appleTexts = @{
        NSLocalizedDescriptionKey : @"NSLocalizedDescription",
        NSLocalizedFailureReasonErrorKey : @"NSLocalizedFailureReason",
        NSLocalizedRecoverySuggestionErrorKey : @"NSLocalizedRecoverySuggestion",
        NSLocalizedRecoveryOptionsErrorKey : @"NSLocalizedRecoveryOptions",
        NSRecoveryAttempterErrorKey : @"NSRecoveryAttempter",
        NSUnderlyingErrorKey : @"NSUnderlyingError",
        NSFilePathErrorKey : @"NSFilePath",
        NSStringEncodingErrorKey : @"NSStringEncoding",
        NSURLErrorKey : @"NSURL",
        NSURLErrorFailingURLErrorKey : @"NSErrorFailingURLKey",
        NSURLErrorFailingURLStringErrorKey : @"NSErrorFailingURLStringKey",
    };
    NSString* text = [appleTexts objectForKey:key];
    return text != nil ? text : [key description];
}

// {key=value, ...}, sorted, where Apple's order is left open. A nested error stands with its address, as on Apple.
NSString* UserInfoText(NSDictionary* userInfo) {
    NSMutableArray* entries = [NSMutableArray array];
    for (id key in userInfo) {
        id value = [userInfo objectForKey:key];
        NSString* text = [value isKindOfClass:[NSError class]] ? [NSString stringWithFormat:@"%p {%@}", value, value]
                                                               : [value description];
        [entries addObject:[NSString stringWithFormat:@"%@=%@", ShownKey(key), text]];
    }
    [entries sortUsingSelector:@selector(compare:)];
    return [NSString stringWithFormat:@"{%@}", [entries componentsJoinedByString:@", "]];
}

} // namespace

// The compiler warns of a category that has methods of its class, which is what this one is for.
#pragma clang diagnostic push
#pragma clang diagnostic ignored "-Wobjc-protocol-method-implementation"

@implementation NSError (VornHost)

- (id)initWithDomain:(NSErrorDomain)domain code:(NSInteger)code userInfo:(NSDictionary*)userInfo {
    if (domain == nil) {
        [self release];
        [NSException raise:NSInvalidArgumentException
                    format:@"*** -[NSError initWithDomain:code:userInfo:]: nil domain"];
    }
    self = [super init];
    if (self != nil) {
        // GNUstep declares _code as int. It leaves _internal, a word meant for additions, unused.
        _internal = std::bit_cast<id>(code);
        _code = static_cast<int>(code);
        _domain = [domain copy];
        _userInfo = userInfo != nil ? [userInfo copy] : [[NSDictionary alloc] init];
    }
    return self;
}

- (id)initWithCoder:(NSCoder*)coder {
    if (![coder allowsKeyedCoding]) {
        NSInteger code = 0;
        [coder decodeValueOfObjCType:@encode(NSInteger) at:&code];
        NSString* domain = [coder decodeObject];
        return [self initWithDomain:domain code:code userInfo:[coder decodeObject]];
    }
    return [self initWithDomain:[coder decodeObjectForKey:kDomainKey]
                           code:[coder decodeInt64ForKey:kCodeKey]
                       userInfo:[coder decodeObjectForKey:kUserInfoKey]];
}

- (void)encodeWithCoder:(NSCoder*)coder {
    if (![coder allowsKeyedCoding]) {
        const NSInteger code = [self code];
        [coder encodeValueOfObjCType:@encode(NSInteger) at:&code];
        [coder encodeObject:[self domain]];
        [coder encodeObject:[self userInfo]];
        return;
    }
    [coder encodeObject:[self domain] forKey:kDomainKey];
    [coder encodeInt64:[self code] forKey:kCodeKey];
    [coder encodeObject:[self userInfo] forKey:kUserInfoKey];
}

- (id)copyWithZone:(NSZone*)zone {
    (void)zone;
    return [self retain]; // Errors never change.
}

- (NSInteger)code {
    return std::bit_cast<NSInteger>(_internal);
}

- (NSString*)localizedFailureReason {
    NSString* reason = [[self userInfo] objectForKey:NSLocalizedFailureReasonErrorKey];
    if (reason == nil && [[self domain] isEqualToString:NSPOSIXErrorDomain]) {
        const char* text = strerrordesc_np(static_cast<int>([self code]));
        reason = text != nullptr ? [NSString stringWithUTF8String:text] : nil;
    }
    return reason;
}

- (NSString*)localizedDescription {
    NSString* description = [[self userInfo] objectForKey:NSLocalizedDescriptionKey];
    if (description != nil) {
        return description;
    }
    NSString* reason = [self localizedFailureReason];
    if (reason != nil) {
        return [NSString stringWithFormat:@"The operation couldn’t be completed. %@", reason];
    }
    return [NSString stringWithFormat:@"The operation couldn’t be completed. (%@ error %ld.)",
                                      ShownDomain([self domain]), static_cast<long>([self code])];
}

- (NSString*)description {
    NSDictionary* userInfo = [self userInfo];
    NSString* text =
        [NSString stringWithFormat:@"Error Domain=%@ Code=%ld \"%@\"", [self domain], static_cast<long>([self code]),
                                   [userInfo objectForKey:NSLocalizedDescriptionKey]];
    if ([userInfo count] == 0) {
        return text;
    }
    return [text stringByAppendingFormat:@" UserInfo=%@", UserInfoText(userInfo)];
}

- (BOOL)isEqual:(id)other {
    if (other == self) {
        return YES;
    }
    return [other isKindOfClass:[NSError class]] && [self code] == [other code] &&
           [[self domain] isEqualToString:[other domain]] && [[self userInfo] isEqual:[other userInfo]];
}

- (NSUInteger)hash {
    return [[self domain] hash] ^ static_cast<NSUInteger>([self code]);
}

@end

#pragma clang diagnostic pop
