#include "HostileTexts.h"

#include <cstdio>

namespace Tarvik::Vorn::Test {
namespace {

std::string Repeated(const std::string& part, size_t times) {
    std::string text;
    for (size_t i = 0; i < times; ++i) {
        text += part;
    }
    return text;
}

std::vector<HostileText> MakeTexts() {
    return {
        {"Empty", ""},
        {"Blank", " "},
        {"LineBreaks", "one\ntwo\r\n\tthree\v\f"},
        {"NulInside", std::string("before\0after", 12)},
        {"NulFirst", std::string("\0after", 6)},
        {"NulLast", std::string("before\0", 7)},
        {"ContinuationByte", "a\x80z"},
        {"LeadByteAlone", "a\xc3z"},
        {"CutAtTheEnd", "end\xe2\x82"},
        {"OverlongSlash", "a\xc0\xafz"},
        {"OverlongOfThree", "a\xe0\x80\xafz"},
        {"OverlongOfFour", "a\xf0\x80\x80\xafz"},
        {"EncodedSurrogate", "a\xed\xa0\x80z"},
        {"EncodedSurrogatePair", "a\xed\xa0\xbd\xed\xb8\x80z"},
        {"BeyondTheLastCharacter", "a\xf4\x90\x80\x80z"},
        {"FiveBytes", "a\xf8\x88\x80\x80\x80z"},
        {"BytesThatAreNever", "\xfe\xff"},
        {"Formats", "%s%n%@%d%*.*s%5$s%ls%%"},
        {"JsonMetacharacters", R"("},{"a":[\u0000\","b":null}//)"},
        {"JsonOptions",
         R"({"inviteType":"batch","userList":["%n",7],"friends":["<b>",8],"isAssetURL":false,"a":"\u0000\ud800"})"},
        {"DeepJson", Repeated("{\"a\":[", 1'000)},
        {"Markup", "</script><img src=x onerror=\"alert('1')\">&amp;]]>-->"},
        {"Directions", "\u202eabc\u2066\u200f\u2028\u2029"},
        {"Controls", "\x01\x07\x08\x1b[31m\x7f\u009b31m"},
        {"CombiningMarks", "e" + Repeated("\u0301", 1'000)},
        {"BeyondTheFirstPlane", "\U0001f600\U0001f468\u200d\U0001f469\U0010ffff"},
        {"NoCharacters", "\ufffe\uffff\ufdd0"},
        {"ByteOrderMark", "\ufefftext"},
        {"Path", "../../../../etc/passwd"},
        {"Large", HugeText(kLarge)},
    };
}

bool IsContinuation(char byte) {
    return (static_cast<unsigned char>(byte) & 0xc0U) == 0x80U;
}

// What may stand behind the lead byte: RFC 3629, table 3-7 of Unicode.
struct SecondByte {
    unsigned char least = 0x80;
    unsigned char most = 0xbf;
};

SecondByte SecondByteBehind(unsigned char lead) {
    switch (lead) {
    case 0xe0:
        return {0xa0, 0xbf};
    case 0xed:
        return {0x80, 0x9f};
    case 0xf0:
        return {0x90, 0xbf};
    case 0xf4:
        return {0x80, 0x8f};
    default:
        return {};
    }
}

void AddJsonCharacter(std::string& json, std::string_view character) {
    static constexpr std::string_view kEscaped = "\"\\\b\f\n\r\t";
    static constexpr std::string_view kLetters = "\"\\bfnrt";
    const size_t escaped = kEscaped.find(character.front());
    if (escaped != std::string_view::npos) {
        json += '\\';
        json += kLetters[escaped];
    } else if (static_cast<unsigned char>(character.front()) < 0x20U) {
        char text[8];
        std::snprintf(text, sizeof text, "\\u%04X", static_cast<unsigned>(character.front()));
        json += text;
    } else {
        json += character;
    }
}

} // namespace

const std::vector<HostileText>& HostileTexts() {
    static const std::vector<HostileText> texts = MakeTexts();
    return texts;
}

std::string HugeText(size_t size) {
    return std::string(size, 'x');
}

std::string UpToNul(const std::string& bytes) {
    return bytes.substr(0, bytes.find('\0'));
}

size_t Utf8CharacterSize(std::string_view bytes) {
    if (bytes.empty()) {
        return 0;
    }
    const auto lead = static_cast<unsigned char>(bytes.front());
    if (lead < 0x80) {
        return 1;
    }
    const size_t size = lead >= 0xc2 && lead <= 0xdf ? 2 : lead >= 0xe0 && lead <= 0xef ? 3 : 4;
    if (lead < 0xc2 || lead > 0xf4 || bytes.size() < size) {
        return 0;
    }
    const SecondByte allowed = SecondByteBehind(lead);
    const auto second = static_cast<unsigned char>(bytes[1]);
    if (second < allowed.least || second > allowed.most) {
        return 0;
    }
    for (const char byte : bytes.substr(2, size - 2)) {
        if (!IsContinuation(byte)) {
            return 0;
        }
    }
    return size;
}

std::optional<std::string> AsNSString(const std::string& bytes) {
    const std::string text = UpToNul(bytes);
    for (std::string_view rest = text; !rest.empty();) {
        const size_t size = Utf8CharacterSize(rest);
        if (size == 0) {
            return std::nullopt;
        }
        rest.remove_prefix(size);
    }
    return text;
}

std::string AsJson(const std::string& bytes) {
    const std::string text = UpToNul(bytes);
    std::string json = "\"";
    for (std::string_view rest = text; !rest.empty();) {
        const size_t size = Utf8CharacterSize(rest);
        if (size == 0) {
            json += "\ufffd";
            rest.remove_prefix(1);
        } else {
            AddJsonCharacter(json, rest.substr(0, size));
            rest.remove_prefix(size);
        }
    }
    return json + "\"";
}

} // namespace Tarvik::Vorn::Test
