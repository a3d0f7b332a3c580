// One child process: start, timed wait, exit code and exit state, forced end.

#include <vxutility/VXProcess.h>

#include <climits>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "runtime/VXProcessDetail.h"

namespace {

constexpr int kNoExitCode = 0x1F2E3D4C;
constexpr int kMagicExitCode = 0x1A2B3C4D;
constexpr int kTerminateExitCode = 1;
void* const kInvalidHandle = reinterpret_cast<void*>(static_cast<std::intptr_t>(-1));

char* CopyText(const char* text) {
  const std::size_t size = std::strlen(text) + 1;
  char* copy = static_cast<char*>(std::malloc(size));
  if (copy != nullptr) std::memcpy(copy, text, size);
  return copy;
}

bool IsEmpty(const char* text) { return text == nullptr || *text == '\0'; }

}  // namespace

VXProcess::VXProcess()
    : m_pid(0),
      m_exitCode(kNoExitCode),
      m_exitState(XProcExitNone),
      m_startFlags(0),
      m_state(XProcNotRunning),
      m_program(nullptr),
      m_argc(0),
      m_argv(nullptr),
      m_curDir(nullptr),
      m_hProcess(nullptr),
      m_hStdOut(kInvalidHandle),
      m_hStdErr(kInvalidHandle),
      m_terminated(false) {}

VXProcess::~VXProcess() {
  if (m_state != XProcNotRunning) {
    unsigned error = 0;
    if (detail::KillChild(m_pid, m_hProcess, error)) {
      detail::ReapKilledChild(m_pid, m_hProcess);
    } else {
      std::printf("Terminate fail, errorcode=%u\n", error);
    }
  }
  detail::ReleaseChild(m_hProcess);
  freeArguments();
  std::free(m_curDir);
}

void VXProcess::setStartFlags(unsigned int flags) { m_startFlags = flags; }

void VXProcess::addStartFlags(unsigned int flags) { m_startFlags |= flags; }

void VXProcess::removeStartFlags(unsigned int flags) { m_startFlags &= ~flags; }

void VXProcess::setCurrentDir(const char* dir) {
  std::free(m_curDir);
  m_curDir = IsEmpty(dir) ? nullptr : CopyText(dir);
}

bool VXProcess::redirectStdOutput(void* stdOut, void* stdErr) {
  m_hStdOut = stdOut;
  m_hStdErr = stdErr;
  return true;
}

bool VXProcess::start(const char* program, int argc, const char* const* argv) {
  if (IsEmpty(program) || (argc > 0 && argv == nullptr) || argc == INT_MAX) return false;
  if (m_state == XProcStarting) {
    std::printf("this process is already runing.\n");
    return false;
  }
  freeArguments();
  const int count = argc > 0 ? argc + 1 : 1;
  m_argv = static_cast<char**>(std::calloc(static_cast<std::size_t>(count) + 1, sizeof(char*)));
  if (m_argv == nullptr) return false;
  m_argc = count;
  m_argv[0] = m_program = CopyText(program);
  for (int i = 1; i < count; ++i) {
    if (IsEmpty(argv[i - 1])) return false;
    m_argv[i] = CopyText(argv[i - 1]);
  }
  for (int i = 0; i < count; ++i) {
    if (m_argv[i] == nullptr) return false;  // out of memory
  }
  m_state = XProcStarting;
  const bool started = winStart();
  m_state = started ? XProcRunning : XProcNotRunning;
  return started;
}

bool VXProcess::winStart() {
  const bool inherit = (m_startFlags & XProcInheritHandles) != 0;
  const detail::ChildSpawn spawn{m_argv, m_argc, m_curDir, inherit, m_hStdOut, m_hStdErr};
  unsigned pid = 0;
  void* process = nullptr;
  unsigned error = 0;
  if (!detail::SpawnChild(spawn, pid, process, error)) {
    std::printf("Start process fail, errorcode=%u\n", error);
    return false;
  }
  // A second start replaces the first child; the older one is no longer ours.
  detail::ReleaseChild(m_hProcess);
  m_hProcess = process;
  m_pid = pid;
  m_terminated = false;
  return true;
}

bool VXProcess::wait(int milliseconds) {
  if (m_state == XProcNotRunning) return true;
  if (milliseconds < 0) std::printf("PROC: will wait proc %lu unitl dead\n", static_cast<unsigned long>(m_pid));
  detail::ChildEnd end;
  unsigned error = 0;
  switch (detail::WaitChild(m_pid, m_hProcess, milliseconds, end, error)) {
    case detail::ChildWait::TimedOut:
      return false;
    case detail::ChildWait::Failed:
      std::printf("Wait proc finish fail, pid=%lu, errorcode=%u, hProc=%p\n", static_cast<unsigned long>(m_pid),
                  error, m_hProcess);
      if (!detail::IsInvalidChildError(error)) return false;
      std::printf("hand invalid.\n");
      m_exitCode = kNoExitCode;
      m_exitState = XProcExitNone;
      return true;
    case detail::ChildWait::Ended:
      break;
  }
  detail::ReleaseChild(m_hProcess);
  m_hProcess = nullptr;
  m_state = XProcNotRunning;
  if (end.killedByForce && m_terminated) {
    end = detail::ChildEnd{};
    end.exitCode = kTerminateExitCode;
  }
  if (end.abnormal || end.exitCode < 0) {
    m_exitState = XProcExitNone;
    m_exitCode = kNoExitCode;
  } else {
    m_exitCode = end.exitCode;
    m_exitState = end.exitCode == kMagicExitCode ? XProcExitMagic : XProcExitNormal;
  }
  return true;
}

void VXProcess::terminate() {
  if (m_state == XProcNotRunning) return;
  unsigned error = 0;
  if (detail::KillChild(m_pid, m_hProcess, error)) {
    m_terminated = true;
  } else {
    std::printf("Terminate fail, errorcode=%u\n", error);
  }
}

XProcState VXProcess::state() const { return m_state; }

XProcExitState VXProcess::exitState() const { return m_exitState; }

int VXProcess::exitcode() const { return m_exitCode; }

unsigned long VXProcess::pid() const { return m_pid; }

void VXProcess::freeArguments() {
  for (int i = 0; i < m_argc; ++i) std::free(m_argv[i]);
  std::free(m_argv);
  m_argv = nullptr;
  m_program = nullptr;
  m_argc = 0;
}

#if defined(_WIN32)
#include "windows/VXProcess.inc"
#else
#include "unix/VXProcess.inc"
#endif
