#include <vxutility/TextDraw.h>

#include <string>

#include <vxbase/Font.h>
#include <vxbase/Matrix.h>
#include <vxbase/String.h>
#include <vxbase/StringConverter.h>

#include <vxutility/ColorString.h>

namespace {

constexpr int kDefaultFontSize = 26;
constexpr const wchar_t* kDefaultFace = L"SimSun";
/// LoadFont flags: any installed face when the named one is missing, and
/// the weight and slant asked for.
constexpr int kLoadFlags = 3;

/// The text run's font, as read from the "Font" object.
struct FontDescription {
  int size = kDefaultFontSize;
  std::string faceName;
  std::string colorText = "#000000";
  bool bold = false;
  bool italic = false;
};

void ReadFont(const VXJson& font, FontDescription& out) {
  const int size = font.GetIntMember("FontSize", 0);
  if (size > 0) out.size = size;
  const char* face = font.GetStringMember("FontName", "");
  if (face != nullptr && *face != 0) out.faceName = face;
  if (font.HasMember("Bold")) out.bold = font.GetBooleanMember("Bold", false);
  if (font.HasMember("Italic")) out.italic = font.GetBooleanMember("Italic", false);
  const char* color = font.GetStringMember("Color", "");
  if (color != nullptr && *color != 0) out.colorText = color;
}

/// A packed RGB colour (red in bits 0-7) as opaque 0xAARRGGBB.
unsigned int ToDeviceColor(unsigned int packed) {
  return 0xFF000000u | ((packed & 0xFFu) << 16) | (packed & 0xFF00u) | ((packed >> 16) & 0xFFu);
}

}  // namespace

int DrawTextOnDevice(ICA_Device* device, VXSharedPtr<const VXJson> description) {
  if (device == nullptr || !description) return 0;
  const char* contentText = description->GetStringMember("Content", "");
  if (contentText == nullptr || *contentText == 0) return 0;
  const std::string content(contentText);

  FontDescription font;
  VXSharedPtr<const VXJson> fontObject = description->GetMember("Font");
  if (fontObject) ReadFont(*fontObject, font);
  const float deltaX = description->GetFloatMember("DeltaX", 0.0f);
  const float deltaY = description->GetFloatMember("DeltaY", 0.0f);

  const CCA_WString face = font.faceName.empty() ? CCA_WString(kDefaultFace, -1)
                                                 : CCA_StringConverter::utf8_to_unicode(font.faceName.c_str(), -1);
  const CCA_WString text = CCA_StringConverter::utf8_to_unicode(content.c_str(), -1);
  if (text.GetLength() == 0) return 0;

  unsigned int packed = 0;
  unsigned int space = 0;
  ParseColorString(font.colorText.c_str(), packed, space);
  const unsigned int argb = ToDeviceColor(packed);

  CCA_Font deviceFont(nullptr);
  deviceFont.LoadFont(face, face, kLoadFlags, font.bold ? 700 : 400, font.italic ? 1 : 0);
  CCA_Matrix matrix;
  matrix.Translate(deltaX, static_cast<float>(font.size) + deltaY);
  const float size = static_cast<float>(font.size) / 72.0f * 96.0f;

  device->DrawText(text, text.GetLength(), &deviceFont, size, &matrix, argb);
  device->CompleteText();
  device->CompleteDrawing();
  return 1;
}
