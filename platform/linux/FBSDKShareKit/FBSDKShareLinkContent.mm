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

#include "FBSDKShareKit/SharingContentProperties.inc"

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
