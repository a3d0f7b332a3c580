// File functions on what is not a plain file: FIFOs, directories, symlinks
// that lead nowhere or in a circle, a temporary directory that is not there.

#include <vxutility/FileUtils.h>
#include <vxutility/TempFile.h>

#include <fcntl.h>
#include <sys/auxv.h>
#include <sys/stat.h>
#include <unistd.h>

#include <chrono>
#include <functional>
#include <future>
#include <thread>

#include "files/ScratchDir.h"

namespace {

using FifoAndLinkTest = ScratchDirTest;

/// Runs `call`; false when it is still running after a few seconds, in which
/// case the FIFO `fifo` is opened and closed at its other end until the call
/// ends.
bool FinishesPromptly(const std::function<void()>& call, const std::string& fifo) {
  std::future<void> done = std::async(std::launch::async, call);
  if (done.wait_for(std::chrono::seconds(5)) == std::future_status::ready) return true;
  do {
    const int peer = open(fifo.c_str(), O_RDWR | O_NONBLOCK);
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
    close(peer);
  } while (done.wait_for(std::chrono::milliseconds(50)) != std::future_status::ready);
  return false;
}

TEST_F(FifoAndLinkTest, FifosAndDirectoriesAreRefusedWithoutWaiting) {
  const std::string fifo = Path("fifo");
  ASSERT_EQ(mkfifo(fifo.c_str(), 0666), 0);
  fs::create_directory(Path("dir"));
  const std::string source = WriteFile("src.txt", "source");
  const std::string kept = WriteFile("kept.txt", "kept");
  const struct {
    const char* name;
    std::function<void()> call;
  } cases[] = {
      {"copy from a FIFO", [&] { VXCopyFile(fifo.c_str(), kept.c_str()); }},
      {"copy to a FIFO", [&] { VXCopyFile(source.c_str(), fifo.c_str()); }},
      {"create a FIFO", [&] { EXPECT_FALSE(VXCreateFile(fifo.c_str())); }},
      {"copy from a directory", [&] { VXCopyFile(Path("dir").c_str(), kept.c_str()); }},
      {"copy from a directory to a new file", [&] { VXCopyFile(Path("dir").c_str(), Path("new.txt").c_str()); }},
      {"copy to a directory", [&] { VXCopyFile(source.c_str(), Path("dir").c_str()); }},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    EXPECT_TRUE(FinishesPromptly(c.call, fifo));
    EXPECT_EQ(ReadFile(kept), "kept");  // the target is never emptied
    EXPECT_FALSE(fs::exists(Path("new.txt")));
    EXPECT_TRUE(fs::is_fifo(fifo) && fs::is_directory(Path("dir")));
  }
}

TEST_F(FifoAndLinkTest, DanglingAndLoopingSymlinksNameNothing) {
  fs::create_symlink(Path("missing"), Path("dangling"));
  fs::create_symlink(Path("loop2"), Path("loop1"));
  fs::create_symlink(Path("loop1"), Path("loop2"));
  const std::string target = WriteFile("target.txt", "kept");
  for (const char* name : {"dangling", "loop1", "loop1/x"}) {
    SCOPED_TRACE(name);
    EXPECT_EQ(GetFileFlags(Path(name).c_str()), 0);
    EXPECT_FALSE(VXFileInfo(Path(name).c_str(), -1).IsExists());
    VXCopyFile(Path(name).c_str(), target.c_str());
    EXPECT_EQ(ReadFile(target), "kept");
  }
  EXPECT_FALSE(VXCreateFile(Path("loop1").c_str()));
  EXPECT_FALSE(VXCreateFile(Path("loop1/sub/x.txt").c_str()));
  EXPECT_EQ(EntryCount(), 4);
}

TEST_F(FifoAndLinkTest, RelativePathsCreateAndCleanUpBelowTheCurrentDirectory) {
  const fs::path before = fs::current_path();
  fs::current_path(root_);
  EXPECT_TRUE(VXCreateFile("x/y/z.txt"));
  const bool made = fs::is_regular_file("x/y/z.txt") && fs::file_size("x/y/z.txt") == 0;
  fs::remove_all("x");
  EXPECT_FALSE(VXCreateFile("x/y/"));                  // ends with a separator
  EXPECT_FALSE(VXCreateFile("x\\y\\z.txt/"));          // the same with the other separator
  fs::current_path(before);
  EXPECT_TRUE(made);
  EXPECT_EQ(EntryCount(), 0);  // both directories it made are gone again
}

TEST_F(FifoAndLinkTest, TempFileNeverRemovesADirectory) {
  std::string path;
  {
    TempFile temp(root_.c_str());
    temp.generateFilePath();
    path = temp.getFilePath();
    fs::create_directory(path);
  }
  EXPECT_TRUE(fs::is_directory(path));
}

TEST_F(FifoAndLinkTest, TemporaryDirectoryThatIsNotThereFallsBackToTmp) {
  const char* saved = std::getenv("TMPDIR");
  const std::string restore = saved ? saved : "";
  const std::string file = WriteFile("plain", "");
  for (const std::string& tmpdir : {Path("nowhere"), file, std::string()}) {
    setenv("TMPDIR", tmpdir.c_str(), 1);
    EXPECT_EQ(TempFile::getSystemTempDir(), "/tmp/") << "TMPDIR=" << tmpdir;
  }
  setenv("TMPDIR", root_.c_str(), 1);
  EXPECT_EQ(TempFile::getSystemTempDir(), root_);
  if (saved) setenv("TMPDIR", restore.c_str(), 1); else unsetenv("TMPDIR");
}

// The kernel's vDSO is a loaded module without a file: it has no directory.
TEST(ModuleWithoutFile, HasNoDirectory) {
  if (getauxval(AT_SYSINFO_EHDR) == 0) GTEST_SKIP() << "no vDSO in this process";
  EXPECT_EQ(GetDllPath("linux-vdso.so.1"), "");
}

}  // namespace
