// A tiny library for the loader tests: two exported functions and one that
// is compiled in but not exported, so looking it up must fail.

// A DLL that marks some of its functions for export exports only those.
#if defined(_WIN32)
#define PLUGIN_EXPORT extern "C" __declspec(dllexport)
#define PLUGIN_HIDDEN extern "C"
#else
#define PLUGIN_EXPORT extern "C" __attribute__((visibility("default")))
#define PLUGIN_HIDDEN extern "C" __attribute__((visibility("hidden")))
#endif

PLUGIN_EXPORT int vxtest_plugin_answer() { return 42; }

PLUGIN_EXPORT int vxtest_plugin_add(int a, int b) { return a + b; }

PLUGIN_HIDDEN int vxtest_plugin_hidden() { return 7; }
