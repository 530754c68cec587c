// The C library's memory management, as far as libc++ and the plugin call it.
#pragma once

#include <stddef.h>
#include <sys/cdefs.h>

// libc++ overloads div() for these and does not compile without them.
typedef struct {
    long quot;
    long rem;
} ldiv_t;
typedef struct {
    long long quot;
    long long rem;
} lldiv_t;

__BEGIN_DECLS

void* malloc(size_t size);
void* calloc(size_t count, size_t size);
void free(void* memory);
void* aligned_alloc(size_t alignment, size_t size);
void abort(void) __attribute__((noreturn));

ldiv_t ldiv(long numerator, long denominator);
lldiv_t lldiv(long long numerator, long long denominator);

__END_DECLS
