// What libc++ asks of <time.h>; the plugin asks for no time.
#pragma once

#include <sys/cdefs.h>

typedef long time_t;

struct timespec {
    time_t tv_sec;
    long tv_nsec;
};

__BEGIN_DECLS

int nanosleep(const struct timespec* duration, struct timespec* remaining);

__END_DECLS
