#pragma once
/// VXJsonHelper: lenient conversions between JSON values and the base
/// library's numbers, strings, arrays, colours, geometry and paths.
///
/// Readers never fail loudly. Scalar readers return a fixed fallback for
/// what they cannot convert (-1, 0, 0.0f, 0.0, false, ""); array, colour and
/// geometry readers return false, with the output untouched, for a null
/// handle or a value that is not an array. Builders return a new JSON array
/// made from "[]". See docs/json.md for the conversion table.
///
/// Strings convert through the C library (strtoll, atof, printf), so the
/// decimal point is that of the caller's LC_NUMERIC locale; integer text
/// beyond the int range clamps to it on every platform.

#include <vxbase/Array.h>
#include <vxbase/Geometry.h>
#include <vxbase/Matrix.h>
#include <vxbase/Path.h>
#include <vxbase/String.h>
#include <vxbase/Types.h>

#include <vxutility/VXJson.h>
#include <vxutility/VXSharedPtr.h>
#include <vxutility/vxutility_export.h>

class VXUTILITY_EXPORT VXJsonHelper {
 public:
  VXJsonHelper() = default;
  VXJsonHelper(const VXJsonHelper&) = default;
  /// Does nothing but return the object.
  VXJsonHelper& operator=(const VXJsonHelper& other);
  /// Does nothing but return the object.
  VXJsonHelper& operator=(VXJsonHelper&& other);

  /// An int (numbers truncated toward zero, strings through atoi clamped to
  /// the int range, booleans 1/0); -2147483648 for a NaN or a number outside
  /// the int range; -1 for a null handle, null, 64-bit-only integers and
  /// containers.
  static int ToInt(VXSharedPtr<const VXJson> value);
  /// The low 32 bits of the 64-bit truncation (strings: ToInt's int, as
  /// unsigned); 0 for a NaN or a number outside the 64-bit range, and for the
  /// fallback kinds.
  static unsigned int ToUint(VXSharedPtr<const VXJson> value);
  /// A float, the double rounded to nearest (strings through atof): a
  /// double up to half a float step past FLT_MAX gives FLT_MAX, beyond that
  /// an infinity; 0.0f for the fallback kinds.
  static float ToFloat(VXSharedPtr<const VXJson> value);
  /// A double (strings through atof); 0.0 for the fallback kinds.
  static double ToDouble(VXSharedPtr<const VXJson> value);
  /// Numbers compared with zero (NaN is true), strings true only for
  /// exactly "true"; false for the fallback kinds.
  static bool ToBoolean(VXSharedPtr<const VXJson> value);
  /// Integers in decimal, floating-point numbers in fixed point with
  /// `precision` decimals (6 when 0 or negative, at most 1074), strings as
  /// stored, booleans as "true"/"false"; empty for the fallback kinds.
  static CCA_String ToString(VXSharedPtr<const VXJson> value, int precision);
  /// Always an empty array; neither argument is read.
  static CCA_ObjArrayTemplate<CCA_String> ToString(VXSharedPtr<const VXJson> value, const char* text);

  /// Readers of JSON arrays: append one element per JSON element (an element
  /// that is not accepted appends the default: 0, 0.0f or ""). An element is
  /// dropped only when `out` cannot grow. False, `out` untouched, for a null
  /// handle or a value that is not an array.
  static bool ToStringArray(VXSharedPtr<const VXJson> value, CCA_ObjArrayTemplate<CCA_String>& out);
  static bool ToStringArray(VXSharedPtr<const VXJson> value, CCA_ObjArrayTemplate<CCA_WString>& out);  ///< false, output untouched, on failure
  /// Low 8 bits of each element read as a 32-bit unsigned integer.
  static bool ToByteArray(VXSharedPtr<const VXJson> value, CCA_ArrayTemplate<unsigned char>& out);
  /// Low 16 bits of each element read as a 32-bit unsigned integer.
  static bool ToWordArray(VXSharedPtr<const VXJson> value, CCA_ArrayTemplate<unsigned short>& out);
  static bool ToDWordArray(VXSharedPtr<const VXJson> value, CCA_ArrayTemplate<unsigned int>& out);  ///< false, output untouched, on failure
  static bool ToFloatArray(VXSharedPtr<const VXJson> value, CCA_ArrayTemplate<float>& out);  ///< false, output untouched, on failure

  /// Builders of JSON arrays, one element per input element; never null.
  static VXSharedPtr<VXJson> FromByteArray(const CCA_ArrayTemplate<unsigned char>& in);
  static VXSharedPtr<VXJson> FromWordArray(const CCA_ArrayTemplate<unsigned short>& in);  ///< never null
  static VXSharedPtr<VXJson> FromDWordArray(const CCA_ArrayTemplate<unsigned int>& in);  ///< never null
  static VXSharedPtr<VXJson> FromIntArray(const CCA_ArrayTemplate<int>& in);  ///< never null
  static VXSharedPtr<VXJson> FromFloatArray(const CCA_ArrayTemplate<float>& in);  ///< never null
  static VXSharedPtr<VXJson> FromStringArray(const CCA_ObjArrayTemplate<CCA_String>& in);  ///< never null
  /// Each text as UTF-8.
  static VXSharedPtr<VXJson> FromStringArray(const CCA_ObjArrayTemplate<CCA_WString>& in);

  /// [a, r, g, b] from bits 24-31, 16-23, 8-15, 0-7.
  static VXSharedPtr<VXJson> FromARGB(const unsigned int& color);
  /// [c, m, y, k] from bits 24-31, 16-23, 8-15, 0-7.
  static VXSharedPtr<VXJson> FromCMYK(const unsigned int& color);
  /// [r, g, b] from bits 0-7, 8-15, 16-23.
  static VXSharedPtr<VXJson> FromRGB(const unsigned int& color);
  /// [g] from bits 0-7.
  static VXSharedPtr<VXJson> FromGray(const unsigned int& color);
  /// By space: 1 gray, 2 RGB, 3 CMYK/ARGB; a null handle for any other space.
  static VXSharedPtr<VXJson> FromColor(const CA_ColorSpace& space, const unsigned int& color);
  static VXSharedPtr<VXJson> FromMatrix(const CCA_Matrix& m);  ///< never null
  static VXSharedPtr<VXJson> FromPoint(const CCA_Point& p);  ///< never null
  static VXSharedPtr<VXJson> FromSize(const CCA_Size& s);  ///< never null
  static VXSharedPtr<VXJson> FromPointF(const CCA_GPoint& p);  ///< never null
  static VXSharedPtr<VXJson> FromSizeF(const CCA_GSize& s);  ///< never null
  static VXSharedPtr<VXJson> FromRect(const CCA_Rect& r);  ///< never null
  static VXSharedPtr<VXJson> FromRectF(const CCA_GRect& r);  ///< never null
  /// [[x0, y0], [x1, y1], ...]; the point flags are not written.
  static VXSharedPtr<VXJson> FromPath(const CCA_Path& path);

  /// Colour readers: components through ToInt, combined by shifts without
  /// masking (a missing component reads -1 and sets every bit above it).
  /// False, `color` untouched, for a null handle or a non-array.
  static bool ToARGB(VXSharedPtr<const VXJson> value, unsigned int& color);
  static bool ToCMYK(VXSharedPtr<const VXJson> value, unsigned int& color);  ///< false, output untouched, on failure
  static bool ToRGB(VXSharedPtr<const VXJson> value, unsigned int& color);  ///< false, output untouched, on failure
  /// The level copied into bits 0-7, 8-15 and 16-23.
  static bool ToGray(VXSharedPtr<const VXJson> value, unsigned int& color);
  /// By space as FromColor; false, `color` untouched, for another space too.
  static bool ToColor(VXSharedPtr<const VXJson> value, const CA_ColorSpace& space, unsigned int& color);
  /// Geometry readers: components through ToInt or ToFloat in declared
  /// order (missing ones read -1 or 0.0f, extra ones are ignored). False,
  /// output untouched, for a null handle or a non-array.
  static bool ToMatrix(VXSharedPtr<const VXJson> value, CCA_Matrix& m);
  static bool ToPoint(VXSharedPtr<const VXJson> value, CCA_Point& p);  ///< false, output untouched, on failure
  static bool ToSize(VXSharedPtr<const VXJson> value, CCA_Size& s);  ///< false, output untouched, on failure
  static bool ToPointF(VXSharedPtr<const VXJson> value, CCA_GPoint& p);  ///< false, output untouched, on failure
  static bool ToSizeF(VXSharedPtr<const VXJson> value, CCA_GSize& s);  ///< false, output untouched, on failure
  static bool ToRect(VXSharedPtr<const VXJson> value, CCA_Rect& r);  ///< false, output untouched, on failure
  static bool ToRectF(VXSharedPtr<const VXJson> value, CCA_GRect& r);  ///< false, output untouched, on failure
};
