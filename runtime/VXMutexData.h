#pragma once
// The record behind every lock. A VXMutex locks `cs`; the second record of a
// VXReinforceMutex locks `releasable`, which another thread may release.

#include <atomic>
#include <cstdint>
#include <mutex>

class ReleasableLock;

struct VXMutexData {
  std::recursive_mutex* cs = nullptr;
  ReleasableLock* releasable = nullptr;
  /// Seconds since 1970 of the last Lock; 0 until the first. Read by the
  /// watchdog without the lock.
  std::atomic<std::int64_t> startTime{0};
  /// Seconds a holder may keep the lock; 1 or more means watched.
  int timeout = 0;
  /// From Lock until Unlock or a forced release. Read by the watchdog.
  std::atomic<bool> locked{false};
  /// From construction until destruction begins.
  std::atomic<bool> valid{false};
  char name[256] = {};
};
