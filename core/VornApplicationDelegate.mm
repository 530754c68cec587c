#include "VornApplicationDelegate.h"

#include "VornApplicationHandlers.h"

#include <utility>

using namespace Tarvik::Vorn;

namespace {

VornApplicationHandlers& Handlers() {
    static auto& handlers = *new VornApplicationHandlers; // Never destroyed: delegates may outlive static objects.
    return handlers;
}

} // namespace

namespace Tarvik::Vorn {

void SetApplicationHandlers(VornApplicationHandlers handlers) {
    Handlers() = std::move(handlers);
}

} // namespace Tarvik::Vorn

@implementation VornApplicationDelegate

- (BOOL)application:(UIApplication*)application didFinishLaunchingWithOptions:(NSDictionary*)launchOptions {
    return !Handlers().launch || Handlers().launch(launchOptions) ? YES : NO;
}

- (BOOL)application:(UIApplication*)application openURL:(NSURL*)url options:(NSDictionary*)options {
    return Handlers().openURL && Handlers().openURL(url, options) ? YES : NO;
}

- (BOOL)application:(UIApplication*)application
              openURL:(NSURL*)url
    sourceApplication:(NSString*)sourceApplication
           annotation:(id)annotation {
    return Handlers().openURLFromApplication && Handlers().openURLFromApplication(url, sourceApplication, annotation)
               ? YES
               : NO;
}

@end
