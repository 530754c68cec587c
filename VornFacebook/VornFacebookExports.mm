// Exported data that belongs to no class. The words that link the Facebook SDK's categories come with its own headers,
// which every source here imports.

#include "VornFacebookVersion.h"

const unsigned char VornFacebookVersionString[] = "@(#)PROGRAM:VornFacebook  PROJECT:VornDev-1\n";
const double VornFacebookVersionNumber = 1.0;
