#import <UIKit/UIKit.h>

@implementation UIViewController
@end
