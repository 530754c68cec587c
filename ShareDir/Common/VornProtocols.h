// The protocols through which the core drives a channel's plugins. The core finds a plugin by its class name, asks the
// class for its sharedInstance and calls these methods on a thread of its own choosing. No method returns a result:
// outcomes travel through VornInnerObserverHolder.
#pragma once

#include "VornRecords.h"

#import <Foundation/Foundation.h>

// Class "VornLogin" followed by the channel's name.
@protocol VornLoginDelegate <NSObject>

// Logs the player in. Answers observer ObserverID::kLoginPlugin on success, ObserverID::kLogin on failure or cancel.
- (void)login:(Tarvik::Vorn::VornLoginParams)params;

// Logs the player out. Answers observer ObserverID::kLogout. `params` is borrowed for the call.
- (void)logout:(const Tarvik::Vorn::VornBaseParams*)params;

@end
