#include "MethodReplacement.h"

#include "FatalError.h"

#include <vector>

namespace Tarvik::Vorn::Host {
namespace {

bool IsSubclass(Class candidate, Class root) {
    for (Class parent = class_getSuperclass(candidate); parent != Nil; parent = class_getSuperclass(parent)) {
        if (parent == root) {
            return true;
        }
    }
    return false;
}

// Whether the class has a method of its own for this selector, not just its parent's.
bool Defines(Class owner, SEL selector) {
    const Method method = class_getInstanceMethod(owner, selector);
    const Class parent = class_getSuperclass(owner);
    return method != nullptr && (parent == Nil || method != class_getInstanceMethod(parent, selector));
}

} // namespace

IMP ReplaceMethodBody(Class owner, SEL selector, IMP body) {
    if (!Defines(owner, selector)) {
        FatalError("%s has no method %s to correct. Is GNUstep base of another version than 1.28 installed?",
                   class_getName(owner), sel_getName(selector));
    }
    return method_setImplementation(class_getInstanceMethod(owner, selector), body);
}

void ReplaceMethodBodyInCluster(Class root, SEL selector, IMP body) {
    ReplaceMethodBody(root, selector, body);
    const int count = objc_getClassList(nullptr, 0);
    std::vector<Class> classes(static_cast<size_t>(count));
    objc_getClassList(classes.data(), count);
    for (const Class candidate : classes) {
        if (IsSubclass(candidate, root) && Defines(candidate, selector)) {
            ReplaceMethodBody(candidate, selector, body);
        }
    }
}

} // namespace Tarvik::Vorn::Host
