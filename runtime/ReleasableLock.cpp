// A recursive lock that another thread may release on the holder's behalf.

#include "runtime/ReleasableLock.h"

#include <ctime>

#include "runtime/VXMutexData.h"

void ReleasableLock::Lock(VXMutexData& record) {
  const std::thread::id self = std::this_thread::get_id();
  std::unique_lock<std::mutex> hold(m_mutex);
  if (m_depth == 0 || m_holder != self) {
    m_free.wait(hold, [this] { return m_depth == 0; });
    m_holder = self;
  }
  ++m_depth;
  // The time first: the watchdog must never pair the flag with an old time.
  record.startTime.store(static_cast<std::int64_t>(std::time(nullptr)));
  record.locked.store(true);
}

bool ReleasableLock::Unlock(VXMutexData& record) {
  std::lock_guard<std::mutex> hold(m_mutex);
  if (m_depth == 0 || m_holder != std::this_thread::get_id()) return false;
  ReleaseOneLevel(record);
  return true;
}

bool ReleasableLock::ReleaseExpired(VXMutexData& record, std::int64_t now,
                                    void (*report)(const VXMutexData&, std::int64_t, std::int64_t)) {
  std::lock_guard<std::mutex> hold(m_mutex);
  const std::int64_t start = record.startTime.load();
  if (m_depth == 0 || !record.locked.load() || !(now - start > record.timeout)) return false;
  report(record, start, now);
  ReleaseOneLevel(record);
  return true;
}

void ReleasableLock::ReleaseOneLevel(VXMutexData& record) {
  // Cleared before the level goes, so a flag the next holder sets survives.
  record.locked.store(false);
  if (--m_depth == 0) {
    m_holder = std::thread::id();
    m_free.notify_one();
  }
}
