// The watch list, its lock and the watchdog thread. The list and its lock
// are made when the library loads, in the order InitOrder.h fixes; the
// unload hook stops the watchdog before either goes.

#include "runtime/MutexWatchdog.h"

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <cstdio>
#include <ctime>
#include <deque>
#include <mutex>
#include <new>

#include <vxutility/VXMutex.h>

#include "InitOrder.h"
#include "runtime/ThreadPlatform.h"
#include "runtime/VXMutexData.h"

namespace {

constexpr auto kPassInterval = std::chrono::milliseconds(5000);
constexpr char kThreadName[] = "vxmutex-watch";

/// How the unload hook wakes the watchdog out of its pause and joins it.
struct WatchdogState {
  std::mutex mutex;
  std::condition_variable wake;
  bool stop = false;
  VXThreadHandle* thread = nullptr;
};

std::deque<VXReinforceMutex*> g_watchList VXUTILITY_INIT_WATCH_LIST;
VXMutex g_watchListLock VXUTILITY_INIT_WATCH_LIST_LOCK;
// Guarded by g_watchListLock. Plain data: nothing to tear down on unload.
WatchdogState* g_watchdog = nullptr;
bool g_stoppedForGood = false;

/// Set on the watchdog thread for the length of one forced Unlock call.
thread_local const std::int64_t* t_forcedReleaseTime = nullptr;

void StartWatchdog(unsigned int (*main)(void*)) {
  WatchdogState* state = new (std::nothrow) WatchdogState;
  unsigned error = 0;
  VXThreadHandle* thread = state ? detail::StartThread(main, state, &error) : nullptr;
  if (thread == nullptr) {
    std::printf("_beginthreadex create thread error\n");
    delete state;
    return;
  }
  state->thread = thread;
  g_watchdog = state;
}

bool Expired(const VXMutexData& record, std::int64_t now) {
  const std::int64_t start = record.startTime.load();
  return now - start > record.timeout && start >= 1 && record.timeout >= 1;
}

}  // namespace

void MutexWatchdog::Watch(VXReinforceMutex* mutex) {
  VXMutexLocker hold(&g_watchListLock);
  g_watchList.push_back(mutex);
  if (g_watchdog == nullptr && !g_stoppedForGood) StartWatchdog(&MutexWatchdog::Main);
}

void MutexWatchdog::Forget(VXReinforceMutex* mutex) {
  VXMutexLocker hold(&g_watchListLock);
  mutex->m_pReinforce->valid.store(false);
  g_watchList.erase(std::remove_if(g_watchList.begin(), g_watchList.end(),
                                   [](const VXReinforceMutex* entry) {
                                     return entry->m_pReinforce == nullptr || !entry->m_pReinforce->valid.load();
                                   }),
                    g_watchList.end());
}

const std::int64_t* MutexWatchdog::ForcedReleaseTime() { return t_forcedReleaseTime; }

void MutexWatchdog::Stop() {
  WatchdogState* state;
  {
    VXMutexLocker hold(&g_watchListLock);
    state = g_watchdog;
    g_watchdog = nullptr;
    g_stoppedForGood = true;
  }
  if (state == nullptr) return;
  {
    std::lock_guard<std::mutex> hold(state->mutex);
    state->stop = true;
  }
  state->wake.notify_all();
  unsigned code = 0;
  if (detail::WaitThread(state->thread, detail::kWaitForever, &code) != detail::ThreadWait::kEnded) {
    detail::DetachThread(state->thread);
  }
  delete state;
}

unsigned int MutexWatchdog::Main(void* raw) {
  WatchdogState* state = static_cast<WatchdogState*>(raw);
  detail::NameCurrentThread(kThreadName);
  for (;;) {
    Pass();
    std::unique_lock<std::mutex> hold(state->mutex);
    if (state->wake.wait_for(hold, kPassInterval, [state] { return state->stop; })) return 0;
  }
}

/// One walk over the list under its lock. Nothing else is taken here but
/// each lock's own short internal mutex, so a hung holder never blocks it.
void MutexWatchdog::Pass() {
  VXMutexLocker hold(&g_watchListLock);
  for (VXReinforceMutex* mutex : g_watchList) {
    const VXMutexData& record = *mutex->m_pReinforce;
    if (!record.locked.load()) continue;
    const std::int64_t now = static_cast<std::int64_t>(std::time(nullptr));
    if (!Expired(record, now)) continue;
    t_forcedReleaseTime = &now;
    mutex->Unlock();  // through the virtual table, as any caller would
    t_forcedReleaseTime = nullptr;
  }
}
