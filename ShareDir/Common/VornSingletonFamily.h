// The class methods by which a plugin class has one instance per process; shared by the login and the report plugin.
//
// The core sends sharedInstance on any thread. The first time, the class object's own monitor guards the creation; from
// then on sharedInstance itself is the unlocked accessor, until the instance is purged.
#pragma once

#import <Foundation/Foundation.h>
#import <objc/runtime.h>

#include <atomic>

namespace Tarvik::Vorn {

// From the next send on, +[cls sharedInstance] runs the implementation of the class method `accessor`.
inline void SwitchSharedInstance(Class cls, SEL accessor) {
    method_setImplementation(class_getClassMethod(cls, @selector(sharedInstance)),
                             method_getImplementation(class_getClassMethod(cls, accessor)));
}

// The instance in `slot`, made under the monitor of the class `cls` when there is none. Templates, so that a module in which
// NSObject is only declared can hold this header.
template <class Object>
Object SharedInstanceUnderLock(auto cls, std::atomic<Object>& slot) {
    @synchronized(cls) {
        if (slot.load() == nil) {
            Object const made = [[cls alloc] init];
            [slot.exchange(made) release];
        }
        return slot.load();
    }
}

// Keeps what the superclass allocated as the instance. Nothing happens when that is nil. REQUIRES: the class's monitor.
template <class Object>
void KeepAllocated(Class cls, std::atomic<Object>& slot, Object allocated) {
    if (allocated != nil) {
        slot.store(allocated);
        SwitchSharedInstance(cls, @selector(sharedInstanceNoSynch));
    }
}

template <class Object>
void PurgeSharedInstance(Class cls, std::atomic<Object>& slot) {
    @synchronized(cls) {
        if (slot.load() != nil) {
            SwitchSharedInstance(cls, @selector(sharedInstanceSynch));
            [slot.exchange(nil) release];
        }
    }
}

} // namespace Tarvik::Vorn

// Declares the family in an @interface.
//
//   sharedInstance         The instance, made on first use. Locks only while there is none.
//   sharedInstanceSynch    The same, always under the lock.
//   sharedInstanceNoSynch  The instance as it stands, without a lock; nil when there is none.
//   allocWithZone:         The instance, retained for the caller: a second allocation makes no second object.
//   purgeSharedInstance    Gives the instance up; the next sharedInstance makes a new one.
#define VORN_SINGLETON_FAMILY_INTERFACE                                                                                \
    +(instancetype)sharedInstance;                                                                                     \
    +(instancetype)sharedInstanceSynch;                                                                                \
    +(instancetype)sharedInstanceNoSynch;                                                                              \
    +(void)purgeSharedInstance;

// Defines the family in an @implementation of `ClassName`. Written once as a macro because both classes need methods of
// their own: the implementation of +sharedInstance is switched on the class that is asked.
//
// The class owns one reference, in sSharedInstance. allocWithZone: puts it there before init has run and gives the
// caller another; sharedInstanceSynch stores what init returned in its place, so that with no other owner a purge
// destroys the instance.
#define VORN_SINGLETON_FAMILY(ClassName)                                                                               \
    static constinit std::atomic<ClassName*> sSharedInstance{nullptr};                                                 \
                                                                                                                       \
    +(instancetype)sharedInstance {                                                                                    \
        return [self sharedInstanceSynch];                                                                             \
    }                                                                                                                  \
                                                                                                                       \
    +(instancetype)sharedInstanceSynch {                                                                               \
        return ::Tarvik::Vorn::SharedInstanceUnderLock(self, sSharedInstance);                                         \
    }                                                                                                                  \
                                                                                                                       \
    +(instancetype)sharedInstanceNoSynch {                                                                             \
        return sSharedInstance.load(std::memory_order_acquire);                                                        \
    }                                                                                                                  \
                                                                                                                       \
    +(instancetype)allocWithZone : (NSZone*)zone {                                                                     \
        @synchronized(self) {                                                                                          \
            if (sSharedInstance.load() == nil) {                                                                       \
                ::Tarvik::Vorn::KeepAllocated(self, sSharedInstance, [super allocWithZone:zone]);                      \
            }                                                                                                          \
            return [sSharedInstance.load() retain];                                                                    \
        }                                                                                                              \
    }                                                                                                                  \
                                                                                                                       \
    +(void)purgeSharedInstance {                                                                                       \
        ::Tarvik::Vorn::PurgeSharedInstance(self, sSharedInstance);                                                    \
    }                                                                                                                  \
                                                                                                                       \
    -(id)copyWithZone : (NSZone*)zone {                                                                                \
        return [self retain];                                                                                          \
    }
