// Conversions between the local encoding, wide text and UTF-8: the base
// library's converter does the transcoding; these hand the result over as
// standard strings, up to its first NUL.

#include <vxutility/Encoding.h>

#include <vxbase/StringConverter.h>

std::wstring Local2Unicode(const char* text, int length) {
  return std::wstring(static_cast<const wchar_t*>(CCA_StringConverter::local_to_unicode(text, length)));
}

std::wstring Utf82Unicode(const char* text, int length) {
  return std::wstring(static_cast<const wchar_t*>(CCA_StringConverter::utf8_to_unicode(text, length)));
}

std::string Unicode2Local(const wchar_t* text, int length) {
  return std::string(static_cast<const char*>(CCA_StringConverter::unicode_to_local(text, length)));
}

std::string Unicode2Utf8(const wchar_t* text, int length) {
  return std::string(static_cast<const char*>(CCA_StringConverter::unicode_to_utf8(text, length)));
}

std::string Local2Utf8(const char* text, int length) {
  const CCA_WString wide = CCA_StringConverter::local_to_unicode(text, length);
  if (wide.IsEmpty()) return std::string();
  return std::string(static_cast<const char*>(CCA_StringConverter::unicode_to_utf8(wide, -1)));
}

std::string Utf82Local(const char* text, int length) {
  const CCA_WString wide = CCA_StringConverter::utf8_to_unicode(text, length);
  if (wide.IsEmpty()) return std::string();
  return std::string(static_cast<const char*>(CCA_StringConverter::unicode_to_local(wide, -1)));
}
