#import <UIKit/UIKit.h>

@implementation UIScene
@end
