// Children started from several threads at once: each keeps only its three
// standard descriptors, whatever the other threads hold open meanwhile.

#include <gtest/gtest.h>

#include <thread>
#include <vector>

#include <vxutility/VXProcess.h>

#include "runtime/RuntimeTestSupport.h"

namespace {

TEST(VXProcessThreads, ConcurrentStartsLeakNoDescriptorIntoChildren) {
  constexpr int kThreads = 3;
  constexpr int kCycles = 40;
  std::vector<int> wrong(kThreads, 0);
  std::vector<std::thread> threads;
  for (int t = 0; t < kThreads; ++t) {
    threads.emplace_back([t, &wrong] {
      for (int i = 0; i < kCycles; ++i) {
        Pipe busy;  // an inheritable descriptor held while others start children
        VXProcess process;
        if (!StartHelper(process, {"fds"}) || !process.wait(10000) || process.exitcode() != 3) ++wrong[t];
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  for (int t = 0; t < kThreads; ++t) EXPECT_EQ(wrong[t], 0) << "thread " << t;
}

}  // namespace
