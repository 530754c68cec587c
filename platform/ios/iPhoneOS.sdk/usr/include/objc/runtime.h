// The Objective-C runtime, as far as the plugin calls it. A declaration is added when a call to it is.
#pragma once

#include <objc/objc.h>
#include <sys/cdefs.h>

typedef struct objc_method* Method;

__BEGIN_DECLS

Method class_getClassMethod(Class cls, SEL name);
IMP method_getImplementation(Method method);
IMP method_setImplementation(Method method, IMP implementation);

__END_DECLS
