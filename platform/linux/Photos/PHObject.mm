#include "Photos/PhotoObjects.h"
#include "StandInState.h"
#include "VornRetainPtr.h"

using namespace Tarvik::Vorn;
using namespace Tarvik::Vorn::Host;

namespace {

struct ObjectState {
    RetainPtr<NSString*> localIdentifier;
};

} // namespace

@implementation PHObject

+ (instancetype)allocWithZone:(NSZone*)zone {
    return AllocateWithState<ObjectState>(self, zone);
}

- (void)dealloc {
    DestroyState<ObjectState>(self);
    [super dealloc];
}

- (NSString*)localIdentifier {
    return StateOf<ObjectState>(self).localIdentifier.get();
}

@end

@implementation PHObjectPlaceholder
@end

@implementation PHChangeRequest
@end

namespace Tarvik::Vorn::Host {

PHObjectPlaceholder* MakePlaceholder(NSString* localIdentifier) {
    PHObjectPlaceholder* const placeholder = [[[PHObjectPlaceholder alloc] init] autorelease];
    StateOf<ObjectState>(placeholder).localIdentifier = AdoptNS<NSString*>([localIdentifier copy]);
    return placeholder;
}

} // namespace Tarvik::Vorn::Host
