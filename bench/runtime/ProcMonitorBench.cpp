// A full process snapshot beside a plain loop that reads the same status
// files with stdio, and the status-field read beside one fgets scan.

#include <benchmark/benchmark.h>

#include <cctype>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <deque>
#include <string>

#include <dirent.h>
#include <unistd.h>

#include <vxutility/ProcMonitor.h>

#include "bench/support/RatioReporter.h"

namespace {

class SnapshotMonitor : public ProcMonitor {
 public:
  using ProcMonitor::GetAllPidData;
  using ProcMonitor::GetStatusByPid;
};

void BM_Snapshot(benchmark::State& state) {
  SnapshotMonitor monitor;
  std::deque<PROC_INFO_DATA> list;
  for (auto _ : state) {
    monitor.GetAllPidData(list);
    benchmark::DoNotOptimize(list.size());
  }
  state.counters["processes"] = static_cast<double>(list.size());
}
BENCHMARK(BM_Snapshot)->Name("Snapshot/ours")->Unit(benchmark::kMillisecond);

/// The plain way: opendir /proc, fopen each status, fgets its Name: and
/// VmRSS: lines, readlink the executable.
void BM_Reference_StdioSnapshot(benchmark::State& state) {
  std::deque<PROC_INFO_DATA> list;
  for (auto _ : state) {
    list.clear();
    DIR* dir = opendir("/proc");
    while (const dirent* entry = readdir(dir)) {
      if (!std::isdigit(static_cast<unsigned char>(entry->d_name[0]))) continue;
      const std::string base = std::string("/proc/") + entry->d_name;
      std::FILE* status = std::fopen((base + "/status").c_str(), "r");
      if (status == nullptr) continue;
      PROC_INFO_DATA record{};
      record.pId = std::atol(entry->d_name);
      char line[512];
      while (std::fgets(line, sizeof line, status)) {
        if (std::strncmp(line, "Name:", 5) == 0) std::snprintf(record.proc, sizeof record.proc, "%.255s", line + 6);
        if (std::strncmp(line, "VmRSS:", 6) == 0) record.mem = std::atol(line + 6);
      }
      std::fclose(status);
      char target[4096];
      benchmark::DoNotOptimize(readlink((base + "/exe").c_str(), target, sizeof target));
      list.push_back(record);
    }
    closedir(dir);
    benchmark::DoNotOptimize(list.size());
  }
}
BENCHMARK(BM_Reference_StdioSnapshot)->Name("Snapshot/stdio_loop")->Unit(benchmark::kMillisecond);

void BM_StatusField(benchmark::State& state) {
  SnapshotMonitor monitor;
  char value[256];
  for (auto _ : state) benchmark::DoNotOptimize(monitor.GetStatusByPid(getpid(), const_cast<char*>("VmRSS"), value));
}
BENCHMARK(BM_StatusField)->Name("StatusField/ours");

void BM_Reference_StatusField(benchmark::State& state) {
  const std::string path = "/proc/" + std::to_string(getpid()) + "/status";
  for (auto _ : state) {
    std::FILE* status = std::fopen(path.c_str(), "r");
    char line[512];
    long value = -1;
    while (std::fgets(line, sizeof line, status)) {
      if (std::strncmp(line, "VmRSS:", 6) == 0) value = std::atol(line + 6);
    }
    std::fclose(status);
    benchmark::DoNotOptimize(value);
  }
}
BENCHMARK(BM_Reference_StatusField)->Name("StatusField/stdio_fgets");

}  // namespace

int main(int argc, char** argv) { return RunBenchmarksWithRatios(argc, argv); }
