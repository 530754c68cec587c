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

// Class "VornFriend" followed by the channel's name. Pointers are borrowed for the call and never null; what a request
// needs later is copied. A request is answered to the observer that came with it, unless a method says otherwise.
@protocol VornFriendDelegate <NSObject>

// Sends a link or an invitation to friends, as the request's type says.
- (void)sendMessage:(const Tarvik::Vorn::VornFriendReqInfo*)reqInfo
             params:(Tarvik::Vorn::VornBaseParams*)params
         observerID:(unsigned int)observerID;

// Shares a link, an image or a video, as the request's type says.
- (void)share:(const Tarvik::Vorn::VornFriendReqInfo*)reqInfo
        params:(Tarvik::Vorn::VornBaseParams*)params
    observerID:(unsigned int)observerID;

@optional

// Asks for the player's friends. Answers observer ObserverID::kQueryFriends. The first argument is the core's own.
- (void)queryFriends:(const void*)request params:(Tarvik::Vorn::VornBaseParams*)params;

// Lets the player add friends.
- (void)addFriend:(const Tarvik::Vorn::VornFriendReqInfo*)reqInfo
           params:(Tarvik::Vorn::VornBaseParams*)params
       observerID:(unsigned int)observerID;

// Whether the core's server can do the operation in the channel's place. A nil sequence ID counts as empty.
- (BOOL)isBackendSupported:(int)methodID type:(int)type seqId:(NSString*)seqID;

// Whether the core must turn the channel's user IDs into its own before the operation. Nil counts as empty.
- (BOOL)needOpenid2Uid:(int)methodID reqInfo:(const Tarvik::Vorn::VornFriendReqInfo*)reqInfo seqId:(NSString*)seqID;

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
