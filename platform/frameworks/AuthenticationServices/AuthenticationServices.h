// AuthenticationServices. Imported because the Facebook SDK's Swift-made headers mention it; the plugin calls nothing
// of it. A declaration is added when a call to it is.
#pragma once

#import <Foundation/Foundation.h>
#import <UIKit/UIKit.h>
