// Facebook's friend plugin: links through Messenger; links, images and videos through Facebook's share dialog or, for a
// gaming login, its uploads; invitations through game requests; the friend finder. One instance per process, never
// destroyed; the core finds the class by its name.
//
// Requests may come on any thread and return at once. Each ends with at most one result, an InnerBaseRet to the observer
// that came with it (a friend query: an InnerFriendRet to ObserverID::kQueryFriends), on the main thread.
//
// The outcomes of Facebook's dialogs carry no request. They are answered under the IDs that the last request left in the
// properties, whichever dialog they come from: when a second request enters while a dialog is open, the dialog's outcome
// goes to the second's observer. Nothing guards the properties: the core sends requests one after the other.
#pragma once

#include "VornExport.h"
#include "VornFacebookSDK.h"
#include "VornProtocols.h"

#import <FBSDKShareKit/FBSDKShareKit.h>
#import <FBSDKShareKit/FBSDKShareKit-Swift.h>
#import <FBSDKGamingServicesKit/FBSDKGamingServicesKit-Swift.h>

VORN_API
@interface VornFriendFacebook : NSObject <VornFriendDelegate, FBSDKSharingDelegate, FBSDKGameRequestDialogDelegate> {
@private
    int _methodNameID;
    unsigned int _observerID;
    NSString* _seqID;
}

// Of the last sendMessage: or share:; -1 and "" before the first. A sequence ID that is not UTF-8 leaves nil.
@property(nonatomic) int methodNameID;
@property(nonatomic, strong) NSString* seqID;

// Who gets the next outcome: the observer of the last request that set one; 0 at first.
@property(nonatomic) unsigned int observerID;

// The instance, made on first use. Any thread. alloc, new and copy give the same object, retained for their caller.
+ (instancetype)sharedInstance;

@end
