// File streams against the special files of a POSIX system: FIFOs, symbolic
// links and their loops, a full device.

#include <gtest/gtest.h>

#include <sys/stat.h>
#include <unistd.h>

#include <string>

#include <vxbase/Stream.h>

#include "files/ScratchDir.h"

namespace {

using FileStreamTest = ScratchDirTest;

TEST_F(FileStreamTest, ReaderOpensRegularFilesOnly) {
  const std::string file = WriteFile("plain.bin", "abcdef");
  ASSERT_EQ(mkfifo(Path("fifo").c_str(), 0600), 0);
  ASSERT_EQ(symlink(Path("loop").c_str(), Path("loop").c_str()), 0);
  ASSERT_EQ(symlink(file.c_str(), Path("link").c_str()), 0);
  struct Case {
    std::string path;
    bool opens;
  } cases[] = {{file, true},          {Path("link"), true},  {Path(""), false},
               {Path("fifo"), false}, {Path("loop"), false}, {Path("missing"), false}};
  for (const Case& c : cases) {
    CCA_FileStreamReader reader(c.path.c_str());
    EXPECT_EQ(reader.IsOpen(), c.opens) << c.path;
    char out[8];
    if (!c.opens) {
      EXPECT_EQ(reader.Read(out, 8), 0u);
      EXPECT_EQ(reader.GetSize(), -1);
      continue;
    }
    EXPECT_EQ(reader.GetSize(), 6);
    EXPECT_TRUE(reader.Seek(2));
    EXPECT_EQ(reader.Read(out, 8), 4u);
    EXPECT_EQ(std::string(out, 4), "cdef");
    EXPECT_EQ(reader.GetPosition(), 6);
    EXPECT_FALSE(reader.Seek(7));
  }
  EXPECT_FALSE(CCA_FileStreamReader(nullptr).IsOpen());
}

TEST_F(FileStreamTest, WriterReplacesTheFileAndReportsFailures) {
  const std::string path = WriteFile("out.bin", "old contents that are longer");
  {
    CCA_FileStreamWriter writer(path.c_str());
    ASSERT_TRUE(writer.IsOpen());
    EXPECT_TRUE(writer.Write("new", 3));
    EXPECT_TRUE(writer.Close());
    EXPECT_FALSE(writer.Write("x", 1));
  }
  EXPECT_EQ(ReadFile(path), "new");
  EXPECT_FALSE(CCA_FileStreamWriter(Path("no/such/dir/file").c_str()).IsOpen());
  if (access("/dev/full", W_OK) == 0) {
    CCA_FileStreamWriter full("/dev/full");
    std::string block(1 << 16, 'x');
    bool wrote = full.Write(block.data(), block.size());
    EXPECT_FALSE(wrote && full.Close());  // the full disk shows at the latest on Close
  }
}

}  // namespace
