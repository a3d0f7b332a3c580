// Colours, geometry records and paths as flat JSON arrays of numbers.

#include <vxutility/VXJsonHelper.h>

#include <cstring>
#include <initializer_list>
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

/// Component k read leniently as a field of type `Field`.
template <typename Field>
Field Component(const VXSharedPtr<const VXJson>& value, int k);
template <>
int Component<int>(const VXSharedPtr<const VXJson>& value, int k) {
  return VXJsonHelper::ToInt(value->GetAt(k));
}
template <>
float Component<float>(const VXSharedPtr<const VXJson>& value, int k) {
  return VXJsonHelper::ToFloat(value->GetAt(k));
}

/// Component k read leniently as an int, reinterpreted as 32 unsigned bits.
unsigned int IntBits(const VXSharedPtr<const VXJson>& value, int k) {
  return static_cast<unsigned int>(Component<int>(value, k));
}

/// Stores components 0, 1, ... into `fields` of `record`, in order; false,
/// `record` untouched, for a null handle or a non-array.
template <typename Record, typename Field>
bool ReadFields(const VXSharedPtr<const VXJson>& value, Record& record, std::initializer_list<Field Record::*> fields) {
  if (!IsArray(value)) return false;
  int k = 0;
  for (Field Record::*field : fields) record.*field = Component<Field>(value, k++);
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
  return ReadFields(value, m, {&CCA_Matrix::a, &CCA_Matrix::b, &CCA_Matrix::c, &CCA_Matrix::d, &CCA_Matrix::e,
                               &CCA_Matrix::f});
}

bool VXJsonHelper::ToPoint(VXSharedPtr<const VXJson> value, CCA_Point& p) {
  return ReadFields(value, p, {&CCA_Point::x, &CCA_Point::y});
}

bool VXJsonHelper::ToSize(VXSharedPtr<const VXJson> value, CCA_Size& s) {
  return ReadFields(value, s, {&CCA_Size::width, &CCA_Size::height});
}

bool VXJsonHelper::ToPointF(VXSharedPtr<const VXJson> value, CCA_GPoint& p) {
  return ReadFields(value, p, {&CCA_GPoint::x, &CCA_GPoint::y});
}

bool VXJsonHelper::ToSizeF(VXSharedPtr<const VXJson> value, CCA_GSize& s) {
  return ReadFields(value, s, {&CCA_GSize::width, &CCA_GSize::height});
}

bool VXJsonHelper::ToRect(VXSharedPtr<const VXJson> value, CCA_Rect& r) {
  return ReadFields(value, r, {&CCA_Rect::left, &CCA_Rect::top, &CCA_Rect::right, &CCA_Rect::bottom});
}

bool VXJsonHelper::ToRectF(VXSharedPtr<const VXJson> value, CCA_GRect& r) {
  return ReadFields(value, r, {&CCA_GRect::left, &CCA_GRect::top, &CCA_GRect::right, &CCA_GRect::bottom});
}
