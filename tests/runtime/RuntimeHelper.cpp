// A small child program for the process, monitor and shared-memory tests:
//   exit N | sleep MS | args ARG... | cwd | crash | killself | say TEXT |
//   fds (exit code: open descriptors) | shm-write NAME TEXT | shm-read NAME

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <string>
#include <thread>

#if !defined(_WIN32)
#include <dirent.h>
#include <signal.h>
#include <unistd.h>
#endif

#include <vxutility/VXSharedMemory.h>

namespace {

/// Descriptors and signals are POSIX notions: on Windows these commands
/// answer as unknown ones do.
int CountOpenDescriptors() {
#if defined(_WIN32)
  return 64;
#else
  DIR* dir = opendir("/proc/self/fd");
  if (dir == nullptr) return -1;
  int count = 0;
  while (const dirent* entry = readdir(dir)) {
    if (entry->d_name[0] != '.') ++count;
  }
  closedir(dir);
  return count - 1;  // the directory's own descriptor
#endif
}

void KillSelf() {
#if !defined(_WIN32)
  kill(getpid(), SIGKILL);
#endif
}

int WriteShared(const char* name, const char* text) {
  VXSharedMemory block(name);
  if (!block.Attach(VXSharedMemory::PermissionWrite)) {
    std::printf("%s\n", block.GetErrorMessage());
    return 1;
  }
  std::strcpy(static_cast<char*>(block.GetData()), text);
  return 0;
}

int ReadShared(const char* name) {
  VXSharedMemory block(name);
  if (!block.Attach(VXSharedMemory::PermissionRead)) {
    std::printf("%s\n", block.GetErrorMessage());
    return 1;
  }
  std::printf("%s", static_cast<const char*>(block.GetData()));
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 2) return 64;
  const std::string command = argv[1];
  if (command == "exit" && argc == 3) return std::atoi(argv[2]);
  if (command == "sleep" && argc == 3) {
    std::this_thread::sleep_for(std::chrono::milliseconds(std::atoi(argv[2])));
    return 0;
  }
  if (command == "args") {
    for (int i = 2; i < argc; ++i) std::printf("[%s]\n", argv[i]);
    return 0;
  }
  if (command == "cwd") {
    std::error_code error;
    const std::filesystem::path path = std::filesystem::current_path(error);
    if (error) return 1;
    std::printf("%s\n", path.string().c_str());
    return 0;
  }
  if (command == "crash") std::abort();
  if (command == "killself") KillSelf();
  if (command == "say" && argc == 3) {
    std::printf("out:%s\n", argv[2]);
    std::fflush(stdout);
    std::fprintf(stderr, "err:%s\n", argv[2]);
    return 0;
  }
  if (command == "fds") return CountOpenDescriptors();
  if (command == "shm-write" && argc == 4) return WriteShared(argv[2], argv[3]);
  if (command == "shm-read" && argc == 3) return ReadShared(argv[2]);
  return 64;
}
