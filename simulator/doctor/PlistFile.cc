#include "PlistFile.h"

#include "BinaryPlistScan.h"
#include "FileBytes.h"
#include "XmlPlistScan.h"

#include <plist/plist.h>

#include <cstdlib>
#include <memory>
#include <optional>
#include <type_traits>
#include <utility>

namespace Tarvik::Vorn::Simulator::Doctor {
namespace {

constexpr std::string_view kBinaryBeginning = "bplist";
constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

struct FreePlist {
    void operator()(plist_t node) const { plist_free(node); }
};
using PlistHandle = std::unique_ptr<std::remove_pointer_t<plist_t>, FreePlist>;

struct FreeMemory {
    void operator()(void* memory) const { std::free(memory); }
};

PlistValue Converted(plist_t node);

// Called for what the scan before found to be nested by no more than kMaxPlistDepth, hence may recurse.
void ConvertMembers(plist_t node, PlistValue& value) {
    plist_dict_iter iterator = nullptr;
    plist_dict_new_iter(node, &iterator);
    const std::unique_ptr<void, FreeMemory> iteratorOwner(iterator);
    for (;;) {
        char* key = nullptr;
        plist_t member = nullptr;
        plist_dict_next_item(node, iterator, &key, &member);
        const std::unique_ptr<char, FreeMemory> keyOwner(key);
        if (member == nullptr) {
            return;
        }
        value.keys.emplace_back(key == nullptr ? "" : key);
        value.items.push_back(Converted(member));
    }
}

void ConvertItems(plist_t node, PlistValue& value) {
    plist_array_iter iterator = nullptr;
    plist_array_new_iter(node, &iterator);
    const std::unique_ptr<void, FreeMemory> iteratorOwner(iterator);
    for (;;) {
        plist_t item = nullptr;
        plist_array_next_item(node, iterator, &item);
        if (item == nullptr) {
            return;
        }
        value.items.push_back(Converted(item));
    }
}

PlistValue Converted(plist_t node) {
    PlistValue value;
    switch (plist_get_node_type(node)) {
    case PLIST_DICT:
        value.type = PlistType::kDictionary;
        ConvertMembers(node, value);
        break;
    case PLIST_ARRAY:
        value.type = PlistType::kArray;
        ConvertItems(node, value);
        break;
    case PLIST_STRING: {
        value.type = PlistType::kText;
        uint64_t length = 0;
        const char* text = plist_get_string_ptr(node, &length);
        value.text = text == nullptr ? std::string() : std::string(text, length);
        break;
    }
    case PLIST_UINT: {
        value.type = PlistType::kNumber;
        uint64_t number = 0;
        plist_get_uint_val(node, &number);
        value.text = std::to_string(number);
        break;
    }
    case PLIST_REAL:
        value.type = PlistType::kNumber;
        break;
    case PLIST_BOOLEAN:
        value.type = PlistType::kBool;
        break;
    default:
        break;
    }
    return value;
}

LocatedError Unusable(const std::string& path, const std::string& message, const std::string& remedy) {
    return LocatedError{path, 0, 0, message, remedy};
}

std::optional<LocatedError> Scan(const std::string& path, std::string_view bytes, bool isBinary) {
    if (bytes.size() > kMaxPlistBytes) {
        return Unusable(path, "the property list is larger than 16 MB and was not read",
                        "name the Info.plist that the game ships");
    }
    return isBinary ? ScanBinaryPlist(path, bytes) : ScanXmlPlist(path, bytes);
}

} // namespace

const PlistValue* PlistValue::Member(std::string_view key) const {
    for (size_t index = 0; index < keys.size(); ++index) {
        if (keys[index] == key) {
            return &items[index];
        }
    }
    return nullptr;
}

std::string_view PlistValue::TypeName() const {
    switch (type) {
    case PlistType::kDictionary:
        return "a dictionary";
    case PlistType::kArray:
        return "an array";
    case PlistType::kText:
        return "a text";
    case PlistType::kNumber:
        return "a number";
    case PlistType::kBool:
        return "true or false";
    case PlistType::kOther:
        return "data or a date";
    }
    return "";
}

bool LooksLikePlist(std::string_view bytes) {
    if (bytes.starts_with(kBinaryBeginning)) {
        return true;
    }
    if (bytes.starts_with(kByteOrderMark)) {
        bytes.remove_prefix(kByteOrderMark.size());
    }
    const size_t first = bytes.find_first_not_of(" \t\r\n");
    return first != std::string_view::npos && bytes[first] == '<';
}

std::variant<Plist, LocatedError> ParsePlist(const std::string& path, std::string_view bytes) {
    const bool isBinary = bytes.starts_with(kBinaryBeginning);
    if (const std::optional<LocatedError> damage = Scan(path, bytes, isBinary)) {
        return *damage;
    }
    if (bytes.starts_with(kByteOrderMark)) {
        bytes.remove_prefix(kByteOrderMark.size());
    }
    // A copy of its own size ends in a null byte, so that a reader of texts cannot run on behind it.
    const std::string copy(bytes);
    plist_t read = nullptr;
    const auto parse = isBinary ? plist_from_bin : plist_from_xml;
    parse(copy.data(), static_cast<uint32_t>(copy.size()), &read);
    const PlistHandle handle(read);
    if (handle == nullptr) {
        return Unusable(path, "a value in the property list cannot be read",
                        "check it with `plutil -lint`, or write the file anew from Xcode");
    }
    Plist plist{isBinary, Converted(handle.get())};
    if (plist.root.type != PlistType::kDictionary) {
        return Unusable(path, "the property list holds " + std::string(plist.root.TypeName()) + " at its top",
                        "an Info.plist has a dictionary there");
    }
    return plist;
}

std::variant<Plist, LocatedError> ReadPlist(const std::string& path) {
    const std::variant<std::string, LocatedError> bytes = ReadFileBytes(path, kMaxPlistBytes);
    if (const auto* error = std::get_if<LocatedError>(&bytes)) {
        return *error;
    }
    return ParsePlist(path, std::get<std::string>(bytes));
}

} // namespace Tarvik::Vorn::Simulator::Doctor
