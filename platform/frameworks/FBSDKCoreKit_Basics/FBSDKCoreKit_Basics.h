// FBSDKCoreKit_Basics, as far as it is used here (SDK 15.0.0): the words that tie a binary to the SDK's categories.
//
// A category alone gives the linker nothing to ask for. For each one, named CLASS_CATEGORY, the kit that holds it
// defines one byte, FBLinkable_CLASS_CATEGORY, and every unit that imports the kit's header defines a word with the
// byte's address, FBLink_CLASS_CATEGORY: weak, so that the units of a binary share one, and used, so that it stays. A
// binary that carries the words links FBSDKCoreKit and FBSDKCoreKit_Basics, and shows the words among its symbols.
//
// FB_LINK_REQUIRE_DISABLE_I_KNOW_WHAT_I_AM_DOING, defined before the import, leaves bytes and words undeclared.
#pragma once

#import <Foundation/Foundation.h>

#ifndef OS_WEAK
#define OS_WEAK __attribute__((__weak__))
#endif
#ifndef OS_USED
#define OS_USED __attribute__((__used__))
#endif

#ifdef __cplusplus
#define FB_LINK_BEGIN_C_LINKAGE extern "C" {
#define FB_LINK_END_C_LINKAGE }
#else
#define FB_LINK_BEGIN_C_LINKAGE
#define FB_LINK_END_C_LINKAGE
#endif

#ifndef FB_LINK_REQUIRE_DISABLE_I_KNOW_WHAT_I_AM_DOING
// In a header: the byte is declared, the word declared and defined. The words have the visibility that the importing source
// is compiled with.
#define FB_LINK_CATEGORY_INTERFACE(CLASS, CATEGORY)                                                                    \
    FB_LINK_BEGIN_C_LINKAGE                                                                                            \
    extern char FBLinkable_##CLASS##_##CATEGORY;                                                                       \
    extern const void* _Nonnull const OS_WEAK FBLink_##CLASS##_##CATEGORY;                                             \
    OS_USED const void* _Nonnull const OS_WEAK FBLink_##CLASS##_##CATEGORY = &FBLinkable_##CLASS##_##CATEGORY;         \
    FB_LINK_END_C_LINKAGE
#else
#define FB_LINK_CATEGORY_INTERFACE(CLASS, CATEGORY)
#endif

// In the source of a category: the byte is defined.
#define FB_LINK_CATEGORY_IMPLEMENTATION(CLASS, CATEGORY)                                                               \
    FB_LINK_BEGIN_C_LINKAGE                                                                                            \
    __attribute__((visibility("default"))) char FBLinkable_##CLASS##_##CATEGORY = 'L';                                 \
    FB_LINK_END_C_LINKAGE

FB_LINK_CATEGORY_INTERFACE(NSUserDefaults, DataPersisting)
FB_LINK_CATEGORY_INTERFACE(NSData, FileDataExtracting)
FB_LINK_CATEGORY_INTERFACE(NSFileManager, FileManaging)
FB_LINK_CATEGORY_INTERFACE(NSBundle, InfoDictionaryProviding)
FB_LINK_CATEGORY_INTERFACE(NSURLSessionTask, NetworkTask)
FB_LINK_CATEGORY_INTERFACE(NSURLSession, URLSessionProviding)
FB_LINK_CATEGORY_INTERFACE(NSNotificationCenter, NotificationDelivering)
