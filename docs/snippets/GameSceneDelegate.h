#pragma once

#import <UIKit/UIKit.h>

@interface GameSceneDelegate : UIResponder <UISceneDelegate>
@end
