#include "RequestTitles.h"

#include "VornCodes.h"

namespace Tarvik::Vorn::Simulator {

std::string TitleOf(std::string_view kind, int32_t type) {
    const bool isShare = kind == "share";
    switch (type) {
    case RequestType::kLink:
        return isShare ? "share of a link" : "message with a link";
    case RequestType::kImage:
        return isShare ? "share of an image" : "message with an image";
    case RequestType::kVideo:
        return isShare ? "share of a video" : "message with a video";
    case RequestType::kInvite:
        return isShare ? "share of an invitation" : "invitation";
    default:
        return (isShare ? "share of type " : "message of type ") + std::to_string(type);
    }
}

} // namespace Tarvik::Vorn::Simulator
