#include "MappedImage.h"

#include <cstring>
#include <set>
#include <sys/mman.h>

// Only a program with the sanitizer has it.
extern "C" void __lsan_register_root_region(const void* begin, size_t size) __attribute__((weak));

namespace Tarvik::Vorn::Runner {

MappedImage::MappedImage(const ImageLayout& layout, const Fixups& fixups) : mLayout(layout) {
    void* const memory = mmap(nullptr, layout.size, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (memory == MAP_FAILED) {
        return;
    }
    mBase = static_cast<char*>(memory);
    for (const Segment& segment : layout.segments) {
        if (!segment.contents.empty()) {
            std::memcpy(At(segment.place), segment.contents.data(), segment.contents.size());
        }
    }
    const uint64_t distance = reinterpret_cast<uint64_t>(mBase) - layout.lowestAddress;
    for (const uint64_t place : fixups.rebases) {
        uint64_t address = 0;
        std::memcpy(&address, At(place), sizeof(address));
        address += distance;
        std::memcpy(At(place), &address, sizeof(address));
    }
}

MappedImage::~MappedImage() {
    if (mBase != nullptr) {
        munmap(mBase, mLayout.size);
    }
}

std::vector<std::string> MappedImage::BindSymbols(const Fixups& fixups, const Finder& find) {
    std::set<std::string> missing;
    for (const Bind& bind : fixups.binds) {
        const std::optional<void*> symbol = find(bind.symbol);
        if (!symbol && !bind.isOptional) {
            missing.emplace(bind.symbol);
        }
        Write(bind, symbol.value_or(nullptr));
    }
    for (const Bind& bind : fixups.weakBinds) {
        const void* const symbol = find(bind.symbol).value_or(Exported(bind.symbol));
        if (symbol != nullptr) { // Otherwise nobody else can have it either, and the image keeps its own.
            Write(bind, symbol);
        }
    }
    return {missing.begin(), missing.end()};
}

bool MappedImage::Protect() const {
    for (const Segment& segment : mLayout.segments) {
        const int rights = segment.isExecutable ? PROT_READ | PROT_EXEC
                           : segment.isWritable ? PROT_READ | PROT_WRITE
                                                : PROT_READ;
        if (segment.size != 0 && mprotect(At(segment.place), segment.size, rights) != 0) {
            return false;
        }
    }
    return true;
}

void MappedImage::RegisterWithLeakSanitizer() const {
    if (__lsan_register_root_region == nullptr) {
        return;
    }
    for (const Segment& segment : mLayout.segments) {
        if (segment.takesFixups) {
            __lsan_register_root_region(At(segment.place), segment.size);
        }
    }
}

bool MappedImage::Contains(const void* address) const {
    const auto* const byte = static_cast<const char*>(address);
    return byte >= mBase && byte < mBase + mLayout.size;
}

void* MappedImage::Exported(std::string_view symbol) const {
    const auto found = mLayout.exports.find(symbol);
    return found == mLayout.exports.end() ? nullptr : At(found->second);
}

std::vector<const void*> MappedImage::ReferencesTo(std::string_view symbol, const Fixups& fixups) const {
    std::vector<const void*> references;
    for (const std::vector<Bind>* binds : {&fixups.binds, &fixups.weakBinds}) {
        for (const Bind& bind : *binds) {
            if (bind.symbol == symbol) {
                const void*& reference = references.emplace_back();
                std::memcpy(&reference, At(bind.place), sizeof(reference));
            }
        }
    }
    return references;
}

void MappedImage::WritePointer(uint64_t place, const void* value) const {
    std::memcpy(At(place), &value, sizeof(value));
}

void MappedImage::Write(const Bind& bind, const void* symbol) const {
    const auto* const value = static_cast<const char*>(symbol);
    WritePointer(bind.place, value == nullptr ? nullptr : value + bind.addend);
}

} // namespace Tarvik::Vorn::Runner
