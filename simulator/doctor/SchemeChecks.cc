#include "SchemeChecks.h"

#include "FindingKinds.h"
#include "FindingText.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace Tarvik::Vorn::Simulator::Doctor {
namespace {

constexpr std::string_view kURLTypes = "CFBundleURLTypes";
constexpr std::string_view kURLSchemes = "CFBundleURLSchemes";
constexpr std::string_view kQueriesSchemes = "LSApplicationQueriesSchemes";
constexpr std::string_view kSuffix = "FacebookUrlSchemeSuffix";

struct QueriedScheme {
    std::string_view scheme;
    const FindingKind& missing;
    bool raisesAsOwnScheme; // The SDK raises an exception when the game claims it.
};

constexpr auto kQueriedSchemes = std::to_array<QueriedScheme>({
    {"fbapi", KindOf("queries-scheme-fbapi-missing"), true},
    {"fb-messenger-share-api", KindOf("queries-scheme-messenger-missing"), true},
    {"fbauth2", KindOf("queries-scheme-fbauth2-missing"), false},
});

// A scheme and where it stands.
struct PlacedScheme {
    std::string text;
    std::string place;
};
using PlacedSchemes = std::vector<PlacedScheme>;

std::string Indexed(std::string_view key, size_t index) {
    return std::string(key) + "[" + std::to_string(index) + "]";
}

const PlacedScheme* Find(const PlacedSchemes& schemes, std::string_view wanted) {
    const auto found = std::ranges::find(schemes, wanted, &PlacedScheme::text);
    return found == schemes.end() ? nullptr : &*found;
}

// What is left of "fbapi://" and of " fbapi".
std::string_view WithoutOrnaments(std::string_view text) {
    const size_t first = text.find_first_not_of(" \t\r\n");
    if (first == std::string_view::npos) {
        return {};
    }
    text.remove_prefix(first);
    return text.substr(0, text.find_first_of(": \t\r\n/"));
}

const PlacedScheme* FindMisspelt(const PlacedSchemes& schemes, std::string_view wanted) {
    const auto found = std::ranges::find_if(
        schemes, [wanted](const PlacedScheme& scheme) { return WithoutOrnaments(scheme.text) == wanted; });
    return found == schemes.end() ? nullptr : &*found;
}

// "fb" and digits.
bool IsFacebookScheme(std::string_view scheme) {
    return scheme.starts_with("fb") && IsDigits(scheme.substr(2));
}

std::string QueriesPaste() {
    std::vector<std::string> schemes;
    schemes.reserve(kQueriedSchemes.size());
    for (const QueriedScheme& scheme : kQueriedSchemes) {
        schemes.emplace_back(scheme.scheme);
    }
    return PlistArrayEntry(kQueriesSchemes, schemes);
}

class SchemeChecks {
public:
    SchemeChecks(const PlistValue& root, const AppIDState& appID, const std::string& file,
                 std::vector<Finding>& findings)
        : mRoot(root), mAppID(appID), mFile(file), mFindings(findings) {}

    void Run() {
        const bool haveTypes = GatherURLSchemes();
        const bool haveQueries = GatherQueries();
        CheckClaimedSchemes();
        if (haveTypes) {
            CheckOwnScheme();
        }
        if (haveQueries) {
            CheckQueries();
        }
    }

private:
    void Report(const FindingKind& kind, const std::string& cause, std::string_view place,
                const std::string& paste = "", std::string_view explainedBy = "") {
        mFindings.push_back({&kind, cause, mFile, std::string(place), paste, explainedBy});
    }

    bool WasReported(std::string_view id) const {
        return std::ranges::any_of(mFindings, [id](const Finding& finding) { return finding.kind->id == id; });
    }

    // Empty when no such finding was reported.
    std::string_view CauseIfReported(std::string_view id) const { return WasReported(id) ? id : std::string_view(); }

    // The app's own scheme, or one to be completed.
    std::string OwnScheme() const { return "fb" + (mAppID.value.empty() ? "APP_ID" : mAppID.value) + mSuffix; }

    // False when the key has the wrong type, which explains everything that would be missed in it.
    bool GatherURLSchemes() {
        const PlistValue* types = mRoot.Member(kURLTypes);
        if (types == nullptr) {
            return true;
        }
        if (types->type != PlistType::kArray) {
            Report(KindOf("url-types-wrong-type"),
                   std::string(kURLTypes) + " is " + std::string(types->TypeName()) + " and not an array.", kURLTypes,
                   PlistURLTypes(OwnScheme()));
            return false;
        }
        for (size_t index = 0; index < types->items.size(); ++index) {
            GatherURLType(types->items[index], Indexed(kURLTypes, index));
        }
        return true;
    }

    void GatherURLType(const PlistValue& entry, const std::string& place) {
        if (entry.type != PlistType::kDictionary) {
            return Report(KindOf("url-type-wrong-type"),
                          "The entry is " + std::string(entry.TypeName()) + " and not a dictionary.", place);
        }
        const PlistValue* schemes = entry.Member(kURLSchemes);
        if (schemes == nullptr) {
            return;
        }
        const std::string schemesPlace = place + "." + std::string(kURLSchemes);
        if (schemes->type != PlistType::kArray) {
            const std::string text = schemes->type == PlistType::kText ? schemes->text : OwnScheme();
            return Report(KindOf("url-type-wrong-type"),
                          std::string(kURLSchemes) + " is " + std::string(schemes->TypeName()) + " and not an array.",
                          schemesPlace, PlistArrayEntry(kURLSchemes, {text}));
        }
        for (size_t index = 0; index < schemes->items.size(); ++index) {
            const PlistValue& scheme = schemes->items[index];
            const std::string schemePlace = Indexed(schemesPlace, index);
            if (scheme.type == PlistType::kText) {
                mURLSchemes.push_back({scheme.text, schemePlace});
            } else {
                Report(KindOf("url-type-wrong-type"),
                       "The scheme is " + std::string(scheme.TypeName()) + " and not a text.", schemePlace);
            }
        }
    }

    bool GatherQueries() {
        const PlistValue* schemes = mRoot.Member(kQueriesSchemes);
        if (schemes == nullptr) {
            return true;
        }
        if (schemes->type != PlistType::kArray) {
            Report(KindOf("queries-schemes-wrong-type"),
                   std::string(kQueriesSchemes) + " is " + std::string(schemes->TypeName()) + " and not an array.",
                   kQueriesSchemes, QueriesPaste());
            return false;
        }
        for (size_t index = 0; index < schemes->items.size(); ++index) {
            const PlistValue& scheme = schemes->items[index];
            if (scheme.type == PlistType::kText) {
                mQueries.push_back({scheme.text, Indexed(kQueriesSchemes, index)});
            } else {
                Report(KindOf("queries-scheme-not-text"),
                       "The entry is " + std::string(scheme.TypeName()) + " and not a text.",
                       Indexed(kQueriesSchemes, index));
            }
        }
        return true;
    }

    // Schemes of Facebook's apps among the game's own.
    void CheckClaimedSchemes() {
        for (const QueriedScheme& queried : kQueriedSchemes) {
            const PlacedScheme* claimed = Find(mURLSchemes, queried.scheme);
            if (claimed == nullptr) {
                continue;
            }
            const FindingKind& kind =
                queried.raisesAsOwnScheme ? KindOf("queried-scheme-in-url-types") : KindOf("facebook-scheme-claimed");
            Report(kind,
                   "The scheme " + claimed->text + " stands under " + std::string(kURLSchemes) + ". It belongs under " +
                       std::string(kQueriesSchemes) + "; remove it here.",
                   claimed->place);
        }
    }

    void ReadSuffix() {
        const PlistValue* suffix = mRoot.Member(kSuffix);
        if (suffix == nullptr) {
            return;
        }
        if (suffix->type == PlistType::kText) {
            mSuffix = suffix->text;
        } else {
            Report(KindOf("url-scheme-suffix-wrong-type"),
                   std::string(kSuffix) + " is " + std::string(suffix->TypeName()) + " and not a text.", kSuffix);
        }
    }

    void CheckOwnScheme() {
        ReadSuffix();
        if (mAppID.value.empty()) {
            return Report(KindOf("url-scheme-unchecked"),
                          "The scheme under " + std::string(kURLSchemes) +
                              " is \"fb\" and the app ID, and there is no usable app ID to compare with.",
                          kURLTypes, "", mAppID.problemID);
        }
        const std::string wanted = OwnScheme();
        const PlacedScheme* queried = Find(mQueries, wanted);
        if (Find(mURLSchemes, wanted) != nullptr) {
            if (queried != nullptr) {
                Report(KindOf("url-scheme-queried"),
                       "The game's own scheme " + wanted + " stands under " + std::string(kQueriesSchemes) +
                           " as well. Remove it here.",
                       queried->place);
            }
            return;
        }
        if (queried != nullptr) {
            return Report(KindOf("url-scheme-in-queries"),
                          "The game's own scheme " + wanted + " stands under " + std::string(kQueriesSchemes) +
                              " and not under " + std::string(kURLTypes) + ". Move it.",
                          queried->place, PlistURLTypes(wanted));
        }
        ReportMissingScheme(wanted);
    }

    void ReportMissingScheme(const std::string& wanted) {
        if (const PlacedScheme* misspelt = FindMisspelt(mURLSchemes, wanted)) {
            return Report(KindOf("scheme-misspelt"),
                          Quoted(misspelt->text) + " should be " + Quoted(wanted) + ", without anything around it.",
                          misspelt->place, PlistURLTypes(wanted));
        }
        const PlacedScheme* bare = Find(mURLSchemes, "fb" + mAppID.value);
        if (bare != nullptr) {
            return Report(KindOf("url-scheme-without-suffix"),
                          "The scheme is " + bare->text + ", and " + std::string(kSuffix) + " says that " +
                              Quoted(mSuffix) + " follows: " + wanted + ".",
                          bare->place, PlistURLTypes(wanted));
        }
        const auto other =
            std::ranges::find_if(mURLSchemes, [](const PlacedScheme& scheme) { return IsFacebookScheme(scheme.text); });
        if (other != mURLSchemes.end()) {
            return Report(KindOf("url-scheme-of-another-app"),
                          "The scheme " + other->text + " belongs to another app than FacebookAppID " +
                              Quoted(mAppID.value) + ", whose scheme is " + wanted + ".",
                          other->place, PlistURLTypes(wanted));
        }
        const bool isThere = mRoot.Member(kURLTypes) != nullptr;
        Report(KindOf("url-scheme-missing"),
               isThere ? std::string(kURLTypes) + " does not have the scheme " + wanted + "."
                       : std::string(kURLTypes) + " is missing, and with it the scheme " + wanted + ".",
               kURLTypes, PlistURLTypes(wanted), CauseIfReported("url-type-wrong-type"));
    }

    // When nothing is there at all, that is one finding and not three.
    void CheckQueries() {
        const PlistValue* list = mRoot.Member(kQueriesSchemes);
        if (list == nullptr || list->items.empty()) {
            return Report(KindOf("queries-schemes-missing"),
                          std::string(kQueriesSchemes) + (list == nullptr ? " is missing." : " is empty."),
                          kQueriesSchemes, QueriesPaste(), CauseIfReported("queried-scheme-in-url-types"));
        }
        for (const QueriedScheme& queried : kQueriedSchemes) {
            if (Find(mQueries, queried.scheme) == nullptr) {
                ReportMissingQuery(queried);
            }
        }
    }

    void ReportMissingQuery(const QueriedScheme& queried) {
        if (const PlacedScheme* misspelt = FindMisspelt(mQueries, queried.scheme)) {
            return Report(KindOf("scheme-misspelt"),
                          Quoted(misspelt->text) + " should be " + Quoted(queried.scheme) +
                              ", without anything around it.",
                          misspelt->place, "<string>" + std::string(queried.scheme) + "</string>");
        }
        const bool isClaimed = queried.raisesAsOwnScheme && Find(mURLSchemes, queried.scheme) != nullptr;
        Report(queried.missing, std::string(kQueriesSchemes) + " does not have " + std::string(queried.scheme) + ".",
               kQueriesSchemes, "<string>" + std::string(queried.scheme) + "</string>",
               isClaimed ? "queried-scheme-in-url-types" : CauseIfReported("queries-scheme-not-text"));
    }

    const PlistValue& mRoot;
    const AppIDState& mAppID;
    const std::string& mFile;
    std::vector<Finding>& mFindings;
    std::string mSuffix;
    PlacedSchemes mURLSchemes;
    PlacedSchemes mQueries;
};

} // namespace

void CheckSchemes(const PlistValue& root, const AppIDState& appID, const std::string& file,
                  std::vector<Finding>& findings) {
    SchemeChecks(root, appID, file, findings).Run();
}

std::string AppIDInSchemes(const PlistValue& root) {
    const PlistValue* types = root.Member(kURLTypes);
    if (types == nullptr) {
        return "";
    }
    for (const PlistValue& entry : types->items) {
        const PlistValue* schemes = entry.Member(kURLSchemes);
        if (schemes == nullptr) {
            continue;
        }
        const auto own = std::ranges::find_if(schemes->items,
                                              [](const PlistValue& scheme) { return IsFacebookScheme(scheme.text); });
        if (own != schemes->items.end()) {
            return own->text.substr(2);
        }
    }
    return "";
}

bool IsDigits(std::string_view text) {
    return !text.empty() && text.find_first_not_of("0123456789") == std::string_view::npos;
}

} // namespace Tarvik::Vorn::Simulator::Doctor
