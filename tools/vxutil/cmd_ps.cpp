// vxutil ps [--sort mem|pid|name] [--top N]: the running processes with the
// memory each one uses.

#include <algorithm>
#include <climits>
#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

#include <unistd.h>

#include <vxutility/ProcMonitor.h>

#include "Command.h"
#include "RuntimeArgs.h"

namespace {

using Order = bool (*)(const PROC_INFO_DATA&, const PROC_INFO_DATA&);

const struct {
  const char* name;
  Order order;
} kOrders[] = {
    {"pid", [](const PROC_INFO_DATA& a, const PROC_INFO_DATA& b) { return a.pId < b.pId; }},
    {"mem", [](const PROC_INFO_DATA& a, const PROC_INFO_DATA& b) { return a.mem > b.mem; }},
    {"name", [](const PROC_INFO_DATA& a, const PROC_INFO_DATA& b) { return std::strcmp(a.proc, b.proc) < 0; }},
};

void PrintTable(std::vector<PROC_INFO_DATA> list, Order order, std::size_t top) {
  std::stable_sort(list.begin(), list.end(), order);
  if (list.size() > top) list.resize(top);
  std::printf("%8s %10s  %s\n", "PID", "MEM_KB", "NAME");
  for (const PROC_INFO_DATA& record : list) {
    if (record.mem_valid) {
      std::printf("%8ld %10ld  %s\n", record.pId, record.mem, record.proc);
    } else {
      std::printf("%8ld %10s  %s\n", record.pId, "-", record.proc);
    }
  }
}

std::vector<PROC_INFO_DATA> Snapshot() {
  const std::deque<PROC_INFO_DATA> list = ProcMonitor().GetQueprocData();
  return std::vector<PROC_INFO_DATA>(list.begin(), list.end());
}

int Run(const Args& args) {
  Order order = kOrders[0].order;
  long long top = LLONG_MAX;
  for (std::size_t i = 0; i < args.size(); ++i) {
    if (args[i] == "--top") {
      if (!TakeNumberOption(args, i, 0, LLONG_MAX, top)) return UsageError("ps", "--top needs a count");
    } else if (args[i] == "--sort" && i + 1 < args.size()) {
      const auto found = std::find_if(std::begin(kOrders), std::end(kOrders),
                                      [&](const auto& o) { return args[i + 1] == o.name; });
      if (found == std::end(kOrders)) return UsageError("ps", "--sort takes mem, pid or name");
      order = found->order;
      ++i;
    } else {
      return UsageError("ps", "unknown argument '" + args[i] + "'");
    }
  }
  PrintTable(Snapshot(), order, static_cast<std::size_t>(top));
  return 0;
}

/// The three largest processes, and this one.
int Demo() {
  const std::vector<PROC_INFO_DATA> list = Snapshot();
  std::printf("%zu processes listed\n", list.size());
  PrintTable(list, kOrders[1].order, 3);
  ProcMonitor monitor;
  const long own = monitor.GetMemeryDataByPid(static_cast<long>(getpid()));
  std::printf("this process: %ld KB\n", own);
  return own > 0 ? 0 : 1;
}

const CommandRegistrar kRegistrar({"ps", "[--sort mem|pid|name] [--top N]",
                                   "list the running processes with their memory in KB", Run, Demo, 71});

}  // namespace
