// Path text and file status beside the standard library doing the same job.

#include <benchmark/benchmark.h>

#include <cstdio>
#include <filesystem>
#include <map>
#include <string>
#include <vector>

#include <sys/stat.h>

#include <vxutility/FileUtils.h>

namespace {

const char kPath[] = "/home/user/documents/reports/2024/quarterly.summary.pdf";

void BM_GetFileName(benchmark::State& state) {
  for (auto _ : state) benchmark::DoNotOptimize(GetFileName(kPath, -1));
}
BENCHMARK(BM_GetFileName);

void BM_Reference_PathStem(benchmark::State& state) {
  for (auto _ : state) benchmark::DoNotOptimize(std::filesystem::path(kPath).stem().string());
}
BENCHMARK(BM_Reference_PathStem);

void BM_PathJoin(benchmark::State& state) {
  for (auto _ : state) benchmark::DoNotOptimize(PathJoin("/home/user/", "/documents", "report.pdf", nullptr));
}
BENCHMARK(BM_PathJoin);

void BM_Reference_PathAppend(benchmark::State& state) {
  for (auto _ : state) {
    benchmark::DoNotOptimize((std::filesystem::path("/home/user/") / "documents" / "report.pdf").string());
  }
}
BENCHMARK(BM_Reference_PathAppend);

void BM_GetFileFlags(benchmark::State& state) {
  const std::string dir = std::filesystem::temp_directory_path().string() + "/";
  for (auto _ : state) benchmark::DoNotOptimize(GetFileFlags(dir.c_str()));
}
BENCHMARK(BM_GetFileFlags);

void BM_Reference_Stat(benchmark::State& state) {
  const std::string dir = std::filesystem::temp_directory_path().string();
  for (auto _ : state) {
    struct stat info;
    benchmark::DoNotOptimize(stat(dir.c_str(), &info));
  }
}
BENCHMARK(BM_Reference_Stat);

/// Prints library time / reference time for each pair after the run.
class RatioReporter : public benchmark::ConsoleReporter {
 public:
  void ReportRuns(const std::vector<Run>& runs) override {
    ConsoleReporter::ReportRuns(runs);
    for (const Run& run : runs) times_[run.benchmark_name()] = run.GetAdjustedCPUTime();
  }
  void Finalize() override {
    ConsoleReporter::Finalize();
    PrintRatio("GetFileName", "BM_GetFileName", "BM_Reference_PathStem");
    PrintRatio("PathJoin", "BM_PathJoin", "BM_Reference_PathAppend");
    PrintRatio("GetFileFlags", "BM_GetFileFlags", "BM_Reference_Stat");
  }

 private:
  void PrintRatio(const char* what, const std::string& ours, const std::string& reference) {
    if (times_.count(ours) == 0 || times_.count(reference) == 0 || times_[reference] <= 0) return;
    std::printf("ratio %s / reference: %.2f\n", what, times_[ours] / times_[reference]);
  }
  std::map<std::string, double> times_;
};

}  // namespace

int main(int argc, char** argv) {
  benchmark::Initialize(&argc, argv);
  RatioReporter reporter;
  benchmark::RunSpecifiedBenchmarks(&reporter);
  benchmark::Shutdown();
  return 0;
}
