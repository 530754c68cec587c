// The protocols through which the core drives a channel's plugins. The core finds a plugin by its class name, asks the
// class for its sharedInstance and calls these methods on a thread of its own choosing. No method returns a result:
// outcomes travel through VornInnerObserverHolder.
#pragma once

#include "VornRecords.h"

#import <Foundation/Foundation.h>

#include <string>

// Class "VornLogin" followed by the channel's name.
@protocol VornLoginDelegate <NSObject>

// Logs the player in. Answers observer ObserverID::kLoginPlugin on success, ObserverID::kLogin on failure or cancel.
- (void)login:(Tarvik::Vorn::VornLoginParams)params;

// Logs the player out. Answers observer ObserverID::kLogout. `params` is borrowed for the call.
- (void)logout:(const Tarvik::Vorn::VornBaseParams*)params;

@end

// Class "VornReport" followed by the channel's name. Nothing is reported back.
@protocol VornReportDelegate <NSObject>

// Called once before the first event. NO when the channel cannot take events.
- (BOOL)initStat __attribute__((objc_method_family(none)));

// Forwards an event. `params` holds texts and numbers by text; nil and empty mean an event without parameters. The other
// arguments are for the channel's log; nil counts as empty.
- (void)reportEvent:(NSString*)eventName
             params:(NSDictionary*)params
         isRealtime:(BOOL)isRealtime
              seqID:(NSString*)seqID
              extra:(NSString*)extra;

@optional

// For channels that send push messages. Facebook's does not have it.
- (void)setPushToken:(NSString*)token;

// For channels that know their installation by an ID. Facebook's does not have it.
- (std::string)getInstanceID:(NSString*)name;

@end
