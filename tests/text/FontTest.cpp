// Face lookups: families, weight and slant, the second face and the
// fallback to any installed face.

#include <gtest/gtest.h>

#include <string>

#include <vxbase/Font.h>

#include "config.h"

namespace {

#ifdef HAVE_FONT_BACKEND

bool Contains(const std::string& text, const char* part) { return text.find(part) != std::string::npos; }

struct LoadCase {
  const wchar_t* face;
  const wchar_t* face2;
  int flags;
  int weight;
  int italic;
  bool loads;
  const char* fileHas;      // part of the chosen file name ("" when nothing is loaded)
  const char* fileHasNot;   // a part it must not have (nullptr: no check)
};

TEST(CCA_Font, MatchesFamilyWeightAndSlant) {
  const wchar_t* kMissing = L"No Such Face 7d1e";
  const LoadCase cases[] = {
      {L"DejaVu Sans", nullptr, 3, 400, 0, true, "DejaVuSans", "Bold"},
      {L"DejaVu Sans", nullptr, 3, 700, 0, true, "DejaVuSans-Bold", "Oblique"},
      {L"DejaVu Sans", nullptr, 3, 400, 1, true, "DejaVuSans-Oblique", "Bold"},
      {L"DejaVu Sans", nullptr, 3, 700, 1, true, "DejaVuSans-BoldOblique", nullptr},
      {L"dejavu serif", nullptr, 3, 700, 0, true, "DejaVuSerif-Bold", nullptr},
      // Without the style flag the regular upright face is taken.
      {L"DejaVu Sans", nullptr, 1, 700, 1, true, "DejaVuSans", "Bold"},
      // Weights past the OpenType range are clamped, not refused.
      {L"DejaVu Sans", nullptr, 2, 5000, 0, true, "Bold", nullptr},
      {L"DejaVu Sans", nullptr, 2, -5, 0, true, "DejaVuSans", nullptr},
      // A missing face: the second one, else any face with flag 1, else nothing.
      {kMissing, L"DejaVu Serif", 0, 400, 0, true, "DejaVuSerif", nullptr},
      {kMissing, kMissing, 0, 400, 0, false, "", nullptr},
      {kMissing, nullptr, 2, 400, 0, false, "", nullptr},
      {kMissing, kMissing, 3, 400, 0, true, "", nullptr},
      {L"SimSun", L"SimSun", 3, 400, 0, true, "", nullptr},
      // Generic families resolve through fontconfig's own aliases.
      {L"monospace", nullptr, 0, 400, 0, true, "", nullptr},
      {L"", nullptr, 0, 400, 0, false, "", nullptr},
      {nullptr, nullptr, 1, 400, 0, true, "", nullptr},
  };
  for (const LoadCase& c : cases) {
    const std::wstring name = c.face ? c.face : L"(null)";
    CCA_Font font(nullptr);
    EXPECT_EQ(font.LoadFont(c.face, c.face2, c.flags, c.weight, c.italic) != 0, c.loads) << name.c_str();
    const std::string file = font.GetFontFile();
    EXPECT_EQ(file.empty(), !c.loads) << file;
    EXPECT_TRUE(Contains(file, c.fileHas)) << file;
    if (c.fileHasNot) {
      EXPECT_FALSE(Contains(file, c.fileHasNot)) << file;
    }
    EXPECT_EQ(std::wstring(font.GetFaceName()), c.face ? c.face : L"");
    EXPECT_EQ(font.GetWeight(), c.weight);
    EXPECT_EQ(font.IsItalic(), c.italic != 0);
  }
}

TEST(CCA_Font, AFailedLoadForgetsTheEarlierFace) {
  CCA_FontMgr own;
  CCA_Font font(&own);
  EXPECT_EQ(font.GetFontMgr(), &own);
  ASSERT_NE(font.LoadFont(L"DejaVu Sans", nullptr, 0, 400, 0), 0);
  EXPECT_FALSE(std::string(font.GetFontFile()).empty());
  EXPECT_EQ(font.LoadFont(L"No Such Face 7d1e", nullptr, 0, 400, 0), 0);
  EXPECT_STREQ(font.GetFontFile(), "");
  EXPECT_EQ(font.GetFaceIndex(), 0);
}

#else

TEST(CCA_Font, LoadsNothingWithoutAFontBackend) {
  CCA_Font font(nullptr);
  EXPECT_FALSE(CCA_FontMgr::GetDefault()->IsAvailable());
  EXPECT_EQ(font.LoadFont(L"DejaVu Sans", L"DejaVu Sans", 3, 400, 0), 0);
  EXPECT_STREQ(font.GetFontFile(), "");
  EXPECT_EQ(std::wstring(font.GetFaceName()), L"DejaVu Sans");
}

#endif

TEST(CCA_Font, StartsEmptyWithTheDefaultManager) {
  CCA_Font font;
  EXPECT_EQ(font.GetFontMgr(), CCA_FontMgr::GetDefault());
  EXPECT_STREQ(font.GetFontFile(), "");
  EXPECT_EQ(std::wstring(font.GetFaceName()), L"");
  EXPECT_EQ(font.GetWeight(), 400);
  EXPECT_FALSE(font.IsItalic());
}

}  // namespace
