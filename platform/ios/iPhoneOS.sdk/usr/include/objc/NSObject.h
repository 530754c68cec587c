// The root class and its protocol, as far as the plugin calls them. A declaration is added when a call to it is.
#pragma once

#include <objc/objc.h>

typedef long NSInteger;
typedef unsigned long NSUInteger;
typedef struct _NSZone NSZone;

@class NSString;

// Complete: the compiler writes the protocol, and for each class that adopts it the properties, into the binary.
@protocol NSObject

- (BOOL)isEqual:(id)object;
@property(readonly) NSUInteger hash;

@property(readonly) Class superclass;
- (Class)class;
- (instancetype)self;

- (id)performSelector:(SEL)selector;
- (id)performSelector:(SEL)selector withObject:(id)object;
- (id)performSelector:(SEL)selector withObject:(id)object1 withObject:(id)object2;

- (BOOL)isProxy;
- (BOOL)isKindOfClass:(Class)aClass;
- (BOOL)isMemberOfClass:(Class)aClass;
- (BOOL)conformsToProtocol:(Protocol*)protocol;
- (BOOL)respondsToSelector:(SEL)selector;

- (instancetype)retain;
- (oneway void)release;
- (instancetype)autorelease;
- (NSUInteger)retainCount;
- (NSZone*)zone;

@property(readonly, copy) NSString* description;
@optional
@property(readonly, copy) NSString* debugDescription;

@end

__attribute__((objc_root_class))
@interface NSObject<NSObject> {
    Class isa;
}

+ (void)load;
+ (Class)class;

+ (instancetype)new;
+ (instancetype)alloc;
+ (instancetype)allocWithZone:(NSZone*)zone;
- (instancetype)init __attribute__((objc_designated_initializer));
- (void)dealloc;

- (id)copy;

@end
