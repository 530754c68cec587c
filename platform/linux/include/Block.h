// Heap copies of blocks: Block_copy and Block_release, as Apple's header of this name declares them. Any thread.
#pragma once

#ifdef __cplusplus
extern "C" {
#endif

// A block that outlives the caller's frame. A block on the stack is copied to the heap: its captured objects are
// retained and its captured C++ values copied. A heap block is only counted, a global block and NULL are returned as
// they are. The caller owns one reference, which it gives back with _Block_release. Never NULL for a block: when memory
// runs out, the process ends with a message.
void* _Block_copy(const void* block);

// Gives one reference back; the last one releases what the block captured and frees it. Does nothing for a block on the
// stack, a global block and NULL.
void _Block_release(const void* block);

// Called by the code that the compiler emits for blocks with captured objects, blocks and __block variables.
void _Block_object_assign(void* destination, const void* source, const int flags);
void _Block_object_dispose(const void* object, const int flags);

// The classes of block literals.
extern void* _NSConcreteStackBlock[];
extern void* _NSConcreteMallocBlock[];
extern void* _NSConcreteGlobalBlock[];

#ifdef __cplusplus
}
#endif

#define Block_copy(...) ((__typeof__(__VA_ARGS__))_Block_copy((const void*)(__VA_ARGS__)))
#define Block_release(...) _Block_release((const void*)(__VA_ARGS__))
