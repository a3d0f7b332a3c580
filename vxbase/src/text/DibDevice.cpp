#include <vxbase/Device.h>

#include <string>

#include <vxbase/Dib.h>
#include <vxbase/Font.h>
#include <vxbase/Matrix.h>

#include "text/CoverageBlend.h"
#include "text/FontEngine.h"

namespace {

/// Code points of `length` wide characters; UTF-16 surrogate pairs (where
/// wchar_t is 16 bits) are joined, a lone surrogate becomes U+FFFD.
std::u32string CodePoints(const wchar_t* text, int length) {
  std::u32string result;
  result.reserve(static_cast<std::size_t>(length));
  for (int i = 0; i < length; ++i) {
    char32_t ch = static_cast<char32_t>(text[i]);
    if (sizeof(wchar_t) == 2 && ch >= 0xD800 && ch <= 0xDBFF && i + 1 < length) {
      const char32_t low = static_cast<char32_t>(text[i + 1]);
      if (low >= 0xDC00 && low <= 0xDFFF) {
        ch = 0x10000 + ((ch - 0xD800) << 10) + (low - 0xDC00);
        ++i;
      }
    }
    if ((ch >= 0xD800 && ch <= 0xDFFF) || ch > 0x10FFFF) ch = 0xFFFD;
    result.push_back(ch);
  }
  return result;
}

class DibSink : public vxbase_detail::GlyphSink {
 public:
  DibSink(CCA_Dib& target, unsigned int argb) : m_Target(target), m_nArgb(argb) {}
  void Blend(const vxbase_detail::GlyphMask& mask) override {
    vxbase_detail::BlendCoverage(m_Target, mask, m_nArgb);
  }

 private:
  CCA_Dib& m_Target;
  unsigned int m_nArgb;
};

}  // namespace

CCA_DibDevice::CCA_DibDevice(CCA_Dib* target) : m_pTarget(target) {}

CCA_DibDevice::~CCA_DibDevice() = default;

int CCA_DibDevice::DrawText(const wchar_t* text, int length, CCA_Font* font, float size, CCA_Matrix* matrix,
                            unsigned int argb) {
  if (m_pTarget == nullptr || m_pTarget->GetBuffer() == nullptr || font == nullptr || matrix == nullptr) {
    return 0;
  }
  const int n = CA_TextLengthWithin(text, length);
  if (n <= 0) return 0;
  const std::u32string points = CodePoints(text, n);
  vxbase_detail::TextRun run{points.data(), static_cast<int>(points.size()), size, *matrix,
                             font->GetWeight(), font->IsItalic()};
  vxbase_detail::FontFace face;
  face.path = font->GetFontFile();
  face.index = font->GetFaceIndex();
  if (face.path.empty() && font->m_bLoadTried) return 0;  // a load that found nothing
  DibSink sink(*m_pTarget, argb);
  return vxbase_detail::RenderText(font->GetFontMgr()->m_pEngine, face, run, sink);
}

void CCA_DibDevice::CompleteText() {}

void CCA_DibDevice::CompleteDrawing() {}

int CCA_DibDevice::GetDeviceWidth() const { return m_pTarget ? m_pTarget->GetWidth() : 0; }

int CCA_DibDevice::GetDeviceHeight() const { return m_pTarget ? m_pTarget->GetHeight() : 0; }
