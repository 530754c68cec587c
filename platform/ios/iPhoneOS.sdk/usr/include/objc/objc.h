// The basic types of Objective-C.
#pragma once

#include <stddef.h>

typedef struct objc_class* Class;
typedef struct objc_object* id;
typedef struct objc_selector* SEL;
typedef void (*IMP)(void);

// The compiler says what BOOL is on the target; its own bool on every target that is built here.
#if !__OBJC_BOOL_IS_BOOL
#error "BOOL is not bool on this target."
#endif
#ifndef __cplusplus
#include <stdbool.h>
#endif
typedef bool BOOL;

#define YES __objc_yes
#define NO __objc_no

#ifdef __cplusplus
#define nil nullptr
#else
#define nil ((void*)0)
#endif
