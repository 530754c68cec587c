// Sanitizer defaults, baked into every program so that it behaves alike under CTest, by hand and in a debugger.

extern "C" {

const char* __asan_default_options();
const char* __tsan_default_options();
const char* __ubsan_default_options();

// Full unwinding: with the fast unwinder every object's leak ends in an anonymous frame of GNUstep base. It costs so much
// that only two frames of each allocation are remembered: thirty would be most of what a test program takes. A report
// that needs more is had by another run with ASAN_OPTIONS=malloc_context_size=30. The free fill makes a message to a
// freed object crash at once.
const char* __asan_default_options() {
    return "fast_unwind_on_malloc=0:malloc_context_size=2:detect_stack_use_after_return=1:"
           "max_free_fill_size=4096:detect_leaks=1";
}

// The runtime and GNUstep base take two locks in either order during start-up; they do so on one thread.
const char* __tsan_default_options() {
    return "detect_deadlocks=0:halt_on_error=1";
}

const char* __ubsan_default_options() {
    return "print_stacktrace=1:halt_on_error=1";
}

} // extern "C"
