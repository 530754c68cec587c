// The Facebook SDK's core kit, imported the way a .mm file must: modules are off here, so the headers that the Swift
// compiler writes come explicitly, after the frameworks they mention. A kit of its own (LoginKit, ShareKit, ...) follows
// in the file that uses it, again with its -Swift.h.
#pragma once

#import <Foundation/Foundation.h>
#import <UIKit/UIKit.h>
#import <SafariServices/SafariServices.h>
#import <AuthenticationServices/AuthenticationServices.h>

// The link words that these headers define are exported, though everything here is compiled hidden.
#pragma GCC visibility push(default)
#import <FBSDKCoreKit/FBSDKCoreKit.h>
#import <FBSDKCoreKit/FBSDKCoreKit-Swift.h>
#pragma GCC visibility pop
