// Exported data that belongs to no class. The words that link the Facebook SDK's categories come with the SDK's own headers
// in the sources that call it.

#include "VornFacebookVersion.h"

const unsigned char VornFacebookVersionString[] = "@(#)PROGRAM:VornFacebook  PROJECT:VornDev-1\n";
const double VornFacebookVersionNumber = 1.0;
