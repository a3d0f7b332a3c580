#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include <vxbase/ImageFormat.h>
#include <vxbase/Stream.h>


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
