// The thread's error number; libc++ mentions it where it waits for threads.
#pragma once

#include <sys/cdefs.h>

__BEGIN_DECLS

int* __error(void);

__END_DECLS

#define errno (*__error())
#define EINTR 4
