// CoreGraphics' geometry on Linux: Foundation's own types under Apple's names.
#pragma once

#import <Foundation/Foundation.h>

typedef NSPoint CGPoint;
typedef NSSize CGSize;
typedef NSRect CGRect;

static inline CGRect CGRectMake(CGFloat x, CGFloat y, CGFloat width, CGFloat height) {
    return NSMakeRect(x, y, width, height);
}
