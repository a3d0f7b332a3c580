// A fixed set of workers over one first-in, first-out queue, woken by a
// semaphore that holds at most one wake-up. The lock guards only linking and
// unlinking, the wake-up passed on after a task, and the shutdown flag; work
// always runs outside it, so a task may queue more work.

#include <vxutility/ThreadPool.h>

#include <condition_variable>
#include <cstdio>
#include <new>

#include "runtime/ThreadPlatform.h"

/// A semaphore with initial count 0 and maximum count 1: a release while the
/// one wake-up is stored does nothing.
struct VXPoolSemaphore {
  void Release() { ReleaseTimes(1); }

  /// `times` releases in one go: only the first can store a wake-up, and no
  /// waiter can take it in between to make room for a second.
  void ReleaseTimes(int times) {
    std::lock_guard<std::mutex> hold(mutex);
    if (times < 1 || stored) return;
    stored = true;
    wakeup.notify_one();
  }

  void Wait() {
    std::unique_lock<std::mutex> hold(mutex);
    wakeup.wait(hold, [this] { return stored; });
    stored = false;
  }

  std::mutex mutex;
  std::condition_variable wakeup;
  bool stored = false;
};

namespace {

constexpr int kMinimumWorkers = 10;
constexpr unsigned kSettleMs = 500;
constexpr unsigned kWorkerWaitMs = 1000;
constexpr unsigned kRetryPauseMs = 500;

void RunNode(const THREAD_WORKER& node) {
  if (node.type == 1) {
    node.routine(node.arg);
  } else if (node.type == 2 && node.task != nullptr) {
    node.task->Task();
  }
}

}  // namespace

IVXThreadPoolTask::IVXThreadPoolTask() : m_bFinished(false) {}

IVXThreadPoolTask::IVXThreadPoolTask(const IVXThreadPoolTask& other) : m_bFinished(other.m_bFinished.load()) {}

IVXThreadPoolTask& IVXThreadPoolTask::operator=(const IVXThreadPoolTask& other) {
  m_bFinished.store(other.m_bFinished.load());
  return *this;
}

IVXThreadPoolTask::~IVXThreadPoolTask() = default;

int IVXThreadPoolTask::Task() {
  m_bFinished.store(false);
  Run();
  m_bFinished.store(true);
  return 0;
}

ThreadPool::ThreadPool()
    : m_hCondition(nullptr),
      m_pThreadId(nullptr),
      m_pWorkerHead(nullptr),
      m_pWorkerTail(nullptr),
      m_bShutdown(0),
      m_nThreadCount(0),
      m_nStarted(0) {}

ThreadPool::~ThreadPool() { PoolDestroy(); }

int ThreadPool::CreatPool(int threadCount) {
  if (m_pThreadId != nullptr || m_bShutdown != 0) return -1;  // a pool is made once
  const int workers = threadCount < kMinimumWorkers ? kMinimumWorkers : threadCount;
  m_hCondition = new (std::nothrow) VXPoolSemaphore;
  m_pThreadId = m_hCondition ? new (std::nothrow) VXThreadHandle*[workers]() : nullptr;
  if (m_pThreadId == nullptr) {
    std::printf("m_pThreadId malloc error\n");
    delete m_hCondition;
    m_hCondition = nullptr;
    return -1;
  }
  for (int i = 0; i < workers; ++i) {
    unsigned error = 0;
    m_pThreadId[i] = detail::StartThread(&ThreadPool::WorkerMain, this, &error);
    if (m_pThreadId[i] == nullptr) {
      // The workers started so far stay, waiting; PoolDestroy stops them.
      std::printf("_beginthreadex create thread error\n");
      return -1;
    }
    m_nStarted = i + 1;
  }
  VXThread::milliSleep(kSettleMs);
  std::lock_guard<std::mutex> hold(m_lock);
  m_pWorkerHead = nullptr;
  m_pWorkerTail = nullptr;
  m_nThreadCount = workers;
  m_bShutdown = 0;
  return 0;
}

int ThreadPool::PoolAddWorker(void* (*routine)(void*), void* arg) {
  return Enqueue(THREAD_WORKER{routine, arg, nullptr, 1, nullptr});
}

int ThreadPool::PoolAddWorker(IVXThreadPoolTask* task) {
  if (task == nullptr) return -1;
  return Enqueue(THREAD_WORKER{nullptr, nullptr, task, 2, nullptr});
}

int ThreadPool::Enqueue(const THREAD_WORKER& work) {
  THREAD_WORKER* node = new (std::nothrow) THREAD_WORKER(work);
  if (node == nullptr) {
    std::printf("THREAD_WORKER malloc error!\n");
    return -1;
  }
  std::unique_lock<std::mutex> hold(m_lock);
  // Before CreatPool or once shutdown began nothing would ever run it.
  if (m_hCondition == nullptr || m_bShutdown != 0) {
    hold.unlock();
    delete node;
    return -1;
  }
  // The tail is kept, so a deep queue costs no walk; the order is the same.
  if (m_pWorkerTail != nullptr) {
    m_pWorkerTail->next = node;
  } else {
    m_pWorkerHead = node;
  }
  m_pWorkerTail = node;
  m_hCondition->Release();
  return 0;
}

unsigned int ThreadPool::WorkerMain(void* pool) {
  static_cast<ThreadPool*>(pool)->WorkerLoop();
  return 0;
}

void ThreadPool::WorkerLoop() {
  for (;;) {
    m_hCondition->Wait();
    THREAD_WORKER* node;
    {
      std::lock_guard<std::mutex> hold(m_lock);
      if (m_bShutdown != 0) return;  // queued work is dropped, not run
      node = m_pWorkerHead;
      if (node == nullptr) continue;
      m_pWorkerHead = node->next;
      if (m_pWorkerHead == nullptr) m_pWorkerTail = nullptr;
    }
    RunNode(*node);
    delete node;
    std::lock_guard<std::mutex> hold(m_lock);
    if (m_pWorkerHead != nullptr) m_hCondition->Release();  // pass the wake-up on
  }
}

int ThreadPool::PoolDestroy() {
  {
    std::lock_guard<std::mutex> hold(m_lock);
    if (m_bShutdown != 0 || m_pThreadId == nullptr) return -1;
    m_bShutdown = 1;
  }
  m_hCondition->ReleaseTimes(m_nStarted);  // one worker ends now
  for (int i = 0; i < m_nStarted; ++i) WaitForWorker(i);
  delete[] m_pThreadId;
  m_pThreadId = nullptr;
  FreeQueue();
  delete m_hCondition;
  m_hCondition = nullptr;
  return 0;
}

/// Each woken worker ends without waking another, so an idle worker is
/// reached only by the wake-up released after a time-out.
void ThreadPool::WaitForWorker(int index) {
  VXThreadHandle* worker = m_pThreadId[index];
  const void* printable = detail::PrintableHandle(worker);  // a failed wait may free the handle
  for (;;) {
    unsigned code = 0;
    switch (detail::WaitThread(worker, kWorkerWaitMs, &code)) {
      case detail::ThreadWait::kEnded:
        return;
      case detail::ThreadWait::kTimedOut:
        VXThread::milliSleep(kRetryPauseMs);
        std::printf("Wait thread timeout.\n");
        m_hCondition->Release();
        break;
      case detail::ThreadWait::kInvalidHandle:
        std::printf("Wait proc finish fail, pid=%p, errorcode=%u\n", printable, code);
        std::printf("hand invalid.\n");
        return;
      case detail::ThreadWait::kFailed:
        std::printf("Wait proc finish fail, pid=%p, errorcode=%u\n", printable, code);
        break;
      case detail::ThreadWait::kOther:
        VXThread::milliSleep(kRetryPauseMs);
        std::printf("Wait thread other, code=%u\n", code);
        break;
    }
  }
}

void ThreadPool::FreeQueue() {
  THREAD_WORKER* node = m_pWorkerHead;
  m_pWorkerHead = nullptr;
  m_pWorkerTail = nullptr;
  while (node != nullptr) {
    THREAD_WORKER* next = node->next;
    delete node;
    node = next;
  }
}
