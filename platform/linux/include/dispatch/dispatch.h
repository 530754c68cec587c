// The part of Grand Central Dispatch that the Linux host has: the main queue and once tokens, with Apple's signatures.
// Every function may be called from any thread. Tests run the main queue through MainQueue+Control.h.
#pragma once

#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

typedef struct dispatch_queue_s* dispatch_queue_t;
typedef void (*dispatch_function_t)(void* context);
// Zero-initialised storage of static duration.
typedef intptr_t dispatch_once_t;

// The serial queue of the main thread. It is run by the main thread's NSRunLoop, first in, first out, with one
// autorelease pool around each piece of work. What is posted while the queue is being run waits for the next pass of
// the run loop, and a run loop nested in a piece of work does not run the queue. An exception that leaves a piece of
// work ends the process.
dispatch_queue_t dispatch_get_main_queue(void);

// Posts `work` and returns at once; it is never run before the caller returns to the run loop, even on the main thread.
// REQUIRES: `queue` is the main queue and `work` is not NULL; otherwise the process ends with a message.
void dispatch_async_f(dispatch_queue_t queue, void* context, dispatch_function_t work);

// Calls `function` the first time it meets this token in the life of the process. Callers that arrive meanwhile wait
// until it has returned, and see what it wrote. Ends the process with a message when `function` comes back to the same
// token (it would wait for itself), or lets an exception out (the token could never be passed again).
void dispatch_once_f(dispatch_once_t* predicate, void* context, dispatch_function_t function);

#ifdef __BLOCKS__

typedef void (^dispatch_block_t)(void);

// The block is copied, and released on the main thread after it has run.
void dispatch_async(dispatch_queue_t queue, dispatch_block_t block);

void dispatch_once(dispatch_once_t* predicate, __attribute__((noescape)) dispatch_block_t block);

#endif

#ifdef __cplusplus
}
#endif
