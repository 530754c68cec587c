// What the parts of the photo library make for each other. For the stand-ins' own use.
#pragma once

#import <Photos/Photos.h>

namespace Tarvik::Vorn::Host {

// Autoreleased. Any thread.
PHObjectPlaceholder* MakePlaceholder(NSString* localIdentifier);

// Whether a change block is running on this thread.
bool IsInsidePhotoChange();

// The placeholder of the next object that the change block running on this thread creates. Autoreleased.
// REQUIRES: IsInsidePhotoChange().
PHObjectPlaceholder* NextPlaceholder();

} // namespace Tarvik::Vorn::Host
