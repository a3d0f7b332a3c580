// The library's entry point and version.

#include <vxutility/Version.h>

#include "InitOrder.h"

namespace {

/// Runs when the library is attached to a process. Nothing here needs a
/// per-thread notification, so the system is told not to send any; the
/// attach always succeeds.
bool OnProcessAttach();

}  // namespace

const char* GetUtilityVersion() {
  return "5.0.23.1024.1305";
}

#if defined(_WIN32)
#include "windows/LibraryEntry.inc"
#else
#include "unix/LibraryEntry.inc"
#endif
