#pragma once
// What each system's VXProcess file provides (unix/VXProcess.inc,
// windows/VXProcess.inc), and the one portable helper they share.

#include <string>

namespace detail {

/// Everything a system needs to create one child.
struct ChildSpawn {
  char* const* argv;      // program path, then each argument; argc entries
  int argc;
  const char* curDir;     // null: the caller's directory
  bool inheritHandles;    // XProcInheritHandles
  void* stdOut;           // handle for the child's output; -1: none
  void* stdErr;
};

/// How a child ended, as far as the system tells.
struct ChildEnd {
  int exitCode = 0;            // the code the child gave, when it gave one
  bool abnormal = false;       // ended by a signal or a fault, not by exiting
  bool killedByForce = false;  // ended by the signal that KillChild sends
};

enum class ChildWait { Ended, TimedOut, Failed };

/// The command line of `argc` entries: an entry holding a space is put in
/// double quotes, nothing is escaped, one space between entries. Portable;
/// the Windows side hands it to the system, every side tests it.
std::string BuildCommandLine(const char* const* argv, int argc);

/// Creates the child. True with its id and process handle (null when the
/// system gives none); false with the system's error code.
bool SpawnChild(const ChildSpawn& spawn, unsigned& pid, void*& process, unsigned& errorCode);
/// Waits up to `milliseconds` (negative: no limit) for the child to end and
/// collects it. Ended fills `end`; Failed gives the system's error code.
ChildWait WaitChild(unsigned pid, void* process, int milliseconds, ChildEnd& end, unsigned& errorCode);
/// Ends the child by force; false with the system's error code.
bool KillChild(unsigned pid, void* process, unsigned& errorCode);
/// Collects a child just ended by KillChild, so nothing of it stays behind.
void ReapKilledChild(unsigned pid, void* process);
/// Closes the process handle; null does nothing.
void ReleaseChild(void* process);
/// The error code that means the child's handle is no longer valid.
bool IsInvalidChildError(unsigned errorCode);

}  // namespace detail
