#include "ImageFile.h"

#include "../doctor/FileBytes.h"
#include "../doctor/FindingText.h"
#include "../doctor/MachOFile.h"

#include <utility>
#include <vector>

namespace Tarvik::Vorn::Runner {
namespace {

using namespace Simulator::Doctor;

constexpr uint64_t kLargestFile = uint64_t{256} << 20U;

LocatedError Damaged(const std::string& path, const ByteError& error) {
    return {path, 0, 0, "at byte " + std::to_string(error.offset) + ": " + error.message,
            "use the binary of a VornFacebook.xcframework as it was received, or `make package` for a new one"};
}

} // namespace

std::variant<ImageLayout, ByteError> ReadSlice(std::string_view bytes) {
    const std::variant<MachOFile, ByteError> file = ParseMachO(bytes);
    if (const auto* error = std::get_if<ByteError>(&file)) {
        return *error;
    }
    std::vector<std::string> others;
    for (const MachOImage& image : std::get<MachOFile>(file).images) {
        if (image.processor == kProcessorX86 && image.platform == kPlatformSimulator) {
            return ReadImageLayout(image, static_cast<uint64_t>(image.bytes.data() - bytes.data()));
        }
        others.push_back(PlatformName(image.platform) + " on " + ProcessorName(image.processor));
    }
    return ByteError{0, "the file has code for " + Listed(others) +
                            "; here runs only what is for the iOS simulator on x86_64"};
}

std::variant<std::unique_ptr<ImageFile>, LocatedError> ImageFile::Read(const std::string& path) {
    std::variant<std::string, LocatedError> bytes = ReadFileBytes(path, kLargestFile);
    if (const auto* error = std::get_if<LocatedError>(&bytes)) {
        return *error;
    }
    std::unique_ptr<ImageFile> file(new ImageFile);
    file->mBytes = std::get<std::string>(std::move(bytes));
    std::variant<ImageLayout, ByteError> layout = ReadSlice(file->mBytes);
    if (const auto* error = std::get_if<ByteError>(&layout)) {
        return Damaged(path, *error);
    }
    file->mLayout = std::get<ImageLayout>(std::move(layout));
    std::variant<Fixups, ByteError> fixups = ReadFixups(file->mLayout);
    if (const auto* error = std::get_if<ByteError>(&fixups)) {
        return Damaged(path, *error);
    }
    file->mFixups = std::get<Fixups>(std::move(fixups));
    return file;
}

} // namespace Tarvik::Vorn::Runner
