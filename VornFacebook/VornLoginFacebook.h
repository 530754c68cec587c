// Facebook's login plugin. One instance per process; the core finds the class by its name.
//
// Both requests run on the caller's thread and return at once. Their outcome travels through VornInnerObserverHolder:
// a successful login as InnerLoginPluginRet to observer 109, a failed or cancelled one as InnerLoginRet to 101, a logout
// as InnerBaseRet to 108, each on the main thread.
#pragma once

#include "VornExport.h"
#include "VornProtocols.h"
#include "VornSingletonFamily.h"

VORN_API
@interface VornLoginFacebook : NSObject <VornLoginDelegate>

VORN_SINGLETON_FAMILY_INTERFACE

@end
