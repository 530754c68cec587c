#include "HostError.h"

// Has no other localized description than the one in its user info.
@interface VornHostError : NSError
@end

@implementation VornHostError

- (NSString*)localizedDescription {
    return [[self userInfo] objectForKey:NSLocalizedDescriptionKey];
}

@end

namespace Tarvik::Vorn::Host {

NSError* MakeError(NSString* domain, int64_t code, NSString* localizedDescription) {
    NSDictionary* const userInfo =
        localizedDescription == nil ? @{} : @{NSLocalizedDescriptionKey : localizedDescription};
    return [VornHostError errorWithDomain:domain code:static_cast<NSInteger>(code) userInfo:userInfo];
}

} // namespace Tarvik::Vorn::Host
