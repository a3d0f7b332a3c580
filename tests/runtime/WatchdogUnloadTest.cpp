// Unloading the utility library while its watchdog runs and a watched lock
// is alive: the watchdog must be stopped and joined first, or its thread
// would wake inside code that is gone. This process does not link the
// library; a plugin brings it in.

#include <dirent.h>
#include <dlfcn.h>
#include <unistd.h>

#include <fstream>
#include <string>

#include <gtest/gtest.h>

namespace {

/// How many threads of this process carry the watchdog's name.
int WatchdogThreads() {
  int count = 0;
  DIR* tasks = opendir("/proc/self/task");
  if (tasks == nullptr) return -1;
  while (const dirent* entry = readdir(tasks)) {
    if (entry->d_name[0] == '.') continue;
    std::ifstream comm(std::string("/proc/self/task/") + entry->d_name + "/comm");
    std::string name;
    if (std::getline(comm, name) && name == "vxmutex-watch") ++count;
  }
  closedir(tasks);
  return count;
}

}  // namespace

TEST(WatchdogUnloadTest, UnloadStopsAndJoinsTheWatchdog) {
  for (int round = 0; round < 2; ++round) {  // the second load starts a fresh watchdog
    SCOPED_TRACE(round);
    void* plugin = dlopen(VXTEST_WATCH_PLUGIN_PATH, RTLD_NOW | RTLD_LOCAL);
    ASSERT_NE(plugin, nullptr) << dlerror();
    auto startWatching = reinterpret_cast<void (*)()>(dlsym(plugin, "vxtest_start_watching"));
    ASSERT_NE(startWatching, nullptr);
    EXPECT_EQ(WatchdogThreads(), 0);
    startWatching();
    // The thread names itself as it begins; give it a moment.
    for (int tries = 0; tries < 200 && WatchdogThreads() == 0; ++tries) usleep(10000);
    EXPECT_EQ(WatchdogThreads(), 1);

    ASSERT_EQ(dlclose(plugin), 0);
    void* utility = dlopen(VXUTILITY_LIBRARY_SONAME, RTLD_NOW | RTLD_NOLOAD);
    EXPECT_EQ(utility, nullptr) << "the utility library stayed loaded";
    if (utility != nullptr) dlclose(utility);
    EXPECT_EQ(WatchdogThreads(), 0);
  }
}
