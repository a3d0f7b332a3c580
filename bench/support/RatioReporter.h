#pragma once
// Console reporter that, after the usual table, prints how many times faster
// the library ran than each reference measured beside it. Benchmarks are
// named "<case>/<implementation>"; the library's own run is "<case>/ours".
// Ratios use CPU time: the build machine is shared, and wall time there
// counts other processes too. Benchmarks whose work runs on other threads
// (thread pools) ask for wall time instead, since the caller's CPU time
// leaves that work out.

#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstring>
#include <algorithm>
#include <map>
#include <string>
#include <vector>

class RatioReporter : public benchmark::ConsoleReporter {
 public:
  explicit RatioReporter(bool useRealTime = false) : m_useRealTime(useRealTime) {}

  void ReportRuns(const std::vector<Run>& reports) override {
    benchmark::ConsoleReporter::ReportRuns(reports);
    for (const Run& run : reports) {
      if (run.error_occurred) continue;
      // With --benchmark_repetitions the median stands for the case.
      const bool median = run.run_type == Run::RT_Aggregate && run.aggregate_name == "median";
      if (run.run_type != Run::RT_Iteration && !median) continue;
      std::string name = run.benchmark_name();
      for (const char* timing : {"/real_time", "/manual_time"}) {  // added by UseRealTime, UseManualTime
        const std::size_t at = name.rfind(timing);
        if (at != std::string::npos) name.erase(at, std::strlen(timing));
      }
      const std::size_t slash = name.rfind('/');
      if (slash == std::string::npos) continue;
      Entry& entry = m_cases[name.substr(0, slash)];
      if (entry.order == 0) entry.order = ++m_nextOrder;
      std::string implementation = name.substr(slash + 1);
      if (median) implementation.resize(implementation.size() - std::strlen("_median"));
      if (median || entry.times.count(implementation) == 0) entry.times[implementation] = m_useRealTime ? run.GetAdjustedRealTime() : run.GetAdjustedCPUTime();
    }
  }

  void Finalize() override {
    benchmark::ConsoleReporter::Finalize();
    std::vector<std::pair<int, std::string>> order;
    for (const auto& c : m_cases) order.emplace_back(c.second.order, c.first);
    std::sort(order.begin(), order.end());
    std::printf("\nratios (reference time / our time; above 1 means we are faster):\n");
    for (const auto& item : order) {
      const Entry& entry = m_cases[item.second];
      const auto ours = entry.times.find("ours");
      if (ours == entry.times.end() || ours->second <= 0) continue;
      for (const auto& ref : entry.times) {
        if (ref.first == "ours") continue;
        std::printf("  %-32s vs %-10s %6.2fx\n", item.second.c_str(), ref.first.c_str(),
                    ref.second / ours->second);
      }
    }
  }

 private:
  struct Entry {
    int order = 0;
    std::map<std::string, double> times;
  };
  std::map<std::string, Entry> m_cases;
  int m_nextOrder = 0;
  bool m_useRealTime;
};

/// Runs every registered benchmark with the ratio reporter (on wall time when
/// asked).
inline int RunBenchmarksWithRatios(int argc, char** argv, bool useRealTime = false) {
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
  RatioReporter reporter(useRealTime);
  benchmark::RunSpecifiedBenchmarks(&reporter);
  benchmark::Shutdown();
  return 0;
}
