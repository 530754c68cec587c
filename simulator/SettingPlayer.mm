#include "SettingPlayer.h"

#include "FBSDKCoreKit/FBSDKAccessToken+Control.h"
#include "FBSDKCoreKit/FBSDKAppEvents+Control.h"
#include "FBSDKCoreKit/FBSDKAuthenticationToken+Control.h"
#include "FBSDKCoreKit/FBSDKSettings+Control.h"
#include "FBSDKGamingServicesKit/GameRequests.h"
#include "FBSDKShareKit/ShareDialogs.h"
#include "FacebookProfile.h"
#include "InfoDictionary.h"
#include "PhotoPermissions.h"
#include "Photos/PhotoLibrary.h"
#include "UIKit/UIApplication+Control.h"
#include "VornConfig.h"
#include "VornDefine.h"

#include <optional>

namespace Tarvik::Vorn::Simulator {
namespace {

NSArray* TextList(const std::vector<std::string>& texts) {
    NSMutableArray* const list = [NSMutableArray array];
    for (const std::string& text : texts) {
        [list addObject:MakeNSString(text)];
    }
    return list;
}

// The object that a JSON value is in a property list. Null, which property lists do not have, is left out. Documents are
// nested kJsonNestingLimit deep at most.
// NOLINTNEXTLINE(misc-no-recursion)
id PropertyOf(const JsonValue& value) {
    switch (value.kind()) {
    case JsonKind::kNull:
        return nil;
    case JsonKind::kBool:
        return [NSNumber numberWithBool:*value.AsBool() ? YES : NO];
    case JsonKind::kInt64:
        return [NSNumber numberWithLongLong:*value.AsInt64()];
    case JsonKind::kUint64:
        return [NSNumber numberWithUnsignedLongLong:*value.AsUint64()];
    case JsonKind::kDouble:
        return [NSNumber numberWithDouble:*value.AsDouble()];
    case JsonKind::kString:
        return MakeNSString(*value.AsString());
    case JsonKind::kArray: {
        NSMutableArray* const list = [NSMutableArray array];
        for (const JsonValue& element : *value.AsArray()) {
            if (id const object = PropertyOf(element)) {
                [list addObject:object];
            }
        }
        return list;
    }
    case JsonKind::kObject: {
        NSMutableDictionary* const dictionary = [NSMutableDictionary dictionary];
        for (const JsonMember& member : *value.AsObject()) {
            if (id const object = PropertyOf(member.value)) {
                [dictionary setObject:object forKey:MakeNSString(member.key)];
            }
        }
        return dictionary;
    }
    }
    __builtin_unreachable();
}

struct ProfileFacts {
    Host::FacebookProfile profile;
    const char* name;
    NSString* version;
};

ProfileFacts FactsOf(SdkProfile profile) {
    using Profile = Host::FacebookProfile;
    switch (profile) {
    case SdkProfile::k15_0:
        return {Profile::k15_0, "15.0", @"15.0.0"};
    case SdkProfile::k17_0:
        return {Profile::k17_0, "17.0", @"17.0.0"};
    case SdkProfile::k18_0:
        return {Profile::k18_0, "18.0", @"18.0.0"};
    case SdkProfile::k18_1:
        return {Profile::k18_1, "18.1", @"18.1.0"};
    case SdkProfile::kAsDocumented:
        return {Profile::kAsDocumented, "as documented", @"18.1.0"};
    }
    __builtin_unreachable();
}

} // namespace

std::string ProfileText(SdkProfile profile) {
    return FactsOf(profile).name;
}

void SettingPlayer::operator()(const ConfigureStep& step) const {
    for (const auto& [key, value] : step.values) {
        mTimeline.Add(EntryKind::kCore, "configures " + key + " = \"" + value + "\"");
        SetConfigValue(key, value);
    }
}

void SettingPlayer::operator()(const SDKVersionStep& step) const {
    mTimeline.Add(EntryKind::kWorld, "the Facebook SDK's version is " + (step.version ? *step.version : "absent"));
    [FBSDKSettings setSDKVersion:step.version ? MakeNSString(*step.version) : nil];
}

bool SettingPlayer::operator()(const InfoPlistStep& step) const {
    if (step.path.empty()) {
        mTimeline.Add(EntryKind::kWorld, "the app has the world's own Info.plist");
        Host::SetInfoDictionary(PropertyOf(step.entries));
        return true;
    }
    NSData* const data = [NSData dataWithContentsOfFile:MakeNSString(step.path)];
    id const entries = data == nil ? nil
                                   : [NSPropertyListSerialization propertyListWithData:data
                                                                               options:NSPropertyListImmutable
                                                                                format:nullptr
                                                                                 error:nullptr];
    if (![entries isKindOfClass:[NSDictionary class]]) {
        mTimeline.Add(EntryKind::kProblem, step.path + " is no property list with a dictionary");
        return false;
    }
    mTimeline.Add(EntryKind::kWorld, "the app has the Info.plist " + step.path);
    Host::SetInfoDictionary(entries);
    return true;
}

void SettingPlayer::operator()(const PlayerStep& step) const {
    if (step.login == PlayerLogin::kNobody) {
        mTimeline.Add(EntryKind::kWorld, "nobody is logged in to Facebook");
        Host::ReplaceCurrentAccessToken(nil);
        Host::ReplaceCurrentAuthenticationToken(nil);
        return;
    }
    const bool isGaming = step.login == PlayerLogin::kGaming;
    mTimeline.Add(EntryKind::kWorld,
                  std::string(isGaming ? "the player has a gaming login" : "the player is logged in to Facebook") +
                      (step.expired ? ", and the token has expired" : ""));
    NSArray* const permissions = @[ @"public_profile" ];
    Host::ReplaceCurrentAccessToken(step.expired ? Host::MakeExpiredAccessToken(@"access-token", @"user", permissions)
                                                 : Host::MakeAccessToken(@"access-token", @"user", permissions));
    Host::ReplaceCurrentAuthenticationToken(
        Host::MakeAuthenticationToken(@"authentication-token", isGaming ? @"gaming" : @"facebook"));
}

void SettingPlayer::operator()(const TrackingStep& step) const {
    mTimeline.Add(EntryKind::kWorld, step.allowed ? "the user allows tracking" : "the user does not allow tracking");
    Host::SetTrackingAllowed(step.allowed);
    [FBSDKAppEvents setTrackingAllowed:step.allowed ? YES : NO];
}

void SettingPlayer::operator()(const ViewControllerStep& step) const {
    mTimeline.Add(EntryKind::kWorld, step.found ? "Facebook's pages find a view controller to be shown from"
                                                : "Facebook's pages find no view controller to be shown from");
    Host::SetShareDialogsFindViewController(step.found);
    Host::SetGameRequestsCanShow(step.found);
}

void SettingPlayer::operator()(const ProfileStep& step) const {
    const ProfileFacts facts = FactsOf(step.profile);
    mTimeline.Add(EntryKind::kWorld, std::string("the Facebook SDK is ") + facts.name);
    Host::SetFacebookProfile(facts.profile);
    [FBSDKSettings setSDKVersion:facts.version];
}

void SettingPlayer::operator()(const AppsStep& step) const {
    const auto set = [this](Host::InstalledApp app, const char* name, const std::optional<bool>& installed) {
        if (installed) {
            mTimeline.Add(EntryKind::kWorld, std::string(name) + (*installed ? " is installed" : " is not installed"));
            Host::SetAppInstalled(app, *installed);
        }
    };
    set(Host::InstalledApp::kFacebook, "Facebook's app", step.facebook);
    set(Host::InstalledApp::kMessenger, "Messenger", step.messenger);
}

void SettingPlayer::operator()(const QueriesSchemesStep& step) const {
    std::string schemes;
    for (const std::string& scheme : step.schemes) {
        schemes += (schemes.empty() ? "" : ", ") + scheme;
    }
    mTimeline.Add(EntryKind::kWorld,
                  "the Info.plist lets the app ask for " + (schemes.empty() ? "no scheme" : schemes));
    Host::RegisterQueriesSchemes(TextList(step.schemes));
}

void SettingPlayer::operator()(const PhotoPermissionStep& step) const {
    mTimeline.Add(EntryKind::kWorld, std::string("access to the photo library is ") + NameOf(step.permission));
    Host::SetPhotoAuthorization(StatusOf(step.permission));
}

} // namespace Tarvik::Vorn::Simulator
