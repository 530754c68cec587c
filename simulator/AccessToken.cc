#include "AccessToken.h"

#include "VornJsonDocument.h"

#include <optional>

namespace Tarvik::Vorn::Simulator {
namespace {

// Whether this says how long a token is.
bool IsLength(const std::string& token) {
    const size_t end = token.find_first_not_of("0123456789", 1);
    return token.starts_with('<') && end > 1 && end != std::string::npos && token.substr(end) == " bytes>";
}

} // namespace

std::string WithoutToken(const std::string& channelInfo) {
    LocatedError error;
    const std::optional<JsonDocument> info = JsonDocument::Parse(channelInfo, "channelInfo", error);
    const JsonMember* const member = info ? info->root().Find("access_token") : nullptr;
    const std::string* const token = member == nullptr ? nullptr : member->value.AsString();
    if (token == nullptr || token->empty() || IsLength(*token)) {
        return channelInfo;
    }
    return "{\"access_token\":\"<" + std::to_string(token->size()) + " bytes>\"}";
}

} // namespace Tarvik::Vorn::Simulator
