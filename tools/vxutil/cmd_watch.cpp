// vxutil watch PID|NAME [--max-mem KB] [--interval S] [--for S]: run the
// watching loop on one process for a while, then stop it.

#include <chrono>
#include <climits>
#include <cstdio>
#include <cstring>
#include <string>
#include <thread>

#include <vxutility/ProcMonitor.h>

#include "Command.h"
#include "RuntimeArgs.h"

namespace {

struct WatchRequest {
  std::string target;
  long long maxMem = 0;
  long long interval = 1;
  long long seconds = 5;
};

/// Marks the process to watch and runs the loop.
class Watcher : public ProcMonitor {
 public:
  /// Marks the first process with that id or name; false when none.
  bool Mark(const WatchRequest& request) {
    PROC_INFO_DATA data{};
    long long pid = 0;
    const bool byId = ParseIntArg(request.target, pid);
    data.pId = static_cast<long>(pid);
    std::snprintf(data.proc, sizeof data.proc, "%s", request.target.c_str());
    data.monitor = true;
    data.interval = static_cast<int>(request.interval);
    data.max_mem = static_cast<long>(request.maxMem);
    for (int what : {1, 2, 4}) (byId ? SetProcMonitorDataByPid(data, what) : SetProcMonitorDataByPName(data, what));
    for (const PROC_INFO_DATA& record : GetQueprocData()) {
      if (record.monitor) {
        std::printf("watching %s (pid %ld, %ld KB)\n", record.proc, record.pId, record.mem);
        return true;
      }
    }
    return false;
  }

  using ProcMonitor::ProcMonitorFun;
};

std::string ReadRequest(const Args& args, WatchRequest& request) {
  for (std::size_t i = 0; i < args.size(); ++i) {
    if (args[i] == "--max-mem") {
      if (!TakeNumberOption(args, i, 0, LONG_MAX, request.maxMem)) return "--max-mem needs KB";
    } else if (args[i] == "--interval") {
      if (!TakeNumberOption(args, i, 0, INT_MAX, request.interval)) return "--interval needs seconds";
    } else if (args[i] == "--for") {
      if (!TakeNumberOption(args, i, 0, 86400, request.seconds)) return "--for needs seconds (at most a day)";
    } else if (request.target.empty() && !args[i].empty()) {
      request.target = args[i];
    } else {
      return "unexpected argument '" + args[i] + "'";
    }
  }
  return request.target.empty() ? "expects a PID or a NAME" : std::string();
}

int Run(const Args& args) {
  WatchRequest request;
  const std::string problem = ReadRequest(args, request);
  if (!problem.empty()) return UsageError("watch", problem);
  Watcher watcher;
  if (!watcher.Mark(request)) {
    std::fprintf(stderr, "vxutil watch: no process '%s'\n", request.target.c_str());
    return 1;
  }
  std::fflush(stdout);
  std::thread loop([&watcher] { watcher.ProcMonitorFun(); });
  std::this_thread::sleep_for(std::chrono::seconds(request.seconds));
  watcher.StopProcMonitorFun();
  loop.join();
  return 0;
}

const CommandRegistrar kRegistrar({"watch", "PID|NAME [--max-mem KB] [--interval S] [--for S]",
                                   "report a process's memory over a limit and its growth, for a while", Run,
                                   nullptr, 0});

}  // namespace
