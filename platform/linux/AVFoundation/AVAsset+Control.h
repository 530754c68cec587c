// What a test decides about media. Any thread.
#pragma once

#include "HostExport.h"

#include <optional>

namespace Tarvik::Vorn::Host {

// What every AVAsset answers as isCompatibleWithSavedPhotosAlbum from now on, whatever its file holds. Empty: what the
// file says, which is the default.
VORN_HOST_EXPORT void SetVideoCompatibility(std::optional<bool> isCompatible);

} // namespace Tarvik::Vorn::Host
