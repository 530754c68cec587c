// The public interface of VornFacebook.framework: the version record, the plugins, and what the core and the plugins agree
// on.
//
// Serves C, C++, Objective-C and Objective-C++, with and without automatic reference counting; each gets the part that is
// written in it. The plugins' methods take C++ records, so that the plugins need Objective-C++. A core includes VornDefine.h
// too, which is compiled without automatic reference counting only.
#pragma once

#if defined(__cplusplus) && __cplusplus >= 202002L
#include "VornCodes.h"
#include "VornLog.h"
#include "VornRecords.h"
#include "VornServices.h"
#ifdef __OBJC__
#include "VornLoginFacebook.h"
#include "VornProtocols.h"
#include "VornReportFacebook.h"
#include "VornSingletonFamily.h"
#include "VornText.h"
#endif
#endif

#include "VornExport.h"
#include "VornFacebookVersion.h"

#ifdef __OBJC__
#include "VornApplicationDelegate.h"
#include "VornUtilsIOS.h"
#endif
