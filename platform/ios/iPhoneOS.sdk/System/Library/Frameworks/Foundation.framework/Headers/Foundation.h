// Foundation, as far as the plugin and the declarations in platform/frameworks use it. A declaration is added when a call
// to it is.
#pragma once

#include <objc/NSObject.h>
#include <objc/runtime.h>
#include <dispatch/dispatch.h>
#include <stdint.h>

#pragma mark - Macros of declarations

#ifdef __cplusplus
#define FOUNDATION_EXPORT extern "C"
#else
#define FOUNDATION_EXPORT extern
#endif

#define NS_ASSUME_NONNULL_BEGIN _Pragma("clang assume_nonnull begin")
#define NS_ASSUME_NONNULL_END _Pragma("clang assume_nonnull end")

#define NS_ENUM(TYPE, NAME)                                                                                            \
    enum __attribute__((enum_extensibility(open))) NAME : TYPE NAME;                                                   \
    enum NAME : TYPE
#ifdef __cplusplus
#define NS_OPTIONS(TYPE, NAME)                                                                                         \
    TYPE NAME;                                                                                                         \
    enum __attribute__((flag_enum, enum_extensibility(open))) : TYPE
#else
#define NS_OPTIONS(TYPE, NAME)                                                                                         \
    enum __attribute__((flag_enum, enum_extensibility(open))) NAME : TYPE NAME;                                        \
    enum NAME : TYPE
#endif

#define NS_DESIGNATED_INITIALIZER __attribute__((objc_designated_initializer))
#define NS_FORMAT_FUNCTION(FORMAT, FIRST) __attribute__((format(__NSString__, FORMAT, FIRST)))

NS_ASSUME_NONNULL_BEGIN

#pragma mark - Names and ranges

FOUNDATION_EXPORT Class _Nullable NSClassFromString(NSString* name);
FOUNDATION_EXPORT SEL NSSelectorFromString(NSString* name);

typedef struct _NSRange {
    NSUInteger location;
    NSUInteger length;
} NSRange;

static inline NSRange NSMakeRange(NSUInteger location, NSUInteger length) {
    NSRange range;
    range.location = location;
    range.length = length;
    return range;
}

#pragma mark - Protocols

@protocol NSCopying

- (id)copyWithZone:(nullable NSZone*)zone;

@end

@protocol NSCoding
@end

@protocol NSSecureCoding <NSCoding>
@end

// Filled by the collection and read by the code that the compiler makes of a for-in loop.
typedef struct {
    unsigned long state;
    id __unsafe_unretained _Nullable* _Nullable itemsPtr;
    unsigned long* _Nullable mutationsPtr;
    unsigned long extra[5];
} NSFastEnumerationState;

@protocol NSFastEnumeration

- (NSUInteger)countByEnumeratingWithState:(NSFastEnumerationState*)state
                                  objects:(id __unsafe_unretained _Nullable[_Nonnull])buffer
                                    count:(NSUInteger)count;

@end

#pragma mark - Collections

@interface NSArray<__covariant ObjectType> : NSObject <NSCopying, NSFastEnumeration>

@property(readonly) NSUInteger count;
@property(nullable, nonatomic, readonly) ObjectType firstObject;

+ (instancetype)array;
+ (instancetype)arrayWithObjects:(const ObjectType _Nonnull[_Nullable])objects count:(NSUInteger)count; // For @[...].

- (BOOL)containsObject:(ObjectType)object;

@end

@interface NSMutableArray<ObjectType> : NSArray <ObjectType>

+ (instancetype)arrayWithCapacity:(NSUInteger)capacity;

- (void)addObject:(ObjectType)object;
- (void)addObjectsFromArray:(NSArray<ObjectType>*)objects;
- (void)removeObject:(ObjectType)object;

@end

@interface NSDictionary<__covariant KeyType, __covariant ObjectType> : NSObject <NSCopying>

@property(readonly) NSUInteger count;

// For @{...}.
+ (instancetype)dictionaryWithObjects:(const ObjectType _Nonnull[_Nullable])objects
                              forKeys:(const KeyType<NSCopying> _Nonnull[_Nullable])keys
                                count:(NSUInteger)count;

- (nullable ObjectType)objectForKey:(KeyType)key;

@end

@interface NSSet<__covariant ObjectType> : NSObject <NSCopying>
@end

#pragma mark - Values

typedef NS_OPTIONS(NSUInteger, NSStringCompareOptions) {
    NSRegularExpressionSearch = 1024,
};

@interface NSString : NSObject <NSCopying>

@property(readonly) NSUInteger length;
@property(nullable, readonly) const char* UTF8String __attribute__((objc_returns_inner_pointer));
@property(readonly) BOOL boolValue;
@property(readonly, copy) NSString* pathExtension;

+ (nullable instancetype)stringWithUTF8String:(const char*)text;
+ (instancetype)stringWithFormat:(NSString*)format, ... NS_FORMAT_FUNCTION(1, 2);

- (BOOL)isEqualToString:(NSString*)other;
- (NSArray<NSString*>*)componentsSeparatedByString:(NSString*)separator;
- (NSString*)stringByReplacingOccurrencesOfString:(NSString*)target
                                       withString:(NSString*)replacement
                                          options:(NSStringCompareOptions)options
                                            range:(NSRange)range;

@end

@interface NSNumber : NSObject <NSCopying>

@property(readonly) BOOL boolValue;
@property(readonly, copy) NSString* stringValue;

@end

@interface NSData : NSObject <NSCopying>

@property(readonly) NSUInteger length;

@end

@interface NSDate : NSObject <NSCopying>
@end

@interface NSURL : NSObject <NSCopying>

@property(nullable, readonly, copy) NSString* pathExtension;

+ (nullable instancetype)URLWithString:(NSString*)text;
+ (NSURL*)fileURLWithPath:(NSString*)path;

@end

@interface NSError : NSObject <NSCopying>

@property(readonly) NSInteger code;
@property(readonly, copy) NSString* localizedDescription;

@end

#pragma mark - Notifications

typedef NSString* NSNotificationName;

@interface NSNotification : NSObject <NSCopying>
@end

@interface NSNotificationCenter : NSObject

@property(class, readonly, strong) NSNotificationCenter* defaultCenter;

// The observer is not retained.
- (void)addObserver:(id)observer
           selector:(SEL)selector
               name:(nullable NSNotificationName)name
             object:(nullable id)object;
- (void)removeObserver:(id)observer;

@end

NS_ASSUME_NONNULL_END
