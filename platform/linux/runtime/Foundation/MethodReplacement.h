// How this directory corrects GNUstep's classes: it replaces the body of a method while the library is loaded, on the
// main thread, before any other thread exists.
#pragma once

#import <Foundation/Foundation.h>
#include <objc/runtime.h>

namespace Tarvik::Vorn::Host {

// Gives the method that `owner` itself has for this selector a new body and returns the old one. Ends the process with
// a message when `owner` has none or only inherits one. REQUIRES: called from +load.
IMP ReplaceMethodBody(Class owner, SEL selector, IMP body);

// As above with typed bodies, which take the receiver and the selector first; the old one goes to `*original`.
template <class Body>
void ReplaceMethod(Class owner, SEL selector, Body* body, Body** original) {
    *original = reinterpret_cast<Body*>(ReplaceMethodBody(owner, selector, reinterpret_cast<IMP>(body)));
}

// Gives `root` and each of its subclasses that has a method of its own for this selector the same new body. For class
// clusters, whose private classes override what the public class declares. REQUIRES: called from +load.
void ReplaceMethodBodyInCluster(Class root, SEL selector, IMP body);

template <class Body>
void ReplaceInCluster(Class root, SEL selector, Body* body) {
    ReplaceMethodBodyInCluster(root, selector, reinterpret_cast<IMP>(body));
}

} // namespace Tarvik::Vorn::Host
