#include "Runner.h"

#include "../doctor/FileBytes.h"
#include "../doctor/FindingText.h"
#include "../doctor/MachOFile.h"
#include "FrameTable.h"
#include "HostSymbols.h"
#include "ObjcBridge.h"
#include "PreparedImage.h"

#import <Foundation/Foundation.h>

#include <memory>
#include <utility>
#include <vector>

namespace Tarvik::Vorn::Runner {
namespace {

using namespace Simulator::Doctor;

// Everything of a loaded image, for as long as the process runs.
struct Image {
    std::string path;
    std::unique_ptr<PreparedImage> prepared;
    std::unique_ptr<ObjcBridge> bridge;
};

std::vector<Image>& Images() {
    static auto& images = *new std::vector<Image>;
    return images;
}

// A function that the system calls as it calls main.
void Call(const void* initialiser) {
    using Initialiser = void (*)(int count, const char* const* arguments, const char* const* environment,
                                 const char* const* apple, const void* variables);
    static const char* const arguments[] = {"image", nullptr};
    static const char* const nothing[] = {nullptr};
    reinterpret_cast<Initialiser>(const_cast<void*>(initialiser))(1, arguments, nothing, nothing, nullptr);
}

std::string AddressText(const char* address) {
    return Hexadecimal(reinterpret_cast<uint64_t>(address));
}

// Makes the process know the image, and runs what runs when it is loaded. What is wrong, in words; empty when all is well.
std::string Start(const Image& image, std::FILE* report) {
    const MappedImage& mapped = image.prepared->mapped();
    std::string problem = image.bridge->Register();
    if (!problem.empty()) {
        return problem;
    }
    RegisterFrames(mapped, image.prepared->unwindEntries());
    mapped.RegisterWithLeakSanitizer();
    if (!mapped.Protect()) {
        return "the system does not let its code run";
    }
    std::fprintf(report, "image %s lies at %s-%s; scripts/symbolise names places in it\n",
                 Printable(image.path).c_str(), AddressText(mapped.base()).c_str(),
                 AddressText(mapped.base() + mapped.layout().size).c_str());
    std::fflush(report);
    image.bridge->CallLoadMethods();
    for (const void* const initialiser : image.prepared->initialisers()) {
        Call(initialiser);
    }
    return "";
}

LocatedError NotRunnable(const std::string& path, const std::string& problem) {
    return {path, 0, 0, problem,
            "use the binary of a VornFacebook.xcframework as it was received, with the tools of the same version, or "
            "`make package` for a new one"};
}

} // namespace

bool IsImageFile(const std::string& path) {
    const auto beginning = ReadFileBeginning(path);
    const auto* const bytes = std::get_if<std::string>(&beginning);
    return bytes != nullptr && LooksLikeMachO(*bytes);
}

std::optional<LocatedError> LoadImage(const std::string& path, std::FILE* report) {
    std::variant<std::string, LocatedError> file = ReadFileBytes(path, kLargestFile);
    if (const auto* unreadable = std::get_if<LocatedError>(&file)) {
        return *unreadable;
    }
    auto prepared = PreparedImage::Prepare(std::get<std::string>(std::move(file)), FindHostSymbol);
    if (const auto* problem = std::get_if<std::string>(&prepared)) {
        return NotRunnable(path, *problem);
    }
    Image image{path, std::get<std::unique_ptr<PreparedImage>>(std::move(prepared)), nullptr};
    image.bridge = std::make_unique<ObjcBridge>(image.prepared->mapped(), image.prepared->records());
    // Kept from now on, also when it fails: the runtime may know classes of it.
    Images().push_back(std::move(image));
    const std::string problem = Start(Images().back(), report);
    if (problem.empty()) {
        return std::nullopt;
    }
    return NotRunnable(path, problem);
}

void* ImageSymbol(const std::string& name) {
    for (const Image& image : Images()) {
        if (void* const symbol = image.prepared->mapped().Exported("_" + name)) {
            return symbol;
        }
    }
    return nullptr;
}

std::vector<const void*> ImageReferencesTo(const std::string& name) {
    std::vector<const void*> references;
    for (const Image& image : Images()) {
        const std::vector<const void*> more =
            image.prepared->mapped().ReferencesTo("_" + name, image.prepared->fixups());
        references.insert(references.end(), more.begin(), more.end());
    }
    return references;
}

} // namespace Tarvik::Vorn::Runner
