#include <vxutility/VXFileInfo.h>

#include <vxutility/Encoding.h>

#include <vector>

#include <sys/stat.h>
#include <unistd.h>

#include "files/ScratchDir.h"

namespace {

using FileInfoTest = ScratchDirTest;

struct StatusCase {
  const char* path;     // below the scratch directory
  bool exists, dir, file, readable, writable;
  int flags;            // GetFileFlags
};

// Permissions come from the mode bits, which root reads like anyone else, so
// none of these needs skipping when the tests run as root.
TEST_F(FileInfoTest, StatusOfFilesDirectoriesAndMissingPaths) {
  WriteFile("rw.txt", "x");
  chmod(WriteFile("ro.txt", "x").c_str(), 0444);
  chmod(WriteFile("wo.txt", "x").c_str(), 0200);
  chmod(WriteFile("none.txt", "x").c_str(), 0000);
  MakeDir("sub");
  WriteFile("sub/inner.txt", "x");
  chmod(MakeDir("rodir").c_str(), 0555);
  WriteFile("\xC3\xBC.txt", "x");  // non-ASCII name in UTF-8
  mkfifo(Path("fifo").c_str(), 0600);
  symlink(Path("rw.txt").c_str(), Path("link").c_str());
  symlink(Path("missing").c_str(), Path("dangling").c_str());

  const StatusCase cases[] = {
      {"rw.txt", true, false, true, true, true, 51},
      {"ro.txt", true, false, true, true, false, 19},
      {"wo.txt", true, false, true, false, true, 35},
      {"none.txt", true, false, true, false, false, 3},
      {"sub", true, true, false, true, true, 53},
      {"sub/", true, true, false, true, true, 53},
      {"sub\\", true, true, false, true, true, 53},
      {"rodir", true, true, false, true, false, 21},
      {"sub\\inner.txt", true, false, true, true, true, 51},
      {"rw.txt/", true, false, true, true, true, 51},     // one trailing separator dropped
      {"rw.txt//", false, false, false, false, false, 0}, // only one: "rw.txt/" is no directory
      {"\xC3\xBC.txt", true, false, true, true, true, 51},
      {"fifo", true, false, false, true, true, 49},        // neither file nor directory
      {"link", true, false, true, true, true, 51},         // links are followed
      {"dangling", false, false, false, false, false, 0},
      {"missing", false, false, false, false, false, 0},
      {"missing/", false, false, false, false, false, 0},
  };
  for (const StatusCase& c : cases) {
    SCOPED_TRACE(c.path);
    const std::string path = Path(c.path);
    const VXFileInfo info(path.c_str(), -1);
    EXPECT_EQ(info.IsExists(), c.exists);
    EXPECT_EQ(info.IsDir(), c.dir);
    EXPECT_EQ(info.IsFile(), c.file);
    EXPECT_EQ(info.ReadEnable(), c.readable);
    EXPECT_EQ(info.WriteEnable(), c.writable);
    EXPECT_EQ(GetFileFlags(path.c_str()), c.flags);
    const std::wstring wide = Utf82Unicode(path.c_str(), -1);
    EXPECT_EQ(GetFileFlags(wide.c_str()), c.flags);
    EXPECT_EQ(VXFileInfo(wide.c_str(), -1).IsDir(), c.dir);
  }
}

TEST_F(FileInfoTest, EmptyPathsAndTheRoot) {
  EXPECT_FALSE(VXFileInfo("", -1).IsExists());
  EXPECT_FALSE(VXFileInfo(static_cast<const char*>(nullptr), -1).IsExists());
  EXPECT_FALSE(VXFileInfo(L"", -1).IsExists());
  EXPECT_FALSE(VXFileInfo("abc", 0).IsExists());
  EXPECT_EQ(GetFileFlags(static_cast<const char*>(nullptr)), 0);
  EXPECT_EQ(GetFileFlags(static_cast<const wchar_t*>(nullptr)), 0);
  EXPECT_EQ(GetFileFlags(""), 0);
  // A lone separator names the root, not an empty path.
  EXPECT_TRUE(VXFileInfo("/", -1).IsDir());
  EXPECT_TRUE(VXFileInfo("\\", -1).IsDir());
  EXPECT_TRUE(VXFileInfo(L"/", -1).IsDir());
  // No drive letters here: "C:" is an ordinary relative name.
  EXPECT_FALSE(VXFileInfo(Path("C:").c_str(), -1).IsExists());
}

TEST_F(FileInfoTest, ExplicitLengthLimitsThePath) {
  const std::string file = WriteFile("data.bin", "x");
  const std::string longer = file + ".bak";  // no such file
  EXPECT_FALSE(VXFileInfo(longer.c_str(), -1).IsExists());
  EXPECT_TRUE(VXFileInfo(longer.c_str(), static_cast<int>(file.size())).IsFile());
  EXPECT_TRUE(VXFileInfo(root_.c_str(), static_cast<int>(root_.size()) - 1).IsDir());
  const std::wstring wide = Utf82Unicode(longer.c_str(), -1);
  EXPECT_TRUE(VXFileInfo(wide.c_str(), static_cast<int>(file.size())).IsFile());
  // A length past the NUL stops at it (the sanitizers see any read beyond).
  const std::vector<char> exact(file.c_str(), file.c_str() + file.size() + 1);
  EXPECT_TRUE(VXFileInfo(exact.data(), static_cast<int>(exact.size()) + 64).IsFile());
}

TEST_F(FileInfoTest, CheckFilePathAnswersOnlyWhatIsAsked) {
  const std::string file = WriteFile("f.txt", "x");
  const std::string ro = WriteFile("ro.txt", "x");
  chmod(ro.c_str(), 0444);
  const std::string dir = MakeDir("d");
  const std::string missing = Path("missing");
  const struct {
    const std::string& path;
    int flags;
    int expected;
  } cases[] = {
      {file, 2, 0},    // existence not asked
      {file, 1, 1},
      {file, 3, 3},
      {file, 51, 51},
      {file, 63, 51},  // bit 8 and the directory bit never come back for a file
      {ro, 49, 17},
      {dir, 3, 1},
      {dir, 5, 5},
      {dir, 53, 53},
      {missing, 1, 0},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.path + " flags " + std::to_string(c.flags));
    EXPECT_EQ(CheckFilePath(c.path.c_str(), c.flags), c.expected);
    const std::wstring wide = Utf82Unicode(c.path.c_str(), -1);
    EXPECT_EQ(CheckFilePath(wide.c_str(), c.flags), c.expected);
  }
  EXPECT_EQ(CheckFilePath(static_cast<const char*>(nullptr), 1), 0);
  EXPECT_EQ(CheckFilePath(L"", 1), 0);
}

// Each copy owns its record: under the sanitizers a shared record would show
// up as a double free or a use after free.
TEST_F(FileInfoTest, CopiesOwnTheirRecords) {
  const std::string dir = MakeDir("d");
  std::vector<VXFileInfo> infos;
  {
    VXFileInfo original(dir.c_str(), -1);
    infos.push_back(original);
    infos.push_back(original);
  }
  EXPECT_TRUE(infos[0].IsDir());
  EXPECT_TRUE(infos[1].IsDir());

  VXFileInfo missing(Path("missing").c_str(), -1);
  infos[0] = missing;
  EXPECT_FALSE(infos[0].IsExists());
  missing = infos[1];
  EXPECT_TRUE(missing.IsDir());
  VXFileInfo& self = missing;
  missing = self;
  EXPECT_TRUE(missing.IsDir());
}

}  // namespace
