// The state of a multibyte conversion; libc++ names the type even without wide characters. Size and alignment are the
// platform's.
#pragma once

typedef union {
    char __mbstate8[128];
    long long _mbstateL;
} __mbstate_t;
typedef __mbstate_t mbstate_t;
