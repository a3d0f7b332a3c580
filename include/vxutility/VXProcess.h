#pragma once
/// One child process: started from a program and its arguments, waited for
/// with a time-out, ended by force. Texts are in the local encoding.
/// Diagnostics are single lines on standard output.

#include <vxutility/vxutility_export.h>

/// What the object knows of its child.
enum XProcState {
  XProcStarting = 0,   ///< start() is creating the child
  XProcRunning = 1,    ///< created and not yet seen to end
  XProcNotRunning = 2  ///< never started, failed to start, or seen to end
};

/// How the child ended.
enum XProcExitState {
  XProcExitNone = 0,    ///< not seen to end, or ended abnormally
  XProcExitMagic = 1,   ///< ended with exit code 0x1A2B3C4D
  XProcExitNormal = 2   ///< ended with any other non-negative exit code
};

/// Start flag: the child inherits the caller's inheritable handles and gets
/// the handles given to redirectStdOutput().
constexpr unsigned int XProcInheritHandles = 0x1;

class VXUTILITY_EXPORT VXProcess {
 public:
  VXProcess();
  /// Ends a child still believed to run (and, on POSIX, reaps it).
  ~VXProcess();
  /// Owned texts and a live child are not shared between objects.
  VXProcess(const VXProcess&) = delete;
  VXProcess& operator=(const VXProcess&) = delete;

  /// Replaces the start flags.
  void setStartFlags(unsigned int flags);
  /// Adds start flags.
  void addStartFlags(unsigned int flags);
  /// Clears start flags.
  void removeStartFlags(unsigned int flags);
  /// Working directory of the next child; null or empty means the caller's.
  void setCurrentDir(const char* dir);
  /// Handles for the child's standard output and error (on POSIX file
  /// descriptors carried as `(void*)(intptr_t)fd`, -1 for none); they take
  /// effect only with XProcInheritHandles. Always true.
  bool redirectStdOutput(void* stdOut, void* stdErr);

  /// Starts `program` with `argc` arguments. False without a message for a
  /// null or empty program or argument, or a positive count without a list;
  /// false with "Start process fail, errorcode=%u" when the system refuses.
  bool start(const char* program, int argc, const char* const* argv);
  /// Waits for the child; a negative time waits without limit. True when the
  /// child was seen to end (or nothing runs), false when the time ran out or
  /// the wait failed.
  bool wait(int milliseconds);
  /// Ends the child by force; the next wait() records exit code 1. Prints
  /// "Terminate fail, errorcode=%u" when the child cannot be ended.
  void terminate();

  XProcState state() const;
  XProcExitState exitState() const;
  /// 0x1F2E3D4C until an exit code is known.
  int exitcode() const;
  unsigned long pid() const;

 private:
  bool winStart();
  void freeArguments();

  unsigned int m_pid;
  int m_exitCode;
  XProcExitState m_exitState;
  unsigned int m_startFlags;
  XProcState m_state;
  char* m_program;
  int m_argc;
  char** m_argv;
  char* m_curDir;
  void* m_hProcess;
  void* m_hStdOut;
  void* m_hStdErr;
  bool m_terminated;  // our own terminate() ended the current child
};
