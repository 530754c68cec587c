#include "FBSDKCoreKit/FBSDKSettings+Control.h"

#include "CallText.h"
#include "InfoDictionary.h"
#include "PlatformCalls.h"
#include "VornRetainPtr.h"

#include <array>
#include <mutex>
#include <utility>

using namespace Tarvik::Vorn;
using namespace Tarvik::Vorn::Host;

namespace {

// The settings that the Info.plist gives when the app does not.
enum Setting { kAppID, kDisplayName, kClientToken, kAppURLSchemeSuffix, kFacebookDomainPart, kSettingCount };

struct SettingValue {
    bool isSet = false;
    RetainPtr<NSString*> text; // Nil counts when isSet.
};

struct SettingsValues {
    std::array<SettingValue, kSettingCount> values;
    RetainPtr<NSString*> sdkVersion{@"18.1.0"};
    bool fallsBackAfterNil = false;
};

struct Settings {
    std::mutex mutex;
    SettingsValues current;
};

// Never destroyed: settings are read until the process ends.
Settings& TheSettings() {
    static auto& settings = *new Settings;
    return settings;
}

NSString* Read(Setting setting, NSString* infoKey) {
    {
        Settings& settings = TheSettings();
        const std::lock_guard lock(settings.mutex);
        const SettingValue& value = settings.current.values[setting];
        // An empty text counts as set and hides the Info.plist.
        if (value.isSet && (value.text || !settings.current.fallsBackAfterNil)) {
            return [[value.text.get() retain] autorelease];
        }
    }
    const id fromInfo = InfoValue(infoKey);
    return [fromInfo isKindOfClass:[NSString class]] ? fromInfo : nil;
}

void Write(Setting setting, NSString* text) {
    SettingValue value{true, AdoptNS<NSString*>([text copy])};
    Settings& settings = TheSettings();
    const std::lock_guard lock(settings.mutex);
    std::swap(settings.current.values[setting], value);
}

} // namespace

@implementation FBSDKSettings

+ (FBSDKSettings*)sharedSettings {
    static FBSDKSettings* const shared = [[FBSDKSettings alloc] init];
    return shared;
}

- (NSString*)sdkVersion {
    Settings& settings = TheSettings();
    const std::lock_guard lock(settings.mutex);
    return [[settings.current.sdkVersion.get() retain] autorelease];
}

- (NSString*)appID {
    return Read(kAppID, @"FacebookAppID");
}

- (void)setAppID:(NSString*)appID {
    PlatformCalls::Record("FBSDKSettings", "setAppID:", QuotedText(appID));
    Write(kAppID, appID);
}

- (NSString*)displayName {
    return Read(kDisplayName, @"FacebookDisplayName");
}

- (void)setDisplayName:(NSString*)displayName {
    PlatformCalls::Record("FBSDKSettings", "setDisplayName:", QuotedText(displayName));
    Write(kDisplayName, displayName);
}

- (NSString*)clientToken {
    return Read(kClientToken, @"FacebookClientToken");
}

- (void)setClientToken:(NSString*)clientToken {
    PlatformCalls::Record("FBSDKSettings", "setClientToken:", clientToken == nil ? "nil" : "(not shown)");
    Write(kClientToken, clientToken);
}

- (NSString*)appURLSchemeSuffix {
    return Read(kAppURLSchemeSuffix, @"FacebookUrlSchemeSuffix");
}

- (void)setAppURLSchemeSuffix:(NSString*)suffix {
    PlatformCalls::Record("FBSDKSettings", "setAppURLSchemeSuffix:", QuotedText(suffix));
    Write(kAppURLSchemeSuffix, suffix);
}

- (NSString*)facebookDomainPart {
    return Read(kFacebookDomainPart, @"FacebookDomainPart");
}

- (void)setFacebookDomainPart:(NSString*)domainPart {
    PlatformCalls::Record("FBSDKSettings", "setFacebookDomainPart:", QuotedText(domainPart));
    Write(kFacebookDomainPart, domainPart);
}

#pragma mark - Control

+ (void)setSDKVersion:(NSString*)version {
    RetainPtr<NSString*> text = AdoptNS<NSString*>([version copy]);
    Settings& settings = TheSettings();
    const std::lock_guard lock(settings.mutex);
    std::swap(settings.current.sdkVersion, text);
}

+ (void)setFallsBackAfterNil:(BOOL)fallsBack {
    Settings& settings = TheSettings();
    const std::lock_guard lock(settings.mutex);
    settings.current.fallsBackAfterNil = fallsBack != NO;
}

+ (void)reset {
    SettingsValues values;
    Settings& settings = TheSettings();
    const std::lock_guard lock(settings.mutex);
    std::swap(settings.current, values);
}

@end
