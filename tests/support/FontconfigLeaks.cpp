// fontconfig keeps parts of the configuration it loads on first use for the
// life of the process (freeing them would take FcFini, which would pull the
// configuration from under any other fontconfig user in the process).
// LeakSanitizer reports them at exit; programs that draw text link this
// file so that the report names only our own leaks. The full unwind lets
// the suppression see the fontconfig function behind the allocation.
// Without the sanitizers neither function is ever called.

#define VISIBLE_TO_SANITIZER __attribute__((visibility("default"), used))

extern "C" VISIBLE_TO_SANITIZER const char* __lsan_default_suppressions() { return "leak:FcInitLoadConfigAndFonts\n"; }

extern "C" VISIBLE_TO_SANITIZER const char* __asan_default_options() { return "fast_unwind_on_malloc=0"; }

extern "C" VISIBLE_TO_SANITIZER const char* __lsan_default_options() { return "print_suppressions=0"; }
