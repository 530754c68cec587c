#include "StandInState.h"
#include "UIKit/UIScene+Control.h"
#include "UIKit/UISceneOpenURLOptions.h"
#include "VornRetainPtr.h"

using namespace Tarvik::Vorn;
using namespace Tarvik::Vorn::Host;

namespace {

struct ContextState {
    RetainPtr<NSURL*> url;
    RetainPtr<UISceneOpenURLOptions*> options;
};

} // namespace

@implementation UIOpenURLContext

+ (instancetype)allocWithZone:(NSZone*)zone {
    return AllocateWithState<ContextState>(self, zone);
}

- (void)dealloc {
    DestroyState<ContextState>(self);
    [super dealloc];
}

- (NSURL*)URL {
    return StateOf<ContextState>(self).url.get();
}

- (UISceneOpenURLOptions*)options {
    return StateOf<ContextState>(self).options.get();
}

@end

namespace Tarvik::Vorn::Host {

UIOpenURLContext* MakeOpenURLContext(NSURL* url, NSString* sourceApplication, id annotation) {
    UIOpenURLContext* const context = [[[UIOpenURLContext alloc] init] autorelease];
    ContextState& state = StateOf<ContextState>(context);
    state.url = AdoptNS<NSURL*>([url copy]);
    state.options = RetainPtr<UISceneOpenURLOptions*>(MakeSceneOpenURLOptions(sourceApplication, annotation));
    return context;
}

} // namespace Tarvik::Vorn::Host
