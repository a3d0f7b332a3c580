// vxutil file: what a path names, and the parts of its name.

#include <cstdio>
#include <cstring>
#include <filesystem>
#include <string>

#include <vxutility/vxutility.h>

#include "Command.h"

namespace {

const struct {
  int bit;
  const char* name;
} kFileFlags[] = {{1, "exists"}, {2, "file"}, {4, "directory"}, {16, "readable"}, {32, "writable"}};

/// Everything up to and including the last separator; empty without one.
std::string DirectoryPart(const char* path) {
  if (std::strpbrk(path, "/\\") == nullptr) return std::string();
  const char* name = GetFileNameWithExt(path, -1);
  return std::string(path, std::strlen(path) - std::strlen(name));
}

void PrintFlags(const char* path) {
  const int flags = GetFileFlags(path);
  std::printf("flags: %d\n", flags);
  for (const auto& flag : kFileFlags) {
    std::printf("%s: %s\n", flag.name, (flags & flag.bit) ? "yes" : "no");
  }
}

void PrintNameParts(const char* path) {
  std::printf("name: %s\n", GetFileName(path, -1).c_str());
  std::printf("extension: %s\n", GetFileExt(path, -1));
  std::printf("name with extension: %s\n", GetFileNameWithExt(path, -1));
  std::printf("directory part: %s\n", DirectoryPart(path).c_str());
}

int RunFile(const Args& args) {
  if (args.size() != 1) return UsageError("file", "expects exactly one PATH");
  if (args[0].empty()) return UsageError("file", "PATH is empty");
  std::printf("path: %s\n", args[0].c_str());
  PrintFlags(args[0].c_str());
  PrintNameParts(args[0].c_str());
  return 0;
}

/// Creates a file under a fresh temporary directory, copies it, reports
/// both, and removes everything again.
int DemoFile() {
  TempFile scratch;
  scratch.setPrefix("vxutil-demo");
  scratch.generateFilePath();
  const std::string dir = scratch.getFilePath();
  const std::string file = PathJoin(dir.c_str(), "sub", "report.txt", nullptr);
  const std::string copy = PathJoin(dir.c_str(), "sub", "copy.txt", nullptr);

  const bool created = VXCreateFile(file.c_str());
  VXCopyFile(file.c_str(), copy.c_str());
  std::printf("created %s: %s, flags %d\n", file.c_str(), created ? "yes" : "no", GetFileFlags(file.c_str()));
  std::printf("copied to %s: flags %d\n", GetFileNameWithExt(copy.c_str(), -1), GetFileFlags(copy.c_str()));
  std::printf("name %s, extension %s\n", GetFileName(file.c_str(), -1).c_str(), GetFileExt(file.c_str(), -1));
  const bool ok = created && GetFileFlags(copy.c_str()) == 51;

  std::error_code error;
  std::filesystem::remove_all(dir, error);
  return ok ? 0 : 1;
}

const CommandRegistrar kFileCommand({"file", "PATH",
                                     "print the file flags of a path and the parts of its name", RunFile,
                                     DemoFile, 50});

}  // namespace
