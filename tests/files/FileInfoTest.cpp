#include <vxutility/VXFileInfo.h>

#include <vxutility/Encoding.h>

#include <vector>

#if !defined(_WIN32)
#include <sys/stat.h>
#endif

#include "files/ScratchDir.h"

using FileInfoTest = ScratchDirTest;
using test_platform::kDriveLetters;
using test_platform::kPermissionBits;

namespace {

/// Makes a FIFO and a symbolic link to `target`; false where the system
/// cannot.
bool MakeSpecialFiles(const std::string& fifo, const std::string& link, const std::string& target) {
#if defined(_WIN32)
  (void)fifo, (void)link, (void)target;
  return false;
#else
  return mkfifo(fifo.c_str(), 0600) == 0 && symlink(target.c_str(), link.c_str()) == 0;
#endif
}

}  // namespace

// Permissions come from the mode bits, which root reads like anyone else, so
// none of these needs skipping when the tests run as root.
TEST_F(FileInfoTest, StatusOfFilesDirectoriesAndMissingPaths) {
  WriteFile("rw.txt", "x");
  WriteFile("ro.txt", "x", 0444);
  WriteFile("wo.txt", "x", 0200);
  fs::create_directory(Path("sub"));
  WriteFile("sub/\xC3\xBC\xE4\xB8\xAD\xF0\x9F\x98\x80.txt", "x");  // non-ASCII name in UTF-8
  std::vector<std::pair<const char*, int>> cases = {
      {"rw.txt", 51},
      {"ro.txt", 19},
      {"wo.txt", kPermissionBits ? 35 : 51},  // Windows has no write-only files
      {"sub\\", 53},
      {"sub\\\xC3\xBC\xE4\xB8\xAD\xF0\x9F\x98\x80.txt", 51},
      {"rw.txt/", 51},   // one trailing separator dropped
      {"rw.txt//", 0},   // only one: "rw.txt/" is no directory
      {"missing", 0},
  };
  if (MakeSpecialFiles(Path("fifo"), Path("link"), Path("rw.txt"))) {
    cases.push_back({"fifo", 49});  // neither file nor directory
    cases.push_back({"link", 51});  // links are followed
  }
  for (const auto& [name, flags] : cases) {
    SCOPED_TRACE(name);
    const std::string path = Path(name);
    const std::wstring wide = Utf82Unicode(path.c_str(), -1);
    EXPECT_EQ(GetFileFlags(path.c_str()), flags);
    EXPECT_EQ(GetFileFlags(wide.c_str()), flags);
    // Only what is asked comes back, and nothing unless existence is asked.
    EXPECT_EQ(CheckFilePath(path.c_str(), 63), flags);
    EXPECT_EQ(CheckFilePath(wide.c_str(), 1), flags & 1);
    EXPECT_EQ(CheckFilePath(path.c_str(), 62), 0);
  }
}

TEST_F(FileInfoTest, EmptyPathsTheRootAndExplicitLengths) {
  EXPECT_FALSE(VXFileInfo(static_cast<const char*>(nullptr), -1).IsExists());
  EXPECT_FALSE(VXFileInfo(L"", -1).IsExists());
  EXPECT_FALSE(VXFileInfo(root_.c_str(), 0).IsExists());
  // A lone separator names the root on POSIX; on Windows it goes as the
  // trailing separator, leaving no path. A drive letter with or without a
  // separator names the drive's root there, and is a plain name elsewhere.
  const std::string drive = kDriveLetters ? root_.substr(0, 2) : "C:";
  const std::pair<std::string, bool> roots[] = {
      {"/", !kDriveLetters},
      {"\\", !kDriveLetters},
      {drive, kDriveLetters},
      {drive + "/", kDriveLetters},
      {drive + "\\", kDriveLetters},
      {root_.substr(0, root_.size() - 1), true},
  };
  for (const auto& [path, isDir] : roots) {
    EXPECT_EQ(VXFileInfo(path.c_str(), -1).IsDir(), isDir) << path;
    EXPECT_EQ(VXFileInfo(Utf82Unicode(path.c_str(), -1).c_str(), -1).IsDir(), isDir) << path;
  }
  const std::string file = WriteFile("data.bin", "x");
  const std::string longer = file + ".bak";  // no such file
  const int length = static_cast<int>(file.size());
  EXPECT_TRUE(VXFileInfo(longer.c_str(), length).IsFile());
  EXPECT_TRUE(VXFileInfo(Utf82Unicode(longer.c_str(), -1).c_str(), length).IsFile());
  // A length past the NUL stops at it (the sanitizers see any read beyond).
  const std::vector<char> exact(file.c_str(), file.c_str() + length + 1);
  EXPECT_TRUE(VXFileInfo(exact.data(), length + 64).IsFile());
}

// Each copy owns its record: under the sanitizers a shared record would show
// up as a double free or a use after free.
TEST_F(FileInfoTest, CopiesOwnTheirRecords) {
  std::vector<VXFileInfo> infos(2, VXFileInfo(root_.c_str(), -1));
  VXFileInfo missing(Path("missing").c_str(), -1);
  infos[0] = missing;
  missing = infos[1];
  EXPECT_FALSE(infos[0].IsExists());
  EXPECT_TRUE(missing.IsDir());
}
