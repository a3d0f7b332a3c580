// Creating a file with the directories on its way. A failed call leaves the
// disk as it found it: the directories it made are removed, innermost first.
// Two callers may make the same directories at once: a directory that
// appears under a caller's hands counts as existing and is not its to remove.

#include <vxutility/FileUtils.h>

#include <algorithm>
#include <cerrno>
#include <vector>

#include "files/LocalPath.h"
#include "files/RegularFile.h"

namespace {

enum class MakeResult { kCreated, kExisted, kParentMissing, kFailed };

bool PathExists(const std::string& path);
/// Makes one directory; kExisted when it is there already (made by another
/// caller since it was looked for), kParentMissing when the directory it
/// belongs in has gone.
MakeResult MakeOneDirectory(const std::string& path);
void RemoveOneDirectory(const std::string& path);

/// Another caller's failed call may remove a directory this one has just
/// seen (it removes only its own, and only while they are empty): the walk
/// starts again that many times before giving up.
constexpr int kAttempts = 4;

/// Makes every missing directory named by a prefix of `path` that ends
/// before a `/`, from the left, recording in `created` those it made. A
/// leading `/` is the root, not a boundary.
MakeResult MakeParentDirectories(const std::string& path, std::vector<std::string>& created) {
  for (std::size_t sep = path.find('/', 1); sep != std::string::npos; sep = path.find('/', sep + 1)) {
    const std::string prefix = path.substr(0, sep);
    if (PathExists(prefix)) continue;
    const MakeResult made = MakeOneDirectory(prefix);
    if (made == MakeResult::kCreated) created.push_back(prefix);
    if (made == MakeResult::kParentMissing || made == MakeResult::kFailed) return made;
  }
  return MakeResult::kCreated;
}

/// True when the directory `path` belongs in has gone (after a failure).
bool DirectoryOfPathIsGone(const std::string& path) {
  const std::size_t sep = path.rfind('/');
  return sep != std::string::npos && sep > 0 && !PathExists(path.substr(0, sep));
}

void RemoveInnermostFirst(const std::vector<std::string>& directories) {
  std::for_each(directories.rbegin(), directories.rend(), RemoveOneDirectory);
}

bool CreateWithDirectories(const std::string& path, std::vector<std::string>& created) {
  for (int attempt = 0; attempt < kAttempts; ++attempt) {
    const MakeResult made = MakeParentDirectories(path, created);
    if (made == MakeResult::kFailed) return false;
    if (made != MakeResult::kParentMissing) {
      errno = 0;
      if (vxfiles_detail::TouchRegularFile(path)) return true;
      // A directory removed under the call shows as ENOENT even when another
      // caller has made it again by the time it could be looked for.
      if (errno != ENOENT && !DirectoryOfPathIsGone(path)) return false;
    }
  }
  return false;
}

}  // namespace

bool VXCreateFile(const char* path) {
  // `\` becomes `/` while the text is UTF-8: in GB18030 or Shift_JIS a
  // character may end in the byte 0x5C.
  std::string local;
  if (path == nullptr || !vxfiles_detail::LocalPathOf(path, '/', local)) return false;
  std::vector<std::string> created;
  if (CreateWithDirectories(local, created)) return true;
  RemoveInnermostFirst(created);
  return false;
}

#if defined(_WIN32)
#include "windows/FileCreate.inc"
#else
#include "unix/FileCreate.inc"
#endif
