#include "StandInState.h"
#include "UIKit/UIScene+Control.h"
#include "VornRetainPtr.h"

using namespace Tarvik::Vorn;
using namespace Tarvik::Vorn::Host;

namespace {

struct ConnectionState {
    RetainPtr<NSSet*> contexts;
};

} // namespace

@implementation UISceneConnectionOptions

+ (instancetype)allocWithZone:(NSZone*)zone {
    return AllocateWithState<ConnectionState>(self, zone);
}

- (void)dealloc {
    DestroyState<ConnectionState>(self);
    [super dealloc];
}

- (NSSet<UIOpenURLContext*>*)URLContexts {
    return StateOf<ConnectionState>(self).contexts.get();
}

@end

namespace Tarvik::Vorn::Host {

UISceneConnectionOptions* MakeConnectionOptions(NSSet<UIOpenURLContext*>* contexts) {
    UISceneConnectionOptions* const options = [[[UISceneConnectionOptions alloc] init] autorelease];
    StateOf<ConnectionState>(options).contexts = AdoptNS<NSSet*>([contexts copy]);
    return options;
}

} // namespace Tarvik::Vorn::Host
