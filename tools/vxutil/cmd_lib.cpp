// vxutil lib: load a dynamic library and look symbols up in it. The demo
// step also runs a few tasks on a thread pool.

#include <atomic>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <string>

#include <vxutility/vxutility.h>

#include "Command.h"

namespace {

int RunLib(const Args& args) {
  if (args.empty()) return UsageError("lib", "expects a PATH");
  if (args[0].empty()) return UsageError("lib", "PATH is empty");
  VXLibrary library(args[0].c_str());
  if (!library.Load()) {
    std::printf("%s: %s\n", args[0].c_str(), library.ErrorMessage());
    return 1;
  }
  std::printf("loaded %s (name %s)\n", library.LibraryPath(), library.LibraryName());
  int status = 0;
  for (std::size_t i = 1; i < args.size(); ++i) {
    void* address = library.Resolve(args[i].c_str());
    if (address != nullptr) {
      // %p differs between C runtimes (Windows' has no "0x"): one form everywhere.
      std::printf("%s: 0x%llx\n", args[i].c_str(),
                  static_cast<unsigned long long>(reinterpret_cast<std::uintptr_t>(address)));
    } else {
      std::printf("%s: %s\n", args[i].c_str(), *library.ErrorMessage() ? library.ErrorMessage() : "not found");
      status = 1;
    }
  }
  return status;
}

/// Sums its share of the numbers 1 to 1,000 into a total kept under a lock.
class SumTask : public IVXThreadPoolTask {
 public:
  SumTask() = default;
  SumTask(VXMutex* lock, long* total, int first) : m_lock(lock), m_total(total), m_first(first) {}
  void Run() override {
    long sum = 0;
    for (int n = m_first; n < m_first + 100; ++n) sum += n;
    VXMutexLocker hold(m_lock);
    *m_total += sum;
  }

 private:
  VXMutex* m_lock = nullptr;
  long* m_total = nullptr;
  int m_first = 0;
};

/// The C library every process has loaded, by the file name the loader
/// knows it by.
#if defined(_WIN32)
constexpr char kCLibraryFile[] = "msvcrt.dll";
#else
constexpr char kCLibraryFile[] = "libc.so.6";
#endif

/// Ten tasks on a pool of ten workers, strlen looked up in the C library,
/// then the pool's destroy, which stops its idle workers one by one.
int DemoLib() {
  VXReinforceMutex lock("demo", 0);
  long total = 0;
  SumTask tasks[10];
  for (int i = 0; i < 10; ++i) tasks[i] = SumTask(&lock, &total, 1 + 100 * i);

  int ok = 1;
  {
    ThreadPool pool;
    ok &= pool.CreatPool(10) == 0;
    for (SumTask& task : tasks) ok &= pool.PoolAddWorker(&task) == 0;
    for (int waited = 0; waited < 5000; ++waited) {
      bool all = true;
      for (const SumTask& task : tasks) all = all && task.m_bFinished;
      if (all) break;
      VXThread::milliSleep(1);
    }
    {
      VXMutexLocker hold(&lock);
      std::printf("10 pool tasks summed 1..1000: %ld\n", total);
      ok &= total == 500500;
    }

    VXLibrary libc(kCLibraryFile);
    ok &= libc.Load();
    auto length = reinterpret_cast<std::size_t (*)(const char*)>(libc.Resolve("strlen"));
    ok &= length != nullptr;
    std::printf("%s loaded: %s, strlen(\"vxutility\") through it: %zu\n", kCLibraryFile, libc.IsLoaded() ? "yes" : "no",
                length ? length("vxutility") : 0);
    libc.Resolve("no_such_function_here");
    std::printf("missing symbol: %s\n", libc.ErrorMessage());

    std::printf("destroying the pool: idle workers stop one per 1.5 s (about 13.5 s)...\n");
    std::fflush(stdout);
    ok &= pool.PoolDestroy() == 0;
  }
  return ok ? 0 : 1;
}

const CommandRegistrar kLibCommand({"lib", "PATH [SYMBOL...]",
                                    "load a dynamic library and print the address of each symbol", RunLib, DemoLib,
                                    60});

}  // namespace
