// The version record of the library: constant data for the app and for tools. Plain C.
#pragma once

#include "VornExport.h"

#ifdef __cplusplus
extern "C" {
#endif

// "@(#)PROGRAM:...", one line feed, NUL.
VORN_API extern const unsigned char VornFacebookVersionString[];

// The version of the project that builds the library, not the plugin's.
VORN_API extern const double VornFacebookVersionNumber;

#ifdef __cplusplus
}
#endif
