// The watching loop on a thread of its own, beside other threads refreshing
// and marking the same list; stopping it.

#include <gtest/gtest.h>

#include <chrono>
#include <cstdlib>
#include <cstring>
#include <string>
#include <thread>

#include <unistd.h>

#include "runtime/OpenMonitor.h"

namespace {

using testing::internal::CaptureStdout;
using testing::internal::GetCapturedStdout;

class Watcher : public OpenMonitor {
 public:
  void WatchOwnProcess(long maxMem, int interval) {
    PROC_INFO_DATA data{};
    data.pId = getpid();
    data.monitor = true;
    data.max_mem = maxMem;
    data.interval = interval;
    SetProcMonitorDataByPid(data, 1);
    SetProcMonitorDataByPid(data, 2);
    SetProcMonitorDataByPid(data, 4);
  }
};

TEST(ProcMonitorLoop, ReportsLimitAndGrowthWithLiveReadings) {
  Watcher watcher;
  watcher.WatchOwnProcess(1, 1);
  CaptureStdout();
  int result = -1;
  std::thread loop([&] { result = watcher.ProcMonitorFun(); });
  // Other threads use the same object meanwhile.
  for (int i = 0; i < 5; ++i) {
    EXPECT_EQ(watcher.UpdateProcData(), 1);
    EXPECT_GT(watcher.GetMemeryDataByPid(getpid()), 0);
    watcher.WatchOwnProcess(1, 1);
    std::this_thread::sleep_for(std::chrono::milliseconds(300));
  }
  watcher.StopProcMonitorFun();
  loop.join();
  const std::string printed = GetCapturedStdout();
  EXPECT_EQ(result, 0);
  const std::string prefix = "pId:" + std::to_string(getpid()) + ",mem:";
  const std::size_t limit = printed.find(prefix);
  ASSERT_NE(limit, std::string::npos) << printed;
  EXPECT_GT(std::atol(printed.c_str() + limit + prefix.size()), 100);  // a live reading, not 0
  EXPECT_NE(printed.find(" greater than max_mem:1\n"), std::string::npos) << printed;
  EXPECT_NE(printed.find(",1 second memery add "), std::string::npos) << printed;
  for (const PROC_INFO_DATA& record : watcher.GetQueprocData()) {
    if (record.pId != getpid()) continue;
    EXPECT_GT(record.last_time, 0);  // renewed by the report
    EXPECT_TRUE(record.monitor);
  }
}

TEST(ProcMonitorLoop, StopWakesTheSleepingLoopAndIsNotLost) {
  Watcher watcher;
  int result = -1;
  std::thread loop([&] { result = watcher.ProcMonitorFun(); });
  std::this_thread::sleep_for(std::chrono::milliseconds(100));
  const auto before = std::chrono::steady_clock::now();
  watcher.StopProcMonitorFun();
  loop.join();
  EXPECT_EQ(result, 0);
  EXPECT_LT(std::chrono::steady_clock::now() - before, std::chrono::milliseconds(900));

  // A stop asked for before the loop runs ends it after its first pass, and
  // is used up by that: the loop can be run again.
  watcher.StopProcMonitorFun();
  EXPECT_EQ(watcher.ProcMonitorFun(), 0);
  std::thread again([&] { result = watcher.ProcMonitorFun(); });
  watcher.StopProcMonitorFun();
  again.join();
  EXPECT_EQ(result, 0);
}

}  // namespace
