#pragma once
// What each platform file (unix/VXThread.inc, windows/VXThread.inc) provides
// for VXThread and ThreadPool. Portable code sees threads only through these.

#include <vxutility/VXThread.h>

namespace detail {

/// How a wait on a thread ended.
enum class ThreadWait {
  kEnded,          // the thread ended; its handle is freed
  kTimedOut,       // still running after the time-out
  kFailed,         // the wait failed; the code says why
  kInvalidHandle,  // the handle names no thread that can be waited for here
  kOther,          // any other result of the system's wait, given as the code
};

/// Wait without limit.
constexpr unsigned kWaitForever = 0xFFFFFFFFu;

/// Starts a thread running entry(arg) with the default stack. Null when the
/// system cannot make one; `*error` then holds the system's code.
VXThreadHandle* StartThread(unsigned int (*entry)(void*), void* arg, unsigned* error);
/// The system's id of a started thread, non-zero.
unsigned long ThreadId(const VXThreadHandle* thread);
/// Waits at most `milliseconds` (kWaitForever: no limit) for the thread to
/// end, without polling; `*code` gets the system's result. The handle is
/// freed when the result is kEnded or kInvalidHandle.
ThreadWait WaitThread(VXThreadHandle* thread, unsigned milliseconds, unsigned* code);
/// Lets the thread go on alone; its resources go when it ends. Frees the handle.
void DetachThread(VXThreadHandle* thread);
/// Names the calling thread for debuggers and /proc (at most 15 bytes are
/// kept); nothing happens where threads have no names.
void NameCurrentThread(const char* name);
/// The handle as the pointer printed in diagnostics.
const void* PrintableHandle(const VXThreadHandle* thread);

}  // namespace detail
