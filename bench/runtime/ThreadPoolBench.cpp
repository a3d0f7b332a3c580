// ThreadPool beside a plain pool written here (std::thread workers, one
// std::mutex, a std::condition_variable, a std::deque), both with ten
// workers, in the same run. Ratios are on wall time: the work runs on the
// workers, not on the thread that measures.
//
// The pool holds one wake-up at a time and a worker passes it on only when
// it has finished its task, so a burst starts its tasks one after another;
// the plain pool wakes a worker per submission.

#include <vxutility/ThreadPool.h>

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <deque>
#include <mutex>
#include <thread>
#include <vector>

#include <benchmark/benchmark.h>

#include "bench/support/RatioReporter.h"

namespace {

using Clock = std::chrono::steady_clock;
constexpr int kWorkers = 10;

/// Counts finished tasks down and wakes the submitter at zero.
class Latch {
 public:
  void Reset(int count) { m_remaining.store(count); }
  void CountDown() {
    if (m_remaining.fetch_sub(1) == 1) {
      std::lock_guard<std::mutex> hold(m_mutex);
      m_done = true;
      m_changed.notify_one();
    }
  }
  void Wait() {
    std::unique_lock<std::mutex> hold(m_mutex);
    m_changed.wait(hold, [this] { return m_done; });
    m_done = false;
  }

 private:
  std::atomic<int> m_remaining{0};
  std::mutex m_mutex;
  std::condition_variable m_changed;
  bool m_done = false;
};

class PlainPool {
 public:
  explicit PlainPool(int workers) {
    for (int i = 0; i < workers; ++i) m_workers.emplace_back([this] { Work(); });
  }
  ~PlainPool() {
    {
      std::lock_guard<std::mutex> hold(m_mutex);
      m_stop = true;
    }
    m_ready.notify_all();
    for (auto& worker : m_workers) worker.join();
  }
  void Add(void* (*routine)(void*), void* arg) {
    {
      std::lock_guard<std::mutex> hold(m_mutex);
      m_queue.emplace_back(routine, arg);
    }
    m_ready.notify_one();
  }

 private:
  void Work() {
    for (;;) {
      std::pair<void* (*)(void*), void*> job;
      {
        std::unique_lock<std::mutex> hold(m_mutex);
        m_ready.wait(hold, [this] { return m_stop || !m_queue.empty(); });
        if (m_queue.empty()) return;
        job = m_queue.front();
        m_queue.pop_front();
      }
      job.first(job.second);
    }
  }

  std::mutex m_mutex;
  std::condition_variable m_ready;
  std::deque<std::pair<void* (*)(void*), void*>> m_queue;
  bool m_stop = false;
  std::vector<std::thread> m_workers;
};

/// Made once: creating costs 500 ms and destroying an idle pool about
/// 13.5 s, neither of which is measured, so the pool stays until exit.
ThreadPool& OurPool() {
  static ThreadPool* pool = [] {
    ThreadPool* made = new ThreadPool;
    made->CreatPool(kWorkers);
    return made;
  }();
  return *pool;
}

PlainPool& ReferencePool() {
  static PlainPool pool(kWorkers);
  return pool;
}

struct OurSubmit {
  void operator()(void* (*routine)(void*), void* arg) const { OurPool().PoolAddWorker(routine, arg); }
};
struct PlainSubmit {
  void operator()(void* (*routine)(void*), void* arg) const { ReferencePool().Add(routine, arg); }
};

void* EmptyTask(void* latch) {
  static_cast<Latch*>(latch)->CountDown();
  return nullptr;
}

void* TenMicrosecondTask(void* latch) {
  const auto end = Clock::now() + std::chrono::microseconds(10);
  while (Clock::now() < end) {
  }
  static_cast<Latch*>(latch)->CountDown();
  return nullptr;
}

template <class Submit>
void Throughput(benchmark::State& state, void* (*task)(void*), int count) {
  Submit submit;
  Latch latch;
  for (auto _ : state) {
    latch.Reset(count);
    for (int i = 0; i < count; ++i) submit(task, &latch);
    latch.Wait();
  }
  state.SetItemsProcessed(state.iterations() * count);
}

template <class Submit>
void EmptyTasks(benchmark::State& state) {
  Throughput<Submit>(state, EmptyTask, 100000);
}

template <class Submit>
void TenMicrosecondTasks(benchmark::State& state) {
  Throughput<Submit>(state, TenMicrosecondTask, 10000);
}

struct StartProbe {
  Latch latch;
  std::atomic<Clock::rep> started{0};
};

void* RecordStart(void* raw) {
  StartProbe* probe = static_cast<StartProbe*>(raw);
  probe->started.store(Clock::now().time_since_epoch().count());
  probe->latch.CountDown();
  return nullptr;
}

/// From the submission to the start of the task, with every worker idle.
template <class Submit>
void StartLatency(benchmark::State& state) {
  Submit submit;
  StartProbe probe;
  for (auto _ : state) {
    probe.latch.Reset(1);
    const Clock::time_point submitted = Clock::now();
    submit(RecordStart, &probe);
    probe.latch.Wait();
    const Clock::time_point started{Clock::duration(probe.started.load())};
    state.SetIterationTime(std::chrono::duration<double>(started - submitted).count());
  }
}

BENCHMARK_TEMPLATE(EmptyTasks, PlainSubmit)->Name("pool_100k_empty_tasks/plain_pool")->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK_TEMPLATE(EmptyTasks, OurSubmit)->Name("pool_100k_empty_tasks/ours")->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK_TEMPLATE(TenMicrosecondTasks, PlainSubmit)->Name("pool_10k_10us_tasks/plain_pool")->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK_TEMPLATE(TenMicrosecondTasks, OurSubmit)->Name("pool_10k_10us_tasks/ours")->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK_TEMPLATE(StartLatency, PlainSubmit)->Name("pool_start_latency/plain_pool")->Unit(benchmark::kMicrosecond)->UseManualTime();
BENCHMARK_TEMPLATE(StartLatency, OurSubmit)->Name("pool_start_latency/ours")->Unit(benchmark::kMicrosecond)->UseManualTime();

}  // namespace

int main(int argc, char** argv) {
  // Both pools are made before anything is timed (ours pauses 500 ms).
  OurPool();
  ReferencePool();
  return RunBenchmarksWithRatios(argc, argv, true);
}
