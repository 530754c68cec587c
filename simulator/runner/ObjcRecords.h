// What an image says of its Objective-C classes, read from its memory and checked. Plain C++; nothing is registered.
#pragma once

#include "MappedImage.h"

#include <cstdint>
#include <optional>
#include <variant>
#include <vector>

namespace Tarvik::Vorn::Runner {

// Texts and code lie in the image.
struct MethodRecord {
    const char* name = nullptr;
    const char* types = nullptr;
    void* code = nullptr; // Null in a protocol.
};

struct IvarRecord {
    const char* name = nullptr;
    const char* types = nullptr;
    uint32_t alignment = 0; // As a power of two.
    uint32_t size = 0;
    uint64_t offsetPlace = 0; // Of the variable with its offset, of 8 bytes.
};

// A class of the image, by its number in ObjcRecords::classes, or another library's; neither is none at all.
struct ClassReference {
    std::optional<size_t> own;
    bool isMetaclass = false; // The class's class is meant; of own ones only.
    void* others = nullptr;
};

struct ProtocolRecord {
    const char* name = nullptr;
    std::vector<size_t> parents; // Numbers in ObjcRecords::protocols.
    std::vector<MethodRecord> instanceMethods;
    std::vector<MethodRecord> classMethods;
};

struct ClassRecord {
    const char* name = nullptr;
    ClassReference superclass; // Chains of own ones end.
    std::vector<MethodRecord> instanceMethods;
    std::vector<MethodRecord> classMethods;
    std::vector<IvarRecord> ivars;
    std::vector<size_t> protocols;
};

struct CategoryRecord {
    const char* name = nullptr;
    ClassReference extended;
    std::vector<MethodRecord> instanceMethods;
    std::vector<MethodRecord> classMethods;
    std::vector<size_t> protocols;
};

struct StringRecord {
    uint64_t place = 0; // Of 32 bytes: class, flags, text, length.
    const char* text = nullptr;
    uint64_t length = 0; // In bytes, or in units of UTF-16.
    bool isUtf16 = false;
};

// A pointer of the image, which is to lead to what this process has for it.
struct SelectorUse {
    uint64_t place = 0;
    const char* name = nullptr;
};
struct ClassUse {
    uint64_t place = 0;
    ClassReference used;
};
struct ProtocolUse {
    uint64_t place = 0;
    size_t protocol = 0;
};

struct ObjcRecords {
    std::vector<ProtocolRecord> protocols; // Parents before their children.
    std::vector<ClassRecord> classes;
    std::vector<CategoryRecord> categories;
    std::vector<StringRecord> strings;
    std::vector<SelectorUse> selectorUses;
    std::vector<ClassUse> classUses;
    std::vector<ProtocolUse> protocolUses;
};

// An error's offset is a place in the image. REQUIRES: the image is bound, and nothing has been registered from it.
std::variant<ObjcRecords, ByteError> ReadObjcRecords(const MappedImage& image);

} // namespace Tarvik::Vorn::Runner
