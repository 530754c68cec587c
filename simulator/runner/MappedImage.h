// An image in the memory of this process: its segments where they belong, with the rights that they need. Plain C++.
#pragma once

#include "Fixups.h"
#include "ImageLayout.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace Tarvik::Vorn::Runner {

class MappedImage {
public:
    // Maps the image and moves its own addresses. Until Protect is called it may be written and not executed.
    // `layout` must outlive this.
    MappedImage(const ImageLayout& layout, const Fixups& fixups);
    ~MappedImage();
    MappedImage(const MappedImage&) = delete;
    MappedImage& operator=(const MappedImage&) = delete;

    // False when the system has no memory for it; nothing else may then be asked.
    bool isMapped() const { return mBase != nullptr; }

    // Finds symbols in the rest of the process; empty when there is none of that name. A symbol may be null.
    using Finder = std::function<std::optional<void*>(std::string_view symbol)>;

    // Writes the addresses of symbols. Of weak ones the rest of the process is asked first, so that there is one of each.
    // Returns the names that nobody has, each once.
    std::vector<std::string> BindSymbols(const Fixups& fixups, const Finder& find);

    // Gives each segment the rights that it has while the image runs. False when the system refuses.
    bool Protect() const;

    // Counted with LeakSanitizer's roots, so that what the image's variables hold is no leak.
    void RegisterWithLeakSanitizer() const;

    const ImageLayout& layout() const { return mLayout; }
    char* base() const { return mBase; }
    std::string_view memory() const { return {mBase, mLayout.size}; }
    bool Contains(const void* address) const;
    char* At(uint64_t place) const { return mBase + place; }

    // The address of a symbol that the image exports; null when there is none.
    void* Exported(std::string_view symbol) const;

    // What has been written where the image refers to a symbol, in the order of its fixups.
    std::vector<const void*> ReferencesTo(std::string_view symbol, const Fixups& fixups) const;

    void WritePointer(uint64_t place, const void* value) const;

private:
    void Write(const Bind& bind, const void* symbol) const;

    const ImageLayout& mLayout;
    char* mBase = nullptr;
};

} // namespace Tarvik::Vorn::Runner
