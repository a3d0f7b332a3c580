// Colours, geometry records and paths as flat JSON arrays of numbers.

#include <vxutility/VXJsonHelper.h>

#include <cstring>
#include <type_traits>

#include "json/JsonArrayBuilder.h"

using namespace json_arrays;

namespace {

/// A new array of the given integer components, in order.
VXSharedPtr<VXJson> IntArray(std::initializer_list<int> components) {
  VXSharedPtr<VXJson> array = NewArray();
  int i = 0;
  for (int component : components) array->InsertIntAt(i++, component);
  return array;
}

/// A new array of the given float components, in order.
VXSharedPtr<VXJson> FloatArray(std::initializer_list<float> components) {
  VXSharedPtr<VXJson> array = NewArray();
  int i = 0;
  for (float component : components) array->InsertFloatAt(i++, component);
  return array;
}

/// Byte `shift / 8` of `color`, 0..255.
int ColorByte(unsigned int color, int shift) { return static_cast<int>((color >> shift) & 0xFFu); }

/// The space as a number. Callers pass spaces the enumeration does not name,
/// so its bytes are read rather than the enumeration itself.
int SpaceNumber(const CA_ColorSpace& space) {
  std::underlying_type_t<CA_ColorSpace> number;
  std::memcpy(&number, &space, sizeof number);
  return static_cast<int>(number);
}

bool IsArray(const VXSharedPtr<const VXJson>& value) { return value && value->GetType() == VXJsonType_Array; }

/// Component k read leniently as an int, reinterpreted as 32 unsigned bits.
unsigned int IntBits(const VXSharedPtr<const VXJson>& value, int k) {
  return static_cast<unsigned int>(VXJsonHelper::ToInt(value->GetAt(k)));
}

float FloatAt(const VXSharedPtr<const VXJson>& value, int k) { return VXJsonHelper::ToFloat(value->GetAt(k)); }

/// Reads `count` int components into consecutive int fields.
bool ReadInts(const VXSharedPtr<const VXJson>& value, int* fields, int count) {
  if (!IsArray(value)) return false;
  for (int k = 0; k < count; ++k) fields[k] = VXJsonHelper::ToInt(value->GetAt(k));
  return true;
}

/// Reads `count` float components into consecutive float fields.
bool ReadFloats(const VXSharedPtr<const VXJson>& value, float* fields, int count) {
  if (!IsArray(value)) return false;
  for (int k = 0; k < count; ++k) fields[k] = FloatAt(value, k);
  return true;
}

}  // namespace

VXSharedPtr<VXJson> VXJsonHelper::FromARGB(const unsigned int& color) {
  return IntArray({ColorByte(color, 24), ColorByte(color, 16), ColorByte(color, 8), ColorByte(color, 0)});
}

VXSharedPtr<VXJson> VXJsonHelper::FromCMYK(const unsigned int& color) { return FromARGB(color); }

VXSharedPtr<VXJson> VXJsonHelper::FromRGB(const unsigned int& color) {
  return IntArray({ColorByte(color, 0), ColorByte(color, 8), ColorByte(color, 16)});
}

VXSharedPtr<VXJson> VXJsonHelper::FromGray(const unsigned int& color) { return IntArray({ColorByte(color, 0)}); }

VXSharedPtr<VXJson> VXJsonHelper::FromColor(const CA_ColorSpace& space, const unsigned int& color) {
  switch (SpaceNumber(space)) {
    case CA_ColorSpace_Gray: return FromGray(color);
    case CA_ColorSpace_RGB: return FromRGB(color);
    case CA_ColorSpace_CMYK: return FromARGB(color);
    default: return VXSharedPtr<VXJson>(nullptr);
  }
}

// Components are combined without masking: one outside 0..255 spills into
// its neighbours, a missing one (-1) sets every bit above it.
bool VXJsonHelper::ToARGB(VXSharedPtr<const VXJson> value, unsigned int& color) {
  if (!IsArray(value)) return false;
  const unsigned int e0 = IntBits(value, 0), e1 = IntBits(value, 1), e2 = IntBits(value, 2), e3 = IntBits(value, 3);
  color = (((((e0 << 8) | e1) << 8) | e2) << 8) | e3;
  return true;
}

bool VXJsonHelper::ToCMYK(VXSharedPtr<const VXJson> value, unsigned int& color) { return ToARGB(value, color); }

bool VXJsonHelper::ToRGB(VXSharedPtr<const VXJson> value, unsigned int& color) {
  if (!IsArray(value)) return false;
  const unsigned int e0 = IntBits(value, 0), e1 = IntBits(value, 1), e2 = IntBits(value, 2);
  color = (((e2 << 8) | e1) << 8) | e0;
  return true;
}

bool VXJsonHelper::ToGray(VXSharedPtr<const VXJson> value, unsigned int& color) {
  if (!IsArray(value)) return false;
  const unsigned int g = IntBits(value, 0);
  color = (((g << 8) | g) << 8) | g;
  return true;
}

bool VXJsonHelper::ToColor(VXSharedPtr<const VXJson> value, const CA_ColorSpace& space, unsigned int& color) {
  if (!IsArray(value)) return false;
  switch (SpaceNumber(space)) {
    case CA_ColorSpace_Gray: return ToGray(value, color);
    case CA_ColorSpace_RGB: return ToRGB(value, color);
    case CA_ColorSpace_CMYK: return ToARGB(value, color);
    default: return false;
  }
}

VXSharedPtr<VXJson> VXJsonHelper::FromMatrix(const CCA_Matrix& m) { return FloatArray({m.a, m.b, m.c, m.d, m.e, m.f}); }

VXSharedPtr<VXJson> VXJsonHelper::FromPoint(const CCA_Point& p) { return IntArray({p.x, p.y}); }

VXSharedPtr<VXJson> VXJsonHelper::FromSize(const CCA_Size& s) { return IntArray({s.width, s.height}); }

VXSharedPtr<VXJson> VXJsonHelper::FromPointF(const CCA_GPoint& p) { return FloatArray({p.x, p.y}); }

VXSharedPtr<VXJson> VXJsonHelper::FromSizeF(const CCA_GSize& s) { return FloatArray({s.width, s.height}); }

VXSharedPtr<VXJson> VXJsonHelper::FromRect(const CCA_Rect& r) { return IntArray({r.left, r.top, r.right, r.bottom}); }

VXSharedPtr<VXJson> VXJsonHelper::FromRectF(const CCA_GRect& r) {
  return FloatArray({r.left, r.top, r.right, r.bottom});
}

VXSharedPtr<VXJson> VXJsonHelper::FromPath(const CCA_Path& path) {
  VXSharedPtr<VXJson> outer = NewArray();
  CCA_GPoint point;
  int flags = 0;
  for (int i = 0; i < path.GetPointCount(); ++i) {
    path.GetPoint(i, point, flags);
    outer->InsertValueAt(i, FloatArray({point.x, point.y}));
  }
  return outer;
}

bool VXJsonHelper::ToMatrix(VXSharedPtr<const VXJson> value, CCA_Matrix& m) {
  float fields[6];
  if (!ReadFloats(value, fields, 6)) return false;
  m = CCA_Matrix(fields[0], fields[1], fields[2], fields[3], fields[4], fields[5]);
  return true;
}

bool VXJsonHelper::ToPoint(VXSharedPtr<const VXJson> value, CCA_Point& p) {
  int fields[2];
  if (!ReadInts(value, fields, 2)) return false;
  p.x = fields[0];
  p.y = fields[1];
  return true;
}

bool VXJsonHelper::ToSize(VXSharedPtr<const VXJson> value, CCA_Size& s) {
  int fields[2];
  if (!ReadInts(value, fields, 2)) return false;
  s.width = fields[0];
  s.height = fields[1];
  return true;
}

bool VXJsonHelper::ToPointF(VXSharedPtr<const VXJson> value, CCA_GPoint& p) {
  float fields[2];
  if (!ReadFloats(value, fields, 2)) return false;
  p.x = fields[0];
  p.y = fields[1];
  return true;
}

bool VXJsonHelper::ToSizeF(VXSharedPtr<const VXJson> value, CCA_GSize& s) {
  float fields[2];
  if (!ReadFloats(value, fields, 2)) return false;
  s.width = fields[0];
  s.height = fields[1];
  return true;
}

bool VXJsonHelper::ToRect(VXSharedPtr<const VXJson> value, CCA_Rect& r) {
  int fields[4];
  if (!ReadInts(value, fields, 4)) return false;
  r = CCA_Rect{fields[0], fields[1], fields[2], fields[3]};
  return true;
}

bool VXJsonHelper::ToRectF(VXSharedPtr<const VXJson> value, CCA_GRect& r) {
  float fields[4];
  if (!ReadFloats(value, fields, 4)) return false;
  r = CCA_GRect{fields[0], fields[1], fields[2], fields[3]};
  return true;
}
