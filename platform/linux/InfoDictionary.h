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

// From now on the app registers these schemes under CFBundleURLTypes, and no others. An empty list stands for an app
// that forgot them.
VORN_HOST_EXPORT void RegisterURLSchemes(NSArray<NSString*>* schemes);

// YES when CFBundleURLTypes lists the scheme, or when that entry has not been set at all.
VORN_HOST_EXPORT BOOL IsURLSchemeRegistered(NSString* scheme);

// From now on the app lists these schemes under LSApplicationQueriesSchemes, and no others: it may ask whether they can
// be opened. An empty list stands for an app that forgot them.
VORN_HOST_EXPORT void RegisterQueriesSchemes(NSArray<NSString*>* schemes);

// YES when LSApplicationQueriesSchemes lists the scheme, in any case of its letters, or when that entry has not been
// set at all.
VORN_HOST_EXPORT BOOL IsQueriesSchemeListed(NSString* scheme);

// Back to the default.
VORN_HOST_EXPORT void ResetInfoDictionary();

} // namespace Tarvik::Vorn::Host
