// vxutil shm create NAME SIZE [--hold S] | write NAME TEXT | read NAME:
// named shared memory that two shells can share.

#include <chrono>
#include <climits>
#include <cstdio>
#include <cstring>
#include <string>
#include <thread>

#include <unistd.h>

#include <vxutility/VXSharedMemory.h>

#include "Command.h"
#include "RuntimeArgs.h"

namespace {

/// Bytes `read` looks at: a block is mapped at least one page, so a text is
/// read within that page whatever the block's size.
constexpr std::size_t kReadLimit = 4096;

int Fail(const VXSharedMemory& block) {
  std::fprintf(stderr, "vxutil shm: %s\n", block.GetErrorMessage());
  return 1;
}

int Create(const Args& args) {
  long long size = 0;
  long long hold = 0;
  if (args.size() < 3 || !ParseIntArg(args[2], size) || size <= 0 || size > UINT_MAX) {
    return UsageError("shm", "create expects NAME and SIZE (1 to 4294967295 bytes)");
  }
  std::size_t option = 3;
  const bool holdGiven = args.size() == 5 && args[3] == "--hold" && TakeNumberOption(args, option, 0, 86400, hold);
  if (args.size() != 3 && !holdGiven) return UsageError("shm", "create takes only --hold SECONDS after SIZE");
  VXSharedMemory block(args[1].c_str());
  if (!block.Create(static_cast<unsigned>(size), VXSharedMemory::PermissionWrite)) return Fail(block);
  std::printf("created %s, %lld bytes; held for %lld s\n", args[1].c_str(), size, hold);
  std::fflush(stdout);
  std::this_thread::sleep_for(std::chrono::seconds(hold));
  return 0;
}

int Write(VXSharedMemory& block, const std::string& text) {
  if (!block.Attach(VXSharedMemory::PermissionWrite)) return Fail(block);
  std::memcpy(block.GetData(), text.c_str(), text.size() + 1);
  return 0;
}

int Read(VXSharedMemory& block) {
  if (!block.Attach(VXSharedMemory::PermissionRead)) return Fail(block);
  const char* text = static_cast<const char*>(block.GetData());
  std::printf("%.*s\n", static_cast<int>(strnlen(text, kReadLimit)), text);
  return 0;
}

int Run(const Args& args) {
  if (args.empty()) return UsageError("shm", "expects create, write or read");
  if (args[0] == "create") return Create(args);
  if (args[0] == "write" && args.size() == 3) {
    if (args[2].size() >= kReadLimit) return UsageError("shm", "TEXT must stay below 4096 bytes");
    VXSharedMemory block(args[1].c_str());
    return Write(block, args[2]);
  }
  if (args[0] == "read" && args.size() == 2) {
    VXSharedMemory block(args[1].c_str());
    return Read(block);
  }
  return UsageError("shm", "expects create NAME SIZE, write NAME TEXT or read NAME");
}

/// One object creates a block, a second writes to it, a third reads.
int Demo() {
  const std::string name = "vxutil-demo-" + std::to_string(getpid());
  VXSharedMemory owner(name.c_str());
  if (!owner.Create(4096, VXSharedMemory::PermissionWrite)) return Fail(owner);
  VXSharedMemory writer(name.c_str());
  VXSharedMemory reader(name.c_str());
  if (Write(writer, "hello through shared memory") != 0) return 1;
  std::printf("created %s (4096 bytes); read back: ", name.c_str());
  const int result = Read(reader);
  VXSharedMemory missing("vxutil-demo-never-created");
  missing.Attach(VXSharedMemory::PermissionRead);
  std::printf("attaching a missing block: %s\n", missing.GetErrorMessage());
  return result;
}

const CommandRegistrar kRegistrar({"shm", "create NAME SIZE [--hold S] | write NAME TEXT | read NAME",
                                   "create, write or read a named shared memory block", Run, Demo, 72});

}  // namespace
