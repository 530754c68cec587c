#include "VornUtf8.h"

#include "VornTextStream.h"

#include <rapidjson/encodings.h>

namespace Tarvik::Vorn {

std::string ReplaceInvalidUtf8(std::string_view text) {
    std::string valid;
    valid.reserve(text.size());
    while (!text.empty()) {
        TextStream stream(text);
        unsigned codePoint = 0;
        if (rapidjson::UTF8<>::Decode(stream, &codePoint)) {
            valid += text.substr(0, stream.Tell());
            text.remove_prefix(stream.Tell());
        } else {
            valid += "\xef\xbf\xbd";
            text.remove_prefix(1);
        }
    }
    return valid;
}

} // namespace Tarvik::Vorn
