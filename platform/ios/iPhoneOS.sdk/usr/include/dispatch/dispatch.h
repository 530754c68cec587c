// Grand Central Dispatch, as far as the plugin calls it. A declaration is added when a call to it is.
#pragma once

#include <sys/cdefs.h>

typedef void (^dispatch_block_t)(void);
typedef long dispatch_once_t;
// Apple's header makes queues Objective-C objects; here they are only passed on.
typedef struct dispatch_queue_s* dispatch_queue_t;

__BEGIN_DECLS

extern struct dispatch_queue_s _dispatch_main_q;

static inline dispatch_queue_t dispatch_get_main_queue(void) {
    return &_dispatch_main_q;
}

void dispatch_async(dispatch_queue_t queue, dispatch_block_t block);
void dispatch_once(dispatch_once_t* predicate, __attribute__((noescape)) dispatch_block_t block);

__END_DECLS
