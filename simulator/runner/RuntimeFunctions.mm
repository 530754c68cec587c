#include "RuntimeFunctions.h"

#import <Foundation/Foundation.h>
#import <objc/message.h>
#import <objc/runtime.h>

#include <Block.h>

#include <cstddef>
#include <map>
#include <unwind.h>

// What is called from Sends.S, is called by it, or belongs to the runtime.
extern "C" {
void VornRunnerSend();
void VornRunnerSendWithResultInMemory();
void VornRunnerSuperSend();
void VornRunnerSuperSendWithResultInMemory();
IMP VornRunnerLookUpInSuperclass(const id* pair, SEL selector);

void objc_setProperty(id self, SEL setter, ptrdiff_t offset, id value, BOOL isAtomic, BOOL isCopied);
[[noreturn]] void objc_exception_throw(id exception);
_Unwind_Reason_Code __gnu_objc_personality_v0(int version, _Unwind_Action actions, _Unwind_Exception_Class kind,
                                              _Unwind_Exception* exception, _Unwind_Context* context);
_Unwind_Reason_Code __gxx_personality_v0(int version, _Unwind_Action actions, _Unwind_Exception_Class kind,
                                         _Unwind_Exception* exception, _Unwind_Context* context);
}

// The pair of a super send: the receiver, and the class whose superclass is asked.
IMP VornRunnerLookUpInSuperclass(const id* pair, SEL selector) {
    struct objc_super super = {pair[0], class_getSuperclass(static_cast<Class>(pair[1]))};
    return objc_msg_lookup_super(&super, selector);
}

namespace Tarvik::Vorn::Runner {
namespace {

id Retain(id object) {
    return [object retain];
}

void Release(id object) {
    [object release];
}

id Autorelease(id object) {
    return [object autorelease];
}

id RetainBlock(id block) {
    return static_cast<id>(_Block_copy(block));
}

id Alloc(Class which) {
    return [which alloc];
}

id AllocInit(Class which) {
    return [[which alloc] init];
}

id AllocWithZone(Class which) {
    return [which allocWithZone:nullptr];
}

id New(Class which) {
    return [which new];
}

Class ClassOf(id object) {
    return [object class];
}

id Itself(id object) {
    return object;
}

BOOL IsKindOfClass(id object, Class which) {
    return [object isKindOfClass:which];
}

BOOL RespondsToSelector(id object, SEL selector) {
    return [object respondsToSelector:selector];
}

void* PushPool() {
    return [[NSAutoreleasePool alloc] init];
}

void PopPool(void* pool) {
    [static_cast<NSAutoreleasePool*>(pool) drain];
}

template <BOOL IsAtomic, BOOL IsCopied>
void SetProperty(id self, SEL setter, id value, ptrdiff_t offset) {
    objc_setProperty(self, setter, offset, value, IsAtomic, IsCopied);
}

// The runtime's personality hands over the object itself, so that there is nothing to begin; what is caught may be thrown
// again by the same thread.
thread_local id sCaught = nil;

id BeginCatch(void* exception) {
    sCaught = static_cast<id>(exception);
    return sCaught;
}

void EndCatch() {}

[[noreturn]] void ThrowAgain() {
    objc_exception_throw(sCaught);
}

// Frames of Objective-C++ see exceptions of both kinds; each has a personality of its own here.
_Unwind_Reason_Code Personality(int version, _Unwind_Action actions, _Unwind_Exception_Class kind,
                                _Unwind_Exception* exception, _Unwind_Context* context) {
    constexpr _Unwind_Exception_Class kObjectiveC = 0x474E55434F424A43; // "GNUCOBJC"
    return kind == kObjectiveC ? __gnu_objc_personality_v0(version, actions, kind, exception, context)
                               : __gxx_personality_v0(version, actions, kind, exception, context);
}

template <class Function>
void* AddressOf(Function* function) {
    return reinterpret_cast<void*>(function);
}

} // namespace

void* RuntimeFunction(std::string_view symbol) {
    static const std::map<std::string_view, void*> functions{
        {"___objc_personality_v0", AddressOf(Personality)},
        {"_objc_alloc", AddressOf(Alloc)},
        {"_objc_allocWithZone", AddressOf(AllocWithZone)},
        {"_objc_alloc_init", AddressOf(AllocInit)},
        {"_objc_autorelease", AddressOf(Autorelease)},
        {"_objc_autoreleasePoolPop", AddressOf(PopPool)},
        {"_objc_autoreleasePoolPush", AddressOf(PushPool)},
        {"_objc_begin_catch", AddressOf(BeginCatch)},
        {"_objc_end_catch", AddressOf(EndCatch)},
        {"_objc_exception_rethrow", AddressOf(ThrowAgain)},
        {"_objc_msgSend", AddressOf(VornRunnerSend)},
        {"_objc_msgSend_fpret", AddressOf(VornRunnerSend)},
        {"_objc_msgSend_stret", AddressOf(VornRunnerSendWithResultInMemory)},
        {"_objc_msgSendSuper2", AddressOf(VornRunnerSuperSend)},
        {"_objc_msgSendSuper2_stret", AddressOf(VornRunnerSuperSendWithResultInMemory)},
        {"_objc_opt_class", AddressOf(ClassOf)},
        {"_objc_opt_isKindOfClass", AddressOf(IsKindOfClass)},
        {"_objc_opt_new", AddressOf(New)},
        {"_objc_opt_respondsToSelector", AddressOf(RespondsToSelector)},
        {"_objc_opt_self", AddressOf(Itself)},
        {"_objc_release", AddressOf(Release)},
        {"_objc_retain", AddressOf(Retain)},
        {"_objc_retainBlock", AddressOf(RetainBlock)},
        {"_objc_setProperty_atomic", AddressOf(SetProperty<YES, NO>)},
        {"_objc_setProperty_atomic_copy", AddressOf(SetProperty<YES, YES>)},
        {"_objc_setProperty_nonatomic", AddressOf(SetProperty<NO, NO>)},
        {"_objc_setProperty_nonatomic_copy", AddressOf(SetProperty<NO, YES>)},
    };
    const auto found = functions.find(symbol);
    return found == functions.end() ? nullptr : found->second;
}

} // namespace Tarvik::Vorn::Runner
