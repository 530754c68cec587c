#include "InfoPlistChecks.h"

#include "FindingKinds.h"
#include "FindingText.h"
#include "SchemeChecks.h"

#include <array>
#include <cstdlib>

namespace Tarvik::Vorn::Simulator::Doctor {
namespace {

constexpr std::string_view kAppID = "FacebookAppID";
constexpr std::string_view kMinimumOS = "MinimumOSVersion";
constexpr std::string_view kSceneManifest = "UIApplicationSceneManifest";
constexpr std::string_view kTrackingText = "NSUserTrackingUsageDescription";
constexpr int kOldestMajorVersion = 13;

constexpr std::string_view kPhotoReason = "Videos that you share on Facebook are saved to your photo library first.";

// A key whose value is a text that must not be empty.
struct TextKey {
    std::string_view key;
    const FindingKind& missing;
    const FindingKind& empty;
    const FindingKind& wrongType;
    std::string_view example; // To paste.
};

constexpr auto kTextKeys = std::to_array<TextKey>({
    {"FacebookClientToken", KindOf("client-token-missing"), KindOf("client-token-empty"),
     KindOf("client-token-wrong-type"), "CLIENT_TOKEN"},
    {"FacebookDisplayName", KindOf("display-name-missing"), KindOf("display-name-empty"),
     KindOf("display-name-wrong-type"), "My Game"},
    {"NSPhotoLibraryUsageDescription", KindOf("photo-text-missing"), KindOf("photo-text-empty"),
     KindOf("photo-text-wrong-type"), kPhotoReason},
    {"NSPhotoLibraryAddUsageDescription", KindOf("photo-add-text-missing"), KindOf("photo-add-text-empty"),
     KindOf("photo-add-text-wrong-type"), kPhotoReason},
});

bool IsBlank(std::string_view text) {
    return text.find_first_not_of(" \t\r\n") == std::string_view::npos;
}

bool IsBuildSetting(std::string_view text) {
    return text.find("$(") != std::string_view::npos || text.find("${") != std::string_view::npos;
}

class InfoPlistChecks {
public:
    InfoPlistChecks(const PlistValue& root, InfoPlistOrigin origin, const std::string& file,
                    std::vector<Finding>& findings)
        : mRoot(root), mOrigin(origin), mFile(file), mFindings(findings) {}

    void Run() {
        const AppIDState appID = CheckAppID();
        for (const TextKey& key : kTextKeys) {
            CheckText(key);
        }
        CheckSchemes(mRoot, appID, mFile, mFindings);
        CheckMinimumOS();
        CheckScenes();
        CheckTracking();
    }

private:
    void Report(const FindingKind& kind, const std::string& cause, std::string_view place,
                const std::string& paste = "") {
        mFindings.push_back({&kind, cause, mFile, std::string(place), paste, ""});
    }

    // True when the value is put in by the build, and cannot be checked here.
    bool IsLeftToTheBuild(std::string_view key, const std::string& value) {
        if (mOrigin == InfoPlistOrigin::kBuiltApp || !IsBuildSetting(value)) {
            return false;
        }
        Report(KindOf("build-setting"), std::string(key) + " is the build setting " + Quoted(value) + ".", key);
        return true;
    }

    AppIDState CheckAppID() {
        const PlistValue* value = mRoot.Member(kAppID);
        if (value == nullptr) {
            const std::string known = AppIDInSchemes(mRoot);
            return BadAppID(KindOf("app-id-missing"), "FacebookAppID is missing.", known);
        }
        if (value->type != PlistType::kText) {
            return BadAppID(KindOf("app-id-wrong-type"),
                            "FacebookAppID is " + std::string(value->TypeName()) + " and not a text.", value->text);
        }
        if (IsBlank(value->text)) {
            return BadAppID(KindOf("app-id-empty"), "FacebookAppID is empty.", AppIDInSchemes(mRoot));
        }
        if (!IsDigits(value->text) && !IsLeftToTheBuild(kAppID, value->text)) {
            return BadAppID(KindOf("app-id-not-digits"),
                            "FacebookAppID is " + Quoted(value->text) + "; an app ID is made of digits only.",
                            AppIDInSchemes(mRoot));
        }
        return {value->text, ""};
    }

    AppIDState BadAppID(const FindingKind& kind, const std::string& cause, const std::string& likely) {
        Report(kind, cause, kAppID, PlistTextEntry(kAppID, likely.empty() ? "APP_ID" : likely));
        return {"", kind.id};
    }

    void CheckText(const TextKey& key) {
        const std::string name(key.key);
        const std::string paste = PlistTextEntry(key.key, key.example);
        const PlistValue* value = mRoot.Member(key.key);
        if (value == nullptr) {
            Report(key.missing, name + " is missing.", key.key, paste);
        } else if (value->type != PlistType::kText) {
            Report(key.wrongType, name + " is " + std::string(value->TypeName()) + " and not a text.", key.key, paste);
        } else if (IsBlank(value->text)) {
            Report(key.empty, name + " is empty.", key.key, paste);
        } else {
            IsLeftToTheBuild(key.key, value->text);
        }
    }

    void CheckMinimumOS() {
        const std::string paste = PlistTextEntry(kMinimumOS, "13.0");
        const PlistValue* value = mRoot.Member(kMinimumOS);
        if (value == nullptr) {
            return Report(KindOf("minimum-os-missing"), "MinimumOSVersion is missing.", kMinimumOS);
        }
        if (value->type == PlistType::kText && IsLeftToTheBuild(kMinimumOS, value->text)) {
            return;
        }
        const std::string major = value->text.substr(0, value->text.find('.'));
        if (value->type != PlistType::kText || !IsDigits(major) || major.size() > 4) {
            const std::string found =
                value->type == PlistType::kText ? Quoted(value->text) : std::string(value->TypeName());
            return Report(KindOf("minimum-os-unreadable"),
                          "MinimumOSVersion is " + found + "; it is a text such as \"13.0\".", kMinimumOS, paste);
        }
        if (std::atoi(major.c_str()) < kOldestMajorVersion) {
            Report(KindOf("minimum-os-too-old"),
                   "MinimumOSVersion is " + Quoted(value->text) +
                       ", and the plugin needs iOS 13.0. Set the app's "
                       "deployment target (IPHONEOS_DEPLOYMENT_TARGET), from which Xcode writes the key.",
                   kMinimumOS, paste);
        }
    }

    void CheckScenes() {
        if (mRoot.Member(kSceneManifest) != nullptr) {
            Report(KindOf("scene-manifest"),
                   "The game has scenes (UIApplicationSceneManifest). Its scene delegate must forward URLs to the "
                   "application delegate; the page has the code. This cannot be seen from here.",
                   kSceneManifest);
        }
    }

    void CheckTracking() {
        if (mRoot.Member(kTrackingText) == nullptr) {
            Report(KindOf("tracking-text-missing"), "NSUserTrackingUsageDescription is missing.", kTrackingText,
                   PlistTextEntry(kTrackingText, "Facebook uses this to show you advertisements that suit you."));
        }
    }

    const PlistValue& mRoot;
    InfoPlistOrigin mOrigin;
    const std::string& mFile;
    std::vector<Finding>& mFindings;
};

} // namespace

void CheckInfoPlist(const PlistValue& root, InfoPlistOrigin origin, const std::string& file,
                    std::vector<Finding>& findings) {
    InfoPlistChecks(root, origin, file, findings).Run();
}

} // namespace Tarvik::Vorn::Simulator::Doctor
