#pragma once
/// VXJsonFactory: JSON text into a value tree, and a value back into text.

#include <vxbase/String.h>

#include <vxutility/VXJson.h>
#include <vxutility/VXSharedPtr.h>
#include <vxutility/vxutility_export.h>

class VXUTILITY_EXPORT VXJsonFactory {
 public:
  /// Options of ParseJsonString; reserved, nothing is read from them.
  struct ParseConfig {};
  /// Options of BuildJsonString; reserved, nothing is read from them.
  struct BuildConfig {};

  VXJsonFactory() = default;
  VXJsonFactory(const VXJsonFactory&) = default;
  /// Does nothing but return the object.
  VXJsonFactory& operator=(const VXJsonFactory& other);
  /// Does nothing but return the object.
  VXJsonFactory& operator=(VXJsonFactory&& other);

  /// Parses at most `length` bytes of UTF-8 `text` (a NUL ends it earlier;
  /// 0xFFFFFFFF for NUL-terminated text). Null or empty text, or length 0,
  /// gives an empty object. On a syntax error prints
  /// "Parse json error. code=%d\n"; when the top value is not an array or
  /// an object prints "Only allow array and object\n"; either way returns a
  /// null handle. Nesting deeper than 512 containers is error code 16.
  static VXSharedPtr<VXJson> ParseJsonString(const char* text, unsigned int length,
                                             const ParseConfig* config);

  /// The compact JSON text of `value` (as its ToJsonString gives it); empty
  /// for a null handle.
  static CCA_String BuildJsonString(VXSharedPtr<const VXJson> value, const BuildConfig* config);
};
