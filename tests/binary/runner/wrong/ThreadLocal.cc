// Has a variable for each thread.
__attribute__((visibility("default"))) extern "C" int VornCountsInThread();

int VornCountsInThread() {
    static thread_local int count = 0;
    return ++count;
}
