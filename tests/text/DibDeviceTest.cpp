// Text rendered into bitmaps: where the ink lands, its colour, blending,
// clipping, the matrix and characters from a fallback face.

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <string>
#include <vector>

#include <vxbase/Device.h>
#include <vxbase/Dib.h>
#include <vxbase/Font.h>
#include <vxbase/Matrix.h>

#include <vxutility/TextDraw.h>
#include <vxutility/VXJsonFactory.h>

#include "config.h"

namespace {

/// The box of pixels that differ from `background`; empty when none do.
struct Ink {
  int left = 1 << 30, top = 1 << 30, right = -1, bottom = -1;  // right/bottom inclusive
  bool Empty() const { return right < 0; }
  int Width() const { return right - left + 1; }
  int Height() const { return bottom - top + 1; }
};

Ink FindInk(const CCA_Dib& dib, unsigned int background) {
  Ink ink;
  for (int y = 0; y < dib.GetHeight(); ++y) {
    for (int x = 0; x < dib.GetWidth(); ++x) {
      if (dib.GetPixel(x, y) == background) continue;
      ink.left = std::min(ink.left, x);
      ink.right = std::max(ink.right, x);
      ink.top = std::min(ink.top, y);
      ink.bottom = std::max(ink.bottom, y);
    }
  }
  return ink;
}

int DrawJson(CCA_Dib& dib, const std::string& json) {
  CCA_DibDevice device(&dib);
  return DrawTextOnDevice(&device, VXJsonFactory::ParseJsonString(json.c_str(),
                                                                   static_cast<unsigned int>(json.size()), nullptr));
}

/// Draws `text` with DejaVu Sans at `size` pixels through `matrix`.
int DrawDirect(CCA_Dib& dib, const wchar_t* text, float size, CCA_Matrix matrix, unsigned int argb = 0xFF000000) {
  CCA_Font font(nullptr);
  font.LoadFont(L"DejaVu Sans", nullptr, 0, 400, 0);
  CCA_DibDevice device(&dib);
  return device.DrawText(text, -1, &font, size, &matrix, argb);
}

#ifdef HAVE_FONT_BACKEND

int CountPixels(const CCA_Dib& dib, unsigned int argb) {
  int count = 0;
  for (int y = 0; y < dib.GetHeight(); ++y) {
    for (int x = 0; x < dib.GetWidth(); ++x) count += dib.GetPixel(x, y) == argb;
  }
  return count;
}

/// The centre of the ink on a transparent bitmap, weighted by alpha; pixel
/// (x, y) covers [x, x + 1) x [y, y + 1).
struct Centre {
  double x = 0, y = 0;
};
Centre InkCentre(const CCA_Dib& dib) {
  double sum = 0, sx = 0, sy = 0;
  for (int y = 0; y < dib.GetHeight(); ++y) {
    for (int x = 0; x < dib.GetWidth(); ++x) {
      const double w = dib.GetPixel(x, y) >> 24;
      sum += w;
      sx += w * (x + 0.5);
      sy += w * (y + 0.5);
    }
  }
  Centre c;
  if (sum > 0) c = Centre{sx / sum, sy / sum};
  return c;
}

std::vector<unsigned int> Pixels(const CCA_Dib& dib) {
  std::vector<unsigned int> pixels;
  for (int y = 0; y < dib.GetHeight(); ++y) {
    for (int x = 0; x < dib.GetWidth(); ++x) pixels.push_back(dib.GetPixel(x, y));
  }
  return pixels;
}

void Fill(CCA_Dib& dib, unsigned int argb) {
  for (int y = 0; y < dib.GetHeight(); ++y) {
    for (int x = 0; x < dib.GetWidth(); ++x) dib.SetPixel(x, y, argb);
  }
}

struct PlacementCase {
  CA_DibFormat format;
  unsigned int background;
  int fontSize;
  float deltaX, deltaY;
  const char* color;
  unsigned int ink;  // the colour of a fully covered pixel
};

TEST(CCA_DibDevice, InkSitsWhereTheDescriptionPutsItInItsColour) {
  const PlacementCase cases[] = {
      {CA_DibFormat_Argb32, 0x00000000, 26, 0, 0, "#000000", 0xFF000000},
      {CA_DibFormat_Argb32, 0xFFFFFFFF, 20, 40.5f, 30, "#FF0000", 0xFFFF0000},
      {CA_DibFormat_Rgb24, 0xFFFFFFFF, 12, 100, 80, "#1A2B3C", 0xFF1A2B3C},
      {CA_DibFormat_Rgb24, 0xFF000000, 30, 7, 3, "0 255 0", 0xFF00FF00},
      {CA_DibFormat_Gray8, 0xFFFFFFFF, 26, 20, 10, "#000000", 0xFF000000},
      {CA_DibFormat_Gray8, 0xFF000000, 18, 0, 50, "#80", 0xFF808080},
  };
  for (const PlacementCase& c : cases) {
    CCA_Dib dib;
    ASSERT_TRUE(dib.Create(320, 160, c.format));
    Fill(dib, c.background);
    const std::string json = "{\"Content\":\"Hgy\",\"DeltaX\":" + std::to_string(c.deltaX) +
                             ",\"DeltaY\":" + std::to_string(c.deltaY) + ",\"Font\":{\"FontName\":\"DejaVu Sans\"," +
                             "\"FontSize\":" + std::to_string(c.fontSize) + ",\"Color\":\"" + c.color + "\"}}";
    ASSERT_EQ(DrawJson(dib, json), 1) << json;
    const Ink ink = FindInk(dib, c.background);
    ASSERT_FALSE(ink.Empty()) << json;
    const float pixels = c.fontSize / 72.0f * 96.0f;
    const float baseline = c.fontSize + c.deltaY;
    // The H starts just right of the pen; its stem is fully covered.
    EXPECT_GE(ink.left, c.deltaX) << json;
    EXPECT_LE(ink.left, c.deltaX + pixels * 0.2f) << json;
    // Capitals rise above the baseline, g and y descend below it.
    EXPECT_LT(ink.top, baseline - pixels * 0.5f) << json;
    EXPECT_GE(ink.top, baseline - pixels) << json;
    EXPECT_GT(ink.bottom, baseline + pixels * 0.1f) << json;
    EXPECT_LE(ink.bottom, baseline + pixels * 0.4f) << json;
    EXPECT_GT(CountPixels(dib, c.ink), 10) << std::hex << c.ink << " " << json;
  }
}

TEST(CCA_DibDevice, BlendsTheColoursAlpha) {
  const unsigned int red = 0x80FF0000;
  struct {
    CA_DibFormat format;
    unsigned int background;
    int coats;
    unsigned int full;  // a fully covered pixel afterwards
  } const cases[] = {
      {CA_DibFormat_Argb32, 0xFFFFFFFF, 1, 0xFFFF7F7F},
      {CA_DibFormat_Rgb24, 0xFFFFFFFF, 1, 0xFFFF7F7F},
      {CA_DibFormat_Argb32, 0x00000000, 1, 0x80FF0000},
      // Straight alpha: a second coat raises the alpha, the colour stays red.
      {CA_DibFormat_Argb32, 0x00000000, 2, 0xC0FF0000},
      // Half-transparent blue under half-transparent red.
      {CA_DibFormat_Argb32, 0x800000FF, 1, 0xC0AA0055},
      {CA_DibFormat_Gray8, 0xFFFFFFFF, 1, 0xFFA5A5A5},
  };
  for (const auto& c : cases) {
    CCA_Dib dib;
    ASSERT_TRUE(dib.Create(80, 60, c.format));
    Fill(dib, c.background);
    for (int i = 0; i < c.coats; ++i) ASSERT_EQ(DrawDirect(dib, L"H", 40, CCA_Matrix(1, 0, 0, 1, 5, 45), red), 1);
    EXPECT_GT(CountPixels(dib, c.full), 10) << std::hex << c.full;
  }
  CCA_Dib dib;
  ASSERT_TRUE(dib.Create(80, 60, CA_DibFormat_Argb32));
  EXPECT_EQ(DrawDirect(dib, L"H", 40, CCA_Matrix(1, 0, 0, 1, 5, 45), 0x00FF0000), 1);
  EXPECT_TRUE(FindInk(dib, 0).Empty()) << "a transparent colour leaves no ink";
}

TEST(CCA_DibDevice, OpaqueBitmapsBlendAlikeInEveryLayout) {
  // Argb32 over opaque pixels takes a four-pixel path; Rgb24 goes pixel by
  // pixel. Both must give the same colours, glyph edges and clipped ends too.
  for (unsigned int color : {0xFF336699u, 0x80FF0000u, 0x30000000u}) {
    for (float x : {3.0f, 517.0f}) {
      CCA_Dib argb, rgb;
      ASSERT_TRUE(argb.Create(601, 40, CA_DibFormat_Argb32));
      ASSERT_TRUE(rgb.Create(601, 40, CA_DibFormat_Rgb24));
      Fill(argb, 0xFFF0E0D0);
      Fill(rgb, 0xFFF0E0D0);
      for (CCA_Dib* dib : {&argb, &rgb}) {
        DrawDirect(*dib, L"Hamburgefonstiv", 23, CCA_Matrix(1, 0, 0, 1, x, 36), color);
        DrawDirect(*dib, L"Wavy", 17, CCA_Matrix(1, 0, 0, 1, x + 11, 30), color);
      }
      EXPECT_TRUE(Pixels(argb) == Pixels(rgb)) << std::hex << color;
      EXPECT_FALSE(FindInk(rgb, 0xFFF0E0D0).Empty());
    }
  }
}

TEST(CCA_DibDevice, FollowsTheMatrix) {
  auto inkOf = [](const wchar_t* text, CCA_Matrix matrix) {
    CCA_Dib dib;
    EXPECT_TRUE(dib.Create(400, 400, CA_DibFormat_Argb32));
    EXPECT_EQ(DrawDirect(dib, text, 30, matrix), static_cast<int>(std::wstring(text).size()));
    return FindInk(dib, 0);
  };
  const Ink plain = inkOf(L"H", CCA_Matrix(1, 0, 0, 1, 100, 200));
  const Ink twice = inkOf(L"H", CCA_Matrix(2, 0, 0, 2, 100, 200));
  EXPECT_NEAR(twice.Width(), 2 * plain.Width(), 2);
  EXPECT_NEAR(twice.Height(), 2 * plain.Height(), 2);
  EXPECT_EQ(twice.bottom, plain.bottom);  // both stand on the baseline y = 200
  // Flipped vertically the H hangs below the baseline.
  const Ink flipped = inkOf(L"H", CCA_Matrix(1, 0, 0, -1, 100, 200));
  EXPECT_GE(flipped.top, 200);
  EXPECT_EQ(flipped.Height(), plain.Height());
  // Turned a quarter (x runs down the page), a run grows downwards.
  const Ink row = inkOf(L"HHHH", CCA_Matrix(1, 0, 0, 1, 100, 200));
  const Ink column = inkOf(L"HHHH", CCA_Matrix(0, 1, -1, 0, 200, 100));
  EXPECT_NEAR(column.Height(), row.Width(), 2);
  EXPECT_NEAR(column.Width(), row.Height(), 2);
  EXPECT_GE(column.top, 100);
  // An asymmetric letter turned a quarter: its ink's centre turns with it
  // about the origin, text (x, y) going to device (-y, x).
  {
    const CCA_Matrix turns[] = {CCA_Matrix(0, 1, -1, 0, 200, 200), CCA_Matrix(0, -1, 1, 0, 200, 200),
                                CCA_Matrix(-1, 0, 0, -1, 200, 200), CCA_Matrix(1, 0, -0.5f, 1, 200, 200)};
    CCA_Dib upright;
    ASSERT_TRUE(upright.Create(400, 400, CA_DibFormat_Argb32));
    DrawDirect(upright, L"F7", 60, CCA_Matrix(1, 0, 0, 1, 200, 200));
    const Centre c = InkCentre(upright);
    for (const CCA_Matrix& turn : turns) {
      CCA_Dib turned;
      ASSERT_TRUE(turned.Create(400, 400, CA_DibFormat_Argb32));
      DrawDirect(turned, L"F7", 60, turn);
      const Centre t = InkCentre(turned);
      const double x = c.x - 200, y = c.y - 200;
      EXPECT_NEAR(t.x, turn.a * x + turn.c * y + 200, 1.5) << turn.a << " " << turn.b << " " << turn.c;
      EXPECT_NEAR(t.y, turn.b * x + turn.d * y + 200, 1.5) << turn.a << " " << turn.b << " " << turn.c;
    }
  }
  // Control characters leave neither ink nor a gap.
  {
    CCA_Dib plainRun, withControls;
    ASSERT_TRUE(plainRun.Create(200, 60, CA_DibFormat_Argb32));
    ASSERT_TRUE(withControls.Create(200, 60, CA_DibFormat_Argb32));
    EXPECT_EQ(DrawDirect(plainRun, L"AB", 30, CCA_Matrix(1, 0, 0, 1, 5, 40)), 2);
    EXPECT_EQ(DrawDirect(withControls, L"\tA\r\nB\x7f", 30, CCA_Matrix(1, 0, 0, 1, 5, 40)), 2);
    EXPECT_EQ(Pixels(plainRun), Pixels(withControls));
  }
  // Kerning pulls V under A; a zero-width space between them breaks the pair.
  const Ink kerned = inkOf(L"AV", CCA_Matrix(1, 0, 0, 1, 100, 200));
  const Ink apart = inkOf(L"A\u200BV", CCA_Matrix(1, 0, 0, 1, 100, 200));
  EXPECT_EQ(kerned.left, apart.left);
  EXPECT_LT(kerned.right, apart.right - 1);
  // The pen advances: two letters are two letters wide.
  const Ink pair = inkOf(L"HH", CCA_Matrix(1, 0, 0, 1, 100, 200));
  EXPECT_GT(pair.Width(), 2 * plain.Width());
  EXPECT_LT(pair.Width(), 3 * plain.Width());
}

TEST(CCA_DibDevice, RefusesWhatCannotBeDrawn) {
  const float nan = std::numeric_limits<float>::quiet_NaN();
  const float inf = std::numeric_limits<float>::infinity();
  const struct {
    float size;
    CCA_Matrix matrix;
  } cases[] = {
      {0, CCA_Matrix()}, {-12, CCA_Matrix()}, {nan, CCA_Matrix()}, {inf, CCA_Matrix()}, {1e7f, CCA_Matrix()},
      {2000, CCA_Matrix(4, 0, 0, 4, 0, 0)}, {12, CCA_Matrix(0, 0, 0, 0, 10, 10)}, {12, CCA_Matrix(1, 2, 2, 4, 0, 0)},
      {12, CCA_Matrix(nan, 0, 0, 1, 0, 0)}, {12, CCA_Matrix(1, 0, 0, 1, inf, 0)}, {12, CCA_Matrix(1e9f, 0, 0, 1, 0, 0)},
  };
  for (const auto& c : cases) {
    CCA_Dib dib;
    ASSERT_TRUE(dib.Create(40, 40, CA_DibFormat_Argb32));
    EXPECT_EQ(DrawDirect(dib, L"H", c.size, c.matrix), 0) << c.size;
    EXPECT_TRUE(FindInk(dib, 0).Empty());
  }
  CCA_Dib dib;
  ASSERT_TRUE(dib.Create(40, 40, CA_DibFormat_Argb32));
  CCA_DibDevice device(&dib);
  CCA_Font font;
  CCA_Matrix matrix(1, 0, 0, 1, 0, 30);
  EXPECT_EQ(device.DrawText(nullptr, 3, &font, 20, &matrix, 0xFF000000), 0);
  EXPECT_EQ(device.DrawText(L"", -1, &font, 20, &matrix, 0xFF000000), 0);
  EXPECT_EQ(device.DrawText(L"H", 1, nullptr, 20, &matrix, 0xFF000000), 0);
  EXPECT_EQ(device.DrawText(L"H", 1, &font, 20, nullptr, 0xFF000000), 0);
  CCA_Font missing, unnamed;
  missing.LoadFont(L"No Such Face 7d1e", nullptr, 0, 400, 0);
  unnamed.LoadFont(L"", nullptr, 0, 400, 0);
  EXPECT_EQ(device.DrawText(L"H", 1, &missing, 20, &matrix, 0xFF000000), 0);
  EXPECT_EQ(device.DrawText(L"H", 1, &unnamed, 20, &matrix, 0xFF000000), 0);
  EXPECT_TRUE(FindInk(dib, 0).Empty());
  // A font never loaded draws with the best installed face.
  EXPECT_EQ(device.DrawText(L"H", 1, &font, 20, &matrix, 0xFF000000), 1);
  EXPECT_FALSE(FindInk(dib, 0).Empty());
  CCA_Dib empty;
  CCA_DibDevice nowhere(&empty), nothing(nullptr);
  EXPECT_EQ(nowhere.DrawText(L"H", 1, &font, 20, &matrix, 0xFF000000), 0);
  EXPECT_EQ(nothing.DrawText(L"H", 1, &font, 20, &matrix, 0xFF000000), 0);
  EXPECT_EQ(nothing.GetDeviceWidth(), 0);
  EXPECT_EQ(device.GetDeviceWidth(), 40);
}

TEST(CCA_DibDevice, ClipsInkOutsideTheBitmap) {
  const CCA_Matrix origins[] = {CCA_Matrix(1, 0, 0, 1, -30, 20), CCA_Matrix(1, 0, 0, 1, 15, 5),
                                CCA_Matrix(1, 0, 0, 1, 25, 60), CCA_Matrix(1, 0, 0, 1, -5e8f, 5e8f),
                                CCA_Matrix(-1, 0, 0, 1, 2, 30)};
  for (const CCA_Matrix& origin : origins) {
    for (CA_DibFormat format : {CA_DibFormat_Rgb24, CA_DibFormat_Argb32}) {
      CCA_Dib dib;
      ASSERT_TRUE(dib.Create(30, 30, format));
      Fill(dib, 0xFFFFFFFF);
      EXPECT_EQ(DrawDirect(dib, L"HgÅ", 48, origin), 3);
    }
  }
  CCA_Dib dib;
  ASSERT_TRUE(dib.Create(30, 30, CA_DibFormat_Gray8));
  EXPECT_EQ(DrawDirect(dib, L"W", 3000, CCA_Matrix(1, 0, 0, 1, -1000, 1000)), 1);
}

TEST(CCA_DibDevice, TakesMissingCharactersFromAnotherFace) {
  CCA_Font cjk;
  if (cjk.LoadFont(L"WenQuanYi Micro Hei", nullptr, 0, 400, 0) == 0) GTEST_SKIP() << "no CJK face installed";
  // DejaVu Sans has no Han characters: each must come out as its own shape,
  // not as the same missing-glyph box.
  std::vector<std::vector<unsigned int>> shapes;
  for (const wchar_t* text : {L"\u6c49", L"\u5b57", L"\u6c49"}) {
    CCA_Dib dib;
    ASSERT_TRUE(dib.Create(60, 60, CA_DibFormat_Argb32));
    EXPECT_EQ(DrawDirect(dib, text, 40, CCA_Matrix(1, 0, 0, 1, 5, 45)), 1);
    EXPECT_GT(CountPixels(dib, 0xFF000000), 20);
    shapes.push_back(Pixels(dib));
  }
  EXPECT_NE(shapes[0], shapes[1]);
  EXPECT_EQ(shapes[0], shapes[2]);
}

#else

TEST(CCA_DibDevice, DrawsNothingWithoutAFontBackend) {
  CCA_Dib dib;
  ASSERT_TRUE(dib.Create(40, 40, CA_DibFormat_Argb32));
  EXPECT_EQ(DrawJson(dib, "{\"Content\":\"H\"}"), 1);
  EXPECT_EQ(DrawDirect(dib, L"H", 20, CCA_Matrix(1, 0, 0, 1, 0, 30)), 0);
  EXPECT_TRUE(FindInk(dib, 0).Empty());
}

#endif

}  // namespace
