// What the contents that can be shared have in common, and what is wrong with them. For the stand-ins' own use.
#pragma once

#include "VornRetainPtr.h"

#import <AuthenticationServices/AuthenticationServices.h>
#import <FBSDKCoreKit/FBSDKCoreKit.h>
#import <FBSDKCoreKit/FBSDKCoreKit-Swift.h>
#import <FBSDKShareKit/FBSDKShareKit.h>
#import <FBSDKShareKit/FBSDKShareKit-Swift.h>
#import <Foundation/Foundation.h>

#include <string>

namespace Tarvik::Vorn::Host {

// The properties of FBSDKSharingContent. No locks: a content belongs to one thread at a time.
struct SharingContentState {
    RetainPtr<NSURL*> contentURL;
    RetainPtr<NSArray*> peopleIDs { @[] };
    RetainPtr<NSString*> placeID;
    RetainPtr<NSString*> ref;
    RetainPtr<NSString*> pageID;
    RetainPtr<NSString*> shareUUID; // Made when it is asked for: GNUstep opens a file for each, and few are ever read.

    virtual ~SharingContentState() = default;
};

// A copy, as a property declared copy keeps it. Of nil, nil.
template <class T>
RetainPtr<T> CopyOf(T object) {
    return AdoptNS<T>([object copy]);
}

// A copy, as Swift keeps a list that is not nullable. Of nil, an empty list.
RetainPtr<NSArray*> ListCopyOf(NSArray* list);

// Errors of FBSDKShareErrorDomain for arguments, with the argument under the keys that the SDK uses. Autoreleased.
NSError* MissingArgument(NSString* name);
NSError* InvalidArgument(NSString* name, id value); // A nil value leaves its key out.

// Stores the error, if there is one and the caller wants it, and tells whether there was none: the end of a method that
// validates. `errorRef` may be null.
BOOL Report(NSError* error, NSError** errorRef);

// A video without a source, which nobody outside the SDK can make. Autoreleased.
FBSDKShareVideo* MakeEmptyVideo();

// What is wrong with a photo or a video, whatever is to show it; nil for nothing.
NSError* PhotoFault(FBSDKSharePhoto* photo);
NSError* VideoFault(FBSDKShareVideo* video);

// What is wrong with what a dialog is to share, which is not nil: not one of the three contents, or refused by itself.
// Nil for nothing.
NSError* ContentFault(id<FBSDKSharingContent> content);

// <Class contentURL="..." peopleIDs=[...] ...> for the record of calls; "nil".
std::string ContentText(id<FBSDKSharingContent> content);

} // namespace Tarvik::Vorn::Host
