#pragma once
/// Locks within one process: a recursive lock, a scoped holder, and a named
/// lock that a process-wide watchdog releases by force when a holder keeps
/// it longer than its time-out.

#include <vxutility/vxutility_export.h>

/// The record behind every lock.
struct VXMutexData;

/// A recursive lock: a thread that holds it may lock it again and unlocks it
/// as often. Only the holder unlocks it.
class VXUTILITY_EXPORT VXMutex {
 public:
  VXMutex();
  virtual ~VXMutex();
  VXMutex(const VXMutex&) = delete;
  VXMutex& operator=(const VXMutex&) = delete;

  /// Waits as long as it takes for the lock.
  virtual void Lock();
  /// Releases one Lock of the calling thread.
  virtual void Unlock();

 private:
  VXMutexData* m_pData;
};

/// Holds a lock for the lifetime of a scope. The mutex must not be null.
class VXUTILITY_EXPORT VXMutexLocker {
 public:
  /// Calls mutex->Lock().
  explicit VXMutexLocker(VXMutex* mutex);
  /// Calls Unlock() on the mutex.
  ~VXMutexLocker();
  VXMutexLocker(const VXMutexLocker&) = delete;
  VXMutexLocker& operator=(const VXMutexLocker&) = delete;

 private:
  VXMutex* m_pMutex;
};

/// A named lock with a time-out in seconds. With a time-out of 1 or more the
/// watchdog releases a holder's Lock by force between timeout + 1 and about
/// timeout + 6 seconds after it was taken, printing
/// "timeout %d Mutex %s start is %ld \n" and "now is %ld compel release1\n".
/// An Unlock by a thread that does not hold the lock (a holder released by
/// force, for instance) changes nothing.
class VXUTILITY_EXPORT VXReinforceMutex : public VXMutex {
 public:
  /// A null name is "VXMutex"; longer names keep their first 255 bytes.
  /// A time-out below 1 means the lock is never released by force. When the
  /// watchdog cannot be started, prints "_beginthreadex create thread error\n"
  /// and the lock works unwatched until a later lock starts it.
  VXReinforceMutex(const char* name, int timeout);
  /// Leaves the watchdog's reach before the lock is torn down.
  ~VXReinforceMutex() override;
  VXReinforceMutex(const VXReinforceMutex&) = delete;
  VXReinforceMutex& operator=(const VXReinforceMutex&) = delete;

  void Lock() override;
  void Unlock() override;

 private:
  friend class MutexWatchdog;
  VXMutexData* m_pReinforce;
};
