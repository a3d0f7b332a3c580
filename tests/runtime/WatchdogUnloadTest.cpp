// Unloading the utility library while its watchdog runs and a watched lock
// is alive: the watchdog must be stopped and joined first, or its thread
// would wake inside code that is gone. This process does not link the
// library; a plugin brings it in.

#include <dirent.h>
#include <dlfcn.h>

#include <string>

#include <gtest/gtest.h>

namespace {

int ThreadCount() {
  int count = 0;
  DIR* tasks = opendir("/proc/self/task");
  if (tasks == nullptr) return -1;
  while (const dirent* entry = readdir(tasks)) {
    if (entry->d_name[0] != '.') ++count;
  }
  closedir(tasks);
  return count;
}

}  // namespace

TEST(WatchdogUnloadTest, UnloadStopsAndJoinsTheWatchdog) {
  for (int round = 0; round < 2; ++round) {  // the second load starts a fresh watchdog
    SCOPED_TRACE(round);
    const int before = ThreadCount();
    void* plugin = dlopen(VXTEST_WATCH_PLUGIN_PATH, RTLD_NOW | RTLD_LOCAL);
    ASSERT_NE(plugin, nullptr) << dlerror();
    auto startWatching = reinterpret_cast<void (*)()>(dlsym(plugin, "vxtest_start_watching"));
    ASSERT_NE(startWatching, nullptr);
    startWatching();
    EXPECT_EQ(ThreadCount(), before + 1);

    ASSERT_EQ(dlclose(plugin), 0);
    void* utility = dlopen(VXUTILITY_LIBRARY_SONAME, RTLD_NOW | RTLD_NOLOAD);
    EXPECT_EQ(utility, nullptr) << "the utility library stayed loaded";
    if (utility != nullptr) dlclose(utility);
    EXPECT_EQ(ThreadCount(), before);
  }
}
