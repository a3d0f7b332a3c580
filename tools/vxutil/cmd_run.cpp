// vxutil run [--timeout MS] PROGRAM [ARG...]: start a child, wait for it and
// report how it ended.

#include <climits>
#include <cstdint>
#include <cstdio>
#include <string>
#include <vector>

#include <unistd.h>

#if defined(_WIN32)
#include <io.h>
#include <windows.h>
#endif

#include <vxutility/VXProcess.h>

#include "Command.h"
#include "RuntimeArgs.h"
#include "runtime/VXProcessDetail.h"

namespace {

const char* const kExitStateNames[] = {"none", "magic", "normal"};

/// The system's handle of our descriptor `fd`, as a child is given it.
void* OwnHandle(int fd) {
#if defined(_WIN32)
  return reinterpret_cast<void*>(_get_osfhandle(fd));
#else
  return reinterpret_cast<void*>(static_cast<std::intptr_t>(fd));
#endif
}

/// This very program's file, to start it again as a child.
std::string OwnProgram() {
#if defined(_WIN32)
  char name[MAX_PATH + 1] = {};
  GetModuleFileNameA(nullptr, name, MAX_PATH);
  return name;
#else
  return "/proc/self/exe";
#endif
}

/// Runs `argv` (program first) with our own output, waits up to `timeout` ms
/// (negative: no limit), ends it when the time runs out, and reports.
bool RunAndReport(const std::vector<const char*>& argv, int timeout) {
  std::printf("command line: %s\n", detail::BuildCommandLine(argv.data(), static_cast<int>(argv.size())).c_str());
  std::fflush(stdout);
  VXProcess process;
  process.setStartFlags(XProcInheritHandles);
  process.redirectStdOutput(OwnHandle(STDOUT_FILENO), OwnHandle(STDERR_FILENO));
  if (!process.start(argv[0], static_cast<int>(argv.size()) - 1, argv.data() + 1)) return false;
  bool ended = process.wait(timeout);
  if (!ended) {
    std::printf("still running after %d ms: ending it\n", timeout);
    process.terminate();
    process.wait(-1);
  }
  std::fflush(stdout);
  std::printf("pid: %lu\nstate: %d\nexit state: %d (%s)\nexit code: %d\n", process.pid(), process.state(),
              process.exitState(), kExitStateNames[process.exitState()], process.exitcode());
  return ended;
}

int Run(const Args& args) {
  long long timeout = -1;
  std::size_t first = 0;
  if (!args.empty() && args[0] == "--timeout") {
    if (!TakeNumberOption(args, first, 0, INT_MAX, timeout)) return UsageError("run", "--timeout needs milliseconds");
    ++first;
  }
  if (first >= args.size()) return UsageError("run", "expects a PROGRAM");
  std::vector<const char*> argv;
  for (std::size_t i = first; i < args.size(); ++i) argv.push_back(args[i].c_str());
  return RunAndReport(argv, static_cast<int>(timeout)) ? 0 : 1;
}

/// Runs this very tool as the child, asking for its version.
int Demo() {
  const std::string program = OwnProgram();
  const std::vector<const char*> argv = {program.c_str(), "version"};
  return RunAndReport(argv, 10000) ? 0 : 1;
}

const CommandRegistrar kRegistrar({"run", "[--timeout MS] PROGRAM [ARG...]",
                                   "start a program, wait for it, print its state, exit state and exit code", Run,
                                   Demo, 70});

}  // namespace
