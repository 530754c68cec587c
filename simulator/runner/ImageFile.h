// The slice of a Mach-O file that can run here, read and checked. Plain C++, any thread.
#pragma once

#include "Fixups.h"
#include "ImageLayout.h"

#include "VornLocatedError.h"

#include <memory>
#include <string>
#include <variant>

namespace Tarvik::Vorn::Runner {

// Of the slice for the iOS simulator on x86_64; without one, an error that says which there are.
std::variant<ImageLayout, ByteError> ReadSlice(std::string_view bytes);

class ImageFile {
public:
    static std::variant<std::unique_ptr<ImageFile>, LocatedError> Read(const std::string& path);

    const ImageLayout& layout() const { return mLayout; }
    const Fixups& fixups() const { return mFixups; }

private:
    ImageFile() = default;

    std::string mBytes; // In which the layout's texts lie.
    ImageLayout mLayout;
    Fixups mFixups;
};

} // namespace Tarvik::Vorn::Runner
