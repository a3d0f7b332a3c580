#pragma once
// The process-wide watch list of forced-release locks and the one watchdog
// thread that walks it every 5 seconds.

#include <cstdint>

class VXReinforceMutex;

class MutexWatchdog {
 public:
  /// Appends `mutex` to the watch list and starts the watchdog if it is not
  /// running (printing "_beginthreadex create thread error\n" when it cannot).
  static void Watch(VXReinforceMutex* mutex);
  /// Marks `mutex` as going and removes every entry that is going.
  static void Forget(VXReinforceMutex* mutex);
  /// When the calling thread is the watchdog releasing a lock by force: the
  /// time of that pass; else null.
  static const std::int64_t* ForcedReleaseTime();
  /// Stops and joins the watchdog for good; later locks stay unwatched. Run
  /// when the library is unloaded.
  static void Stop();

 private:
  static unsigned int Main(void* state);
  static void Pass();
};
