// Photos. The plugin calls nothing of it yet; a declaration is added when a call to it is.
#pragma once

#import <Foundation/Foundation.h>
