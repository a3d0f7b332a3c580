#include <vxutility/VXThread.h>

#include <unistd.h>

#include <atomic>
#include <chrono>
#include <cmath>
#include <limits>
#include <type_traits>

#include <gtest/gtest.h>

#include "runtime/RuntimeTestUtil.h"
#include "runtime/SleepMilliseconds.h"

static_assert(!std::is_copy_constructible<VXThread>::value && !std::is_copy_assignable<VXThread>::value,
              "a copy would share the thread's handle");

namespace {

class GatedThread : public VXThread {
 public:
  void run() override {
    bodyTid.store(static_cast<unsigned long>(gettid()));
    started.Add();
    gate.Wait();
  }
  Gate gate;
  Counter started;
  std::atomic<unsigned long> bodyTid{0};
};

class QuickThread : public VXThread {
 public:
  void run() override { runs.fetch_add(1); }
  std::atomic<int> runs{0};
};

}  // namespace

TEST(VXThreadTest, WaitHonoursZeroShortAndUnlimitedTimeOuts) {
  GatedThread thread;
  EXPECT_TRUE(thread.wait(0));  // never started
  EXPECT_EQ(thread.tid(), 0u);
  EXPECT_FALSE(thread.isRunning());

  thread.start();
  ASSERT_TRUE(thread.started.WaitFor(1));
  EXPECT_TRUE(thread.isRunning());
  EXPECT_NE(thread.tid(), 0u);
  EXPECT_EQ(thread.tid(), thread.bodyTid.load());
  EXPECT_NE(thread.tid(), static_cast<unsigned long>(gettid()));

  for (unsigned limit : {0u, 60u, 150u}) {
    SCOPED_TRACE(limit);
    const auto begin = std::chrono::steady_clock::now();
    EXPECT_FALSE(thread.wait(limit));
    const long long spent = MillisecondsSince(begin);
    EXPECT_GE(spent, static_cast<long long>(limit));
    EXPECT_LT(spent, static_cast<long long>(limit) + 5000);  // a wait that never ends fails here
  }

  thread.gate.Open();
  EXPECT_TRUE(thread.wait(0xFFFFFFFF));
  EXPECT_FALSE(thread.isRunning());
  EXPECT_TRUE(thread.wait(0));  // the handle is forgotten; nothing left to wait for
}

// The flag goes up before the thread exists: a body that ends at once must
// still leave it down, every time.
TEST(VXThreadTest, ShortBodiesLeaveTheRunningFlagDown) {
  for (int round = 0; round < 50; ++round) {
    QuickThread thread;
    thread.start();
    ASSERT_TRUE(thread.wait(0xFFFFFFFF));
    EXPECT_FALSE(thread.isRunning()) << "round " << round;
    EXPECT_EQ(thread.runs.load(), 1);
  }
}

// Objects whose finished threads nobody waited for, and a restart of one
// object, leave no thread resources behind (ThreadSanitizer reports leaks).
TEST(VXThreadTest, UnwaitedAndRestartedThreadsAreReleased) {
  QuickThread restarted;
  for (int round = 0; round < 3; ++round) {
    restarted.start();
    while (restarted.isRunning()) VXThread::milliSleep(1);
  }
  EXPECT_EQ(restarted.runs.load(), 3);
  for (int round = 0; round < 10; ++round) {
    QuickThread thread;
    thread.start();
    while (thread.isRunning()) VXThread::milliSleep(1);
  }
}

TEST(VXThreadTest, SleepTimesAreCutToWholeMillisecondsAndClamped) {
  const float inf = std::numeric_limits<float>::infinity();
  const std::pair<float, unsigned> cases[] = {
      {0.25f, 250},
      {0.0005f, 0},
      {1.9999f, 1999},
      {0.0f, 0},
      {-1.0f, 0},
      {-inf, 0},
      {std::nanf(""), 0},
      {4294967.0f, 4294967000u},
      {4294968.0f, 0xFFFFFFFEu},
      {1e30f, 0xFFFFFFFEu},
      {inf, 0xFFFFFFFEu},
  };
  for (const auto& [seconds, milliseconds] : cases) {
    SCOPED_TRACE(seconds);
    EXPECT_EQ(detail::SleepMilliseconds(seconds), milliseconds);
  }
  const auto begin = std::chrono::steady_clock::now();
  VXThread::sleep(0.25f);
  EXPECT_GE(MillisecondsSince(begin), 250);
}
