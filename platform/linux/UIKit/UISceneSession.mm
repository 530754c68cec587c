#import <UIKit/UIKit.h>

@implementation UISceneSession
@end
