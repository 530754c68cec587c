// The host app's Info.plist, as far as the stand-ins read it. The default is an app that is set up well: it names an
// app ID, a display name and a client token for Facebook, and every URL scheme counts as registered and as listed.
// All functions may be called on any thread.
#pragma once

#include "HostExport.h"

#import <Foundation/Foundation.h>

namespace Tarvik::Vorn::Host {

// What [[NSBundle mainBundle] infoDictionary] would say for the key; nil when the app has no such entry. Autoreleased.
VORN_HOST_EXPORT id InfoValue(NSString* key);

// Sets an entry, or removes it (nil).
VORN_HOST_EXPORT void SetInfoValue(NSString* key, id value);

// From now on the app's Info.plist is exactly this, without any of the defaults: what it does not have is missing, and
// so a scheme that it does not list is neither registered nor may it be asked for. Copied; nil stands for an empty one.
// Entries may be of any type: one that is not of the type its reader wants counts as not there.
VORN_HOST_EXPORT void SetInfoDictionary(NSDictionary* entries);

// From now on the app registers these schemes under CFBundleURLTypes, and no others. An empty list stands for an app
// that forgot them.
VORN_HOST_EXPORT void RegisterURLSchemes(NSArray<NSString*>* schemes);

// YES when CFBundleURLTypes lists the scheme. Without that entry: YES, unless SetInfoDictionary gave the Info.plist.
VORN_HOST_EXPORT BOOL IsURLSchemeRegistered(NSString* scheme);

// YES only when CFBundleURLTypes itself lists the scheme.
VORN_HOST_EXPORT BOOL IsURLSchemeClaimed(NSString* scheme);

// From now on the app lists these schemes under LSApplicationQueriesSchemes, and no others: it may ask whether they can
// be opened. An empty list stands for an app that forgot them.
VORN_HOST_EXPORT void RegisterQueriesSchemes(NSArray<NSString*>* schemes);

// YES when LSApplicationQueriesSchemes lists the scheme, in any case of its letters. Without that entry: YES, unless
// SetInfoDictionary gave the Info.plist.
VORN_HOST_EXPORT BOOL IsQueriesSchemeListed(NSString* scheme);

// Back to the default.
VORN_HOST_EXPORT void ResetInfoDictionary();

} // namespace Tarvik::Vorn::Host
