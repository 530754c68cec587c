#include "UIKit/UISceneOpenURLOptions.h"

#include "StandInState.h"
#include "VornRetainPtr.h"

using namespace Tarvik::Vorn;
using namespace Tarvik::Vorn::Host;

namespace {

struct OptionsState {
    RetainPtr<NSString*> sourceApplication;
    RetainPtr<id> annotation;
};

} // namespace

@implementation UISceneOpenURLOptions

+ (instancetype)allocWithZone:(NSZone*)zone {
    return AllocateWithState<OptionsState>(self, zone);
}

- (void)dealloc {
    DestroyState<OptionsState>(self);
    [super dealloc];
}

- (NSString*)sourceApplication {
    return StateOf<OptionsState>(self).sourceApplication.get();
}

- (id)annotation {
    return StateOf<OptionsState>(self).annotation.get();
}

@end

namespace Tarvik::Vorn::Host {

UISceneOpenURLOptions* MakeSceneOpenURLOptions(NSString* sourceApplication, id annotation) {
    UISceneOpenURLOptions* const options = [[[UISceneOpenURLOptions alloc] init] autorelease];
    OptionsState& state = StateOf<OptionsState>(options);
    state.sourceApplication = RetainPtr<NSString*>(sourceApplication);
    state.annotation = RetainPtr<id>(annotation);
    return options;
}

} // namespace Tarvik::Vorn::Host
