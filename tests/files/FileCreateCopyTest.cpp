#include <vxutility/FileUtils.h>

#include <sys/stat.h>

#include "files/ScratchDir.h"

namespace {

using FileCreateTest = ScratchDirTest;
using FileCopyTest = ScratchDirTest;

TEST_F(FileCreateTest, CreatesMissingDirectoriesAndAnEmptyFile) {
  ASSERT_TRUE(VXCreateFile(Path("x/y/z.txt").c_str()));
  EXPECT_TRUE(std::filesystem::is_directory(Path("x/y")));
  EXPECT_TRUE(std::filesystem::is_regular_file(Path("x/y/z.txt")));
  EXPECT_EQ(std::filesystem::file_size(Path("x/y/z.txt")), 0u);

  ASSERT_TRUE(VXCreateFile(Path("x\\w\\v.txt").c_str()));  // either separator
  EXPECT_TRUE(std::filesystem::is_regular_file(Path("x/w/v.txt")));

  ASSERT_TRUE(VXCreateFile(Path("x//y///q.txt").c_str()));  // doubled separators
  EXPECT_TRUE(std::filesystem::is_regular_file(Path("x/y/q.txt")));
}

TEST_F(FileCreateTest, ExistingFileIsLeftUnchanged) {
  const std::string file = WriteFile("keep.txt", "contents");
  ASSERT_TRUE(VXCreateFile(file.c_str()));
  EXPECT_EQ(ReadFile(file), "contents");
}

TEST_F(FileCreateTest, FailuresRemoveExactlyTheDirectoriesTheyMade) {
  MakeDir("old");
  WriteFile("plain", "x");
  MakeDir("old/taken");
  const std::string longName(300, 'n');  // longer than any file system allows
  const struct {
    const char* what;
    std::string path;
  } cases[] = {
      {"ends with a separator", Path("new/a/")},
      {"ends with a separator, inside an old directory", Path("old/a/b/")},
      {"last component is a directory", Path("old/taken")},
      {"a directory on the way is a file", Path("plain/sub/f.txt")},
      {"second new directory cannot be made", Path("new/" + longName + "/f.txt")},
      {"file name too long", Path("new/b/" + longName)},
      {"empty path", ""},
  };
  const std::size_t before = EntryCount();
  for (const auto& c : cases) {
    SCOPED_TRACE(c.what);
    EXPECT_FALSE(VXCreateFile(c.path.c_str()));
    EXPECT_EQ(EntryCount(), before);
    EXPECT_FALSE(Exists(Path("new")));
    EXPECT_TRUE(Exists(Path("old/taken")));
  }
  EXPECT_FALSE(VXCreateFile(nullptr));
}

TEST_F(FileCreateTest, ReadOnlyDirectoryRefusesDirectoriesAndFiles) {
  if (RunningAsRoot()) GTEST_SKIP() << "root may create entries in a read-only directory";
  const std::string locked = MakeDir("locked");
  chmod(locked.c_str(), 0555);
  const std::size_t before = EntryCount();
  EXPECT_FALSE(VXCreateFile(Path("locked/new/f.txt").c_str()));
  EXPECT_FALSE(VXCreateFile(Path("locked/f.txt").c_str()));
  EXPECT_EQ(EntryCount(), before);
}

std::string PatternBytes(std::size_t size) {
  std::string bytes(size, '\0');
  for (std::size_t i = 0; i < size; ++i) bytes[i] = static_cast<char>((i * 7 + i / 4096) % 256);
  return bytes;
}

TEST_F(FileCopyTest, CopiesEveryByteAroundTheBlockSize) {
  for (const std::size_t size : {0u, 1u, 4095u, 4096u, 4097u, 8192u, 12289u}) {
    SCOPED_TRACE(size);
    const std::string bytes = PatternBytes(size);
    const std::string source = WriteFile("src.bin", bytes);
    const std::string target = WriteFile("dst.bin", std::string(20000, 'z'));  // emptied first
    VXCopyFile(source.c_str(), target.c_str());
    EXPECT_EQ(ReadFile(target), bytes);
    EXPECT_EQ(ReadFile(source), bytes);
  }
}

TEST_F(FileCopyTest, NothingHappensWhenAFileCannotBeOpened) {
  const std::string target = Path("dst.bin");
  VXCopyFile(Path("missing").c_str(), target.c_str());
  EXPECT_FALSE(Exists(target));

  const std::string source = WriteFile("src.bin", "data");
  VXCopyFile(source.c_str(), Path("no/such/dir/dst.bin").c_str());
  EXPECT_FALSE(Exists(Path("no")));
  EXPECT_EQ(ReadFile(source), "data");

  VXCopyFile(source.c_str(), source.c_str());  // the target is emptied before reading
  EXPECT_EQ(ReadFile(source), "");

  VXCopyFile(nullptr, target.c_str());
  VXCopyFile(source.c_str(), nullptr);
  EXPECT_FALSE(Exists(target));
}

}  // namespace
