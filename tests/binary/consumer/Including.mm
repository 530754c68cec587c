// A game's Objective-C++ file that includes the framework's headers and calls the plugins, as docs/INTEGRATION.md advises.
// Linked by consumer_test.py.

#import <VornFacebook/VornFacebook.h>

bool LogOut();

bool LogOut() {
    id<VornReportDelegate> report = [VornReportFacebook sharedInstance];
    if (![report initStat]) {
        return false;
    }
    [[VornLoginFacebook sharedInstance] logout:nullptr];
    return true;
}
