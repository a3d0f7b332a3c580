// Lock/unlock pairs of VXMutex (and the locker, and the lock another thread
// may release) beside std::recursive_mutex, uncontended, on one thread.

#include <vxutility/VXMutex.h>

#include <mutex>

#include <benchmark/benchmark.h>

#include "bench/support/RatioReporter.h"

namespace {

void RecursiveMutexPair(benchmark::State& state) {
  std::recursive_mutex mutex;
  for (auto _ : state) {
    mutex.lock();
    benchmark::ClobberMemory();
    mutex.unlock();
  }
}

void VXMutexPair(benchmark::State& state) {
  VXMutex mutex;
  for (auto _ : state) {
    mutex.Lock();
    benchmark::ClobberMemory();
    mutex.Unlock();
  }
}

void VXMutexLockerPair(benchmark::State& state) {
  VXMutex mutex;
  for (auto _ : state) {
    VXMutexLocker hold(&mutex);
    benchmark::ClobberMemory();
  }
}

void ReinforcePair(benchmark::State& state) {
  VXReinforceMutex mutex("bench", 0);
  for (auto _ : state) {
    mutex.Lock();
    benchmark::ClobberMemory();
    mutex.Unlock();
  }
}

BENCHMARK(RecursiveMutexPair)->Name("mutex_pair/recursive_mutex");
BENCHMARK(VXMutexPair)->Name("mutex_pair/ours");
BENCHMARK(RecursiveMutexPair)->Name("locker_pair/recursive_mutex");
BENCHMARK(VXMutexLockerPair)->Name("locker_pair/ours");
BENCHMARK(RecursiveMutexPair)->Name("reinforce_pair/recursive_mutex");
BENCHMARK(ReinforcePair)->Name("reinforce_pair/ours");

}  // namespace

int main(int argc, char** argv) { return RunBenchmarksWithRatios(argc, argv); }
