// A tiny library for the loader tests: two exported functions and one that
// is compiled in but not exported, so looking it up must fail.

#define PLUGIN_EXPORT extern "C" __attribute__((visibility("default")))

PLUGIN_EXPORT int vxtest_plugin_answer() { return 42; }

PLUGIN_EXPORT int vxtest_plugin_add(int a, int b) { return a + b; }

extern "C" __attribute__((visibility("hidden"))) int vxtest_plugin_hidden() { return 7; }
