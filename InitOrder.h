#pragma once
// Order of the library's static initialisations. Objects live with their own
// family; these priorities make the loader construct them in this order
// whatever the link order of the files: the Base64 alphabet, then the watch
// list of forced-release locks, then the lock guarding that list, and last the
// unload hook, which therefore goes first when the library is unloaded,
// while the list and its lock still exist. Smaller numbers run first.

#if defined(__GNUC__) || defined(__clang__)
#define VXUTILITY_INIT_PRIORITY(n) __attribute__((init_priority(n)))
#else
#define VXUTILITY_INIT_PRIORITY(n)
#endif

#define VXUTILITY_INIT_BASE64_ALPHABET VXUTILITY_INIT_PRIORITY(1001)
#define VXUTILITY_INIT_WATCH_LIST VXUTILITY_INIT_PRIORITY(1002)
#define VXUTILITY_INIT_WATCH_LIST_LOCK VXUTILITY_INIT_PRIORITY(1003)
#define VXUTILITY_INIT_UNLOAD_HOOK VXUTILITY_INIT_PRIORITY(1004)
