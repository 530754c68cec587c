#include "Runner.h"

#include "../doctor/FileBytes.h"
#include "../doctor/FindingText.h"
#include "../doctor/MachOFile.h"
#include "FrameTable.h"
#include "HostSymbols.h"
#include "ImageFile.h"
#include "ObjcBridge.h"

#import <Foundation/Foundation.h>

#include <memory>
#include <utility>
#include <vector>

namespace Tarvik::Vorn::Runner {
namespace {

using Simulator::Doctor::Printable;

// Everything of a loaded image, for as long as the process runs.
struct Image {
    std::unique_ptr<ImageFile> file;
    std::unique_ptr<MappedImage> mapped;
    ObjcRecords records;
    std::unique_ptr<ObjcBridge> bridge;
};

std::vector<std::unique_ptr<Image>>& Images() {
    static auto& images = *new std::vector<std::unique_ptr<Image>>;
    return images;
}

std::string InMemory(const ByteError& error) {
    return "at " + Simulator::Doctor::Hexadecimal(error.offset) + " in memory: " + error.message;
}

std::string Listed(const std::vector<std::string>& names) {
    std::string list;
    for (const std::string& name : names) {
        list += (list.empty() ? "" : ", ") + Printable(name);
    }
    return list;
}

// Each function of the section "__mod_init_func", which holds their addresses, in its order.
std::optional<ByteError> ReadInitialisers(const MappedImage& image, std::vector<const void*>& initialisers) {
    constexpr uint32_t kInitialisers = 0x09;
    ByteReader reader(image.memory());
    for (const Section& section : image.layout().sections) {
        for (uint64_t at = 0; section.type == kInitialisers && at < section.size; at += kPointerSize) {
            const uint64_t place = reader.U64(section.place + at) - reinterpret_cast<uint64_t>(image.base());
            if (place >= image.layout().size) {
                reader.Fail(section.place + at, "an initialiser is outside of the image");
            }
            if (reader.failed()) {
                return reader.error();
            }
            initialisers.push_back(image.At(place));
        }
    }
    return std::nullopt;
}

// Which the system calls as it calls main.
void Call(const void* initialiser) {
    using Initialiser = void (*)(int count, const char* const* arguments, const char* const* environment,
                                 const char* const* apple, const void* variables);
    static const char* const arguments[] = {"image", nullptr};
    static const char* const nothing[] = {nullptr};
    reinterpret_cast<Initialiser>(const_cast<void*>(initialiser))(1, arguments, nothing, nothing, nullptr);
}

// What has been found to be wrong, in words; empty when everything went well.
class Loading {
public:
    explicit Loading(Image& image) : mImage(image) {}

    std::string Run() {
        if (!Map() || !ReadRecords() || !Register()) {
            return mProblem;
        }
        RegisterFrames(*mImage.mapped, mUnwindEntries);
        mImage.mapped->RegisterWithLeakSanitizer();
        if (!mImage.mapped->Protect()) {
            return "the system does not let its code run";
        }
        mImage.bridge->CallLoadMethods();
        for (const void* const initialiser : mInitialisers) {
            Call(initialiser);
        }
        return "";
    }

private:
    bool Map() {
        const ImageFile& file = *mImage.file;
        mImage.mapped = std::make_unique<MappedImage>(file.layout(), file.fixups());
        if (!mImage.mapped->isMapped()) {
            mProblem = "there is no memory for it";
            return false;
        }
        const std::vector<std::string> missing = mImage.mapped->BindSymbols(file.fixups(), FindHostSymbol);
        if (!missing.empty()) {
            mProblem = "it imports what this process does not have: " + Listed(missing);
        }
        return missing.empty();
    }

    bool ReadRecords() {
        std::variant<ObjcRecords, ByteError> records = ReadObjcRecords(*mImage.mapped);
        std::variant<std::vector<UnwindEntry>, ByteError> entries = ReadUnwindEntries(*mImage.mapped);
        const std::optional<ByteError> badInitialiser = ReadInitialisers(*mImage.mapped, mInitialisers);
        if (const auto* error = std::get_if<ByteError>(&records)) {
            mProblem = InMemory(*error);
        } else if (const auto* badEntry = std::get_if<ByteError>(&entries)) {
            mProblem = InMemory(*badEntry);
        } else if (badInitialiser) {
            mProblem = InMemory(*badInitialiser);
        } else {
            mImage.records = std::get<ObjcRecords>(std::move(records));
            mUnwindEntries = std::get<std::vector<UnwindEntry>>(std::move(entries));
        }
        return mProblem.empty();
    }

    bool Register() {
        mImage.bridge = std::make_unique<ObjcBridge>(*mImage.mapped, mImage.records);
        mProblem = mImage.bridge->Register();
        return mProblem.empty();
    }

    Image& mImage;
    std::vector<UnwindEntry> mUnwindEntries;
    std::vector<const void*> mInitialisers;
    std::string mProblem;
};

} // namespace

bool IsImageFile(const std::string& path) {
    const auto beginning = Simulator::Doctor::ReadFileBeginning(path);
    const auto* const bytes = std::get_if<std::string>(&beginning);
    return bytes != nullptr && Simulator::Doctor::LooksLikeMachO(*bytes);
}

std::optional<LoadedImage> LoadImage(const std::string& path, LocatedError& error) {
    // Kept even when it fails: the runtime may know classes of it.
    Image& image = *Images().emplace_back(std::make_unique<Image>());
    std::variant<std::unique_ptr<ImageFile>, LocatedError> file = ImageFile::Read(path);
    if (const auto* unreadable = std::get_if<LocatedError>(&file)) {
        error = *unreadable;
        return std::nullopt;
    }
    image.file = std::get<std::unique_ptr<ImageFile>>(std::move(file));
    const std::string problem = Loading(image).Run();
    if (!problem.empty()) {
        error = {path, 0, 0, "the image cannot be run: " + problem,
                 "use a library that this project's `make package` has made, and a program of the same version"};
        return std::nullopt;
    }
    return LoadedImage{path, image.mapped->base(), image.mapped->base() + image.mapped->layout().size};
}

void* ImageSymbol(const std::string& name) {
    for (const std::unique_ptr<Image>& image : Images()) {
        void* const symbol = image->mapped == nullptr ? nullptr : image->mapped->Exported("_" + name);
        if (symbol != nullptr) {
            return symbol;
        }
    }
    return nullptr;
}

std::string WhereItLies(const LoadedImage& image) {
    const auto address = [](const void* at) { return Simulator::Doctor::Hexadecimal(reinterpret_cast<uint64_t>(at)); };
    return "image " + Printable(image.path) + " lies at " + address(image.begin) + "-" + address(image.end) +
           "; scripts/symbolise names places in it";
}

} // namespace Tarvik::Vorn::Runner
