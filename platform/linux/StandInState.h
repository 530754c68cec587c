// Where a stand-in keeps what belongs to one of its objects.
//
// The classes in platform/frameworks are declared without instance variables: the same headers serve the build for the
// device, and this runtime takes instance variables in the @interface only. An object of such a class therefore carries
// a C++ state behind it, in the same allocation. The class allocates it in allocWithZone:, destroys it in dealloc, and
// reads it through StateOf:
//
//     + (instancetype)allocWithZone:(NSZone*)zone { return AllocateWithState<TokenState>(self, zone); }
//     - (void)dealloc {
//         DestroyState<TokenState>(self);
//         [super dealloc];
//     }
//
// A subclass in an app, with instance variables of its own or without, works unchanged. A stand-in that extends another
// one derives its state from the other's, which has a virtual destructor, and overrides allocWithZone: alone.
//
// Classes with one instance, and what belongs to a class as a whole, use a function-local static in their source file.
#pragma once

#import <Foundation/Foundation.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <new>

#import <objc/runtime.h>

namespace Tarvik::Vorn::Host {

// The state behind `object`, which must have been allocated by AllocateWithState of the same State or one derived from
// it. Borrowed: valid as long as the object. Any thread; the state itself decides about locking.
template <class State>
State& StateOf(id object) {
    constexpr uintptr_t kAlignment = alignof(std::max_align_t);
    static_assert(alignof(State) <= kAlignment);
    char* const end = reinterpret_cast<char*>(object) + class_getInstanceSize(object_getClass(object));
    const uintptr_t beyond = reinterpret_cast<uintptr_t>(end) % kAlignment;
    return *std::launder(reinterpret_cast<State*>(beyond == 0 ? end : end + (kAlignment - beyond)));
}

// A new object of `cls` with a default-constructed state behind it; the caller owns it, as with allocWithZone:.
template <class State>
id AllocateWithState(Class cls, NSZone* zone) {
    id const object = NSAllocateObject(cls, sizeof(State) + alignof(std::max_align_t) - 1, zone);
    std::construct_at(&StateOf<State>(object));
    return object;
}

// For dealloc, before [super dealloc].
template <class State>
void DestroyState(id object) {
    std::destroy_at(&StateOf<State>(object));
}

} // namespace Tarvik::Vorn::Host
