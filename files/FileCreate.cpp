// Creating a file with the directories on its way. A failed call leaves the
// disk as it found it: the directories it made are removed, innermost first.

#include <vxutility/FileUtils.h>

#include <algorithm>
#include <cstdio>
#include <vector>

#include <vxutility/Encoding.h>

namespace {

bool PathExists(const std::string& path);
bool MakeOneDirectory(const std::string& path);
void RemoveOneDirectory(const std::string& path);

/// Makes every missing directory named by a prefix of `path` that ends
/// before a `/`, from the left, recording in `created` those it made. A
/// leading `/` is the root, not a boundary. False at the first failure.
bool MakeParentDirectories(const std::string& path, std::vector<std::string>& created) {
  for (std::size_t sep = path.find('/', 1); sep != std::string::npos; sep = path.find('/', sep + 1)) {
    const std::string prefix = path.substr(0, sep);
    if (PathExists(prefix)) continue;
    if (!MakeOneDirectory(prefix)) return false;
    created.push_back(prefix);
  }
  return true;
}

/// Creates the file if it is missing, leaving an existing one unchanged.
bool TouchFile(const std::string& path) {
  std::FILE* file = std::fopen(path.c_str(), "a");
  if (file == nullptr) return false;
  std::fclose(file);
  return true;
}

void RemoveInnermostFirst(const std::vector<std::string>& directories) {
  std::for_each(directories.rbegin(), directories.rend(), RemoveOneDirectory);
}

}  // namespace

bool VXCreateFile(const char* path) {
  std::string local = Utf82Local(path, -1);
  std::replace(local.begin(), local.end(), '\\', '/');
  std::vector<std::string> created;
  if (MakeParentDirectories(local, created) && TouchFile(local)) return true;
  RemoveInnermostFirst(created);
  return false;
}

#if defined(_WIN32)
#include "windows/FileCreate.inc"
#else
#include "unix/FileCreate.inc"
#endif
