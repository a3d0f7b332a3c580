#include <vxutility/ThreadPool.h>

#include <atomic>
#include <chrono>
#include <memory>
#include <string>
#include <thread>
#include <type_traits>
#include <vector>

#include <pthread.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <fstream>

#include <gtest/gtest.h>

#include "runtime/RuntimeTestUtil.h"

// The sanitizers reserve far more address space than a tight limit leaves.
#if !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__)
#define VXTEST_CAN_LIMIT_ADDRESS_SPACE 1
#endif

// Two objects would stop and free the same workers.
static_assert(!std::is_copy_constructible<ThreadPool>::value && !std::is_copy_assignable<ThreadPool>::value,
              "pools are not copied");

namespace {

/// Records the order in which tasks run, and can block until told to go.
struct Journal {
  void Record(int id) {
    std::lock_guard<std::mutex> hold(mutex);
    order.push_back(id);
  }
  std::vector<int> Order() {
    std::lock_guard<std::mutex> hold(mutex);
    return order;
  }
  std::mutex mutex;
  std::vector<int> order;
};

class RecordingTask : public IVXThreadPoolTask {
 public:
  RecordingTask(Journal& journal, Counter& done, int id) : m_journal(journal), m_done(done), m_id(id) {}
  void Run() override {
    m_journal.Record(m_id);
    m_done.Add();
  }

 private:
  Journal& m_journal;
  Counter& m_done;
  int m_id;
};

class BlockingTask : public IVXThreadPoolTask {
 public:
  void Run() override {
    started.Add();
    gate.Wait();
  }
  Gate gate;
  Counter started;
};

/// A task that queues another one from inside its body.
class ChainingTask : public IVXThreadPoolTask {
 public:
  ChainingTask(ThreadPool& pool, IVXThreadPoolTask& next) : m_pool(pool), m_next(next) {}
  void Run() override { queued = m_pool.PoolAddWorker(&m_next); }
  std::atomic<int> queued{-1};

 private:
  ThreadPool& m_pool;
  IVXThreadPoolTask& m_next;
};

void* CountCall(void* counter) {
  static_cast<Counter*>(counter)->Add();
  return nullptr;
}

void WaitFinished(const IVXThreadPoolTask& task) {
  while (!task.m_bFinished) std::this_thread::sleep_for(std::chrono::milliseconds(1));
}

/// Fills every worker with a blocking task, one at a time: a burst would
/// leave all but the first waiting, since the pool holds one wake-up.
void OccupyWorkers(ThreadPool& pool, std::vector<std::unique_ptr<BlockingTask>>& blockers, int count) {
  for (int i = 0; i < count; ++i) {
    blockers.push_back(std::make_unique<BlockingTask>());
    ASSERT_EQ(pool.PoolAddWorker(blockers.back().get()), 0);
    ASSERT_TRUE(blockers.back()->started.WaitFor(1)) << "worker " << i << " never started";
  }
}

#ifdef VXTEST_CAN_LIMIT_ADDRESS_SPACE
/// Bytes of address space this process uses now (VmSize).
std::size_t CurrentAddressSpace() {
  std::ifstream status("/proc/self/status");
  std::string key;
  while (status >> key) {
    if (key == "VmSize:") {
      std::size_t kilobytes = 0;
      status >> kilobytes;
      return kilobytes * 1024;
    }
    status.ignore(1 << 16, '\n');
  }
  return 0;
}
#endif

}  // namespace

// One pool through its whole life: the worker count, queue order with one
// free worker, the wake-up passed on by finishing workers, tasks queuing
// tasks, submissions from several threads, and the idle destroy, which takes
// nine 1.5-second rounds.
TEST(ThreadPoolTest, LifeOfAnIdlePool) {
  ThreadPool pool;
  EXPECT_EQ(pool.PoolDestroy(), -1);  // never created
  ASSERT_EQ(pool.CreatPool(-5), 0);
  EXPECT_EQ(pool.CreatPool(10), -1);  // made once
  EXPECT_EQ(pool.PoolAddWorker(nullptr), -1);

  std::vector<std::unique_ptr<BlockingTask>> blockers;
  OccupyWorkers(pool, blockers, 10);

  // All ten are busy: three more wait in the queue, and only one wake-up is
  // stored for them. When one worker frees, it must run all three, in order.
  Journal journal;
  Counter done;
  RecordingTask first(journal, done, 1), second(journal, done, 2), third(journal, done, 3);
  for (IVXThreadPoolTask* task : {&first, &second, &third}) ASSERT_EQ(pool.PoolAddWorker(task), 0);
  std::this_thread::sleep_for(std::chrono::milliseconds(100));
  EXPECT_EQ(done.Value(), 0) << "more than ten workers";
  blockers[0]->gate.Open();
  ASSERT_TRUE(done.WaitFor(3)) << "the wake-up was not passed on";
  EXPECT_EQ(journal.Order(), (std::vector<int>{1, 2, 3}));
  for (const IVXThreadPoolTask* task : {&first, &second, &third}) WaitFinished(*task);
  for (auto& blocker : blockers) blocker->gate.Open();
  for (auto& blocker : blockers) WaitFinished(*blocker);

  RecordingTask chained(journal, done, 5);
  ChainingTask chain(pool, chained);
  ASSERT_EQ(pool.PoolAddWorker(&chain), 0);
  ASSERT_TRUE(done.WaitFor(4));
  WaitFinished(chain);
  EXPECT_EQ(chain.queued, 0);

  Counter calls;
  std::vector<std::thread> producers;
  for (int p = 0; p < 4; ++p) {
    producers.emplace_back([&] {
      for (int i = 0; i < 250; ++i) EXPECT_EQ(pool.PoolAddWorker(CountCall, &calls), 0);
    });
  }
  for (auto& producer : producers) producer.join();
  EXPECT_TRUE(calls.WaitFor(1000));
  // Let the last passed-on wake-up settle, so that the destroy's own release
  // is the only one: then exactly one worker ends without a time-out.
  std::this_thread::sleep_for(std::chrono::milliseconds(200));

  testing::internal::CaptureStdout();
  const auto begin = std::chrono::steady_clock::now();
  const int destroyed = pool.PoolDestroy();
  const long long spent = MillisecondsSince(begin);
  std::fflush(stdout);
  const std::string printed = testing::internal::GetCapturedStdout();
  EXPECT_EQ(destroyed, 0);
  EXPECT_EQ(printed, [] {
    std::string nine;
    for (int i = 0; i < 9; ++i) nine += "Wait thread timeout.\n";
    return nine;
  }());
  EXPECT_GE(spent, 9 * 1500 - 100);
  EXPECT_EQ(pool.PoolDestroy(), -1);
  EXPECT_EQ(pool.PoolAddWorker(CountCall, &calls), -1);
}

// Work still queued when the destroy starts is dropped without running, and
// nothing can be queued once it has begun. A pool of 16 has 16 workers.
TEST(ThreadPoolTest, DestroyDropsQueuedWork) {
  ThreadPool pool;
  ASSERT_EQ(pool.CreatPool(16), 0);
  std::vector<std::unique_ptr<BlockingTask>> blockers;
  OccupyWorkers(pool, blockers, 16);

  Journal journal;
  Counter ran;
  std::vector<std::unique_ptr<RecordingTask>> queued;
  for (int i = 0; i < 20; ++i) {
    queued.push_back(std::make_unique<RecordingTask>(journal, ran, i));
    ASSERT_EQ(pool.PoolAddWorker(queued.back().get()), 0);
  }
  std::this_thread::sleep_for(std::chrono::milliseconds(100));
  EXPECT_EQ(ran.Value(), 0) << "more than sixteen workers";

  std::atomic<int> destroyed{1};
  std::thread destroyer([&] { destroyed = pool.PoolDestroy(); });
  // The destroy is waiting for the first busy worker by now.
  std::this_thread::sleep_for(std::chrono::milliseconds(300));
  Counter late;
  EXPECT_EQ(pool.PoolAddWorker(CountCall, &late), -1);
  for (auto& blocker : blockers) blocker->gate.Open();
  destroyer.join();
  EXPECT_EQ(destroyed, 0);
  EXPECT_EQ(ran.Value(), 0);
  EXPECT_TRUE(journal.Order().empty());
  for (const auto& task : queued) EXPECT_FALSE(task->m_bFinished);
  for (const auto& blocker : blockers) EXPECT_TRUE(blocker->m_bFinished);
  EXPECT_EQ(late.Value(), 0);
}

TEST(ThreadPoolTest, TaskCopiesKeepTheFinishedFlag) {
  struct FlagTask : IVXThreadPoolTask {
    void Run() override { sawFinished = m_bFinished; }
    bool sawFinished = true;
  };
  FlagTask task;
  EXPECT_FALSE(task.m_bFinished);
  EXPECT_EQ(task.Task(), 0);
  EXPECT_FALSE(task.sawFinished);
  EXPECT_TRUE(task.m_bFinished);
  FlagTask copy(task);
  EXPECT_TRUE(copy.m_bFinished);
  task.sawFinished = true;
  EXPECT_EQ(task.Task(), 0);
  EXPECT_FALSE(task.sawFinished);  // lowered again while the body runs
  FlagTask fresh;
  copy = fresh;
  EXPECT_FALSE(copy.m_bFinished);
}

// A pool whose workers cannot all be started: CreatPool reports it and gives
// -1, and the workers already started are stopped by PoolDestroy. A thread
// that cannot start stays idle. Run in a
// child process whose address space only fits a couple of thread stacks.
TEST(ThreadPoolTest, ThreadsThatCannotStart) {
#ifndef VXTEST_CAN_LIMIT_ADDRESS_SPACE
  GTEST_SKIP() << "sanitizers reserve more address space than the limit leaves";
#else
  int out[2];
  ASSERT_EQ(pipe(out), 0);
  const pid_t child = fork();
  ASSERT_GE(child, 0);
  if (child == 0) {
    dup2(out[1], STDOUT_FILENO);
    close(out[0]);
    pthread_attr_t defaults;
    std::size_t stack = 8u << 20;
    if (pthread_getattr_default_np(&defaults) == 0) {
      pthread_attr_getstacksize(&defaults, &stack);
      pthread_attr_destroy(&defaults);
    }
    rlimit limit{};
    limit.rlim_cur = limit.rlim_max = CurrentAddressSpace() + 2 * stack + stack / 2;
    if (setrlimit(RLIMIT_AS, &limit) != 0) _exit(10);
    struct NoopThread : VXThread {
      void run() override {}
    };
    int status = 0;
    {
      ThreadPool pool;
      if (pool.CreatPool(10) != -1) status |= 1;
      // With the space still taken, a VXThread cannot start either: it
      // reports nothing and is left as if never started.
      NoopThread thread;
      thread.start();
      if (thread.tid() != 0 || thread.isRunning() || !thread.wait(0)) status |= 8;
      if (pool.PoolDestroy() != 0) status |= 2;
      if (pool.PoolDestroy() != -1) status |= 4;
    }
    std::fflush(stdout);
    _exit(status);
  }
  close(out[1]);
  std::string printed;
  char buffer[256];
  for (ssize_t n; (n = read(out[0], buffer, sizeof buffer)) > 0;) printed.append(buffer, static_cast<std::size_t>(n));
  close(out[0]);
  int status = 0;
  ASSERT_EQ(waitpid(child, &status, 0), child);
  ASSERT_TRUE(WIFEXITED(status));
  EXPECT_EQ(WEXITSTATUS(status), 0) << printed;
  EXPECT_EQ(printed.rfind("_beginthreadex create thread error\n", 0), 0u) << printed;
#endif
}
