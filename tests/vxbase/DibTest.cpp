#include <gtest/gtest.h>

#include <memory>

#include <vxbase/Dib.h>

namespace {

TEST(Dib, CreateRefusesBadSizesAndKeepsThePixels) {
  struct Case {
    int width, height;
    CA_DibFormat format;
  };
  const Case refused[] = {
      {0, 1, CA_DibFormat_Gray8},          {1, 0, CA_DibFormat_Rgb24},
      {-1, 5, CA_DibFormat_Argb32},        {5, -1, CA_DibFormat_Argb32},
      {1 << 15, (1 << 13) + 1, CA_DibFormat_Gray8},  // one row past 2^28 pixels
      {(1 << 28) + 1, 1, CA_DibFormat_Gray8},
      {0x7FFFFFFF, 0x7FFFFFFF, CA_DibFormat_Argb32},
      {4, 4, CA_DibFormat_Invalid},        {4, 4, static_cast<CA_DibFormat>(16)},
  };
  CCA_Dib dib;
  ASSERT_TRUE(dib.Create(3, 2, CA_DibFormat_Rgb24));
  dib.SetPixel(2, 1, 0xFF123456);
  for (const Case& c : refused) {
    EXPECT_FALSE(dib.Create(c.width, c.height, c.format)) << c.width << "x" << c.height;
    EXPECT_EQ(dib.GetWidth(), 3);
    EXPECT_EQ(dib.GetFormat(), CA_DibFormat_Rgb24);
    EXPECT_EQ(dib.GetPixel(2, 1), 0xFF123456u);
  }
  EXPECT_TRUE(CA_DibSizeAllowed(1 << 14, 1 << 14));
  EXPECT_FALSE(CA_DibSizeAllowed(int64_t(1) << 40, 1));
}

TEST(Dib, RowsArePaddedToFourBytesAndZeroFilled) {
  struct Case {
    int width;
    CA_DibFormat format;
    int pitch;
  };
  const Case cases[] = {{1, CA_DibFormat_Gray8, 4},  {5, CA_DibFormat_Gray8, 8},
                        {1, CA_DibFormat_Rgb24, 4},  {3, CA_DibFormat_Rgb24, 12},
                        {5, CA_DibFormat_Rgb24, 16}, {3, CA_DibFormat_Argb32, 12}};
  for (const Case& c : cases) {
    CCA_Dib dib;
    ASSERT_TRUE(dib.Create(c.width, 3, c.format));
    EXPECT_EQ(dib.GetPitch(), c.pitch) << c.width << " px, format " << c.format;
    EXPECT_EQ(dib.GetScanline(1), dib.GetBuffer() + c.pitch);
    EXPECT_EQ(dib.GetScanline(3), nullptr);
    EXPECT_EQ(dib.GetScanline(-1), nullptr);
    for (int i = 0; i < c.pitch * 3; ++i) ASSERT_EQ(dib.GetBuffer()[i], 0) << i;
  }
}

TEST(Dib, PixelsReadAsArgbInEveryFormat) {
  CCA_Dib gray, rgb, argb;
  ASSERT_TRUE(gray.Create(2, 2, CA_DibFormat_Gray8));
  ASSERT_TRUE(rgb.Create(2, 2, CA_DibFormat_Rgb24));
  ASSERT_TRUE(argb.Create(2, 2, CA_DibFormat_Argb32));
  gray.GetScanline(1)[1] = 0x7A;
  uint8_t* p = rgb.GetScanline(1) + 3;  // bytes B, G, R
  p[0] = 0x11, p[1] = 0x22, p[2] = 0x33;
  uint8_t* q = argb.GetScanline(1) + 4;  // bytes B, G, R, A
  q[0] = 0x11, q[1] = 0x22, q[2] = 0x33, q[3] = 0x44;
  EXPECT_EQ(gray.GetPixel(1, 1), 0xFF7A7A7Au);
  EXPECT_EQ(rgb.GetPixel(1, 1), 0xFF332211u);
  EXPECT_EQ(argb.GetPixel(1, 1), 0x44332211u);
  EXPECT_EQ(argb.GetPixel(0, 0), 0u);
  EXPECT_EQ(argb.GetPixel(2, 0), 0u);
  EXPECT_EQ(argb.GetPixel(0, -1), 0u);
  EXPECT_EQ(CCA_Dib().GetPixel(0, 0), 0u);
}

TEST(Dib, ConvertKeepsColourDropsAlphaAndWeighsGray) {
  CCA_Dib argb;
  ASSERT_TRUE(argb.Create(4, 1, CA_DibFormat_Argb32));
  const unsigned int pixels[] = {0x80FF0000, 0xFF00FF00, 0x000000FF, 0xFFFFFFFF};
  for (int x = 0; x < 4; ++x) argb.SetPixel(x, 0, pixels[x]);
  std::unique_ptr<CCA_Dib> rgb(argb.Convert(CA_DibFormat_Rgb24));
  std::unique_ptr<CCA_Dib> gray(argb.Convert(CA_DibFormat_Gray8));
  std::unique_ptr<CCA_Dib> back(rgb->Convert(CA_DibFormat_Argb32));
  ASSERT_TRUE(rgb && gray && back);
  const unsigned int grayLevels[] = {76, 150, 29, 255};
  for (int x = 0; x < 4; ++x) {
    EXPECT_EQ(rgb->GetPixel(x, 0), pixels[x] | 0xFF000000u) << x;
    EXPECT_EQ(back->GetPixel(x, 0), pixels[x] | 0xFF000000u) << x;
    EXPECT_EQ(gray->GetPixel(x, 0), 0xFF000000u | grayLevels[x] * 0x010101u) << x;
  }
  EXPECT_EQ(CCA_Dib().Clone(), nullptr);
  EXPECT_EQ(argb.Convert(CA_DibFormat_Invalid), nullptr);
}

}  // namespace
