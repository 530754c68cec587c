#include "FBSDKCoreKit/FBSDKAccessToken+Control.h"

#include "CallText.h"
#include "PlatformCalls.h"
#include "StandInState.h"
#include "VornRetainPtr.h"

#include <mutex>
#include <utility>

using namespace Tarvik::Vorn;
using namespace Tarvik::Vorn::Host;

VORN_HOST_EXPORT NSNotificationName const FBSDKAccessTokenDidChangeNotification =
    @"com.facebook.sdk.FBSDKAccessTokenData.FBSDKAccessTokenDidChangeNotification";

namespace {

struct AccessTokenState {
    RetainPtr<NSString*> tokenString;
    RetainPtr<NSSet*> permissions;
    RetainPtr<NSSet*> declinedPermissions;
    RetainPtr<NSSet*> expiredPermissions;
    RetainPtr<NSString*> appID;
    RetainPtr<NSString*> userID;
    RetainPtr<NSDate*> expirationDate;
    RetainPtr<NSDate*> refreshDate;
    RetainPtr<NSDate*> dataAccessExpirationDate;
};

struct CurrentAccessToken {
    std::mutex mutex;
    RetainPtr<FBSDKAccessToken*> token;
};

// Never destroyed: the token is read until the process ends.
CurrentAccessToken& TheCurrent() {
    static auto& current = *new CurrentAccessToken;
    return current;
}

// The former token.
RetainPtr<FBSDKAccessToken*> Exchange(RetainPtr<FBSDKAccessToken*> token) {
    CurrentAccessToken& current = TheCurrent();
    const std::lock_guard lock(current.mutex);
    std::swap(current.token, token);
    return token;
}

RetainPtr<NSSet*> SetOf(NSArray* list) {
    return list == nil ? RetainPtr<NSSet*>([NSSet set]) : RetainPtr<NSSet*>([NSSet setWithArray:list]);
}

// Nil stands for a token that never expires.
FBSDKAccessToken* MakeTokenUntil(NSDate* expirationDate, NSString* tokenString, NSString* userID,
                                 NSArray<NSString*>* permissions) {
    return [[[FBSDKAccessToken alloc] initWithTokenString:tokenString
                                              permissions:permissions
                                      declinedPermissions:@[]
                                       expiredPermissions:@[]
                                                    appID:@"1000000000000001"
                                                   userID:userID
                                           expirationDate:expirationDate
                                              refreshDate:nil
                                 dataAccessExpirationDate:nil] autorelease];
}

} // namespace

@implementation FBSDKAccessToken

+ (instancetype)allocWithZone:(NSZone*)zone {
    return AllocateWithState<AccessTokenState>(self, zone);
}

- (instancetype)initWithTokenString:(NSString*)tokenString
                        permissions:(NSArray<NSString*>*)permissions
                declinedPermissions:(NSArray<NSString*>*)declinedPermissions
                 expiredPermissions:(NSArray<NSString*>*)expiredPermissions
                              appID:(NSString*)appID
                             userID:(NSString*)userID
                     expirationDate:(NSDate*)expirationDate
                        refreshDate:(NSDate*)refreshDate
           dataAccessExpirationDate:(NSDate*)dataAccessExpirationDate {
    self = [super init];
    if (self != nil) {
        AccessTokenState& state = StateOf<AccessTokenState>(self);
        state.tokenString = AdoptNS<NSString*>([tokenString copy]);
        state.permissions = SetOf(permissions);
        state.declinedPermissions = SetOf(declinedPermissions);
        state.expiredPermissions = SetOf(expiredPermissions);
        state.appID = AdoptNS<NSString*>([appID copy]);
        state.userID = AdoptNS<NSString*>([userID copy]);
        state.expirationDate = RetainPtr(expirationDate != nil ? expirationDate : [NSDate distantFuture]);
        state.refreshDate = RetainPtr(refreshDate != nil ? refreshDate : [NSDate date]);
        state.dataAccessExpirationDate =
            RetainPtr(dataAccessExpirationDate != nil ? dataAccessExpirationDate : [NSDate distantFuture]);
    }
    return self;
}

- (void)dealloc {
    DestroyState<AccessTokenState>(self);
    [super dealloc];
}

- (id)copyWithZone:(NSZone*)zone {
    return [self retain]; // Nothing of a token can change.
}

#pragma mark - NSSecureCoding

+ (BOOL)supportsSecureCoding {
    return YES;
}

- (instancetype)initWithCoder:(NSCoder*)coder {
    return [self initWithTokenString:[coder decodeObjectForKey:@"tokenString"]
                         permissions:[[coder decodeObjectForKey:@"permissions"] allObjects]
                 declinedPermissions:[[coder decodeObjectForKey:@"declinedPermissions"] allObjects]
                  expiredPermissions:[[coder decodeObjectForKey:@"expiredPermissions"] allObjects]
                               appID:[coder decodeObjectForKey:@"appID"]
                              userID:[coder decodeObjectForKey:@"userID"]
                      expirationDate:[coder decodeObjectForKey:@"expirationDate"]
                         refreshDate:[coder decodeObjectForKey:@"refreshDate"]
            dataAccessExpirationDate:[coder decodeObjectForKey:@"dataAccessExpirationDate"]];
}

- (void)encodeWithCoder:(NSCoder*)coder {
    [coder encodeObject:[self tokenString] forKey:@"tokenString"];
    [coder encodeObject:[self permissions] forKey:@"permissions"];
    [coder encodeObject:[self declinedPermissions] forKey:@"declinedPermissions"];
    [coder encodeObject:[self expiredPermissions] forKey:@"expiredPermissions"];
    [coder encodeObject:[self appID] forKey:@"appID"];
    [coder encodeObject:[self userID] forKey:@"userID"];
    [coder encodeObject:[self expirationDate] forKey:@"expirationDate"];
    [coder encodeObject:[self refreshDate] forKey:@"refreshDate"];
    [coder encodeObject:[self dataAccessExpirationDate] forKey:@"dataAccessExpirationDate"];
}

#pragma mark - The token's data

- (NSString*)tokenString {
    return StateOf<AccessTokenState>(self).tokenString.get();
}

- (NSString*)userID {
    return StateOf<AccessTokenState>(self).userID.get();
}

- (NSString*)appID {
    return StateOf<AccessTokenState>(self).appID.get();
}

- (NSSet<NSString*>*)permissions {
    return StateOf<AccessTokenState>(self).permissions.get();
}

- (NSSet<NSString*>*)declinedPermissions {
    return StateOf<AccessTokenState>(self).declinedPermissions.get();
}

- (NSSet<NSString*>*)expiredPermissions {
    return StateOf<AccessTokenState>(self).expiredPermissions.get();
}

- (NSDate*)expirationDate {
    return StateOf<AccessTokenState>(self).expirationDate.get();
}

- (NSDate*)refreshDate {
    return StateOf<AccessTokenState>(self).refreshDate.get();
}

- (NSDate*)dataAccessExpirationDate {
    return StateOf<AccessTokenState>(self).dataAccessExpirationDate.get();
}

- (BOOL)isExpired {
    return [[self expirationDate] compare:[NSDate date]] == NSOrderedAscending;
}

#pragma mark - The current token

+ (FBSDKAccessToken*)currentAccessToken {
    CurrentAccessToken& current = TheCurrent();
    const std::lock_guard lock(current.mutex);
    return [[current.token.get() retain] autorelease];
}

+ (void)setCurrentAccessToken:(FBSDKAccessToken*)token {
    PlatformCalls::Record("FBSDKAccessToken", "setCurrentAccessToken:", ObjectText(token));
    ReplaceCurrentAccessToken(token);
}

#pragma mark - Control

+ (void)reset {
    Exchange({});
}

@end

namespace Tarvik::Vorn::Host {

FBSDKAccessToken* MakeAccessToken(NSString* tokenString, NSString* userID, NSArray<NSString*>* permissions) {
    return MakeTokenUntil(nil, tokenString, userID, permissions);
}

FBSDKAccessToken* MakeExpiredAccessToken(NSString* tokenString, NSString* userID, NSArray<NSString*>* permissions) {
    return MakeTokenUntil([NSDate distantPast], tokenString, userID, permissions);
}

void ReplaceCurrentAccessToken(FBSDKAccessToken* token) {
    const RetainPtr<FBSDKAccessToken*> former = Exchange(AdoptNS<FBSDKAccessToken*>([token copy]));
    if (former.get() != token) {
        [[NSNotificationCenter defaultCenter] postNotificationName:FBSDKAccessTokenDidChangeNotification
                                                            object:[FBSDKAccessToken class]];
    }
}

} // namespace Tarvik::Vorn::Host
