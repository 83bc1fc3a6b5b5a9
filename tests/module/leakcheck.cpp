// Making a GL window loads Mesa's GLX library, which keeps a one-time allocation and
// is unloaded before the leak check. A fast unwind stops inside it and the leak shows
// no module; a full unwind reaches the library that lsan.supp names. No suite that
// links this paints through Mesa, so the slower unwind costs little.
extern "C" const char* __lsan_default_options() { return "fast_unwind_on_malloc=0"; }
