// Property lists as values. Plain C++, any thread.
#pragma once

#include "VornLocatedError.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace Tarvik::Vorn::Simulator::Doctor {

inline constexpr uint64_t kMaxPlistBytes = uint64_t{16} << 20U;
inline constexpr size_t kMaxPlistDepth = 64; // Dictionaries and arrays in one another.

enum class PlistType { kDictionary, kArray, kText, kNumber, kBool, kOther };

struct PlistValue {
    PlistType type = PlistType::kOther;
    std::string text;              // Of a text; of a number that is whole and not negative, its digits.
    std::vector<std::string> keys; // Of a dictionary, as many as there are items.
    std::vector<PlistValue> items; // Of a dictionary or an array.

    // The member of a dictionary, or null; also null when this is none.
    const PlistValue* Member(std::string_view key) const;

    // "an array", "a text": for messages.
    std::string_view TypeName() const;
};

struct Plist {
    bool isBinary = false;
    PlistValue root; // Always a dictionary.
};

// Whether bytes begin as a property list does, binary or XML.
bool LooksLikePlist(std::string_view bytes);

// Reads a binary or XML property list that has a dictionary at its top. `path` is for errors, which name a line in XML
// and a byte offset in a binary one. Bounded in time and memory, whatever the bytes are.
std::variant<Plist, LocatedError> ParsePlist(const std::string& path, std::string_view bytes);
std::variant<Plist, LocatedError> ReadPlist(const std::string& path);

} // namespace Tarvik::Vorn::Simulator::Doctor
