#pragma once
// What a font backend provides to CCA_FontMgr, CCA_Font and CCA_DibDevice.
// The FreeType + fontconfig backend lives in freetype/, the build without a
// font library uses none/.

#include <string>

#include <vxbase/Matrix.h>

namespace vxbase_detail {

class FontEngine;

/// A face a caller asks for; families are UTF-8.
struct FontRequest {
  std::string family;
  std::string family2;
  int flags = 0;
  int weight = 400;
  bool italic = false;
};

/// An installed face: its file (UTF-8 path) and its index in that file.
struct FontFace {
  std::string path;
  int index = 0;
};

/// An antialiased glyph ready to blend: coverage 0 ... 255 per pixel, its
/// top-left corner at device pixel (left, top). Each row is followed by at
/// least 3 bytes of zero coverage (pitch >= width + 3), so blenders may
/// read a row in groups of four.
struct GlyphMask {
  const unsigned char* coverage;
  int width;
  int rows;
  int pitch;
  int left;
  int top;
};

/// Receives the glyphs of a run, one after the other.
class GlyphSink {
 public:
  virtual void Blend(const GlyphMask& mask) = 0;

 protected:
  ~GlyphSink() = default;
};

/// A run of text to render: code points, pixel size and the matrix from
/// text space (y down, origin on the baseline) to the device.
struct TextRun {
  const char32_t* text;
  int length;
  float size;
  CCA_Matrix matrix;
  int weight;
  bool italic;
};

/// A new engine, or nullptr when the build has none or it cannot start.
FontEngine* NewFontEngine();
/// Frees `engine` (null: nothing).
void DeleteFontEngine(FontEngine* engine);
/// Resolves `request` to an installed face; false when none fits.
bool MatchFont(FontEngine* engine, const FontRequest& request, FontFace& face);
/// Lays `run` out with `face` (empty path: the best installed face), taking
/// characters the face lacks from another installed face, and hands each
/// glyph to `sink`. Returns the number of glyphs placed, 0 on failure.
int RenderText(FontEngine* engine, const FontFace& face, const TextRun& run, GlyphSink& sink);

}  // namespace vxbase_detail
