#include "LibraryChecks.h"

#include "FileBytes.h"
#include "FindingKinds.h"
#include "FindingText.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

namespace Tarvik::Vorn::Simulator::Doctor {
namespace {

constexpr std::string_view kInstallName = "@rpath/VornFacebook.framework/VornFacebook";
constexpr std::string_view kClassSymbol = "_OBJC_CLASS_$_";
constexpr std::string_view kFriendClass = "VornFriendFacebook";

constexpr uint32_t kSystem13 = 13U << 16U;
constexpr uint32_t kSystem14 = 14U << 16U;

constexpr auto kLinkSymbols = std::to_array<std::string_view>({
    "_FBLink_NSBundle_InfoDictionaryProviding",
    "_FBLink_NSData_FileDataExtracting",
    "_FBLink_NSFileManager_FileManaging",
    "_FBLink_NSNotificationCenter_NotificationDelivering",
    "_FBLink_NSNotificationCenter_NotificationPosting",
    "_FBLink_NSProcessInfo_MacCatalystDetermining",
    "_FBLink_NSProcessInfo_OperatingSystemVersionComparing",
    "_FBLink_NSURLSessionTask_NetworkTask",
    "_FBLink_NSURLSession_URLSessionProviding",
    "_FBLink_NSUserDefaults_DataPersisting",
});

constexpr auto kExportedClasses = std::to_array<std::string_view>({"VornLoginFacebook", "VornReportFacebook"});

// The namespace of the Linux build's stand-ins, as it stands in C++ symbols and in texts made of them.
constexpr std::string_view kStandInNamespace = "Tarvik4Vorn4Host";

constexpr auto kLinuxLibraries =
    std::to_array<std::string_view>({"libgnustep-base", "libobjc.so", "libVornCore.so", "libVornPlatform"});

// Beginnings of the names of the platform's and Facebook's classes.
constexpr auto kForeignPrefixes = std::to_array<std::string_view>({"FBSDK", "UI", "NS", "PH", "AV"});

std::string SliceName(const MachOImage& image) {
    const std::string processor = ProcessorName(image.processor);
    return image.platform == kPlatformUnknown ? processor : processor + " (" + PlatformName(image.platform) + ")";
}

// The simulator runs on Apple's processors since iOS 14.
uint32_t OldestSystem(const MachOImage& image) {
    return image.platform == kPlatformSimulator && image.processor == kProcessorArm64 ? kSystem14 : kSystem13;
}

class LibraryChecks {
public:
    LibraryChecks(const std::string& path, const MachOFile& file, const LibraryTarget& target)
        : mPath(path), mFile(file), mTarget(target) {}

    std::vector<Finding> Run() {
        const bool isLibrary = std::ranges::all_of(
            mFile.images, [](const MachOImage& image) { return image.fileType == kFileTypeLibrary; });
        if (!isLibrary) {
            CheckFileType();
            return std::move(mFindings);
        }
        CheckProcessors();
        for (const MachOImage& image : mFile.images) {
            CheckHeader(image);
            CheckExports(image);
            CheckContents(image);
        }
        return std::move(mFindings);
    }

private:
    // The same fault in another slice is told once.
    void Report(const FindingKind& kind, const std::string& cause, const std::string& slice) {
        const auto same = std::ranges::find_if(mFindings, [&kind, &cause](const Finding& finding) {
            return finding.kind == &kind && finding.cause == cause;
        });
        if (same == mFindings.end()) {
            mFindings.push_back({&kind, cause, mPath, slice, "", ""});
        } else {
            same->place += ", " + slice;
        }
    }

    void CheckFileType() {
        for (const MachOImage& image : mFile.images) {
            if (image.fileType != kFileTypeLibrary) {
                Report(KindOf("not-dynamic-library"),
                       image.fileType == kFileTypeProgram ? "The file is a program and not a dynamic library."
                                                          : "The file is no dynamic library (its file type is " +
                                                                std::to_string(image.fileType) + ").",
                       SliceName(image));
            }
        }
    }

    uint32_t Platform() const {
        return mTarget.platform != kPlatformUnknown ? mTarget.platform : mFile.images.front().platform;
    }

    std::vector<uint32_t> Processors() const {
        if (!mTarget.processors.empty()) {
            return mTarget.processors;
        }
        if (Platform() == kPlatformSimulator) {
            return {kProcessorArm64, kProcessorX86};
        }
        return {kProcessorArm64};
    }

    void CheckProcessors() {
        const std::vector<uint32_t> wanted = Processors();
        for (const uint32_t processor : wanted) {
            if (std::ranges::find(mFile.images, processor, &MachOImage::processor) == mFile.images.end()) {
                Report(KindOf("architecture-missing"), "The library has no slice for " + ProcessorName(processor) + ".",
                       ProcessorName(processor));
            }
        }
        for (const MachOImage& image : mFile.images) {
            const bool isWanted = std::ranges::find(wanted, image.processor) != wanted.end();
            const bool isKnown = image.processor == kProcessorArm64 || image.processor == kProcessorX86;
            if (!isWanted && !(mTarget.mayHaveMore && isKnown)) {
                Report(KindOf("architecture-unexpected"),
                       "The library has a slice for " + ProcessorName(image.processor) + ", which none of its " +
                           "machines runs.",
                       SliceName(image));
            }
        }
    }

    void CheckHeader(const MachOImage& image) {
        if (image.platform == kPlatformUnknown) {
            Report(KindOf("platform-missing"), "The slice does not say for which platform it is.", SliceName(image));
        } else if (image.platform != Platform() ||
                   (image.platform != kPlatformIOS && image.platform != kPlatformSimulator)) {
            const uint32_t wanted = mTarget.platform == kPlatformUnknown ? kPlatformIOS : mTarget.platform;
            Report(KindOf("platform-mismatch"),
                   "The slice is for " + PlatformName(image.platform) + " and not for " + PlatformName(wanted) + ".",
                   SliceName(image));
        } else {
            CheckMinimumSystem(image);
        }
        if (image.installName != kInstallName) {
            Report(KindOf("install-name-wrong"),
                   image.installName.empty()
                       ? "The library has no install name; it is " + std::string(kInstallName) + "."
                       : "The install name is " + Quoted(image.installName) + " and not " + std::string(kInstallName) +
                             ".",
                   SliceName(image));
        }
        if (!image.hasSignature) {
            Report(KindOf("code-signature-missing"), "The slice is not signed.", SliceName(image));
        }
    }

    void CheckMinimumSystem(const MachOImage& image) {
        const uint32_t wanted = OldestSystem(image);
        if (image.minimumSystem == wanted) {
            return;
        }
        const FindingKind& kind =
            image.minimumSystem > wanted ? KindOf("library-minimum-os-higher") : KindOf("library-minimum-os-lower");
        Report(kind,
               "The oldest system of the slice is " + SystemVersionText(image.minimumSystem) + " and not " +
                   SystemVersionText(wanted) + ".",
               SliceName(image));
    }

    void CheckExports(const MachOImage& image) {
        std::vector<std::string> missing;
        for (const std::string_view symbol : kLinkSymbols) {
            if (!image.Exports(symbol)) {
                missing.emplace_back(symbol.substr(1)); // Without the underscore of C.
            }
        }
        if (!missing.empty()) {
            Report(KindOf("link-symbols-missing"),
                   std::to_string(missing.size()) + " of the " + std::to_string(kLinkSymbols.size()) +
                       " words that tie it to the SDK's categories are not exported: " + Listed(missing) + ".",
                   SliceName(image));
        }
        if (!image.Exports("_VornFacebookVersionString")) {
            Report(KindOf("version-record-missing"), "VornFacebookVersionString is not exported.", SliceName(image));
        }
        for (const std::string_view name : kExportedClasses) {
            if (!image.Exports(std::string(kClassSymbol) + std::string(name))) {
                Report(KindOf("plugin-class-not-exported"), "The class " + std::string(name) + " is not exported.",
                       SliceName(image));
            }
        }
    }

    void CheckContents(const MachOImage& image) {
        // The core asks the Objective-C runtime for the class by its name.
        if (!image.hasClassList || !image.HasText(kFriendClass)) {
            Report(KindOf("friend-class-missing"),
                   "The class " + std::string(kFriendClass) + " is not among the library's classes.", SliceName(image));
        }
        if (image.bytes.find(kStandInNamespace) != std::string_view::npos) {
            Report(KindOf("stand-ins-shipped"),
                   "The slice holds names of the namespace Tarvik::Vorn::Host, which is that of the stand-ins.",
                   SliceName(image));
        }
        for (const LoadedLibrary& library : image.libraries) {
            const bool isLinux = std::ranges::any_of(kLinuxLibraries, [&library](std::string_view name) {
                return library.path.find(name) != std::string_view::npos;
            });
            if (isLinux) {
                Report(KindOf("linux-library-linked"), "The library loads " + Quoted(library.path) + ".",
                       SliceName(image));
            }
        }
        CheckForeignClasses(image);
    }

    void CheckForeignClasses(const MachOImage& image) {
        std::vector<std::string> foreign;
        for (const MachOSymbol& symbol : image.symbols) {
            if (!symbol.isDefined || !symbol.name.starts_with(kClassSymbol)) {
                continue;
            }
            const std::string_view name = symbol.name.substr(kClassSymbol.size());
            const bool isForeign = std::ranges::any_of(
                kForeignPrefixes, [name](std::string_view prefix) { return name.starts_with(prefix); });
            if (isForeign) {
                foreign.emplace_back(name);
            }
        }
        if (!foreign.empty()) {
            Report(KindOf("foreign-class-defined"),
                   "The library has classes of its own that belong to the system or to Facebook, of which one is " +
                       foreign.front() + " (" + std::to_string(foreign.size()) + " in all).",
                   SliceName(image));
        }
    }

    const std::string& mPath;
    const MachOFile& mFile;
    const LibraryTarget& mTarget;
    std::vector<Finding> mFindings;
};

} // namespace

std::variant<MachOOnDisk, LocatedError> MachOOfBytes(const std::string& path, std::string bytes) {
    MachOOnDisk binary{std::make_unique<const std::string>(std::move(bytes)), {}};
    std::variant<MachOFile, ByteError> parsed = ParseMachO(*binary.bytes);
    if (const auto* error = std::get_if<ByteError>(&parsed)) {
        return LocatedError{path, 0, 0, "at byte offset " + Hexadecimal(error->offset) + ": " + error->message,
                            "the file is damaged, cut off or no binary for iOS; build or copy it anew"};
    }
    binary.file = std::get<MachOFile>(std::move(parsed));
    return binary;
}

std::variant<MachOOnDisk, LocatedError> ReadMachO(const std::string& path) {
    std::variant<std::string, LocatedError> bytes = ReadFileBytes(path, kMaxMachOBytes);
    if (const auto* error = std::get_if<LocatedError>(&bytes)) {
        return *error;
    }
    return MachOOfBytes(path, std::get<std::string>(std::move(bytes)));
}

void CheckLibrary(const std::string& path, const MachOFile& file, const LibraryTarget& target,
                  std::vector<Finding>& findings) {
    std::vector<Finding> found = LibraryChecks(path, file, target).Run();
    findings.insert(findings.end(), found.begin(), found.end());
}

} // namespace Tarvik::Vorn::Simulator::Doctor
