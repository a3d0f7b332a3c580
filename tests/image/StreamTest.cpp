#include <gtest/gtest.h>

#include <sys/stat.h>
#include <unistd.h>

#include <cstring>
#include <string>

#include <vxbase/ImageFormat.h>
#include <vxbase/Stream.h>

#include "files/ScratchDir.h"

namespace {

TEST(MemoryStream, ReadsSeeksAndStopsAtTheEnd) {
  const char data[] = "0123456789";
  CCA_MemoryStreamReader reader(data, 10);
  char out[16] = {};
  EXPECT_EQ(reader.GetSize(), 10);
  EXPECT_EQ(reader.Read(out, 4), 4u);
  EXPECT_EQ(std::string(out, 4), "0123");
  EXPECT_TRUE(reader.Seek(8));
  EXPECT_EQ(reader.Read(out, 16), 2u);
  EXPECT_EQ(std::string(out, 2), "89");
  EXPECT_EQ(reader.Read(out, 1), 0u);
  EXPECT_TRUE(reader.Seek(10));
  EXPECT_FALSE(reader.Seek(11));
  EXPECT_FALSE(reader.Seek(-1));
  EXPECT_FALSE(reader.Seek(INT64_MIN));
  EXPECT_EQ(reader.GetPosition(), 10);
  CCA_MemoryStreamReader empty(nullptr, 100);
  EXPECT_EQ(empty.GetSize(), 0);
  EXPECT_EQ(empty.Read(out, 1), 0u);
}

TEST(MemoryStream, WriterGrowsAndKeepsEveryByte) {
  CCA_MemoryStreamWriter writer;
  EXPECT_EQ(writer.GetData(), nullptr);
  std::string expected;
  for (int i = 0; i < 3000; ++i) {
    const std::string piece = std::to_string(i) + ",";
    ASSERT_TRUE(writer.Write(piece.data(), piece.size()));
    expected += piece;
  }
  EXPECT_TRUE(writer.Write(nullptr, 0));
  ASSERT_EQ(writer.GetSize(), expected.size());
  EXPECT_EQ(std::memcmp(writer.GetData(), expected.data(), expected.size()), 0);
  EXPECT_FALSE(writer.Write(expected.data(), SIZE_MAX - 10));  // refused, not wrapped
  EXPECT_EQ(writer.GetSize(), expected.size());
}

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

TEST(ImageFormat, DetectsEverySignatureAndRewinds) {
  struct Case {
    std::string bytes;
    CA_ImageFormat format;
  } cases[] = {
      {std::string("\x89PNG\r\n\x1A\n....", 12), CA_ImageFormat_PNG},
      {std::string("\x89PNG\r\n\x1A", 7), CA_ImageFormat_Unknown},
      {"\xFF\xD8\xFF\xE0", CA_ImageFormat_JPEG},
      {"\xFF\xD8", CA_ImageFormat_Unknown},
      {"GIF87a..", CA_ImageFormat_GIF},
      {"GIF89a", CA_ImageFormat_GIF},
      {"GIF88a", CA_ImageFormat_Unknown},
      {std::string("II*\0", 4), CA_ImageFormat_TIF},
      {std::string("MM\0*", 4), CA_ImageFormat_TIF},
      {std::string("II+\0", 4), CA_ImageFormat_TIF},
      {std::string("\0\0\0\x0CjP  \r\n\x87\n", 12), CA_ImageFormat_JPEG2000},
      {std::string("\0\0\0\x0CjP  \r\n\x87", 11), CA_ImageFormat_Unknown},
      {"\xFF\x4F\xFF\x51", CA_ImageFormat_JPEG2000},
      {"BM", CA_ImageFormat_BMP},
      {"B", CA_ImageFormat_Unknown},
      {"", CA_ImageFormat_Unknown},
  };
  for (const Case& c : cases) {
    CCA_MemoryStreamReader reader(c.bytes.data(), c.bytes.size());
    reader.Seek(c.bytes.size() / 2);
    EXPECT_EQ(CA_GetImageFormat(&reader), c.format) << c.bytes;
    EXPECT_EQ(reader.GetPosition(), 0);
  }
  EXPECT_EQ(CA_GetImageFormat(nullptr), CA_ImageFormat_Unknown);
  CCA_MemoryStreamReader raw("\xFF\x4F\xFF\x51", 4), boxed(cases[10].bytes.data(), 12);
  EXPECT_TRUE(CA_IsRawJpeg2000(&raw));
  EXPECT_FALSE(CA_IsRawJpeg2000(&boxed));
}

}  // namespace
