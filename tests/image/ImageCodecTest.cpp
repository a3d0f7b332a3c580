#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <string>

#include "image/ImageTestSupport.h"

namespace {

struct FormatName {
  CA_ImageFormat format;
  const char* name;
};
const FormatName kFormats[] = {{CA_ImageFormat_BMP, "BMP"},   {CA_ImageFormat_PNG, "PNG"},
                               {CA_ImageFormat_JPEG, "JPEG"}, {CA_ImageFormat_TIF, "TIF"},
                               {CA_ImageFormat_GIF, "GIF"},   {CA_ImageFormat_JPEG2000, "JPEG2000"}};

/// True when the build says it has a codec for `name` (VXTEST_CODECS lists them).
bool BuildHasCodec(const char* name) {
  const std::string list = std::string(",") + VXTEST_CODECS + ",";
  return list.find(std::string(",") + name + ",") != std::string::npos;
}

bool BuildHasCodec(CA_ImageFormat format) {
  for (const FormatName& f : kFormats) {
    if (f.format == format) return BuildHasCodec(f.name);
  }
  return false;
}

TEST(CodecFactory, HasExactlyTheCodecsTheBuildFound) {
  CCA_CodecFactory* factory = CCA_Context::Get()->GetCodecFactory();
  ASSERT_EQ(CCA_Context::Get(), CCA_Context::Get());
  for (const FormatName& f : kFormats) {
    std::unique_ptr<ICA_ImageDecoder> decoder(factory->CreateImageDecoder(f.format));
    std::unique_ptr<ICA_ImageEncoder> encoder(factory->CreateImageEncoder(f.format));
    EXPECT_EQ(decoder != nullptr, BuildHasCodec(f.name)) << f.name;
    EXPECT_EQ(encoder != nullptr, BuildHasCodec(f.name)) << f.name;
  }
  EXPECT_EQ(factory->CreateImageDecoder(CA_ImageFormat_Unknown), nullptr);
  EXPECT_EQ(factory->CreateImageEncoder(static_cast<CA_ImageFormat>(99)), nullptr);
}

TEST(ImageEntryPoints, FormatNamesAndTheOperationsThatDoNothing) {
  const FormatName names[] = {{CA_ImageFormat_BMP, ImageFormat_BMP},   {CA_ImageFormat_PNG, ImageFormat_PNG},
                              {CA_ImageFormat_JPEG, ImageFormat_JPEG}, {CA_ImageFormat_TIF, ImageFormat_TIF},
                              {CA_ImageFormat_GIF, ImageFormat_GIF},
                              {CA_ImageFormat_JPEG2000, ImageFormat_JPEG2000}};
  for (int i = 0; i < 6; ++i) EXPECT_STREQ(names[i].name, kFormats[i].name);
  DibPtr dib = MakeTestDib(3, 3, CA_DibFormat_Argb32);
  const unsigned int before = dib->GetPixel(1, 1);
  EXPECT_EQ(ImageBinary(dib.get()), nullptr);
  EXPECT_EQ(AlphaBlending(dib.get(), 128), nullptr);
  EXPECT_EQ(dib->GetPixel(1, 1), before);
}

/// The pixel a format gives back for `argb` written from `written`.
unsigned int Expected(unsigned int argb, CA_DibFormat written, CA_ImageFormat format) {
  if (written == CA_DibFormat_Gray8) return argb;  // already 0xFFgggggg
  if (written == CA_DibFormat_Rgb24 || format == CA_ImageFormat_JPEG) return argb | 0xFF000000u;
  if (format == CA_ImageFormat_GIF) return (argb >> 24) >= 0x80 ? argb | 0xFF000000u : 0;
  return argb;
}

int ChannelError(unsigned int a, unsigned int b) {
  int worst = 0;
  for (int shift = 0; shift < 32; shift += 8) {
    worst = std::max(worst, std::abs(int((a >> shift) & 0xFF) - int((b >> shift) & 0xFF)));
  }
  return worst;
}

TEST(ImageCodecs, RoundTripEveryLayoutThroughEveryFormat) {
  struct Case {
    CA_ImageFormat format;
    CA_DibFormat written;
    CA_DibFormat decoded;
    int tolerance;
  };
  const Case cases[] = {
      {CA_ImageFormat_BMP, CA_DibFormat_Gray8, CA_DibFormat_Gray8, 0},
      {CA_ImageFormat_BMP, CA_DibFormat_Rgb24, CA_DibFormat_Rgb24, 0},
      {CA_ImageFormat_BMP, CA_DibFormat_Argb32, CA_DibFormat_Argb32, 0},
      {CA_ImageFormat_PNG, CA_DibFormat_Gray8, CA_DibFormat_Gray8, 0},
      {CA_ImageFormat_PNG, CA_DibFormat_Rgb24, CA_DibFormat_Rgb24, 0},
      {CA_ImageFormat_PNG, CA_DibFormat_Argb32, CA_DibFormat_Argb32, 0},
      {CA_ImageFormat_JPEG, CA_DibFormat_Gray8, CA_DibFormat_Gray8, 6},
      {CA_ImageFormat_JPEG, CA_DibFormat_Rgb24, CA_DibFormat_Rgb24, 12},
      {CA_ImageFormat_JPEG, CA_DibFormat_Argb32, CA_DibFormat_Rgb24, 12},
      {CA_ImageFormat_TIF, CA_DibFormat_Gray8, CA_DibFormat_Gray8, 0},
      {CA_ImageFormat_TIF, CA_DibFormat_Rgb24, CA_DibFormat_Rgb24, 0},
      {CA_ImageFormat_TIF, CA_DibFormat_Argb32, CA_DibFormat_Argb32, 0},
      {CA_ImageFormat_GIF, CA_DibFormat_Gray8, CA_DibFormat_Gray8, 0},
      {CA_ImageFormat_GIF, CA_DibFormat_Rgb24, CA_DibFormat_Rgb24, 0},
      {CA_ImageFormat_GIF, CA_DibFormat_Argb32, CA_DibFormat_Argb32, 0},
      {CA_ImageFormat_JPEG2000, CA_DibFormat_Gray8, CA_DibFormat_Gray8, 0},
      {CA_ImageFormat_JPEG2000, CA_DibFormat_Rgb24, CA_DibFormat_Rgb24, 0},
      {CA_ImageFormat_JPEG2000, CA_DibFormat_Argb32, CA_DibFormat_Argb32, 0},
  };
  for (const Case& c : cases) {
    if (!BuildHasCodec(c.format)) continue;
    SCOPED_TRACE(testing::Message() << "format " << c.format << ", layout " << c.written);
    // Odd sizes so every row carries padding.
    DibPtr original = MakeTestDib(17, 11, c.written);
    const std::string bytes = EncodeToBytes(original.get(), c.format);
    ASSERT_FALSE(bytes.empty());
    CCA_MemoryStreamReader reader(bytes.data(), bytes.size());
    EXPECT_EQ(CA_GetImageFormat(&reader), c.format);
    DibPtr decoded = DecodeBytes(bytes);
    ASSERT_NE(decoded, nullptr);
    ASSERT_EQ(decoded->GetWidth(), 17);
    ASSERT_EQ(decoded->GetHeight(), 11);
    EXPECT_EQ(decoded->GetFormat(), c.decoded);
    int worst = 0;
    for (int y = 0; y < 11; ++y) {
      for (int x = 0; x < 17; ++x) {
        const unsigned int want = Expected(original->GetPixel(x, y), c.written, c.format);
        worst = std::max(worst, ChannelError(decoded->GetPixel(x, y), want));
      }
    }
    EXPECT_LE(worst, c.tolerance);
  }
}

TEST(ImageCodecs, DamagedInputGivesNullAndEmptyArgumentsFail) {
  for (const FormatName& f : kFormats) {
    if (!BuildHasCodec(f.name)) continue;
    SCOPED_TRACE(f.name);
    DibPtr original = MakeTestDib(40, 30, CA_DibFormat_Rgb24);
    const std::string bytes = EncodeToBytes(original.get(), f.format);
    ASSERT_GT(bytes.size(), 40u);
    // Cut in the header, in the middle and just before the end.
    for (std::size_t keep : {std::size_t(12), bytes.size() / 2, bytes.size() - 2}) {
      EXPECT_EQ(DecodeBytes(bytes.substr(0, keep)), nullptr) << "kept " << keep;
    }
    std::unique_ptr<ICA_ImageEncoder> encoder(CCA_Context::Get()->GetCodecFactory()->CreateImageEncoder(f.format));
    CCA_MemoryStreamWriter writer;
    CCA_Dib empty;
    EXPECT_EQ(encoder->Encode(&empty, &writer), 0);
    EXPECT_EQ(encoder->Encode(nullptr, &writer), 0);
    EXPECT_EQ(encoder->Encode(original.get(), nullptr), 0);
    EXPECT_EQ(writer.GetSize(), 0u);
  }
}

TEST(ImageCodecs, DecoderOpensOnceAndDecodesOneFrameOnce) {
  DibPtr original = MakeTestDib(5, 4, CA_DibFormat_Rgb24);
  const std::string bytes = EncodeToBytes(original.get(), CA_ImageFormat_BMP);
  CCA_MemoryStreamReader reader(bytes.data(), bytes.size());
  std::unique_ptr<ICA_ImageDecoder> decoder(
      CCA_Context::Get()->GetCodecFactory()->CreateImageDecoder(CA_ImageFormat_BMP));
  EXPECT_EQ(decoder->DecodeFrame(0, 0, 0), nullptr);  // not open yet
  EXPECT_EQ(decoder->Open(nullptr, 1), 0);
  ASSERT_NE(decoder->Open(&reader, 1), 0);
  EXPECT_EQ(decoder->Open(&reader, 1), 0);
  EXPECT_EQ(decoder->GetWidth(), 5);
  EXPECT_EQ(decoder->GetHeight(), 4);
  EXPECT_EQ(decoder->GetDibFormat(), CA_DibFormat_Rgb24);
  EXPECT_EQ(decoder->DecodeFrame(1, 0, 0), nullptr);
  DibPtr first(decoder->DecodeFrame(0, 0, 0));
  EXPECT_NE(first, nullptr);
  EXPECT_EQ(decoder->DecodeFrame(0, 0, 0), nullptr);
}

TEST(ImageCodecs, UnknownDataAndMissingEncodersLeaveEverythingUntouched) {
  const std::string text = "not an image at all";
  EXPECT_EQ(DecodeBytes(text), nullptr);
  DibPtr dib = MakeTestDib(2, 2, CA_DibFormat_Gray8);
  CCA_MemoryStreamWriter writer;
  EXPECT_EQ(ImageEncode(dib.get(), CA_ImageFormat_Unknown, &writer), 0);
  EXPECT_EQ(ImageEncode(dib.get(), static_cast<CA_ImageFormat>(-4), nullptr), 0);
  EXPECT_EQ(writer.GetSize(), 0u);
}

}  // namespace
