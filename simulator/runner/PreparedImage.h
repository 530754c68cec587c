// An image with everything that is read of it and checked before any of its code runs. Plain C++; nothing outside of the
// image knows of it yet.
#pragma once

#include "Fixups.h"
#include "ImageLayout.h"
#include "MappedImage.h"
#include "ObjcRecords.h"
#include "UnwindEntries.h"

#include <memory>
#include <string>
#include <variant>
#include <vector>

namespace Tarvik::Vorn::Runner {

class PreparedImage {
public:
    // From the bytes of a Mach-O file. What is wrong with it, in words, when it cannot run.
    static std::variant<std::unique_ptr<PreparedImage>, std::string> Prepare(std::string file,
                                                                             const MappedImage::Finder& find);

    const MappedImage& mapped() const { return *mMapped; }
    const Fixups& fixups() const { return mFixups; }
    const ObjcRecords& records() const { return mRecords; }
    const std::vector<UnwindEntry>& unwindEntries() const { return mUnwindEntries; }

    // The addresses of the functions to be called when the image has been loaded, in their order.
    const std::vector<const void*>& initialisers() const { return mInitialisers; }

private:
    explicit PreparedImage(std::string file) : mFile(std::move(file)) {}

    std::string Read(const MappedImage::Finder& find);
    std::string Map(const MappedImage::Finder& find);
    std::string ReadMemory();

    std::string mFile; // In which the layout's texts lie.
    ImageLayout mLayout;
    Fixups mFixups;
    std::unique_ptr<MappedImage> mMapped;
    ObjcRecords mRecords;
    std::vector<UnwindEntry> mUnwindEntries;
    std::vector<const void*> mInitialisers;
};

} // namespace Tarvik::Vorn::Runner
