// File functions called from several threads at once.

#include <vxutility/FileUtils.h>
#include <vxutility/TempFile.h>

#include <atomic>
#include <cstdlib>
#include <ctime>
#include <set>
#include <thread>
#include <vector>

#include "files/ScratchDir.h"

namespace {

using FileThreadTest = ScratchDirTest;

constexpr int kThreads = 4;

template <typename Body>
void RunThreads(Body body) {
  std::vector<std::thread> threads;
  for (int t = 0; t < kThreads; ++t) threads.emplace_back(body, t);
  for (std::thread& thread : threads) thread.join();
}

// Every thread makes the same missing directories; the first thread also
// makes calls that fail after making them and clean up. The others must
// never fail, whoever made a directory or removed it meanwhile.
TEST_F(FileThreadTest, CallersSharingMissingDirectoriesAllSucceed) {
  constexpr int kRounds = 300;
  std::atomic<int> failures{0};
  RunThreads([&](int thread) {
    for (int round = 0; round < kRounds; ++round) {
      const std::string base = Path("r" + std::to_string(round) + "/a/b/c/");
      if (thread == 0) {
        VXCreateFile(base.c_str());  // ends with a separator: fails, removes what it made
      } else if (!VXCreateFile((base + "t" + std::to_string(thread) + ".txt").c_str())) {
        ++failures;
      }
    }
  });
  EXPECT_EQ(failures.load(), 0);
  for (int thread = 1; thread < kThreads; ++thread) {
    EXPECT_TRUE(fs::is_regular_file(Path("r7/a/b/c/t" + std::to_string(thread) + ".txt")));
  }
}

std::string DigitsAfterSeeding(unsigned seed) {
  std::srand(seed);
  std::string digits;
  for (int i = 0; i < 5; ++i) digits += static_cast<char>('0' + std::rand() % 10);
  return digits;
}

// Each name's digits are the five draws after seeding with the clock, never
// draws another thread's seeding cut into.
TEST_F(FileThreadTest, ConcurrentNamesKeepTheirOwnDraws) {
  const unsigned now = static_cast<unsigned>(std::time(nullptr));
  std::set<std::string> expected;
  for (unsigned second = now; second < now + 30; ++second) expected.insert(DigitsAfterSeeding(second));
  std::atomic<int> strangers{0};
  RunThreads([&](int) {
    for (int i = 0; i < 5000; ++i) {
      TempFile temp(root_.c_str());
      temp.setUseAppID(false);
      temp.setAutoRemove(false);
      temp.generateFilePath();
      if (expected.count(temp.getFilePath().substr(root_.size())) == 0) ++strangers;
    }
  });
  EXPECT_EQ(strangers.load(), 0);
}

}  // namespace
