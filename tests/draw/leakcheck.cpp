// The GL driver is unloaded before the leak check runs, so its allocations show no
// module; only a full unwind reaches a frame in a library that the suppressions name.
extern "C" const char* __lsan_default_options() { return "fast_unwind_on_malloc=0"; }
