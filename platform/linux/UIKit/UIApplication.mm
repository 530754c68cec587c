#import <UIKit/UIKit.h>

@implementation UIApplication
@end
