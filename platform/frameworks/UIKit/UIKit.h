// UIKit, as far as the plugin calls it. A declaration is added when a call to it is.
#pragma once

#import <Foundation/Foundation.h>

NS_ASSUME_NONNULL_BEGIN

@interface UIResponder : NSObject
@end

@interface UIViewController : UIResponder
@end

@interface UIApplication : UIResponder
@end

NS_ASSUME_NONNULL_END
