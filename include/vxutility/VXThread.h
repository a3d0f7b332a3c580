#pragma once
/// A thread of its own for a subclass's `run`.
///
/// The object must outlive its thread: the thread calls `run` on it and then
/// writes its running flag, so wait for the thread before destroying the
/// object. A thread never waited for is detached when the object goes.

#include <atomic>

#include <vxutility/vxutility_export.h>

/// The platform's record of one started thread.
struct VXThreadHandle;

class VXUTILITY_EXPORT VXThread {
 public:
  VXThread();
  /// Detaches a thread that was never waited for; neither stops nor waits.
  virtual ~VXThread();
  VXThread(const VXThread&) = delete;
  VXThread& operator=(const VXThread&) = delete;

  /// The body run on the thread.
  virtual void run() = 0;

  /// Starts a thread that calls run(). Nothing happens while the thread of an
  /// earlier start still runs. When the system cannot make a thread, the
  /// handle and id stay 0 and the running flag false; nothing is reported.
  void start();
  /// Waits at most `milliseconds` (0xFFFFFFFF: without limit) for the thread
  /// to end; true when it has ended or was never running. On a failed wait
  /// prints "Wait thread finish fail, errorcode=%u\n" and gives false; a
  /// time-out gives false silently.
  bool wait(unsigned int milliseconds);
  /// True from start() until run() has returned.
  bool isRunning() const;
  /// The system's id of the thread; 0 until started.
  unsigned long tid() const;

  /// Sleeps `seconds` cut to whole milliseconds; negative or NaN sleeps 0,
  /// anything above 0xFFFFFFFE milliseconds sleeps that long.
  static void sleep(float seconds);
  /// Sleeps that many milliseconds.
  static void milliSleep(unsigned int milliseconds);

 private:
  static unsigned int threadFunc(void* self);

  unsigned int m_tid;
  std::atomic<bool> m_bRunning;
  VXThreadHandle* m_hThread;
};
