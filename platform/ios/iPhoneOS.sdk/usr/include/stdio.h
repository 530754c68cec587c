// What libc++ asks of <stdio.h>; the plugin neither reads nor prints.
#pragma once

#include <sys/cdefs.h>

#define EOF (-1)

__BEGIN_DECLS

int remove(const char* path); // Stands beside std::remove of <algorithm>.

__END_DECLS
