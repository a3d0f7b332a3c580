#include <vxbase/StringConverter.h>

#include <climits>

#include "LocalCodec.h"
#include "Utf8.h"

CCA_WString CCA_StringConverter::utf8_to_unicode(const char* text, int length) {
  CCA_WString result;
  const int n = CA_TextLengthWithin(text, length);
  if (n == 0) return result;
  wchar_t* buffer = result.GetBuffer(n);  // one wide character per byte at most
  if (buffer == nullptr) return result;
  result.ReleaseBuffer(vxbase_utf8::Decode(text, n, buffer));
  return result;
}

CCA_String CCA_StringConverter::unicode_to_utf8(const wchar_t* text, int length) {
  CCA_String result;
  const int n = CA_TextLengthWithin(text, length);
  if (n == 0) return result;
  const long long size = vxbase_utf8::EncodedBound(text, n);
  if (size > INT_MAX) return result;  // more than one string can hold
  char* buffer = result.GetBuffer(static_cast<int>(size));
  if (buffer == nullptr) return result;
  result.ReleaseBuffer(vxbase_utf8::Encode(text, n, buffer));
  return result;
}

CCA_WString CCA_StringConverter::local_to_unicode(const char* text, int length) {
  const int n = CA_TextLengthWithin(text, length);
  if (vxbase_local::LocalIsUtf8()) return utf8_to_unicode(text, n);
  CCA_WString result;
  if (n == 0) return result;
  wchar_t* buffer = result.GetBuffer(n);
  if (buffer == nullptr) return result;
  result.ReleaseBuffer(vxbase_local::DecodeLocal(text, n, buffer));
  return result;
}

CCA_String CCA_StringConverter::unicode_to_local(const wchar_t* text, int length) {
  const int n = CA_TextLengthWithin(text, length);
  if (vxbase_local::LocalIsUtf8()) return unicode_to_utf8(text, n);
  CCA_String result;
  if (n == 0) return result;
  long long size = vxbase_local::EncodedLocalBound(n);
  if (size > INT_MAX) size = vxbase_local::EncodedLocalSize(text, n);  // the bound may be far off
  if (size > INT_MAX) return result;  // more than one string can hold
  char* buffer = result.GetBuffer(static_cast<int>(size));
  if (buffer == nullptr) return result;
  result.ReleaseBuffer(vxbase_local::EncodeLocal(text, n, buffer));
  return result;
}

#if defined(_WIN32)
#include "windows/LocalCodec.inc"
#else
#include "unix/LocalCodec.inc"
#endif
