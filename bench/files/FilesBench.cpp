// Path text and file status beside the standard library doing the same job.

#include <benchmark/benchmark.h>

#include <filesystem>
#include <string>

#include <sys/stat.h>

#include <vxutility/FileUtils.h>

#include "bench/support/RatioReporter.h"

namespace {

const char kPath[] = "/home/user/documents/reports/2024/quarterly.summary.pdf";

void BM_GetFileName(benchmark::State& state) {
  for (auto _ : state) benchmark::DoNotOptimize(GetFileName(kPath, -1));
}
BENCHMARK(BM_GetFileName)->Name("GetFileName/ours");

void BM_Reference_PathStem(benchmark::State& state) {
  for (auto _ : state) benchmark::DoNotOptimize(std::filesystem::path(kPath).stem().string());
}
BENCHMARK(BM_Reference_PathStem)->Name("GetFileName/path_stem");

void BM_PathJoin(benchmark::State& state) {
  for (auto _ : state) benchmark::DoNotOptimize(PathJoin("/home/user/", "/documents", "report.pdf", nullptr));
}
BENCHMARK(BM_PathJoin)->Name("PathJoin/ours");

void BM_Reference_PathAppend(benchmark::State& state) {
  for (auto _ : state) {
    benchmark::DoNotOptimize((std::filesystem::path("/home/user/") / "documents" / "report.pdf").string());
  }
}
BENCHMARK(BM_Reference_PathAppend)->Name("PathJoin/path_append");

void BM_GetFileFlags(benchmark::State& state) {
  const std::string dir = std::filesystem::temp_directory_path().string() + "/";
  for (auto _ : state) benchmark::DoNotOptimize(GetFileFlags(dir.c_str()));
}
BENCHMARK(BM_GetFileFlags)->Name("GetFileFlags/ours");

void BM_Reference_Stat(benchmark::State& state) {
  const std::string dir = std::filesystem::temp_directory_path().string();
  for (auto _ : state) {
    struct stat info;
    benchmark::DoNotOptimize(stat(dir.c_str(), &info));
  }
}
BENCHMARK(BM_Reference_Stat)->Name("GetFileFlags/stat");

}  // namespace

int main(int argc, char** argv) { return RunBenchmarksWithRatios(argc, argv); }
