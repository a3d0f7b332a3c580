// A 100-character Latin run drawn into a 1000x200 bitmap: CCA_DibDevice
// beside cairo_show_text on an image surface, with the same face file and
// pixel size. Both keep their rendered glyphs between runs, so this measures
// layout and blending.

#include <benchmark/benchmark.h>

#include <ft2build.h>
#include FT_FREETYPE_H

#include <cairo-ft.h>
#include <cairo.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

#include <vxbase/Device.h>
#include <vxbase/Dib.h>
#include <vxbase/Font.h>
#include <vxbase/Matrix.h>
#include <vxbase/StringConverter.h>

#include "bench/support/RatioReporter.h"

namespace {

constexpr int kWidth = 1000;
constexpr int kHeight = 200;
constexpr float kPixelSize = 16.0f;
constexpr float kOriginX = 4.0f;
constexpr float kOriginY = 100.0f;

const char kRun[] =
    "The quick brown fox jumps over the lazy dog. Pack my box with five dozen liquor jugs! 0123456789 AVA";
static_assert(sizeof(kRun) - 1 == 100, "a run of 100 characters");

/// The face file both sides draw with.
std::string FaceFile() {
  CCA_Font font;
  if (font.LoadFont(L"DejaVu Sans", nullptr, 0, 400, 0) == 0) return std::string();
  return font.GetFontFile();
}

void TextRun_Ours(benchmark::State& state) {
  CCA_Font font;
  if (font.LoadFont(L"DejaVu Sans", nullptr, 0, 400, 0) == 0) {
    state.SkipWithError("DejaVu Sans is not installed");
    return;
  }
  CCA_Dib dib;
  dib.Create(kWidth, kHeight, CA_DibFormat_Argb32);
  std::memset(dib.GetBuffer(), 0xFF, static_cast<std::size_t>(dib.GetPitch()) * kHeight);
  CCA_DibDevice device(&dib);
  const CCA_WString text = CCA_StringConverter::utf8_to_unicode(kRun, -1);
  CCA_Matrix matrix(1, 0, 0, 1, kOriginX, kOriginY);
  for (auto _ : state) {
    benchmark::DoNotOptimize(device.DrawText(text, text.GetLength(), &font, kPixelSize, &matrix, 0xFF102030));
    benchmark::ClobberMemory();
  }
}

void TextRun_Cairo(benchmark::State& state) {
  const std::string file = FaceFile();
  FT_Library library = nullptr;
  FT_Face face = nullptr;
  if (file.empty() || FT_Init_FreeType(&library) != 0 || FT_New_Face(library, file.c_str(), 0, &face) != 0) {
    state.SkipWithError("cannot open the face");
    return;
  }
  cairo_surface_t* surface = cairo_image_surface_create(CAIRO_FORMAT_ARGB32, kWidth, kHeight);
  cairo_t* cr = cairo_create(surface);
  cairo_set_source_rgb(cr, 1, 1, 1);
  cairo_paint(cr);
  cairo_font_face_t* cairoFace = cairo_ft_font_face_create_for_ft_face(face, 0);
  cairo_set_font_face(cr, cairoFace);
  cairo_set_font_size(cr, kPixelSize);
  cairo_set_source_rgb(cr, 0x10 / 255.0, 0x20 / 255.0, 0x30 / 255.0);
  for (auto _ : state) {
    cairo_move_to(cr, kOriginX, kOriginY);
    cairo_show_text(cr, kRun);
    cairo_surface_flush(surface);
    benchmark::DoNotOptimize(cairo_image_surface_get_data(surface));
  }
  cairo_destroy(cr);
  cairo_surface_destroy(surface);
  cairo_font_face_destroy(cairoFace);
  FT_Done_Face(face);
  FT_Done_FreeType(library);
}

BENCHMARK(TextRun_Ours)->Name("text_100_chars/ours");
BENCHMARK(TextRun_Cairo)->Name("text_100_chars/cairo");

}  // namespace

int main(int argc, char** argv) { return RunBenchmarksWithRatios(argc, argv); }
