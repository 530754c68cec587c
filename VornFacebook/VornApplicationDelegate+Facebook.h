// Hooks the core's application delegate: starts the Facebook SDK at launch, passes URL opens to it, and tells it of every
// activation. Installed when the library is loaded; the delegate's own methods run after the hooks. Main thread.
#pragma once

#include "VornApplicationDelegate.h"

@interface VornApplicationDelegate (Facebook)

// The hooks. Each stands in for the delegate's method of that kind; sent to the delegate, these names run its own method.
- (BOOL)fb_application:(UIApplication*)application options:(NSDictionary*)options;
- (BOOL)fb_application:(UIApplication*)application
               openURL:(NSURL*)url
     sourceApplication:(NSString*)sourceApplication
            annotation:(id)annotation;
- (BOOL)fb_application:(UIApplication*)application openURL:(NSURL*)url options:(NSDictionary*)options;

// Called by the notification centre at every activation.
- (void)handleBecomeActive:(NSNotification*)notification;

@end
