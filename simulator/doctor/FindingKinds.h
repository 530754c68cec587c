// Every finding that the doctor can have. docs/doctor.md lists the same; a test compares the two.
#pragma once

#include "Finding.h"

#include <array>
#include <stdexcept>
#include <string_view>

namespace Tarvik::Vorn::Simulator::Doctor {

inline constexpr std::string_view kInfoPlistPage = "docs/INTEGRATION.md#infoplist";
inline constexpr std::string_view kLinksPage = "docs/INTEGRATION.md#what-the-game-links";
inline constexpr std::string_view kPrivacyPage = "docs/INTEGRATION.md#privacy";
inline constexpr std::string_view kScenePage = "docs/scene-delegate.md#games-with-a-scene-delegate";
inline constexpr std::string_view kBuildPage = "docs/ios-build.md#the-ios-build";
inline constexpr std::string_view kExportsPage = "docs/ios-build.md#imports-and-exports-are-contracts";

inline constexpr auto kFindingKinds = std::to_array<FindingKind>({
    // The app ID, the client token and the name.
    {"app-id-missing", Severity::kError,
     "The SDK has no app ID at launch: no login comes back to the game, and a login raises an exception.",
     kInfoPlistPage},
    {"app-id-empty", Severity::kError,
     "An empty ID counts as an ID: the SDK uses it, and Facebook knows no such app. Logins fail.", kInfoPlistPage},
    {"app-id-wrong-type", Severity::kError, "The SDK reads a text and finds none: a login raises an exception.",
     kInfoPlistPage},
    {"app-id-not-digits", Severity::kError, "Facebook knows no such app: logins and dialogs end with an error.",
     kInfoPlistPage},
    {"client-token-missing", Severity::kError,
     "The SDK raises an exception at the first request to Facebook (since 13.0.0).", kInfoPlistPage},
    {"client-token-empty", Severity::kError,
     "An empty token counts as a token, and Facebook refuses every request that is made with it.", kInfoPlistPage},
    {"client-token-wrong-type", Severity::kError,
     "The SDK reads a text and finds none: it raises an exception at the first request to Facebook.", kInfoPlistPage},
    {"display-name-missing", Severity::kWarning, "Facebook's dialogs do not show the game's name.", kInfoPlistPage},
    {"display-name-empty", Severity::kWarning, "Facebook's dialogs show an empty name.", kInfoPlistPage},
    {"display-name-wrong-type", Severity::kWarning, "Facebook's dialogs do not show the game's name.", kInfoPlistPage},

    // The URL scheme by which Facebook comes back.
    {"url-types-wrong-type", Severity::kError,
     "iOS registers no URL scheme of the game: Facebook's pages cannot come back, and a login raises an exception.",
     kInfoPlistPage},
    {"url-type-wrong-type", Severity::kError,
     "iOS and the SDK pass over the entry, so that a scheme in it does not exist.", kInfoPlistPage},
    {"queried-scheme-in-url-types", Severity::kError, "The SDK raises an exception at launch.", kInfoPlistPage},
    {"facebook-scheme-claimed", Severity::kWarning,
     "The game claims URLs that belong to the Facebook app: the plugin may believe that the Facebook app is installed.",
     kInfoPlistPage},
    {"url-scheme-missing", Severity::kError,
     "A login raises an exception, and no dialog of Facebook can come back to the game.", kInfoPlistPage},
    {"url-scheme-in-queries", Severity::kError,
     "A login raises an exception, and no dialog of Facebook can come back to the game.", kInfoPlistPage},
    {"url-scheme-of-another-app", Severity::kError,
     "A login raises an exception, and no dialog of Facebook can come back to the game.", kInfoPlistPage},
    {"url-scheme-without-suffix", Severity::kError,
     "The SDK looks for the scheme with the suffix: a login raises an exception.", kInfoPlistPage},
    {"url-scheme-suffix-wrong-type", Severity::kWarning, "The SDK works as if there were no suffix.", kInfoPlistPage},
    {"url-scheme-queried", Severity::kWarning,
     "Nothing: the entry is useless, and takes one of the places that iOS allows there.", kInfoPlistPage},
    {"url-scheme-unchecked", Severity::kNote,
     "Whether Facebook's pages come back to the game cannot be told without the app ID.", kInfoPlistPage},

    // The schemes of the Facebook and Messenger apps.
    {"queries-schemes-missing", Severity::kError,
     "iOS answers that neither the Facebook app nor Messenger is installed: images, videos and links to friends are "
     "refused with code 15, and share dialogs and invitations never use the Facebook app.",
     kInfoPlistPage},
    {"queries-schemes-wrong-type", Severity::kError,
     "iOS passes over the value and answers that neither the Facebook app nor Messenger is installed: images, videos "
     "and links to friends are refused with code 15, and share dialogs and invitations never use the Facebook app.",
     kInfoPlistPage},
    {"queries-scheme-not-text", Severity::kError, "iOS passes over the entry, so that a scheme in it does not count.",
     kInfoPlistPage},
    {"scheme-misspelt", Severity::kError,
     "iOS and the SDK compare whole schemes: as it is written, the scheme does not count.", kInfoPlistPage},
    {"queries-scheme-fbapi-missing", Severity::kError,
     "Share dialogs and invitations never use the Facebook app, even when it is installed.", kInfoPlistPage},
    {"queries-scheme-messenger-missing", Severity::kError,
     "Links to friends through Messenger are refused with code 15, even when Messenger is installed.", kInfoPlistPage},
    {"queries-scheme-fbauth2-missing", Severity::kError,
     "Images and videos are refused with code 15, even when the Facebook app is installed.", kInfoPlistPage},

    // Texts for the player, scenes, system versions.
    {"photo-text-missing", Severity::kError,
     "iOS ends the game when a video is shared: the plugin asks for the photo library before it saves the video.",
     kInfoPlistPage},
    {"photo-text-empty", Severity::kError,
     "The player is asked for the photo library without a reason, which the App Store refuses.", kInfoPlistPage},
    {"photo-text-wrong-type", Severity::kError, "iOS ends the game when a video is shared.", kInfoPlistPage},
    {"photo-add-text-missing", Severity::kWarning, "iOS may end the game when a shared video is saved.",
     kInfoPlistPage},
    {"photo-add-text-empty", Severity::kWarning, "The player is asked without a reason, which the App Store refuses.",
     kInfoPlistPage},
    {"photo-add-text-wrong-type", Severity::kWarning, "iOS may end the game when a shared video is saved.",
     kInfoPlistPage},
    {"tracking-text-missing", Severity::kNote,
     "Nothing, unless the game asks for tracking. iOS ends a game that asks without this text, and since 17.0.0 of the "
     "SDK some logins and browser shares depend on the player's answer.",
     kInfoPlistPage},
    {"scene-manifest", Severity::kNote,
     "iOS hands URLs to the scene's delegate. One that does not forward them lets every login end as a cancel.",
     kScenePage},
    {"minimum-os-missing", Severity::kNote,
     "Whether the game is offered to systems that the plugin does not run on cannot be told. Xcode writes the key when "
     "it builds the app.",
     kInfoPlistPage},
    {"minimum-os-unreadable", Severity::kWarning, "iOS may refuse to install the game.", kInfoPlistPage},
    {"minimum-os-too-old", Severity::kError, "On systems before iOS 13.0 the game ends at launch.", kLinksPage},
    {"build-setting", Severity::kNote,
     "The value is put in when the app is built, and was not checked. Examine the built app as well.", kInfoPlistPage},

    // The app.
    {"executable-missing", Severity::kError, "iOS does not install the app. What it links was not checked.",
     kLinksPage},
    {"file-damaged", Severity::kError, "iOS does not load the file. What it holds was not checked.", kLinksPage},
    {"frameworks-missing", Severity::kError, "The game ends at launch with \"Library not loaded\".", kLinksPage},
    {"plugin-not-embedded", Severity::kError,
     "The game ends at launch with \"Library not loaded\", or has no Facebook channel when it does not link it.",
     kLinksPage},
    {"core-not-embedded", Severity::kError,
     "The game ends at launch with \"Library not loaded\": the plugin takes the core's classes from it.", kLinksPage},
    {"kits-not-embedded", Severity::kError,
     "The game ends at launch with \"Library not loaded\". Linked statically into the app, the kits are not where the "
     "plugin looks for them.",
     kLinksPage},
    {"kit-not-embedded", Severity::kError, "The game ends at launch with \"Library not loaded\".", kLinksPage},
    {"plugin-not-loaded", Severity::kWarning,
     "Nothing loads the plugin at launch, so that the core does not find its classes.", kLinksPage},
    {"run-path-missing", Severity::kError, "The game ends at launch with \"Library not loaded\".", kLinksPage},
    {"sdk-linked-statically", Severity::kError,
     "The plugin uses the kits from the app's Frameworks. Two copies of the SDK in one process have two states: a "
     "login "
     "in one does not exist in the other.",
     kLinksPage},
    {"app-privacy-manifest-missing", Severity::kNote,
     "A game that reports events declares them in its own privacy manifest; the App Store may ask for it.",
     kPrivacyPage},

    // Our framework.
    {"slice-missing", Severity::kError, "Xcode cannot build the game for these machines.", kBuildPage},
    {"framework-info-missing", Severity::kError, "iOS does not install an app with such a framework.", kBuildPage},
    {"privacy-manifest-missing", Severity::kWarning,
     "The App Store's privacy report of the game does not tell what the library does.", kPrivacyPage},
    {"not-dynamic-library", Severity::kError,
     "The system cannot load it as the plugin. What it exports was not checked.", kBuildPage},
    {"platform-mismatch", Severity::kError, "The system refuses to load the library.", kBuildPage},
    {"platform-missing", Severity::kError, "Xcode and the App Store refuse the library.", kBuildPage},
    {"architecture-missing", Severity::kError, "The library cannot be linked or loaded on these machines.", kBuildPage},
    {"architecture-unexpected", Severity::kWarning, "The App Store refuses an app with such a slice.", kBuildPage},
    {"library-minimum-os-higher", Severity::kError, "The game ends at launch on older systems that it is offered to.",
     kBuildPage},
    {"library-minimum-os-lower", Severity::kWarning, "The library promises to run on systems it was not made for.",
     kBuildPage},
    {"install-name-wrong", Severity::kError,
     "An app that links it looks for it elsewhere and ends at launch with \"Library not loaded\".", kBuildPage},
    {"link-symbols-missing", Severity::kError,
     "Nothing ties the library to categories of the SDK: the linker may drop them, and calls to them fail at run time.",
     kExportsPage},
    {"version-record-missing", Severity::kWarning, "Nobody can ask the library for its version.", kExportsPage},
    {"plugin-class-not-exported", Severity::kError, "The core or the game does not find the plugin's class.",
     kExportsPage},
    {"friend-class-missing", Severity::kError,
     "The core finds no friend plugin: shares and invitations are answered with \"not supported\".", kExportsPage},
    {"stand-ins-shipped", Severity::kError,
     "The library holds the Linux build's stand-ins: it acts a Facebook that does not exist.", kExportsPage},
    {"linux-library-linked", Severity::kError, "The library was built for Linux's runtime; iOS has no such library.",
     kExportsPage},
    {"foreign-class-defined", Severity::kError,
     "The class exists twice in the game, and which of the two is used is left to chance.", kExportsPage},
    {"code-signature-missing", Severity::kWarning,
     "A device refuses to load it, unless the app's build signs it when it is embedded.", kLinksPage},
});

// The kind with this ID. An ID that is not in the list does not compile.
consteval const FindingKind& KindOf(std::string_view id) {
    for (const FindingKind& kind : kFindingKinds) {
        if (kind.id == id) {
            return kind;
        }
    }
    throw std::invalid_argument("no finding has this ID");
}

} // namespace Tarvik::Vorn::Simulator::Doctor
