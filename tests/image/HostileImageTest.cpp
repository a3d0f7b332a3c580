// Headers that claim more pixels than the area limit, in every format, must
// be refused when the decoder opens, before any pixel memory exists.

#include <gtest/gtest.h>

#include <cstring>
#include <functional>
#include <string>

#include "image/ImageTestSupport.h"

namespace {

void PutBe32(std::string& s, std::size_t at, unsigned v) {
  for (int i = 0; i < 4; ++i) s[at + i] = char((v >> (24 - 8 * i)) & 0xFF);
}

unsigned Crc32(const std::string& s, std::size_t from, std::size_t to) {
  unsigned crc = 0xFFFFFFFFu;
  for (std::size_t i = from; i < to; ++i) {
    crc ^= static_cast<unsigned char>(s[i]);
    for (int k = 0; k < 8; ++k) crc = (crc >> 1) ^ (0xEDB88320u & (0u - (crc & 1)));
  }
  return ~crc;
}

/// Makes both dimensions 100000 (10^10 pixels) in a small file of each format.
const struct {
  CA_ImageFormat format;
  std::function<bool(std::string&)> enlarge;
} kEnlargers[] = {
    {CA_ImageFormat_BMP, [](std::string& f) {
       for (int at : {18, 22}) f[at] = '\xA0', f[at + 1] = '\x86', f[at + 2] = '\x01', f[at + 3] = 0;
       return true;
     }},
    {CA_ImageFormat_PNG, [](std::string& f) {
       PutBe32(f, 16, 100000), PutBe32(f, 20, 100000);
       PutBe32(f, 29, Crc32(f, 12, 29));  // the IHDR check sum stays valid
       return true;
     }},
    {CA_ImageFormat_JPEG, [](std::string& f) {
       const std::size_t sof = f.find("\xFF\xC0");
       if (sof == std::string::npos) return false;
       f[sof + 5] = f[sof + 6] = f[sof + 7] = f[sof + 8] = '\xFF';  // 65535 x 65535
       return true;
     }},
    {CA_ImageFormat_GIF, [](std::string& f) {
       for (int at = 6; at < 10; ++at) f[at] = '\xFF';  // 65535 x 65535
       return true;
     }},
    {CA_ImageFormat_TIF, [](std::string& f) {
       // Little-endian IFD: entries of tag, type, count, value; make both size tags LONG 100000.
       const std::size_t ifd = static_cast<unsigned char>(f[4]) | static_cast<unsigned char>(f[5]) << 8 |
                               static_cast<unsigned char>(f[6]) << 16;
       const int entries = static_cast<unsigned char>(f[ifd]);
       int changed = 0;
       for (int i = 0; i < entries; ++i) {
         const std::size_t e = ifd + 2 + 12 * i;
         const int tag = static_cast<unsigned char>(f[e]) | static_cast<unsigned char>(f[e + 1]) << 8;
         if (tag != 256 && tag != 257) continue;
         f[e + 2] = 4, f[e + 3] = 0;
         f[e + 8] = '\xA0', f[e + 9] = '\x86', f[e + 10] = '\x01', f[e + 11] = 0;
         ++changed;
       }
       return changed == 2;
     }},
    {CA_ImageFormat_JPEG2000, [](std::string& f) {
       const std::size_t ihdr = f.find("ihdr"), siz = f.find("\xFF\x51");
       if (ihdr == std::string::npos || siz == std::string::npos) return false;
       PutBe32(f, ihdr + 4, 100000), PutBe32(f, ihdr + 8, 100000);
       PutBe32(f, siz + 6, 100000), PutBe32(f, siz + 10, 100000);
       return true;
     }},
};

TEST(HostileImages, AreasPastTheLimitAreRefusedAtOpen) {
  CCA_CodecFactory* factory = CCA_Context::Get()->GetCodecFactory();
  for (const auto& e : kEnlargers) {
    std::unique_ptr<ICA_ImageDecoder> decoder(factory->CreateImageDecoder(e.format));
    if (!decoder) continue;  // not in this build
    SCOPED_TRACE(testing::Message() << "format " << e.format);
    DibPtr small = MakeTestDib(8, 8, CA_DibFormat_Rgb24);
    std::string file = EncodeToBytes(small.get(), e.format);
    {  // the untouched file opens, so the refusal below is the size's doing
      CCA_MemoryStreamReader reader(file.data(), file.size());
      std::unique_ptr<ICA_ImageDecoder> fresh(factory->CreateImageDecoder(e.format));
      ASSERT_NE(fresh->Open(&reader, 1), 0);
    }
    ASSERT_TRUE(e.enlarge(file));
    CCA_MemoryStreamReader reader(file.data(), file.size());
    EXPECT_EQ(decoder->Open(&reader, 1), 0);
    EXPECT_EQ(decoder->GetWidth(), 0);
    EXPECT_EQ(decoder->DecodeFrame(0, 0, 0), nullptr);
    EXPECT_EQ(DecodeBytes(file), nullptr);
  }
}

TEST(HostileImages, EncodersLeaveTheCallersBitmapAlone) {
  CCA_CodecFactory* factory = CCA_Context::Get()->GetCodecFactory();
  for (const auto& e : kEnlargers) {
    for (CA_DibFormat layout : {CA_DibFormat_Gray8, CA_DibFormat_Rgb24, CA_DibFormat_Argb32}) {
      std::unique_ptr<ICA_ImageEncoder> encoder(factory->CreateImageEncoder(e.format));
      if (!encoder) continue;
      DibPtr dib = MakeTestDib(33, 5, layout), copy = MakeTestDib(33, 5, layout);
      CCA_MemoryStreamWriter writer;
      ASSERT_NE(encoder->Encode(dib.get(), &writer), 0);
      const std::size_t bytes = std::size_t(dib->GetPitch()) * dib->GetHeight();
      EXPECT_EQ(std::memcmp(dib->GetBuffer(), copy->GetBuffer(), bytes), 0) << "format " << e.format;
    }
  }
}

}  // namespace
