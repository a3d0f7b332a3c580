#include <vxutility/FileUtils.h>

#include "files/ScratchDir.h"

using FileCreateCopyTest = ScratchDirTest;

TEST_F(FileCreateCopyTest, CreatesMissingDirectoriesAndKeepsAnExistingFile) {
  const std::pair<const char*, const char*> cases[] = {
      {"x/y/z.txt", "x/y/z.txt"},
      {"x\\w\\v.txt", "x/w/v.txt"},     // either separator
      {"x//y///q.txt", "x/y/q.txt"},   // doubled separators
      {"keep.txt", "keep.txt"},        // written before: left unchanged
  };
  WriteFile("keep.txt", "contents");
  for (const auto& [given, made] : cases) {
    EXPECT_TRUE(VXCreateFile(Path(given).c_str()) && fs::is_regular_file(Path(made))) << given;
  }
  EXPECT_EQ(ReadFile(Path("keep.txt")), "contents");
}

TEST_F(FileCreateCopyTest, FailuresRemoveExactlyTheDirectoriesTheyMade) {
  fs::create_directories(Path("old/taken"));
  const std::string cases[] = {
      Path("new/a/"),                                  // ends with a separator
      Path("old/a/b/"),                                // the same inside an old directory
      Path("old/taken"),                               // last component is a directory
      Path("new/" + std::string(300, 'n') + "/f.txt"), // second new directory cannot be made
  };
  for (const std::string& path : cases) {
    SCOPED_TRACE(path);
    EXPECT_FALSE(VXCreateFile(path.c_str()));
    EXPECT_EQ(EntryCount(), 2);
  }
  EXPECT_FALSE(VXCreateFile(nullptr));
}

TEST_F(FileCreateCopyTest, ReadOnlyDirectoryRefusesDirectoriesAndFiles) {
  if (!test_platform::ReadOnlyDirectoriesRefuseWrites()) {
    GTEST_SKIP() << "root, or Windows, may create entries in a read-only directory";
  }
  fs::permissions(root_, fs::perms(0555));
  EXPECT_FALSE(VXCreateFile(Path("new/f.txt").c_str()));
  EXPECT_FALSE(VXCreateFile(Path("f.txt").c_str()));
  fs::permissions(root_, fs::perms(0755));
  EXPECT_EQ(EntryCount(), 0);
}

TEST_F(FileCreateCopyTest, CopiesEveryByteAroundTheBlockSize) {
  for (const std::size_t size : {0u, 4095u, 4096u, 4097u, 8192u, 12289u}) {
    SCOPED_TRACE(size);
    std::string bytes(size, '\0');
    for (std::size_t i = 0; i < size; ++i) bytes[i] = static_cast<char>((i * 7 + i / 4096) % 256);
    const std::string source = WriteFile("src.bin", bytes);
    const std::string target = WriteFile("dst.bin", std::string(20000, 'z'));  // emptied first
    VXCopyFile(source.c_str(), target.c_str());
    EXPECT_EQ(ReadFile(target), bytes);
  }
}

TEST_F(FileCreateCopyTest, NothingHappensWhenAFileCannotBeOpened) {
  const std::string source = WriteFile("src.bin", "data");
  VXCopyFile(Path("missing").c_str(), Path("dst.bin").c_str());
  VXCopyFile(source.c_str(), Path("no/dir/dst.bin").c_str());
  EXPECT_EQ(EntryCount(), 1);
  VXCopyFile(source.c_str(), source.c_str());  // the target is emptied before reading
  EXPECT_EQ(ReadFile(source), "");
}
