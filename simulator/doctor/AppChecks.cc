#include "AppChecks.h"

#include "FindingKinds.h"
#include "FindingText.h"
#include "FrameworkChecks.h"
#include "InfoPlistChecks.h"
#include "LibraryChecks.h"

#include <algorithm>
#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>
#include <variant>

namespace Tarvik::Vorn::Simulator::Doctor {
namespace {

constexpr std::string_view kPlugin = "VornFacebook";
constexpr std::string_view kCore = "VornCore";
constexpr auto kKits = std::to_array<std::string_view>(
    {"FBSDKCoreKit_Basics", "FBSDKCoreKit", "FBSDKLoginKit", "FBSDKShareKit", "FBSDKGamingServicesKit"});

constexpr auto kAppFrameworkPaths =
    std::to_array<std::string_view>({"@executable_path/Frameworks", "@loader_path/Frameworks"});

// A class that every copy of the SDK has.
constexpr std::string_view kClassOfTheSDK = "_OBJC_CLASS_$_FBSDKSettings";

bool IsFile(const std::filesystem::path& path) {
    std::error_code ignored;
    return std::filesystem::is_regular_file(path, ignored);
}

// "FBSDKLoginKit" for "@rpath/FBSDKLoginKit.framework/FBSDKLoginKit"; empty for other libraries.
std::string_view FrameworkName(std::string_view path) {
    constexpr std::string_view kRunPath = "@rpath/";
    const size_t end = path.find(".framework/");
    if (!path.starts_with(kRunPath) || end == std::string_view::npos) {
        return {};
    }
    return path.substr(kRunPath.size(), end - kRunPath.size());
}

// Frameworks that this project knows enough about to miss them.
bool IsOfPluginOrSDK(std::string_view framework) {
    return framework.starts_with("Vorn") || framework.starts_with("FB");
}

// The files of a folder, sorted, so that findings have one order everywhere.
std::vector<std::filesystem::path> FilesOf(const std::filesystem::path& folder) {
    std::vector<std::filesystem::path> files;
    std::error_code failure;
    for (std::filesystem::directory_iterator entry(folder, failure), end; !failure && entry != end;
         entry.increment(failure)) {
        files.push_back(entry->path());
    }
    std::ranges::sort(files);
    return files;
}

class AppChecks {
public:
    AppChecks(const std::filesystem::path& folder, const PlistValue& info, std::vector<Finding>& findings)
        : mFolder(folder), mFrameworks(folder / "Frameworks"), mInfo(info), mFindings(findings) {}

    void Run() {
        CheckInfoPlist(mInfo, InfoPlistOrigin::kBuiltApp, (mFolder / "Info.plist").string(), mFindings);
        CheckPrivacyManifest();
        CheckExecutable();
        std::error_code ignored;
        if (!std::filesystem::is_directory(mFrameworks, ignored)) {
            return Report(KindOf("frameworks-missing"),
                          "The app has no folder Frameworks, and in it neither VornFacebook nor the core nor the kits. "
                          "Set all of them to \"Embed & Sign\".",
                          mFrameworks);
        }
        CheckEmbedded();
        CheckPlugin();
        CheckOtherLoaders();
        if (mHasExecutable && !mIsPluginLoaded && IsEmbedded(kPlugin)) {
            Report(KindOf("plugin-not-loaded"),
                   "Neither the executable nor a library in the app loads VornFacebook. Link the game with it.",
                   mFolder);
        }
    }

private:
    void Report(const FindingKind& kind, const std::string& cause, const std::filesystem::path& file,
                std::string_view place = "", std::string_view explainedBy = "") {
        mFindings.push_back({&kind, cause, file.string(), std::string(place), "", explainedBy});
    }

    void ReportDamage(const LocatedError& error) {
        mFindings.push_back(
            {&KindOf("file-damaged"), error.message + "; " + error.remedy + ".", error.file, "", "", ""});
    }

    bool IsEmbedded(std::string_view framework) const {
        return IsFile(mFrameworks / (std::string(framework) + ".framework") / framework);
    }

    void CheckPrivacyManifest() {
        const std::filesystem::path path = mFolder / "PrivacyInfo.xcprivacy";
        if (!IsFile(path)) {
            return Report(KindOf("app-privacy-manifest-missing"), "The app has no PrivacyInfo.xcprivacy of its own.",
                          mFolder);
        }
        const std::variant<Plist, LocatedError> manifest = ReadPlist(path.string());
        if (const auto* error = std::get_if<LocatedError>(&manifest)) {
            ReportDamage(*error);
        }
    }

    void CheckExecutable() {
        constexpr std::string_view kKey = "CFBundleExecutable";
        const PlistValue* name = mInfo.Member(kKey);
        if (name == nullptr || name->type != PlistType::kText || !IsPlainName(name->text)) {
            return Report(KindOf("executable-missing"), "CFBundleExecutable does not name the app's executable.",
                          mFolder / "Info.plist", kKey);
        }
        const std::filesystem::path path = mFolder / name->text;
        if (!IsFile(path)) {
            return Report(KindOf("executable-missing"),
                          "CFBundleExecutable is " + Quoted(name->text) + ", and the app has no such file.",
                          mFolder / "Info.plist", kKey);
        }
        const std::variant<MachOOnDisk, LocatedError> binary = ReadMachO(path.string());
        if (const auto* error = std::get_if<LocatedError>(&binary)) {
            return ReportDamage(*error);
        }
        mHasExecutable = true;
        const MachOFile& file = std::get<MachOOnDisk>(binary).file;
        mTarget.platform = file.images.front().platform;
        for (const MachOImage& image : file.images) {
            mTarget.processors.push_back(image.processor);
        }
        CheckRunPaths(path, file.images.front());
        CheckLoads(path, file);
    }

    void CheckRunPaths(const std::filesystem::path& path, const MachOImage& image) {
        const bool needsOne = std::ranges::any_of(
            image.libraries, [](const LoadedLibrary& library) { return library.path.starts_with("@rpath/"); });
        const bool hasOne = std::ranges::any_of(image.runPaths, [](std::string_view runPath) {
            runPath = runPath.substr(0, runPath.find_last_not_of('/') + 1);
            return std::ranges::find(kAppFrameworkPaths, runPath) != kAppFrameworkPaths.end();
        });
        if (needsOne && !hasOne) {
            Report(KindOf("run-path-missing"),
                   "The executable does not look into the app's Frameworks. Add @executable_path/Frameworks to "
                   "LD_RUNPATH_SEARCH_PATHS.",
                   path);
        }
    }

    // What a binary in the app has to do with the plugin and the SDK.
    void CheckLoads(const std::filesystem::path& path, const MachOFile& file) {
        for (const MachOImage& image : file.images) {
            for (const LoadedLibrary& library : image.libraries) {
                const std::string_view name = FrameworkName(library.path);
                mIsPluginLoaded = mIsPluginLoaded || name == kPlugin;
                if (library.isRequired && IsOfPluginOrSDK(name)) {
                    mLoads.emplace_back(name, path.filename().string());
                }
            }
            const auto copy = std::ranges::find_if(image.symbols, [](const MachOSymbol& symbol) {
                return symbol.isDefined && symbol.name == kClassOfTheSDK;
            });
            if (copy != image.symbols.end() && !mIsSDKStatic && path.filename() != "FBSDKCoreKit") {
                mIsSDKStatic = true;
                Report(KindOf("sdk-linked-statically"),
                       "The binary holds classes of the SDK (FBSDKSettings): the SDK was linked into it. Embed dynamic "
                       "kits, and take no static product of the SDK into any target.",
                       path, ProcessorName(image.processor));
            }
        }
    }

    void CheckEmbedded() {
        if (!IsEmbedded(kPlugin)) {
            Report(KindOf("plugin-not-embedded"),
                   "VornFacebook.framework is not in the app's Frameworks. Set it to \"Embed & Sign\".", mFrameworks);
        }
        if (!IsEmbedded(kCore)) {
            Report(KindOf("core-not-embedded"),
                   "VornCore.framework is not in the app's Frameworks. Set it to \"Embed & Sign\".", mFrameworks);
        }
        const bool hasNone = std::ranges::none_of(kKits, [this](std::string_view kit) { return IsEmbedded(kit); });
        if (hasNone) {
            return Report(KindOf("kits-not-embedded"),
                          "None of the SDK's five kits is in the app's Frameworks. The plugin needs them as dynamic "
                          "frameworks, as CocoaPods has them.",
                          mFrameworks, "", mIsSDKStatic ? "sdk-linked-statically" : "");
        }
        for (const std::string_view kit : kKits) {
            if (!IsEmbedded(kit)) {
                ReportMissingKit(kit, kPlugin);
            }
        }
    }

    void ReportMissingKit(std::string_view kit, std::string_view loader) {
        Report(KindOf("kit-not-embedded"),
               std::string(kit) + ".framework is not in the app's Frameworks, and " + std::string(loader) +
                   " loads it. Set it to \"Embed & Sign\".",
               mFrameworks);
    }

    void CheckPlugin() {
        if (!IsEmbedded(kPlugin)) {
            return;
        }
        LibraryTarget target = mTarget;
        target.mayHaveMore = target.platform == kPlatformSimulator;
        const std::filesystem::path folder = mFrameworks / (std::string(kPlugin) + ".framework");
        if (const std::optional<LocatedError> error = CheckFramework(folder, target, mFindings)) {
            ReportDamage(*error);
        }
    }

    // Xcode's debug builds keep the game's code in a library beside the executable.
    void CheckOtherLoaders() {
        for (const std::filesystem::path& path : FilesOf(mFolder)) {
            if (path.extension() == ".dylib") {
                CheckLoader(path);
            }
        }
        for (const std::filesystem::path& path : FilesOf(mFrameworks)) {
            if (path.extension() == ".framework") {
                CheckLoader(path / path.stem());
            } else if (path.extension() == ".dylib") {
                CheckLoader(path);
            }
        }
        ReportMissingLoads();
    }

    void CheckLoader(const std::filesystem::path& path) {
        const std::string name = path.filename().string();
        // The plugin has been looked at by now.
        if (!IsFile(path) || name == kPlugin) {
            return;
        }
        const std::variant<MachOOnDisk, LocatedError> binary = ReadMachO(path.string());
        if (const auto* binaryOnDisk = std::get_if<MachOOnDisk>(&binary)) {
            return CheckLoads(path, binaryOnDisk->file);
        }
        if (IsOfPluginOrSDK(name)) {
            ReportDamage(std::get<LocatedError>(binary));
        }
    }

    // Of frameworks beside those that CheckEmbedded knows.
    void ReportMissingLoads() {
        std::vector<std::string> told{std::string(kPlugin), std::string(kCore)};
        told.insert(told.end(), kKits.begin(), kKits.end());
        for (const auto& [framework, loader] : mLoads) {
            if (!IsEmbedded(framework) && std::ranges::find(told, framework) == told.end()) {
                ReportMissingKit(framework, loader);
                told.push_back(framework);
            }
        }
    }

    const std::filesystem::path& mFolder;
    const std::filesystem::path mFrameworks;
    const PlistValue& mInfo;
    std::vector<Finding>& mFindings;
    LibraryTarget mTarget;
    bool mHasExecutable = false; // One that could be read.
    bool mIsPluginLoaded = false;
    bool mIsSDKStatic = false;
    std::vector<std::pair<std::string, std::string>> mLoads; // A framework, and the file that cannot do without it.
};

} // namespace

void CheckApp(const std::filesystem::path& folder, const PlistValue& info, std::vector<Finding>& findings) {
    AppChecks(folder, info, findings).Run();
}

} // namespace Tarvik::Vorn::Simulator::Doctor
