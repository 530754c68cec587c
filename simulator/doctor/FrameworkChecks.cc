#include "FrameworkChecks.h"

#include "FindingKinds.h"
#include "FindingText.h"

#include <algorithm>
#include <cstddef>
#include <system_error>
#include <utility>
#include <variant>

namespace Tarvik::Vorn::Simulator::Doctor {
namespace {

constexpr std::string_view kName = "VornFacebook";
constexpr std::string_view kAvailableLibraries = "AvailableLibraries";
constexpr std::string_view kPrivacyManifest =
    "<key>NSPrivacyAccessedAPITypes</key>\n<array/>\n<key>NSPrivacyCollectedDataTypes</key>\n<array/>\n"
    "<key>NSPrivacyTracking</key>\n<false/>\n<key>NSPrivacyTrackingDomains</key>\n<array/>";

bool Exists(const std::filesystem::path& path) {
    std::error_code ignored;
    return std::filesystem::exists(path, ignored);
}

std::optional<LocatedError> DamageOfPlist(const std::filesystem::path& path) {
    std::variant<Plist, LocatedError> read = ReadPlist(path.string());
    if (auto* error = std::get_if<LocatedError>(&read)) {
        return std::move(*error);
    }
    return std::nullopt;
}

// A text of an entry of AvailableLibraries; empty when it is not there or is none.
std::string TextOf(const PlistValue& entry, std::string_view key) {
    const PlistValue* value = entry.Member(key);
    return value == nullptr || value->type != PlistType::kText ? std::string() : value->text;
}

class XCFrameworkChecks {
public:
    XCFrameworkChecks(const std::filesystem::path& folder, std::vector<Finding>& findings)
        : mFolder(folder), mFindings(findings) {}

    std::optional<LocatedError> Run(const PlistValue& info) {
        const PlistValue* libraries = info.Member(kAvailableLibraries);
        if (libraries == nullptr || libraries->type != PlistType::kArray) {
            ReportMissing(std::string(kAvailableLibraries) + " is missing or no array.",
                          std::string(kAvailableLibraries));
            return std::nullopt;
        }
        for (size_t index = 0; index < libraries->items.size(); ++index) {
            CheckSlice(libraries->items[index], std::string(kAvailableLibraries) + "[" + std::to_string(index) + "]");
        }
        for (const uint32_t platform : {kPlatformIOS, kPlatformSimulator}) {
            if (std::ranges::find(mPlatforms, platform) == mPlatforms.end()) {
                ReportMissing("There is no library for " + PlatformName(platform) + ".",
                              std::string(kAvailableLibraries));
            }
        }
        return mError;
    }

private:
    void ReportMissing(const std::string& cause, const std::string& place) {
        mFindings.push_back({&KindOf("slice-missing"), cause, (mFolder / "Info.plist").string(), place, "", ""});
    }

    void CheckSlice(const PlistValue& entry, const std::string& place) {
        const std::string identifier = TextOf(entry, "LibraryIdentifier");
        const std::string library = TextOf(entry, "LibraryPath");
        if (!IsPlainName(identifier) || !IsPlainName(library)) {
            return ReportMissing("LibraryIdentifier and LibraryPath must be names of folders.", place);
        }
        if (TextOf(entry, "SupportedPlatform") != "ios") {
            return;
        }
        const bool isSimulator = TextOf(entry, "SupportedPlatformVariant") == "simulator";
        const uint32_t platform = isSimulator ? kPlatformSimulator : kPlatformIOS;
        mPlatforms.push_back(platform);
        const std::filesystem::path framework = mFolder / identifier / library;
        if (!Exists(framework)) {
            return ReportMissing("The folder " + identifier + "/" + library + " is not there.", place);
        }
        std::optional<LocatedError> error = CheckFramework(framework, {platform, {}, false}, mFindings);
        if (error && !mError) {
            mError = std::move(error);
        }
    }

    const std::filesystem::path& mFolder;
    std::vector<Finding>& mFindings;
    std::vector<uint32_t> mPlatforms;
    std::optional<LocatedError> mError; // The first.
};

} // namespace

bool IsPlainName(const std::string& name) {
    return !name.empty() && name != "." && name != ".." &&
           name.find_first_of(std::string("/\0", 2)) == std::string::npos;
}

std::optional<LocatedError> CheckFramework(const std::filesystem::path& folder, const LibraryTarget& target,
                                           std::vector<Finding>& findings) {
    std::optional<LocatedError> damage;
    const std::filesystem::path info = folder / "Info.plist";
    if (!Exists(info)) {
        findings.push_back(
            {&KindOf("framework-info-missing"), "The framework has no Info.plist.", folder.string(), "", "", ""});
    } else {
        damage = DamageOfPlist(info);
    }
    const std::filesystem::path privacy = folder / "PrivacyInfo.xcprivacy";
    if (!Exists(privacy)) {
        findings.push_back({&KindOf("privacy-manifest-missing"), "The framework has no PrivacyInfo.xcprivacy.",
                            folder.string(), "", std::string(kPrivacyManifest), ""});
    } else if (!damage) {
        damage = DamageOfPlist(privacy);
    }
    const std::string path = (folder / kName).string();
    std::variant<MachOOnDisk, LocatedError> binary = ReadMachO(path);
    if (auto* error = std::get_if<LocatedError>(&binary)) {
        return std::move(*error);
    }
    CheckLibrary(path, std::get<MachOOnDisk>(binary).file, target, findings);
    return damage;
}

std::optional<LocatedError> CheckXCFramework(const std::filesystem::path& folder, const PlistValue& info,
                                             std::vector<Finding>& findings) {
    return XCFrameworkChecks(folder, findings).Run(info);
}

} // namespace Tarvik::Vorn::Simulator::Doctor
