// Facebook's report plugin: forwards the game's analytics events to Facebook App Events. One instance per process; the
// core finds the class by its name. Runs on the caller's thread and reports nothing back.
#pragma once

#include "VornExport.h"
#include "VornProtocols.h"
#include "VornSingletonFamily.h"

VORN_API
@interface VornReportFacebook : NSObject <VornReportDelegate>

VORN_SINGLETON_FAMILY_INTERFACE

@end
