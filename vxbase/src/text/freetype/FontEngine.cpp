// Font backend over FreeType and fontconfig. One engine per font manager
// keeps every face it opened and the glyphs it rendered, so a run of text
// costs lookups and blending once its glyphs have been seen.

#include "text/FontEngine.h"

#include <ft2build.h>
#include FT_FREETYPE_H
#include FT_GLYPH_H

#include <fontconfig/fontconfig.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <map>
#include <memory>
#include <mutex>
#include <unordered_map>
#include <utility>
#include <vector>

#include "text/freetype/FaceLookup.h"

namespace vxbase_detail {
namespace {

/// Sizes (pixels, after the matrix's scale) past this are refused: one glyph
/// of that size is already 16 MB of coverage.
constexpr double kMaxPixelSize = 4096.0;
/// Pens that wander this far from the bitmap stop the run.
constexpr double kMaxPen = 1e9;
/// The glyph cache is emptied when it grows past either bound.
constexpr std::size_t kMaxCachedGlyphs = 8192;
constexpr std::size_t kMaxCachedBytes = std::size_t(64) << 20;
constexpr std::size_t kMaxCachedChars = 65536;
constexpr std::size_t kMaxStrikes = 64;

struct OpenFace {
  FT_Face face = nullptr;
  int id = 0;
  FT_F26Dot6 size = 0;                // the size last set on `face`
  std::vector<FT_UInt> asciiGlyphs;  // glyph of each ASCII character, once looked up
};

constexpr FT_UInt kNotLookedUp = ~FT_UInt(0);

/// The face's glyph for `ch`; 0 when it has none.
FT_UInt GlyphIndex(OpenFace* face, char32_t ch) {
  if (ch >= 128) return FT_Get_Char_Index(face->face, ch);
  if (face->asciiGlyphs.empty()) face->asciiGlyphs.assign(128, kNotLookedUp);
  FT_UInt& glyph = face->asciiGlyphs[ch];
  if (glyph == kNotLookedUp) glyph = FT_Get_Char_Index(face->face, ch);
  return glyph;
}

/// Glyph scale and transform in FreeType's fixed-point units.
struct Scale {
  FT_F26Dot6 size;
  FT_Matrix transform;  // 16.16, y up
  bool identity;
};

struct StrikeKey {
  int face;
  FT_F26Dot6 size;
  FT_Fixed xx, xy, yx, yy;
  bool operator==(const StrikeKey& o) const {
    return face == o.face && size == o.size && xx == o.xx && xy == o.xy && yx == o.yx && yy == o.yy;
  }
};

struct StrikeKeyHash {
  std::size_t operator()(const StrikeKey& k) const {
    std::size_t h = static_cast<std::size_t>(k.size) * 31 + static_cast<std::size_t>(k.face);
    for (FT_Fixed v : {k.xx, k.xy, k.yx, k.yy}) h = h * 31 + static_cast<std::size_t>(v);
    return h;
  }
};

struct CachedGlyph {
  std::vector<unsigned char> coverage;
  int width = 0;
  int rows = 0;
  int pitch = 0;
  int left = 0;
  int top = 0;
  double advanceX = 0;  // device pixels, y down
  double advanceY = 0;
};

/// One face at one scale: its rendered glyphs (by glyph index) and the
/// kerning of the pairs seen so far, in text-space pixels.
struct Strike {
  OpenFace* face = nullptr;
  Scale scale{};
  std::vector<std::unique_ptr<CachedGlyph>> glyphs;
  /// Kerning of recent pairs, one slot per hash of the pair (a later pair
  /// with the same hash replaces the earlier one).
  struct KernSlot {
    std::uint64_t pair = ~std::uint64_t(0);
    double value = 0;
  };
  static constexpr std::size_t kKernSlots = 512;
  std::vector<KernSlot> kerning;
};

bool Finite(double v) { return std::isfinite(v); }

/// The matrix's largest stretch of a unit length, a bound on glyph growth.
double MatrixStretch(const CCA_Matrix& m) {
  return std::max(std::hypot(m.a, m.b), std::hypot(m.c, m.d));
}

/// Scales `face` to `size` (26.6 pixels) unless it already is.
bool SetSize(OpenFace* face, FT_F26Dot6 size) {
  if (face->size == size) return true;
  if (FT_Set_Char_Size(face->face, 0, size, 72, 72) != 0) return false;
  face->size = size;
  return true;
}

FT_Fixed ToFixed16(double v) { return static_cast<FT_Fixed>(std::lround(v * 65536.0)); }

/// Copies a rendered bitmap as 8-bit coverage; false for a layout we do not
/// know.
bool CopyCoverage(const FT_Bitmap& bitmap, CachedGlyph& glyph) {
  glyph.width = static_cast<int>(bitmap.width);
  glyph.rows = static_cast<int>(bitmap.rows);
  glyph.pitch = (glyph.width + 6) & ~3;  // zero padding of 3 bytes or more: see GlyphMask
  glyph.coverage.assign(static_cast<std::size_t>(glyph.pitch) * glyph.rows, 0);
  const int pitch = bitmap.pitch;
  for (int y = 0; y < glyph.rows; ++y) {
    const unsigned char* src =
        pitch >= 0 ? bitmap.buffer + static_cast<std::ptrdiff_t>(y) * pitch
                   : bitmap.buffer + static_cast<std::ptrdiff_t>(glyph.rows - 1 - y) * -pitch;
    unsigned char* dst = glyph.coverage.data() + static_cast<std::size_t>(y) * glyph.pitch;
    if (bitmap.pixel_mode == FT_PIXEL_MODE_GRAY) {
      std::memcpy(dst, src, static_cast<std::size_t>(glyph.width));
    } else if (bitmap.pixel_mode == FT_PIXEL_MODE_MONO) {
      for (int x = 0; x < glyph.width; ++x) dst[x] = (src[x >> 3] & (0x80 >> (x & 7))) ? 255 : 0;
    } else {
      return false;
    }
  }
  return true;
}

}  // namespace

class FontEngine {
 public:
  FontEngine() = default;
  ~FontEngine() {
    m_Strikes.clear();
    m_Faces.clear();
    if (m_Library != nullptr) FT_Done_FreeType(m_Library);
  }
  FontEngine(const FontEngine&) = delete;
  FontEngine& operator=(const FontEngine&) = delete;

  bool Start() {
    FcInit();
    return FT_Init_FreeType(&m_Library) == 0;
  }

  bool Match(const FontRequest& request, FontFace& face) {
    std::lock_guard<std::mutex> hold(m_Lock);
    return LookUpFace(request, face);
  }

  int Render(const FontFace& face, const TextRun& run, GlyphSink& sink);

 private:
  struct FaceCloser {
    void operator()(OpenFace* f) const {
      if (f->face != nullptr) FT_Done_Face(f->face);
      delete f;
    }
  };
  using FacePtr = std::unique_ptr<OpenFace, FaceCloser>;

  OpenFace* Open(const FontFace& face);
  OpenFace* DefaultFace();
  OpenFace* FaceFor(char32_t ch, OpenFace* primary, const TextRun& run, FT_UInt& glyph);
  Strike* StrikeFor(OpenFace* face, const Scale& scale);
  const CachedGlyph* Glyph(Strike& strike, FT_UInt glyph);
  double Kerning(Strike& strike, FT_UInt left, FT_UInt right);
  static bool MakeScale(const TextRun& run, Scale& scale);

  std::mutex m_Lock;
  FT_Library m_Library = nullptr;
  std::map<std::pair<std::string, int>, FacePtr> m_Faces;  // failures kept as null faces
  std::vector<OpenFace*> m_Fallbacks;                      // faces opened for missing characters
  std::unordered_map<char32_t, OpenFace*> m_CharFaces;     // null: no installed face has it
  bool m_bDefaultLooked = false;
  OpenFace* m_pDefault = nullptr;
  std::unordered_map<StrikeKey, std::unique_ptr<Strike>, StrikeKeyHash> m_Strikes;
  std::size_t m_nCachedGlyphs = 0;
  std::size_t m_nCachedBytes = 0;
  CachedGlyph m_Scratch;  // a glyph rendered once the cache is full
};

OpenFace* FontEngine::Open(const FontFace& face) {
  auto key = std::make_pair(face.path, face.index);
  auto found = m_Faces.find(key);
  if (found != m_Faces.end()) return found->second->face != nullptr ? found->second.get() : nullptr;
  FacePtr opened(new OpenFace);
  opened->id = static_cast<int>(m_Faces.size()) + 1;
  if (FT_New_Face(m_Library, face.path.c_str(), face.index, &opened->face) != 0) {
    opened->face = nullptr;
  } else if (!FT_IS_SCALABLE(opened->face) || FT_Select_Charmap(opened->face, FT_ENCODING_UNICODE) != 0) {
    FT_Done_Face(opened->face);
    opened->face = nullptr;
  }
  OpenFace* result = opened->face != nullptr ? opened.get() : nullptr;
  m_Faces.emplace(std::move(key), std::move(opened));
  return result;
}

OpenFace* FontEngine::DefaultFace() {
  if (!m_bDefaultLooked) {
    m_bDefaultLooked = true;
    FontRequest request;
    request.flags = 1;  // any face
    FontFace face;
    if (LookUpFace(request, face)) m_pDefault = Open(face);
  }
  return m_pDefault;
}

OpenFace* FontEngine::FaceFor(char32_t ch, OpenFace* primary, const TextRun& run, FT_UInt& glyph) {
  glyph = GlyphIndex(primary, ch);
  if (glyph != 0) return primary;
  auto known = m_CharFaces.find(ch);
  OpenFace* chosen = nullptr;
  if (known != m_CharFaces.end()) {
    chosen = known->second;
  } else {
    for (OpenFace* fallback : m_Fallbacks) {
      if (FT_Get_Char_Index(fallback->face, ch) != 0) {
        chosen = fallback;
        break;
      }
    }
    FontFace face;
    if (chosen == nullptr && LookUpFaceForChar(ch, run.weight, run.italic, face)) {
      chosen = Open(face);
      if (chosen != nullptr && FT_Get_Char_Index(chosen->face, ch) == 0) chosen = nullptr;
      if (chosen != nullptr) m_Fallbacks.push_back(chosen);
    }
    if (m_CharFaces.size() >= kMaxCachedChars) m_CharFaces.clear();
    m_CharFaces.emplace(ch, chosen);
  }
  if (chosen == nullptr) return primary;  // its missing-glyph box
  glyph = GlyphIndex(chosen, ch);
  return chosen;
}

bool FontEngine::MakeScale(const TextRun& run, Scale& scale) {
  const CCA_Matrix& m = run.matrix;
  for (float v : {m.a, m.b, m.c, m.d, m.e, m.f}) {
    if (!Finite(v)) return false;
  }
  const double size = run.size;
  if (!Finite(size) || size <= 0) return false;
  const double det = static_cast<double>(m.a) * m.d - static_cast<double>(m.b) * m.c;
  if (std::fabs(det) < 1e-6) return false;
  const double stretch = MatrixStretch(m);
  if (size * stretch > kMaxPixelSize || size * 64.0 < 1.0 || stretch > kMaxPixelSize) return false;
  scale.size = static_cast<FT_F26Dot6>(std::lround(size * 64.0));
  scale.identity = m.a == 1 && m.b == 0 && m.c == 0 && m.d == 1;
  // Text space has y down, FreeType y up: conjugate the linear part by the flip.
  scale.transform.xx = ToFixed16(m.a);
  scale.transform.xy = ToFixed16(-m.c);
  scale.transform.yx = ToFixed16(-m.b);
  scale.transform.yy = ToFixed16(m.d);
  return true;
}

Strike* FontEngine::StrikeFor(OpenFace* face, const Scale& scale) {
  const FT_Matrix& t = scale.transform;
  const StrikeKey key{face->id, scale.size, t.xx, t.xy, t.yx, t.yy};
  std::unique_ptr<Strike>& strike = m_Strikes[key];
  if (!strike) {
    strike.reset(new Strike);
    strike->face = face;
    strike->scale = scale;
  }
  return strike.get();
}

const CachedGlyph* FontEngine::Glyph(Strike& strike, FT_UInt glyph) {
  if (glyph < strike.glyphs.size() && strike.glyphs[glyph]) return strike.glyphs[glyph].get();
  OpenFace* face = strike.face;
  if (!SetSize(face, strike.scale.size)) return nullptr;
  FT_Matrix transform = strike.scale.transform;
  FT_Set_Transform(face->face, strike.scale.identity ? nullptr : &transform, nullptr);
  if (FT_Load_Glyph(face->face, glyph, FT_LOAD_DEFAULT | FT_LOAD_NO_BITMAP) != 0) return nullptr;
  FT_GlyphSlot slot = face->face->glyph;
  if (FT_Render_Glyph(slot, FT_RENDER_MODE_NORMAL) != 0) return nullptr;

  std::unique_ptr<CachedGlyph> rendered(new CachedGlyph);
  if (!CopyCoverage(slot->bitmap, *rendered)) return nullptr;
  rendered->left = slot->bitmap_left;
  rendered->top = slot->bitmap_top;
  rendered->advanceX = slot->advance.x / 64.0;
  rendered->advanceY = -slot->advance.y / 64.0;
  if (m_nCachedGlyphs >= kMaxCachedGlyphs || m_nCachedBytes + rendered->coverage.size() > kMaxCachedBytes) {
    m_Scratch = std::move(*rendered);  // the cache is emptied before the next run
    return &m_Scratch;
  }
  ++m_nCachedGlyphs;
  m_nCachedBytes += rendered->coverage.size();
  if (glyph >= strike.glyphs.size()) {
    const std::size_t count = static_cast<std::size_t>(face->face->num_glyphs);
    strike.glyphs.resize(std::max<std::size_t>(glyph + 1, count));
  }
  strike.glyphs[glyph] = std::move(rendered);
  return strike.glyphs[glyph].get();
}

double FontEngine::Kerning(Strike& strike, FT_UInt left, FT_UInt right) {
  const std::uint64_t pair = (std::uint64_t(left) << 32) | right;
  if (strike.kerning.empty()) strike.kerning.resize(Strike::kKernSlots);
  Strike::KernSlot& slot = strike.kerning[(left * 131u + right) % Strike::kKernSlots];
  if (slot.pair == pair) return slot.value;
  FT_Vector kern{0, 0};
  double result = 0;
  if (SetSize(strike.face, strike.scale.size) &&
      FT_Get_Kerning(strike.face->face, left, right, FT_KERNING_DEFAULT, &kern) == 0) {
    result = kern.x / 64.0;
  }
  slot.pair = pair;
  slot.value = result;
  return result;
}

int FontEngine::Render(const FontFace& face, const TextRun& run, GlyphSink& sink) {
  Scale scale;
  if (run.text == nullptr || run.length <= 0 || !MakeScale(run, scale)) return 0;
  std::lock_guard<std::mutex> hold(m_Lock);
  if (m_nCachedGlyphs >= kMaxCachedGlyphs || m_nCachedBytes >= kMaxCachedBytes || m_Strikes.size() >= kMaxStrikes) {
    m_Strikes.clear();
    m_nCachedGlyphs = 0;
    m_nCachedBytes = 0;
  }
  OpenFace* primary = face.path.empty() ? DefaultFace() : Open(face);
  if (primary == nullptr) return 0;

  const CCA_Matrix& m = run.matrix;
  double penX = m.e;
  double penY = m.f;
  Strike* strike = nullptr;
  OpenFace* previousFace = nullptr;
  FT_UInt previousGlyph = 0;
  int placed = 0;
  for (int i = 0; i < run.length; ++i) {
    const char32_t ch = run.text[i];
    if (ch < 0x20 || ch == 0x7F) continue;  // control characters: no ink, no advance
    FT_UInt glyphIndex = 0;
    OpenFace* current = FaceFor(ch, primary, run, glyphIndex);
    if (strike == nullptr || strike->face != current) strike = StrikeFor(current, scale);
    const CachedGlyph* glyph = Glyph(*strike, glyphIndex);
    if (glyph == nullptr) continue;
    if (current == previousFace && previousGlyph != 0 && glyphIndex != 0 && FT_HAS_KERNING(current->face)) {
      const double kern = Kerning(*strike, previousGlyph, glyphIndex);
      penX += m.a * kern;
      penY += m.b * kern;
    }
    if (std::fabs(penX) > kMaxPen || std::fabs(penY) > kMaxPen) break;
    const int originX = static_cast<int>(std::floor(penX + 0.5));
    const int originY = static_cast<int>(std::floor(penY + 0.5));
    if (glyph->width > 0 && glyph->rows > 0) {
      sink.Blend(GlyphMask{glyph->coverage.data(), glyph->width, glyph->rows, glyph->pitch,
                           originX + glyph->left, originY - glyph->top});
    }
    penX += glyph->advanceX;
    penY += glyph->advanceY;
    previousFace = current;
    previousGlyph = glyphIndex;
    ++placed;
  }
  return placed;
}

FontEngine* NewFontEngine() {
  std::unique_ptr<FontEngine> engine(new (std::nothrow) FontEngine);
  if (!engine || !engine->Start()) return nullptr;
  return engine.release();
}

void DeleteFontEngine(FontEngine* engine) { delete engine; }

bool MatchFont(FontEngine* engine, const FontRequest& request, FontFace& face) {
  return engine != nullptr && engine->Match(request, face);
}

int RenderText(FontEngine* engine, const FontFace& face, const TextRun& run, GlyphSink& sink) {
  return engine != nullptr ? engine->Render(face, run, sink) : 0;
}

}  // namespace vxbase_detail
