#import <UIKit/UIKit.h>

@implementation UIResponder
@end
