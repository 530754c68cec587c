// What the user may have decided about the photo library, for Photos and for people.
#pragma once

#include "Answers.h"

#import <Photos/Photos.h>

namespace Tarvik::Vorn::Simulator {

PHAuthorizationStatus StatusOf(PhotoPermission permission);

// "not asked for yet", "limited", ...
const char* NameOf(PhotoPermission permission);

} // namespace Tarvik::Vorn::Simulator
