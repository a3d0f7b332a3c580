#include <vxbase/Font.h>

#include <vxbase/StringConverter.h>

#include "text/FontEngine.h"

namespace {

std::string ToUtf8(const wchar_t* text) {
  if (text == nullptr) return std::string();
  CCA_String utf8 = CCA_StringConverter::unicode_to_utf8(text, -1);
  return std::string(utf8.c_str(), static_cast<std::size_t>(utf8.GetLength()));
}

}  // namespace

CCA_Font::CCA_Font(CCA_FontMgr* fontMgr) : m_pFontMgr(fontMgr ? fontMgr : CCA_FontMgr::GetDefault()) {}

int CCA_Font::LoadFont(const wchar_t* face, const wchar_t* face2, int flags, int weight, int italic) {
  m_bLoadTried = true;
  m_wsFaceName = CCA_WString(face, -1);
  m_nWeight = weight;
  m_bItalic = italic != 0;
  m_strFontFile.Empty();
  m_nFaceIndex = 0;

  vxbase_detail::FontRequest request;
  request.family = ToUtf8(face);
  request.family2 = ToUtf8(face2);
  request.flags = flags;
  // Weights outside the OpenType range would match nothing: clamp them.
  request.weight = weight < 1 ? 1 : (weight > 1000 ? 1000 : weight);
  request.italic = m_bItalic;
  vxbase_detail::FontFace found;
  if (!vxbase_detail::MatchFont(m_pFontMgr->m_pEngine, request, found)) return 0;
  m_strFontFile = CCA_String(found.path.c_str(), static_cast<int>(found.path.size()));
  m_nFaceIndex = found.index;
  return 1;
}
