#include "FBSDKShareKit/SharingContent.h"

#include "CallText.h"
#include "HostExport.h"

VORN_HOST_EXPORT NSString* const FBSDKShareErrorDomain = @"com.facebook.sdk.share";

namespace Tarvik::Vorn::Host {

namespace {

NSError* ArgumentError(NSString* name, id value, NSString* message) {
    NSMutableDictionary* const userInfo = [NSMutableDictionary dictionary];
    [userInfo setObject:message forKey:FBSDKErrorDeveloperMessageKey];
    [userInfo setObject:name forKey:FBSDKErrorArgumentNameKey];
    if (value != nil) {
        [userInfo setObject:value forKey:FBSDKErrorArgumentValueKey];
    }
    return [NSError errorWithDomain:FBSDKShareErrorDomain code:FBSDKErrorInvalidArgument userInfo:userInfo];
}

} // namespace

RetainPtr<NSArray*> ListCopyOf(NSArray* list) {
    return CopyOf<NSArray*>(list == nil ? @[] : list);
}

NSError* MissingArgument(NSString* name) {
    return ArgumentError(name, nil, [NSString stringWithFormat:@"Value for %@ is required.", name]);
}

NSError* InvalidArgument(NSString* name, id value) {
    return ArgumentError(name, value, [NSString stringWithFormat:@"Invalid value for %@: %@", name, value]);
}

BOOL Report(NSError* error, NSError** errorRef) {
    if (error != nil && errorRef != nullptr) {
        *errorRef = error;
    }
    return error == nil;
}

NSError* PhotoFault(FBSDKSharePhoto* photo) {
    return [photo image] == nil && [photo imageURL] == nil ? InvalidArgument(@"photo", photo) : nil;
}

NSError* VideoFault(FBSDKShareVideo* video) {
    NSURL* const url = [video videoURL];
    if (url != nil) {
        // Only videos of the photo library, by the address that it gave them before it had identifiers.
        const bool isOfTheLibrary = [[[url scheme] lowercaseString] isEqualToString:@"assets-library"];
        return isOfTheLibrary ? nil : InvalidArgument(@"videoURL", url);
    }
    return [video data] != nil ? InvalidArgument(@"data", [video data]) : MissingArgument(@"video");
}

NSError* ContentFault(id<FBSDKSharingContent> content) {
    if (![content isKindOfClass:[FBSDKShareLinkContent class]] &&
        ![content isKindOfClass:[FBSDKSharePhotoContent class]] &&
        ![content isKindOfClass:[FBSDKShareVideoContent class]]) {
        return InvalidArgument(@"shareContent", content);
    }
    NSError* error = nil;
    [content validateWithOptions:FBSDKShareBridgeOptionsDefault error:&error];
    return error;
}

std::string ContentText(id<FBSDKSharingContent> content) {
    const bool isLink = [content isKindOfClass:[FBSDKShareLinkContent class]];
    const bool isPhotos = [content isKindOfClass:[FBSDKSharePhotoContent class]];
    const bool isVideo = [content isKindOfClass:[FBSDKShareVideoContent class]];
    std::string text = ObjectText(content);
    if (!isLink && !isPhotos && !isVideo) {
        return text;
    }
    text.pop_back();
    text += " contentURL=" + QuotedText([[content contentURL] absoluteString]) +
            " peopleIDs=" + QuotedList([content peopleIDs]);
    if (isPhotos) {
        text += " photos=" + std::to_string([[static_cast<FBSDKSharePhotoContent*>(content) photos] count]);
    }
    if (isVideo) {
        NSURL* const url = [[static_cast<FBSDKShareVideoContent*>(content) video] videoURL];
        text += " videoURL=" + QuotedText([url absoluteString]);
    }
    return text + '>';
}

} // namespace Tarvik::Vorn::Host
