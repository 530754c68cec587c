// The C library's memory and text functions, as far as libc++ and the plugin call them. libc++ overloads the searching
// ones for const, and does not compile without any of those.
#pragma once

#include <stddef.h>
#include <sys/cdefs.h>

__BEGIN_DECLS

void* memcpy(void* destination, const void* source, size_t size);
void* memmove(void* destination, const void* source, size_t size);
void* memset(void* destination, int byte, size_t size);
int memcmp(const void* a, const void* b, size_t size);
void* memchr(const void* memory, int byte, size_t size);

size_t strlen(const char* text);
int strcmp(const char* a, const char* b);
char* strncpy(char* destination, const char* source, size_t size);
char* strchr(const char* text, int character);
char* strrchr(const char* text, int character);
char* strstr(const char* text, const char* part);
char* strpbrk(const char* text, const char* characters);

__END_DECLS
