#include "FrameTable.h"

#include <array>
#include <cstring>
#include <dlfcn.h>
#include <map>
#include <memory>
#include <string_view>

namespace Tarvik::Vorn::Runner {
namespace {

constexpr unsigned kReturnAddress = 16; // Its DWARF number on x86_64.
constexpr size_t kPointer = 8;

// Instructions of call frame information.
constexpr unsigned kDefineFrame = 0x0C;
constexpr unsigned kSavedAt = 0x80; // With the register in the lower bits.

// What libgcc keeps for each table; it is larger than the library's own record.
using Bookkeeping = std::array<uint64_t, 16>;

void* FunctionOf(const char* library, const char* name) {
    void* const handle = dlopen(library, RTLD_NOLOAD | RTLD_NOW);
    return handle == nullptr ? nullptr : dlsym(handle, name);
}

// Whether the image's own table ends as one must for an unwinder that is told its beginning only.
bool IsTerminated(const MappedImage& image, const Section& frames) {
    if (frames.size == 0 || frames.place + frames.size + 4 > image.layout().size) {
        return false;
    }
    uint32_t behind = 1;
    std::memcpy(&behind, image.At(frames.place + frames.size), sizeof(behind));
    return behind == 0;
}

} // namespace

FrameTable::FrameTable(const std::vector<UnwindEntry>& entries, uint64_t base) {
    std::map<uint64_t, size_t> commons; // By personality.
    for (const UnwindEntry& entry : entries) {
        const auto known = commons.find(entry.personality);
        const size_t common =
            known != commons.end() ? known->second : commons[entry.personality] = AddCommon(entry.personality);
        AddFunction(entry, common, base);
    }
    Word(0, 4);
}

// What functions with one personality have in common. "P" and "L": personality and handlers; all pointers are absolute.
size_t FrameTable::AddCommon(uint64_t personality) {
    const size_t start = mBytes.size();
    const std::string_view augmentation = personality != 0 ? "zPLR" : "zR";
    Word(0, 4); // The length, which Finish fills in.
    Word(0, 4);
    Byte(1); // The version.
    mBytes.insert(mBytes.end(), augmentation.begin(), augmentation.end());
    Byte(0);
    Byte(1);    // Code is counted in bytes,
    Byte(0x78); // data in words of -8,
    Byte(kReturnAddress);
    if (personality != 0) {
        Byte(3 + kPointer);
        Byte(0);
        Word(personality, kPointer);
        Byte(0);
    } else {
        Byte(1);
    }
    Byte(0);
    Finish(start);
    return start;
}

void FrameTable::AddFunction(const UnwindEntry& entry, size_t common, uint64_t base) {
    const size_t start = mBytes.size();
    mFunctions.push_back(start);
    Word(0, 4);
    Word(mBytes.size() - common, 4); // The distance back from here.
    Word(base + entry.begin, kPointer);
    Word(entry.end - entry.begin, kPointer);
    if (entry.personality != 0) {
        Byte(kPointer);
        Word(base + entry.handlers, kPointer);
    } else {
        Byte(0);
    }
    Byte(kDefineFrame);
    Uleb(entry.frameRegister);
    Uleb(entry.frameSize);
    Byte(kSavedAt | kReturnAddress);
    Uleb(1);
    for (const SavedRegister& saved : entry.saved) {
        Byte(kSavedAt | saved.number);
        Uleb(saved.wordsBelow);
    }
    Finish(start);
}

void FrameTable::Word(uint64_t value, size_t size) {
    for (size_t index = 0; index < size; ++index) {
        Byte(static_cast<unsigned>(value >> (8 * index) & 0xFFU));
    }
}

void FrameTable::Uleb(uint64_t value) {
    for (; value > 0x7F; value >>= 7U) {
        Byte(static_cast<unsigned>(value & 0x7FU) | 0x80U);
    }
    Byte(static_cast<unsigned>(value));
}

// Fills up with instructions that do nothing, so that what follows the length is whole words, and writes the length.
void FrameTable::Finish(size_t start) {
    while ((mBytes.size() - start) % kPointer != 4) {
        Byte(0);
    }
    const auto length = static_cast<uint32_t>(mBytes.size() - start - 4);
    std::memcpy(&mBytes[start], &length, sizeof(length));
}

// Two unwinders are in a process with libc++; the order of its libraries decides which serves a throw. Each is told through its own handle: they
// have functions of the same names, of which only one would be found, and libunwind's does nothing with whole tables.
void RegisterFrames(const MappedImage& image, const std::vector<UnwindEntry>& entries) {
    static std::vector<std::unique_ptr<FrameTable>>& tables = *new std::vector<std::unique_ptr<FrameTable>>;
    static std::vector<std::unique_ptr<Bookkeeping>>& books = *new std::vector<std::unique_ptr<Bookkeeping>>;
    const FrameTable& table =
        *tables.emplace_back(std::make_unique<FrameTable>(entries, reinterpret_cast<uint64_t>(image.base())));
    const Section* const own = image.layout().Find("__eh_frame");
    const bool hasOwn = own != nullptr && IsTerminated(image, *own);

    using RegisterTable = void (*)(const void* table, void* bookkeeping, void* text, void* data);
    const auto gcc = reinterpret_cast<RegisterTable>(FunctionOf("libgcc_s.so.1", "__register_frame_info_bases"));
    if (gcc != nullptr) {
        gcc(table.bytes().data(), books.emplace_back(std::make_unique<Bookkeeping>())->data(), nullptr, nullptr);
        if (hasOwn) {
            gcc(image.At(own->place), books.emplace_back(std::make_unique<Bookkeeping>())->data(), nullptr, nullptr);
        }
    }
    using RegisterOne = void (*)(uint64_t address);
    const auto one = reinterpret_cast<RegisterOne>(FunctionOf("libunwind.so.1", "__unw_add_dynamic_fde"));
    const auto section =
        reinterpret_cast<RegisterOne>(FunctionOf("libunwind.so.1", "__unw_add_dynamic_eh_frame_section"));
    if (one != nullptr) {
        for (const size_t function : table.functions()) {
            one(reinterpret_cast<uint64_t>(table.bytes().data() + function));
        }
    }
    if (section != nullptr && hasOwn) {
        section(reinterpret_cast<uint64_t>(image.At(own->place)));
    }
}

} // namespace Tarvik::Vorn::Runner
