#include <vxutility/VXMutex.h>

#include <atomic>
#include <chrono>
#include <cstdio>
#include <ctime>
#include <functional>
#include <memory>
#include <string>
#include <thread>
#include <type_traits>
#include <vector>

#include <gtest/gtest.h>

#include "runtime/RuntimeTestUtil.h"

static_assert(!std::is_copy_constructible<VXMutex>::value && !std::is_copy_assignable<VXMutex>::value &&
                  !std::is_copy_constructible<VXReinforceMutex>::value &&
                  !std::is_copy_assignable<VXReinforceMutex>::value,
              "a copy would share and free the lock's record twice");

namespace {

using namespace std::chrono_literals;

/// Tries to take `mutex` on a thread of its own; Acquired() says whether it
/// got the lock within the time given, Release() lets it go again.
class Contender {
 public:
  explicit Contender(VXMutex& mutex) : m_thread([this, &mutex] {
    mutex.Lock();
    m_acquired.Add();
    m_release.Wait();
    mutex.Unlock();
  }) {}
  ~Contender() {
    m_release.Open();
    m_thread.join();
  }
  bool Acquired(std::chrono::milliseconds within) { return m_acquired.WaitFor(1, within); }

 private:
  Counter m_acquired;
  Gate m_release;
  std::thread m_thread;
};

/// Holds `mutex` on a thread of its own until told to unlock it.
class Holder {
 public:
  explicit Holder(VXMutex& mutex) : m_thread([this, &mutex] {
    mutex.Lock();
    m_since.store(static_cast<long long>(std::time(nullptr)));
    m_locked.Add();
    m_unlock.Wait();
    mutex.Unlock();
    m_unlocked.Add();
  }) {
    m_locked.WaitFor(1);
  }
  ~Holder() {
    m_unlock.Open();
    m_thread.join();
  }
  void UnlockNow() {
    m_unlock.Open();
    m_unlocked.WaitFor(1);
  }
  long long Since() const { return m_since.load(); }

 private:
  Counter m_locked;
  Counter m_unlocked;
  Gate m_unlock;
  std::atomic<long long> m_since{0};
  std::thread m_thread;
};

const std::pair<const char*, std::function<std::unique_ptr<VXMutex>()>> kLockKinds[] = {
    {"VXMutex", [] { return std::make_unique<VXMutex>(); }},
    {"unwatched VXReinforceMutex", [] { return std::make_unique<VXReinforceMutex>("unwatched", 0); }},
    {"watched VXReinforceMutex", [] { return std::make_unique<VXReinforceMutex>("watched", 30); }},
};

}  // namespace

TEST(VXMutexTest, ExcludesOtherThreadsAndLetsTheHolderReenter) {
  for (const auto& [kind, make] : kLockKinds) {
    SCOPED_TRACE(kind);
    std::unique_ptr<VXMutex> mutex = make();

    long long total = 0;
    std::vector<std::thread> workers;
    for (int t = 0; t < 4; ++t) {
      workers.emplace_back([&] {
        for (int i = 0; i < 2000; ++i) {
          VXMutexLocker outer(mutex.get());
          VXMutexLocker inner(mutex.get());
          ++total;
        }
      });
    }
    for (auto& worker : workers) worker.join();
    EXPECT_EQ(total, 8000);

    // Locked twice, unlocked once: still held.
    mutex->Lock();
    mutex->Lock();
    mutex->Unlock();
    {
      Contender other(*mutex);
      EXPECT_FALSE(other.Acquired(100ms));
      mutex->Unlock();
      EXPECT_TRUE(other.Acquired(5s));
    }
  }
}

// An Unlock by a thread that does not hold the lock changes nothing: the
// holder keeps it, and the count never drops below zero.
TEST(VXMutexTest, UnlockByANonHolderChangesNothing) {
  VXReinforceMutex mutex("strict", 0);
  mutex.Unlock();  // free: nothing to release
  mutex.Unlock();
  {
    Holder holder(mutex);
    mutex.Unlock();  // not ours
    Contender other(mutex);
    EXPECT_FALSE(other.Acquired(100ms));
    holder.UnlockNow();
    EXPECT_TRUE(other.Acquired(5s));
  }
  mutex.Lock();
  Contender other(mutex);
  EXPECT_FALSE(other.Acquired(100ms));  // a negative count would let it in
  mutex.Unlock();
  EXPECT_TRUE(other.Acquired(5s));
}

// One watchdog pass, about five seconds in, releases the two expired locks
// by force, with their names cut or defaulted; a lock checked before its
// time-out, and an unwatched one, stay held. Meanwhile other threads make
// and destroy watched locks as the watchdog walks the list.
TEST(VXMutexTest, WatchdogReleasesExpiredHoldsOnly) {
  const std::string longName(300, 'n');
  VXReinforceMutex named(longName.c_str(), 1);
  VXReinforceMutex unnamed(nullptr, 1);
  VXReinforceMutex patient("patient", 20);
  VXReinforceMutex never("never", 0);

  std::atomic<bool> stopChurn{false};
  std::vector<std::thread> churn;
  for (int t = 0; t < 3; ++t) {
    churn.emplace_back([&] {
      while (!stopChurn) {
        VXReinforceMutex brief("brief", 1);
        VXMutexLocker hold(&brief);
        std::this_thread::sleep_for(1ms);
      }
    });
  }

  testing::internal::CaptureStdout();
  const auto begin = std::chrono::steady_clock::now();
  auto namedHolder = std::make_unique<Holder>(named);
  auto unnamedHolder = std::make_unique<Holder>(unnamed);
  Holder neverHolder(never);
  Holder patientHolder(patient);

  auto waiter = std::make_unique<Contender>(named);
  ASSERT_TRUE(waiter->Acquired(15s)) << "no forced release";
  const long long waited = MillisecondsSince(begin);
  EXPECT_GT(waited, 1000);
  EXPECT_LT(waited, 1000 + 6000 + 3000);
  auto unnamedTaker = std::make_unique<Contender>(unnamed);
  EXPECT_TRUE(unnamedTaker->Acquired(5s));

  // The former holders' late Unlocks do not release what others hold now.
  namedHolder->UnlockNow();
  unnamedHolder->UnlockNow();
  auto next = std::make_unique<Contender>(named);
  EXPECT_FALSE(next->Acquired(100ms));
  // Released before the next pass could find them expired too.
  waiter.reset();
  EXPECT_TRUE(next->Acquired(5s));
  next.reset();
  unnamedTaker.reset();

  // Held past a pass, but not past its time-out; and never watched at all.
  std::this_thread::sleep_until(begin + 6500ms);
  {
    Contender patientNext(patient), neverNext(never);
    EXPECT_FALSE(patientNext.Acquired(100ms));
    EXPECT_FALSE(neverNext.Acquired(100ms));
    patientHolder.UnlockNow();
    neverHolder.UnlockNow();
    EXPECT_TRUE(patientNext.Acquired(5s));
    EXPECT_TRUE(neverNext.Acquired(5s));
  }
  stopChurn = true;
  for (auto& thread : churn) thread.join();

  std::fflush(stdout);
  const std::string printed = testing::internal::GetCapturedStdout();
  char name1[300] = {}, name2[300] = {};
  int timeout1 = 0, timeout2 = 0;
  long start1 = 0, now1 = 0, start2 = 0, now2 = 0;
  int consumed = 0;
  const int fields = std::sscanf(printed.c_str(),
                                 "timeout %d Mutex %299s start is %ld \nnow is %ld compel release1\n"
                                 "timeout %d Mutex %299s start is %ld \nnow is %ld compel release1\n%n",
                                 &timeout1, name1, &start1, &now1, &timeout2, name2, &start2, &now2, &consumed);
  ASSERT_EQ(fields, 8) << printed;
  EXPECT_EQ(static_cast<std::size_t>(consumed), printed.size()) << printed;
  EXPECT_EQ(timeout1, 1);
  EXPECT_EQ(std::string(name1), longName.substr(0, 255));
  EXPECT_EQ(timeout2, 1);
  EXPECT_STREQ(name2, "VXMutex");
  EXPECT_NEAR(start1, static_cast<long>(static_cast<int>(namedHolder->Since())), 1);
  EXPECT_GE(now1 - start1, 2);
  EXPECT_GE(now2 - start2, 2);
}
