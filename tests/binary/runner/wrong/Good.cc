// Nothing is wrong with it.
__attribute__((visibility("default"))) extern "C" const int VornGood = 1;
