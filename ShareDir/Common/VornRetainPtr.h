// The one owning handle for Objective-C objects in code without automatic reference counting.
//
// RetainPtr<NSString*> keeps its object alive as long as it lives itself; copying retains, moving does not. A method
// that returns a retained object (alloc, new, copy, mutableCopy) has its result put straight into AdoptNS(...). Handles
// are not for globals: they would run a destructor at exit. Two threads may each have a handle to one object; one handle
// is not for use by two threads at once.
#pragma once

#import <Foundation/Foundation.h>

#include <utility>

#if __has_feature(objc_arc)
#error "This project counts references by hand. Compile with -fno-objc-arc."
#endif

namespace Tarvik::Vorn {

// What RetainPtr does for objects of every type, once. `Object` is always id; a template, so that a module in which NSObject
// is only declared can hold this header.
template <class Object>
class RetainedObject {
public:
    RetainedObject() = default;
    explicit RetainedObject(Object object) : mObject([object retain]) {}
    RetainedObject(const RetainedObject& other) : mObject([other.mObject retain]) {}
    RetainedObject(RetainedObject&& other) noexcept : mObject(std::exchange(other.mObject, nil)) {}
    ~RetainedObject() { [mObject release]; }

    // By value: serves copies and moves, and an object assigned to itself.
    RetainedObject& operator=(RetainedObject other) noexcept {
        std::swap(mObject, other.mObject);
        return *this;
    }

protected:
    Object mObject = nil;
};

// T is an object pointer type: NSString*, id, id<Protocol>.
template <class T>
class RetainPtr : private RetainedObject<id> {
public:
    RetainPtr() = default;
    explicit RetainPtr(T object) : RetainedObject<id>(object) {}

    // Takes over the reference that the caller owns.
    static RetainPtr Adopt(T object) {
        RetainPtr adopted;
        adopted.mObject = object;
        return adopted;
    }

    T get() const { return static_cast<T>(mObject); }
    explicit operator bool() const { return mObject != nil; }
};

template <class T>
[[nodiscard]] RetainPtr<T> AdoptNS(T object) {
    return RetainPtr<T>::Adopt(object);
}

} // namespace Tarvik::Vorn
