// Call frame information: the form of unwind entries that the unwinders of this system read. Plain C++.
#pragma once

#include "UnwindEntries.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace Tarvik::Vorn::Runner {

class FrameTable {
public:
    // `base`: where the image is mapped.
    FrameTable(const std::vector<UnwindEntry>& entries, uint64_t base);

    // The section's bytes, which end with a length of zero.
    const std::vector<uint8_t>& bytes() const { return mBytes; }

    // Where in it the description of each function begins.
    const std::vector<size_t>& functions() const { return mFunctions; }

private:
    size_t AddCommon(uint64_t personality);
    void AddFunction(const UnwindEntry& entry, size_t common, uint64_t base);
    void Byte(unsigned value) { mBytes.push_back(static_cast<uint8_t>(value)); }
    void Word(uint64_t value, size_t size);
    void Uleb(uint64_t value);
    void Finish(size_t start);

    std::vector<uint8_t> mBytes;
    std::vector<size_t> mFunctions;
};

// Makes the functions of a mapped image known to the unwinders of this process, for as long as it runs: what the entries
// say, and the image's own call frame information. The image stays mapped for as long.
void RegisterFrames(const MappedImage& image, const std::vector<UnwindEntry>& entries);

} // namespace Tarvik::Vorn::Runner
