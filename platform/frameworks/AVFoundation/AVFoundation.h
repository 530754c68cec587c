// AVFoundation, as far as the plugin calls it. A declaration is added when a call to it is.
#pragma once

#import <Foundation/Foundation.h>

NS_ASSUME_NONNULL_BEGIN

// Timed media at a URL. Making one reads nothing.
@interface AVAsset : NSObject <NSCopying>

+ (instancetype)assetWithURL:(NSURL*)URL;

// Whether the media can be written to the photo library. Reads the media.
@property(nonatomic, readonly, getter=isCompatibleWithSavedPhotosAlbum) BOOL compatibleWithSavedPhotosAlbum;

@end

NS_ASSUME_NONNULL_END
