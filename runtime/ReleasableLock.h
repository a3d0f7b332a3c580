#pragma once
// A recursive lock that another thread may release on the holder's behalf.
// It tracks its holder and depth, so a release by a thread that does not
// hold it changes nothing and the depth never drops below zero.

#include <condition_variable>
#include <cstdint>
#include <mutex>
#include <thread>

struct VXMutexData;

class ReleasableLock {
 public:
  /// Waits until the lock is free or held by the caller, takes one level,
  /// then stamps `record` (startTime, then locked) while still atomic with
  /// respect to the other operations.
  void Lock(VXMutexData& record);
  /// Clears `record.locked` and releases one level when the caller holds the
  /// lock; false, with nothing changed, otherwise.
  bool Unlock(VXMutexData& record);
  /// Undoes one Lock of the holder when `record` is still locked and, at
  /// `now`, held longer than its time-out; `report` runs first, with the
  /// start time seen. False when the lock changed hands or was released.
  bool ReleaseExpired(VXMutexData& record, std::int64_t now,
                      void (*report)(const VXMutexData& record, std::int64_t start, std::int64_t now));

 private:
  void ReleaseOneLevel(VXMutexData& record);

  std::mutex m_mutex;
  std::condition_variable m_free;
  std::thread::id m_holder;
  unsigned m_depth = 0;
};
