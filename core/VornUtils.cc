#include "VornCodes.h"
#include "VornServices.h"

namespace Tarvik::Vorn {

std::string VornUtils::GetRetMsg(int code) {
    switch (code) {
    case RetCode::kSuccess:
        return "success";
    case RetCode::kCancelled:
        return "cancelled by the user";
    case RetCode::kNotSupported:
        return "not supported by the channel";
    case RetCode::kSystemRefused:
        return "refused by the operating system";
    case RetCode::kNotInGamingMode:
        return "the login is not in gaming mode";
    case RetCode::kInvalidArgument:
        return "invalid argument";
    case RetCode::kNeedSystemPermission:
        return "a system permission is missing";
    case RetCode::kAppNotInstalled:
        return "a required app is not installed";
    case RetCode::kThirdPartyError:
        return "error of the channel's SDK";
    default:
        return "unknown result code " + std::to_string(code);
    }
}

} // namespace Tarvik::Vorn
