#import <AuthenticationServices/AuthenticationServices.h>
#import <FBSDKCoreKit/FBSDKCoreKit.h>
#import <FBSDKCoreKit/FBSDKCoreKit-Swift.h>
#import <FBSDKShareKit/FBSDKShareKit.h>
#import <FBSDKShareKit/FBSDKShareKit-Swift.h>
#import <FBSDKGamingServicesKit/FBSDKGamingServicesKit-Swift.h>

#include "FBSDKCoreKit/SDKErrors.h"
#include "StandInState.h"
#include "VornRetainPtr.h"

using namespace Tarvik::Vorn;
using namespace Tarvik::Vorn::Host;

namespace {

constexpr NSUInteger kLongestData = 255;

struct GameRequestContentState {
    FBSDKGameRequestActionType actionType = FBSDKGameRequestActionTypeNone;
    RetainPtr<NSString*> data;
    FBSDKGameRequestFilter filters = FBSDKGameRequestFilterNone;
    RetainPtr<NSString*> message{@""};
    RetainPtr<NSString*> objectID{@""};
    RetainPtr<NSArray*> recipients { @[] };
    RetainPtr<NSArray*> recipientSuggestions { @[] };
    RetainPtr<NSString*> title{@""};
    RetainPtr<NSString*> cta{@""};
};

GameRequestContentState& State(FBSDKGameRequestContent* content) {
    return StateOf<GameRequestContentState>(content);
}

// What a property written in Swift holds that is not nullable.
RetainPtr<NSString*> TextOrEmpty(NSString* text) {
    return text == nil ? RetainPtr<NSString*>(@"") : AdoptNS<NSString*>([text copy]);
}

RetainPtr<NSArray*> ListOrEmpty(NSArray* list) {
    return list == nil ? RetainPtr<NSArray*>(@[]) : AdoptNS<NSArray*>([list copy]);
}

NSString* Required(NSString* name) {
    return [NSString stringWithFormat:@"Value for %@ is required.", name];
}

NSString* Invalid(NSString* name, id value) {
    return [NSString stringWithFormat:@"Invalid value for %@: %@", name, value];
}

// What is wrong with the content, or nil.
NSString* Fault(const GameRequestContentState& content) {
    if ([content.message.get() length] == 0) {
        return Required(@"message");
    }
    const bool hasRecipients = [content.recipients.get() count] != 0;
    const bool hasFilters = content.filters != FBSDKGameRequestFilterNone;
    if (hasRecipients && hasFilters) {
        return Invalid(@"recipients", content.recipients.get());
    }
    if ((hasRecipients || hasFilters) && [content.recipientSuggestions.get() count] != 0) {
        return Invalid(@"recipientSuggestions", content.recipientSuggestions.get());
    }
    if ([content.data.get() length] > kLongestData) {
        return Invalid(@"data", content.data.get());
    }
    const bool needsObject =
        content.actionType == FBSDKGameRequestActionTypeSend || content.actionType == FBSDKGameRequestActionTypeAskFor;
    const bool hasObject = [content.objectID.get() length] != 0;
    if (needsObject && !hasObject) {
        return Required(@"objectID");
    }
    if (hasObject && !needsObject) {
        return Invalid(@"objectID", content.objectID.get());
    }
    return nil;
}

} // namespace

@implementation FBSDKGameRequestContent

+ (instancetype)allocWithZone:(NSZone*)zone {
    return AllocateWithState<GameRequestContentState>(self, zone);
}

- (instancetype)init {
    return [super init];
}

- (void)dealloc {
    DestroyState<GameRequestContentState>(self);
    [super dealloc];
}

- (BOOL)validateWithOptions:(FBSDKShareBridgeOptions)bridgeOptions error:(NSError**)errorRef {
    NSString* const fault = Fault(State(self));
    if (fault != nil && errorRef != nullptr) {
        *errorRef = MakeSDKError(FBSDKShareErrorDomain, FBSDKErrorInvalidArgument, fault);
    }
    return fault == nil;
}

#pragma mark - NSSecureCoding

+ (BOOL)supportsSecureCoding {
    return YES;
}

- (instancetype)initWithCoder:(NSCoder*)coder {
    self = [self init];
    if (self != nil) {
        [self setActionType:static_cast<FBSDKGameRequestActionType>([coder decodeIntegerForKey:@"actionType"])];
        [self setData:[coder decodeObjectForKey:@"data"]];
        [self setFilters:static_cast<FBSDKGameRequestFilter>([coder decodeIntegerForKey:@"filters"])];
        [self setMessage:[coder decodeObjectForKey:@"message"]];
        [self setObjectID:[coder decodeObjectForKey:@"objectID"]];
        [self setRecipients:[coder decodeObjectForKey:@"recipients"]];
        [self setRecipientSuggestions:[coder decodeObjectForKey:@"recipientSuggestions"]];
        [self setTitle:[coder decodeObjectForKey:@"title"]];
        [self setCta:[coder decodeObjectForKey:@"cta"]];
    }
    return self;
}

- (void)encodeWithCoder:(NSCoder*)coder {
    [coder encodeInteger:static_cast<NSInteger>([self actionType]) forKey:@"actionType"];
    [coder encodeObject:[self data] forKey:@"data"];
    [coder encodeInteger:static_cast<NSInteger>([self filters]) forKey:@"filters"];
    [coder encodeObject:[self message] forKey:@"message"];
    [coder encodeObject:[self objectID] forKey:@"objectID"];
    [coder encodeObject:[self recipients] forKey:@"recipients"];
    [coder encodeObject:[self recipientSuggestions] forKey:@"recipientSuggestions"];
    [coder encodeObject:[self title] forKey:@"title"];
    [coder encodeObject:[self cta] forKey:@"cta"];
}

#pragma mark - What is asked

- (FBSDKGameRequestActionType)actionType {
    return State(self).actionType;
}

- (void)setActionType:(FBSDKGameRequestActionType)actionType {
    State(self).actionType = actionType;
}

- (NSString*)data {
    return State(self).data.get();
}

- (void)setData:(NSString*)data {
    State(self).data = AdoptNS<NSString*>([data copy]);
}

- (FBSDKGameRequestFilter)filters {
    return State(self).filters;
}

- (void)setFilters:(FBSDKGameRequestFilter)filters {
    State(self).filters = filters;
}

- (NSString*)message {
    return State(self).message.get();
}

- (void)setMessage:(NSString*)message {
    State(self).message = TextOrEmpty(message);
}

- (NSString*)objectID {
    return State(self).objectID.get();
}

- (void)setObjectID:(NSString*)objectID {
    State(self).objectID = TextOrEmpty(objectID);
}

- (NSArray<NSString*>*)recipients {
    return State(self).recipients.get();
}

- (void)setRecipients:(NSArray<NSString*>*)recipients {
    State(self).recipients = ListOrEmpty(recipients);
}

- (NSArray<NSString*>*)recipientSuggestions {
    return State(self).recipientSuggestions.get();
}

- (void)setRecipientSuggestions:(NSArray<NSString*>*)recipientSuggestions {
    State(self).recipientSuggestions = ListOrEmpty(recipientSuggestions);
}

- (NSString*)title {
    return State(self).title.get();
}

- (void)setTitle:(NSString*)title {
    State(self).title = TextOrEmpty(title);
}

- (NSString*)cta {
    return State(self).cta.get();
}

- (void)setCta:(NSString*)cta {
    State(self).cta = TextOrEmpty(cta);
}

@end
