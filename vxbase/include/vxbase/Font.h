#pragma once
/// Fonts: a font manager that finds installed faces and keeps them open, and
/// a font that names the face, weight and slant a caller wants.
///
/// Faces are found through fontconfig and rendered with FreeType. A build
/// without those libraries still has both classes, but LoadFont always
/// returns 0 and devices draw no text.

#include <vxbase/String.h>
#include <vxbase/vxbase_export.h>

namespace vxbase_detail {
class FontEngine;
}

/// Flags of CCA_Font::LoadFont.
enum CA_FontLoadFlags : int {
  /// When neither named face is installed, load the installed face closest
  /// to the request instead of failing.
  CA_FontLoad_AnyFace = 1,
  /// Match the weight and slant asked for; without it the regular upright
  /// face of the family is taken.
  CA_FontLoad_MatchStyle = 2,
};

/// Finds installed faces and keeps the ones in use open, with their rendered
/// glyphs, for every font and device that uses it. Safe to use from several
/// threads at once.
class VXBASE_EXPORT CCA_FontMgr {
 public:
  CCA_FontMgr();
  ~CCA_FontMgr();
  CCA_FontMgr(const CCA_FontMgr&) = delete;
  CCA_FontMgr& operator=(const CCA_FontMgr&) = delete;

  /// The process-wide manager used wherever a null manager is given; never
  /// null.
  static CCA_FontMgr* GetDefault();
  /// False when the build has no font backend or it could not start.
  bool IsAvailable() const { return m_pEngine != nullptr; }

 private:
  friend class CCA_Font;
  friend class CCA_DibDevice;
  vxbase_detail::FontEngine* m_pEngine;
};

/// A font request and the face file it resolved to.
class VXBASE_EXPORT CCA_Font {
 public:
  /// A font that looks faces up through `fontMgr` (null: the process default).
  explicit CCA_Font(CCA_FontMgr* fontMgr = nullptr);

  /// Looks up `face` (UTF-16 on Windows, UTF-32 on Linux) with `weight`
  /// (400 regular, 700 bold; any 1 ... 1000) and `italic` (non-zero for an
  /// italic or oblique face); when `face` is not installed, tries `face2`
  /// (null or equal to `face`: no second try). `flags` combines
  /// CA_FontLoadFlags. Returns non-zero when some face was loaded, 0 when
  /// none was (the font file stays empty); without a font backend always 0.
  int LoadFont(const wchar_t* face, const wchar_t* face2, int flags, int weight, int italic);

  /// The face asked for, as given to the last LoadFont ("" before one).
  const wchar_t* GetFaceName() const { return m_wsFaceName; }
  /// The weight asked for (400 before a load).
  int GetWeight() const { return m_nWeight; }
  /// True when an italic face was asked for.
  bool IsItalic() const { return m_bItalic; }
  /// The UTF-8 path of the face file chosen; "" before a load or after a
  /// failed one.
  const char* GetFontFile() const { return m_strFontFile; }
  /// The index of the chosen face inside its file (collections hold several).
  int GetFaceIndex() const { return m_nFaceIndex; }
  /// The manager this font uses; never null.
  CCA_FontMgr* GetFontMgr() const { return m_pFontMgr; }

 private:
  friend class CCA_DibDevice;
  CCA_FontMgr* m_pFontMgr;
  bool m_bLoadTried = false;
  CCA_WString m_wsFaceName;
  int m_nWeight = 400;
  bool m_bItalic = false;
  CCA_String m_strFontFile;
  int m_nFaceIndex = 0;
};
