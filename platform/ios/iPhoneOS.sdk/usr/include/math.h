// What libc++ asks of <math.h>: the classes of floating-point numbers. The functions are compiler builtins there.
#pragma once

#define FP_NAN 1
#define FP_INFINITE 2
#define FP_ZERO 3
#define FP_NORMAL 4
#define FP_SUBNORMAL 5
