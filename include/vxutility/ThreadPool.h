#pragma once
/// A fixed set of worker threads taking plain functions and task objects
/// from one first-in, first-out queue.
///
/// The pool holds one wake-up at a time: a burst of submissions starts its
/// work one after the other as finishing workers pass the wake-up on.
/// Destruction waits for running work, drops queued work, and takes about
/// 1.5 seconds for each idle worker after the first (printing
/// "Wait thread timeout.\n" each time).

#include <atomic>
#include <mutex>

#include <vxutility/VXThread.h>
#include <vxutility/vxutility_export.h>

/// A unit of work for the pool. The pool neither copies nor deletes it; keep
/// it alive until it has run.
class VXUTILITY_EXPORT IVXThreadPoolTask {
 public:
  IVXThreadPoolTask();
  /// Copies the finished flag.
  IVXThreadPoolTask(const IVXThreadPoolTask& other);
  /// Copies the finished flag.
  IVXThreadPoolTask& operator=(const IVXThreadPoolTask& other);
  virtual ~IVXThreadPoolTask();

  /// The body of the task.
  virtual void Run() = 0;
  /// Runs the body on the calling thread, the flag false while it runs and
  /// true afterwards; returns 0.
  int Task();

  /// False until the body has run once to its end.
  std::atomic<bool> m_bFinished;
};

/// One queued unit of work: a function (type 1) or a task object (type 2).
struct THREAD_WORKER {
  void* (*routine)(void*);
  void* arg;
  IVXThreadPoolTask* task;
  int type;
  THREAD_WORKER* next;
};

/// The pool's wake-up: a semaphore holding at most one count.
struct VXPoolSemaphore;

class VXUTILITY_EXPORT ThreadPool {
 public:
  /// No workers until CreatPool.
  ThreadPool();
  /// Calls PoolDestroy().
  ~ThreadPool();
  ThreadPool(const ThreadPool&) = delete;
  ThreadPool& operator=(const ThreadPool&) = delete;

  /// Starts max(threadCount, 10) workers and pauses 500 ms; 0 on success.
  /// -1 after "m_pThreadId malloc error\n" or
  /// "_beginthreadex create thread error\n" (the workers already started
  /// stay until PoolDestroy), or when the pool was already created.
  int CreatPool(int threadCount);
  /// Queues routine(arg); 0, or -1 after "THREAD_WORKER malloc error!\n".
  int PoolAddWorker(void* (*routine)(void*), void* arg);
  /// Queues a task object; -1 for a null task or after
  /// "THREAD_WORKER malloc error!\n", else 0.
  int PoolAddWorker(IVXThreadPoolTask* task);
  /// Stops the workers and frees the queue without running it; 0, or -1 when
  /// the pool was never created or is already being destroyed.
  int PoolDestroy();

 private:
  static unsigned int WorkerMain(void* pool);
  void WorkerLoop();
  int Enqueue(const THREAD_WORKER& work);
  void WaitForWorker(int index);
  void FreeQueue();

  std::mutex m_lock;
  VXPoolSemaphore* m_hCondition;
  VXThreadHandle** m_pThreadId;
  THREAD_WORKER* m_pWorkerHead;
  THREAD_WORKER* m_pWorkerTail;
  int m_bShutdown;
  int m_nThreadCount;
  int m_nStarted;
};
