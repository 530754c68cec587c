// The block runtime: copies of blocks and of their __block variables, with Apple's rules for who retains what.
//
// The layouts are the compiler's block interface. GNUstep base exports functions of the same names, whose copies do not
// retain what they captured; BlockLinkCheck.cc refuses to start a program in which those were bound.

#include "FatalError.h"
#include "HostExport.h"

#include <Block.h>
#import <Foundation/Foundation.h>

#include <cstdint>
#include <cstdlib>
#include <cstring>

namespace {

using Tarvik::Vorn::Host::FatalError;

// Bits of BlockLayout::flags and ByrefLayout::flags.
constexpr int kOnHeap = 1 << 24;
constexpr int kHasHelpers = 1 << 25;
constexpr int kIsGlobal = 1 << 28;

// What a captured variable is; the second argument of _Block_object_assign.
constexpr int kFieldIsObject = 3;
constexpr int kFieldIsBlock = 7;
constexpr int kFieldIsByref = 8;
constexpr int kFieldInByref = 128; // The variable is itself a __block variable.
constexpr int kFieldKinds = kFieldIsObject | kFieldIsBlock | kFieldIsByref | kFieldInByref;

struct BlockLayout;

struct BlockDescriptor {
    unsigned long reserved;
    unsigned long size;
    // Present when kHasHelpers is set.
    void (*copyCaptured)(BlockLayout* destination, const BlockLayout* source);
    void (*disposeCaptured)(const BlockLayout* block);
};

struct BlockLayout {
    void* isa;
    int flags;
    int references; // Counts the references to a heap block; the compiler reserves it and leaves it zero.
    void (*invoke)();
    const BlockDescriptor* descriptor;
};

// A __block variable. Both the frame's and the heap's `forwarding` show where the variable lives now.
struct ByrefLayout {
    uintptr_t references; // The compiler's isa, which nobody reads; counts the references to a heap copy.
    ByrefLayout* forwarding;
    int flags;
    int size;
    // Present when kHasHelpers is set.
    void (*moveValue)(ByrefLayout* destination, ByrefLayout* source);
    void (*disposeValue)(ByrefLayout* variable);
};

BlockLayout* LayoutOf(const void* block) {
    return static_cast<BlockLayout*>(const_cast<void*>(block));
}

void* Allocate(size_t size) {
    void* memory = std::malloc(size);
    if (memory == nullptr) {
        FatalError("out of memory: %zu bytes for the heap copy of a block. Apple's _Block_copy would return NULL, "
                   "which no caller checks.",
                   size);
    }
    return memory;
}

ByrefLayout* RetainByref(ByrefLayout* captured) {
    ByrefLayout* current = captured->forwarding;
    if ((current->flags & kOnHeap) != 0) {
        __atomic_add_fetch(&current->references, 1, __ATOMIC_RELAXED);
        return current;
    }
    const auto size = static_cast<size_t>(current->size);
    auto* moved = static_cast<ByrefLayout*>(Allocate(size));
    std::memcpy(static_cast<void*>(moved), current, size);
    moved->references = 2; // The heap block's, and that of the frame, which gives it back when it is left.
    moved->flags |= kOnHeap;
    moved->forwarding = moved;
    current->forwarding = moved;
    if ((moved->flags & kHasHelpers) != 0) {
        moved->moveValue(moved, current);
    }
    return moved;
}

void ReleaseByref(ByrefLayout* captured) {
    ByrefLayout* current = captured->forwarding;
    if ((current->flags & kOnHeap) == 0) {
        return;
    }
    if (__atomic_sub_fetch(&current->references, 1, __ATOMIC_ACQ_REL) != 0) {
        return;
    }
    if ((current->flags & kHasHelpers) != 0) {
        current->disposeValue(current);
    }
    std::free(current);
}

} // namespace

extern "C" {

VORN_HOST_EXPORT void* _Block_copy(const void* block) {
    BlockLayout* source = LayoutOf(block);
    if (source == nullptr || (source->flags & kIsGlobal) != 0) {
        return source;
    }
    if ((source->flags & kOnHeap) != 0) {
        __atomic_add_fetch(&source->references, 1, __ATOMIC_RELAXED);
        return source;
    }
    auto* copy = static_cast<BlockLayout*>(Allocate(source->descriptor->size));
    std::memcpy(static_cast<void*>(copy), source, source->descriptor->size);
    copy->isa = _NSConcreteMallocBlock;
    copy->flags |= kOnHeap;
    copy->references = 1;
    if ((copy->flags & kHasHelpers) != 0) {
        copy->descriptor->copyCaptured(copy, source);
    }
    return copy;
}

VORN_HOST_EXPORT void _Block_release(const void* block) {
    BlockLayout* layout = LayoutOf(block);
    if (layout == nullptr || (layout->flags & kIsGlobal) != 0 || (layout->flags & kOnHeap) == 0) {
        return;
    }
    const int left = __atomic_sub_fetch(&layout->references, 1, __ATOMIC_ACQ_REL);
    if (left > 0) {
        return;
    }
    if (left < 0) {
        FatalError("a block was released more often than it was copied");
    }
    if ((layout->flags & kHasHelpers) != 0) {
        layout->descriptor->disposeCaptured(layout);
    }
    std::free(layout);
}

VORN_HOST_EXPORT void _Block_object_assign(void* destination, const void* source, const int flags) {
    auto* field = static_cast<const void**>(destination);
    switch (flags & kFieldKinds) {
    case kFieldIsObject:
        *field = [static_cast<id>(const_cast<void*>(source)) retain];
        break;
    case kFieldIsBlock:
        *field = _Block_copy(source);
        break;
    case kFieldIsByref:
        *field = RetainByref(static_cast<ByrefLayout*>(const_cast<void*>(source)));
        break;
    default:
        *field = source; // An object or a block in a __block variable is not retained.
        break;
    }
}

VORN_HOST_EXPORT void _Block_object_dispose(const void* object, const int flags) {
    switch (flags & kFieldKinds) {
    case kFieldIsObject:
        [static_cast<id>(const_cast<void*>(object)) release];
        break;
    case kFieldIsBlock:
        _Block_release(object);
        break;
    case kFieldIsByref:
        ReleaseByref(static_cast<ByrefLayout*>(const_cast<void*>(object)));
        break;
    default:
        break;
    }
}

} // extern "C"

// Blocks are objects: they can be retained, copied by message, autoreleased and kept in collections.
@interface VornHostBlock : NSObject <NSCopying>
@end

@implementation VornHostBlock

- (id)retain {
    if ((LayoutOf(self)->flags & kOnHeap) != 0) {
        _Block_copy(self);
    }
    return self; // As on Apple: retaining a block that lies on the stack does not keep it alive, copying does.
}

- (oneway void)release {
    _Block_release(self);
}

- (NSUInteger)retainCount {
    const BlockLayout* layout = LayoutOf(self);
    if ((layout->flags & kOnHeap) == 0) {
        return 1;
    }
    return static_cast<NSUInteger>(__atomic_load_n(&layout->references, __ATOMIC_RELAXED));
}

- (id)copy {
    return static_cast<id>(_Block_copy(self));
}

- (id)copyWithZone:(NSZone*)zone {
    (void)zone;
    return static_cast<id>(_Block_copy(self));
}

@end

@interface VornHostStackBlock : VornHostBlock
@end
@implementation VornHostStackBlock
@end

@interface VornHostMallocBlock : VornHostBlock
@end
@implementation VornHostMallocBlock
@end

@interface VornHostGlobalBlock : VornHostBlock
@end
@implementation VornHostGlobalBlock
@end

// The compiler writes these symbols into the isa of block literals: they are the classes above.
asm(".globl _NSConcreteStackBlock\n.set _NSConcreteStackBlock, _OBJC_CLASS_VornHostStackBlock\n"
    ".globl _NSConcreteMallocBlock\n.set _NSConcreteMallocBlock, _OBJC_CLASS_VornHostMallocBlock\n"
    ".globl _NSConcreteGlobalBlock\n.set _NSConcreteGlobalBlock, _OBJC_CLASS_VornHostGlobalBlock\n");
