// A game's Objective-C file without C++: it has the version record and the core's classes. Compiled by consumer_test.py.

@import VornFacebook;

const char* PluginVersion(void) {
    return (const char*)VornFacebookVersionString;
}

@interface ImporterDelegate : VornApplicationDelegate
@end

@implementation ImporterDelegate
@end
