#include "FBSDKShareKit/SharingContent.h"

#include "StandInState.h"

using namespace Tarvik::Vorn;
using namespace Tarvik::Vorn::Host;

namespace {

struct LinkState : SharingContentState {
    RetainPtr<NSString*> quote;
};

} // namespace

@implementation FBSDKShareLinkContent

+ (instancetype)allocWithZone:(NSZone*)zone {
    return AllocateWithState<LinkState>(self, zone);
}

- (instancetype)init {
    return [super init];
}

- (void)dealloc {
    DestroyState<LinkState>(self);
    [super dealloc];
}

- (NSURL*)contentURL {
    return StateOf<SharingContentState>(self).contentURL.get();
}

- (void)setContentURL:(NSURL*)contentURL {
    StateOf<SharingContentState>(self).contentURL = CopyOf(contentURL);
}

- (NSArray<NSString*>*)peopleIDs {
    return StateOf<SharingContentState>(self).peopleIDs.get();
}

- (void)setPeopleIDs:(NSArray<NSString*>*)peopleIDs {
    StateOf<SharingContentState>(self).peopleIDs = ListCopyOf(peopleIDs);
}

- (NSString*)placeID {
    return StateOf<SharingContentState>(self).placeID.get();
}

- (void)setPlaceID:(NSString*)placeID {
    StateOf<SharingContentState>(self).placeID = CopyOf(placeID);
}

- (NSString*)ref {
    return StateOf<SharingContentState>(self).ref.get();
}

- (void)setRef:(NSString*)ref {
    StateOf<SharingContentState>(self).ref = CopyOf(ref);
}

- (NSString*)pageID {
    return StateOf<SharingContentState>(self).pageID.get();
}

- (void)setPageID:(NSString*)pageID {
    StateOf<SharingContentState>(self).pageID = CopyOf(pageID);
}

- (NSString*)shareUUID {
    return StateOf<SharingContentState>(self).shareUUID.get();
}

- (NSString*)quote {
    return StateOf<LinkState>(self).quote.get();
}

- (void)setQuote:(NSString*)quote {
    StateOf<LinkState>(self).quote = CopyOf(quote);
}

- (BOOL)validateWithOptions:(FBSDKShareBridgeOptions)bridgeOptions error:(NSError**)errorRef {
    NSURL* const url = [self contentURL];
    NSString* const scheme = [[url scheme] lowercaseString];
    const bool isAcceptable = url == nil || [scheme isEqualToString:@"http"] || [scheme isEqualToString:@"https"];
    return Report(isAcceptable ? nil : InvalidArgument(@"contentURL", url), errorRef);
}

@end
