#pragma once
// Shared pieces of the runtime tests: the helper program, pipes, and counts
// of what a process holds.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include <dirent.h>
#include <fcntl.h>
#include <unistd.h>

#include <vxutility/VXProcess.h>

inline void* AsHandle(int fd) { return reinterpret_cast<void*>(static_cast<intptr_t>(fd)); }

/// Starts the helper with `args`; false when it could not be started.
inline bool StartHelper(VXProcess& process, const std::vector<std::string>& args) {
  std::vector<const char*> argv;
  for (const std::string& arg : args) argv.push_back(arg.c_str());
  return process.start(RUNTIME_HELPER, static_cast<int>(argv.size()), argv.data());
}

/// A pipe whose ends close with the object; the write end is inheritable.
struct Pipe {
  int read = -1;
  int write = -1;
  Pipe() {
    int fds[2];
    if (pipe(fds) == 0) {
      read = fds[0];
      write = fds[1];
      fcntl(read, F_SETFD, FD_CLOEXEC);
    }
  }
  ~Pipe() {
    CloseWrite();
    if (read >= 0) close(read);
  }
  void CloseWrite() {
    if (write >= 0) close(write);
    write = -1;
  }
  /// Everything up to end of file (close the write end first).
  std::string ReadAll() const {
    std::string text;
    char buffer[4096];
    ssize_t got;
    while ((got = ::read(read, buffer, sizeof buffer)) > 0) text.append(buffer, static_cast<size_t>(got));
    return text;
  }
};

/// Entries of a /proc directory listing, without "." and "..".
inline int CountEntries(const char* path) {
  DIR* dir = opendir(path);
  if (dir == nullptr) return -1;
  int count = 0;
  while (const dirent* entry = readdir(dir)) count += entry->d_name[0] != '.';
  closedir(dir);
  return count;
}

/// Descriptors this process holds.
inline int OpenDescriptorCount() { return CountEntries("/proc/self/fd") - 1; }
