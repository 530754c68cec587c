// What the header of a movie file says. For the stand-ins' own use; any thread.
#pragma once

#include <string>

namespace Tarvik::Vorn::Host {

// Whether the file is an ISO base media or QuickTime movie of a brand that the photo library takes, with a video track.
// False for whatever cannot be read.
bool IsPhotoLibraryMovie(const std::string& path);

} // namespace Tarvik::Vorn::Host
