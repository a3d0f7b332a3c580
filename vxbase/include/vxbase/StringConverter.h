#pragma once
/// Conversions between UTF-8, the local multibyte encoding and wide text.
///
/// Wide text carries one code point per wchar_t on Linux (UTF-16 on
/// Windows). "Local" is the encoding of the current LC_CTYPE locale; the
/// plain C/POSIX locale counts as UTF-8. A length of -1 (any negative
/// length) means "up to the NUL"; an explicit length stops at the first NUL
/// inside it. Invalid input becomes U+FFFD (wide) or '?' (local text that
/// cannot hold a character); a null text gives an empty result.

#include <vxbase/String.h>
#include <vxbase/vxbase_export.h>

class VXBASE_EXPORT CCA_StringConverter {
 public:
  /// Local multibyte text to wide text.
  static CCA_WString local_to_unicode(const char* text, int length = -1);
  /// Wide text to local multibyte text.
  static CCA_String unicode_to_local(const wchar_t* text, int length = -1);
  /// UTF-8 to wide text.
  static CCA_WString utf8_to_unicode(const char* text, int length = -1);
  /// Wide text to UTF-8.
  static CCA_String unicode_to_utf8(const wchar_t* text, int length = -1);
};
