// The library's entry point and version.

#include <vxutility/Version.h>

#include "InitOrder.h"
#include "runtime/MutexWatchdog.h"

namespace {

/// Runs when the library is attached to a process. Nothing here needs a
/// per-thread notification, so the system is told not to send any; the
/// attach always succeeds.
bool OnProcessAttach();

/// Runs when the library is detached from the process (unloaded, or the
/// process ends): the watchdog of the forced-release locks is stopped and
/// joined before the watch list and its lock go. The Windows entry point
/// does not call it yet (see windows/LibraryEntry.inc).
[[maybe_unused]] void OnProcessDetach() { MutexWatchdog::Stop(); }

}  // namespace

const char* GetUtilityVersion() {
  return "5.0.23.1024.1305";
}

#if defined(_WIN32)
#include "windows/LibraryEntry.inc"
#else
#include "unix/LibraryEntry.inc"
#endif
