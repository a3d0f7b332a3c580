// VXJsonHelper's conversions on arbitrary input. Each input either becomes
// colours, geometry, numbers and strings that each builder writes and its
// reader must give back, or is parsed as JSON text on whose root and first
// children every reader runs, with results that must agree with one another.

#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>

#include <fuzzer/FuzzedDataProvider.h>

#include <vxutility/VXJsonFactory.h>
#include <vxutility/VXJsonHelper.h>

extern "C" const char* __ubsan_default_options() {
  return "halt_on_error=1:print_stacktrace=1:suppressions=" VX_UBSAN_SUPPRESSIONS;
}

namespace {

using H = VXJsonHelper;
using ConstJsonPtr = VXSharedPtr<const VXJson>;

void Require(bool condition) {
  if (!condition) std::abort();
}

/// Equal, or both NaN.
bool Same(float a, float b) { return a == b || (std::isnan(a) && std::isnan(b)); }

float AnyFloat(FuzzedDataProvider& data) {
  const uint32_t bits = data.ConsumeIntegral<uint32_t>();
  float value;
  std::memcpy(&value, &bits, sizeof value);
  return value;
}

void ColoursRoundTrip(unsigned int color) {
  unsigned int back = 0;
  Require(H::ToARGB(H::FromARGB(color), back) && back == color);
  Require(H::ToCMYK(H::FromCMYK(color), back) && back == color);
  Require(H::ToRGB(H::FromRGB(color), back) && back == (color & 0xFFFFFFu));
  Require(H::ToGray(H::FromGray(color), back) && back == (color & 0xFFu) * 0x010101u);
  const unsigned int expected[] = {0, (color & 0xFFu) * 0x010101u, color & 0xFFFFFFu, color};
  for (int space = 1; space <= 3; ++space) {
    const CA_ColorSpace cs = static_cast<CA_ColorSpace>(space);
    Require(H::ToColor(H::FromColor(cs, color), cs, back) && back == expected[space]);
  }
}

void GeometryRoundTrips(FuzzedDataProvider& data) {
  CCA_Matrix m(AnyFloat(data), AnyFloat(data), AnyFloat(data), AnyFloat(data), AnyFloat(data), AnyFloat(data));
  CCA_Matrix backM;
  Require(H::ToMatrix(H::FromMatrix(m), backM));
  Require(Same(m.a, backM.a) && Same(m.b, backM.b) && Same(m.c, backM.c) && Same(m.d, backM.d) &&
          Same(m.e, backM.e) && Same(m.f, backM.f));
  const CCA_Rect r{data.ConsumeIntegral<int>(), data.ConsumeIntegral<int>(), data.ConsumeIntegral<int>(),
                   data.ConsumeIntegral<int>()};
  CCA_Rect backR;
  Require(H::ToRect(H::FromRect(r), backR) && std::memcmp(&r, &backR, sizeof r) == 0);
  const CCA_GPoint p{AnyFloat(data), AnyFloat(data)};
  CCA_GPoint backP;
  Require(H::ToPointF(H::FromPointF(p), backP) && Same(p.x, backP.x) && Same(p.y, backP.y));
  CCA_Path path;
  path.MoveTo(p.x, p.y);
  path.LineTo(m.a, m.b);
  path.CubicBezierTo(m.c, m.d, m.e, m.f, p.y, p.x);
  VXSharedPtr<VXJson> points = H::FromPath(path);
  Require(points->GetSize() == path.GetPointCount());
  for (int i = 0; i < points->GetSize(); ++i) {
    CCA_GPoint point;
    int flags = 0;
    path.GetPoint(i, point, flags);
    Require(H::ToPointF(points->GetAt(i), backP) && Same(point.x, backP.x) && Same(point.y, backP.y));
  }
}

void ArraysRoundTrip(FuzzedDataProvider& data) {
  const int count = data.ConsumeIntegralInRange(0, 8);
  CCA_ArrayTemplate<int> ints;
  CCA_ArrayTemplate<unsigned char> bytes;
  CCA_ArrayTemplate<float> floats;
  CCA_ObjArrayTemplate<CCA_String> strings;
  for (int i = 0; i < count; ++i) {
    ints.Add(data.ConsumeIntegral<int>());
    bytes.Add(data.ConsumeIntegral<unsigned char>());
    floats.Add(AnyFloat(data));
    strings.Add(CCA_String(data.ConsumeRandomLengthString(12).c_str()));
  }
  CCA_ArrayTemplate<unsigned int> dwords;
  CCA_ArrayTemplate<unsigned char> backBytes;
  CCA_ArrayTemplate<float> backFloats;
  CCA_ObjArrayTemplate<CCA_String> backStrings;
  Require(H::ToDWordArray(H::FromIntArray(ints), dwords) && H::ToByteArray(H::FromByteArray(bytes), backBytes));
  Require(H::ToFloatArray(H::FromFloatArray(floats), backFloats) &&
          H::ToStringArray(H::FromStringArray(strings), backStrings));
  Require(dwords.GetSize() == count && backBytes.GetSize() == count && backFloats.GetSize() == count &&
          backStrings.GetSize() == count);
  for (int i = 0; i < count; ++i) {
    Require(dwords[i] == static_cast<unsigned int>(ints[i]) && backBytes[i] == bytes[i]);
    // Element reads accept floating-point numbers within +-3.4028234e38 only.
    const bool readable = std::fabs(floats[i]) <= 3.4028234e38;
    Require(backFloats[i] == (readable ? floats[i] : 0.0f));
    Require(backStrings[i] == strings[i]);
  }
}

/// Every reader on `value`; results that must agree are compared.
void ReadAll(const ConstJsonPtr& value, int precision) {
  const double d = H::ToDouble(value);
  Require(Same(H::ToFloat(value), static_cast<float>(d)));
  H::ToInt(value);
  H::ToUint(value);
  H::ToBoolean(value);
  const CCA_String text = H::ToString(value, precision);
  Require(!value || value->GetType() != VXJsonType_String || std::strcmp(text.c_str(), value->GetString()) == 0);
  Require(H::ToString(value, "x").GetSize() == 0);
  const bool isArray = value && value->GetType() == VXJsonType_Array;
  const int size = isArray ? value->GetSize() : 0;
  CCA_ArrayTemplate<unsigned char> bytes;
  CCA_ArrayTemplate<unsigned short> words;
  CCA_ArrayTemplate<unsigned int> dwords;
  CCA_ArrayTemplate<float> floats;
  CCA_ObjArrayTemplate<CCA_String> strings;
  CCA_ObjArrayTemplate<CCA_WString> wide;
  Require(H::ToByteArray(value, bytes) == isArray && bytes.GetSize() == size);
  Require(H::ToWordArray(value, words) == isArray && words.GetSize() == size);
  Require(H::ToDWordArray(value, dwords) == isArray && dwords.GetSize() == size);
  Require(H::ToFloatArray(value, floats) == isArray && floats.GetSize() == size);
  Require(H::ToStringArray(value, strings) == isArray && strings.GetSize() == size);
  Require(H::ToStringArray(value, wide) == isArray && wide.GetSize() == size);
  for (int i = 0; i < size; ++i) Require(bytes[i] == (dwords[i] & 0xFFu) && words[i] == (dwords[i] & 0xFFFFu));
  unsigned int argb = 1, cmyk = 2, rgb = 3, gray = 4, color = 5;
  Require(H::ToARGB(value, argb) == isArray && H::ToCMYK(value, cmyk) == isArray && (!isArray || argb == cmyk));
  Require(H::ToRGB(value, rgb) == isArray && H::ToGray(value, gray) == isArray);
  const unsigned int bySpace[] = {5, gray, rgb, argb};
  for (int space = 0; space <= 3; ++space) {
    Require(H::ToColor(value, static_cast<CA_ColorSpace>(space), color) == (isArray && space > 0));
    Require(color == (isArray && space > 0 ? bySpace[space] : 5u));
  }
  CCA_Matrix m;
  CCA_Point point;
  CCA_Size sizeRecord;
  CCA_GPoint gpoint;
  CCA_GSize gsize;
  CCA_Rect rect;
  CCA_GRect grect;
  Require(H::ToMatrix(value, m) == isArray && H::ToPoint(value, point) == isArray);
  Require(H::ToSize(value, sizeRecord) == isArray && H::ToPointF(value, gpoint) == isArray);
  Require(H::ToSizeF(value, gsize) == isArray && H::ToRect(value, rect) == isArray);
  Require(H::ToRectF(value, grect) == isArray);
  if (isArray) Require(Same(m.a, H::ToFloat(value->GetAt(0))) && rect.left == H::ToInt(value->GetAt(0)));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  FuzzedDataProvider provider(data, size);
  // One part per input keeps each run short.
  switch (provider.ConsumeIntegralInRange(0, 3)) {
    case 0: ColoursRoundTrip(provider.ConsumeIntegral<unsigned int>()); return 0;
    case 1: GeometryRoundTrips(provider); return 0;
    case 2: ArraysRoundTrip(provider); return 0;
    default: break;
  }
  const int precision = provider.ConsumeIntegralInRange(-2, 1100);
  const std::string text = provider.ConsumeRemainingBytesAsString();
  VXSharedPtr<VXJson> root = VXJsonFactory::ParseJsonString(text.data(), static_cast<unsigned int>(text.size()), nullptr);
  ReadAll(root, precision);
  if (!root) return 0;
  for (int i = 0; i < root->GetSize() && i < 8; ++i) ReadAll(root->GetAt(i), precision);
  CCA_ObjArrayTemplate<CCA_String> names = root->GetMemberNames();
  for (int i = 0; i < names.GetSize() && i < 8; ++i) ReadAll(root->GetMember(names[i].c_str()), precision);
  return 0;
}
