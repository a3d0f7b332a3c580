// Readers and builders of JSON arrays over base-library arrays.

#include <vxutility/VXJsonHelper.h>

#include <vxbase/StringConverter.h>

#include "json/JsonArrayBuilder.h"

using namespace json_arrays;

bool VXJsonHelper::ToStringArray(VXSharedPtr<const VXJson> value, CCA_ObjArrayTemplate<CCA_String>& out) {
  return AppendElements(value, out, [](const VXJson& v, int i) { return CCA_String(v.GetStringAt(i, ""), -1); });
}

bool VXJsonHelper::ToStringArray(VXSharedPtr<const VXJson> value, CCA_ObjArrayTemplate<CCA_WString>& out) {
  return AppendElements(value, out, [](const VXJson& v, int i) {
    return CCA_StringConverter::utf8_to_unicode(v.GetStringAt(i, ""), -1);
  });
}

bool VXJsonHelper::ToByteArray(VXSharedPtr<const VXJson> value, CCA_ArrayTemplate<unsigned char>& out) {
  return AppendElements(value, out,
                        [](const VXJson& v, int i) { return static_cast<unsigned char>(v.GetUintAt(i, 0)); });
}

bool VXJsonHelper::ToWordArray(VXSharedPtr<const VXJson> value, CCA_ArrayTemplate<unsigned short>& out) {
  return AppendElements(value, out,
                        [](const VXJson& v, int i) { return static_cast<unsigned short>(v.GetUintAt(i, 0)); });
}

bool VXJsonHelper::ToDWordArray(VXSharedPtr<const VXJson> value, CCA_ArrayTemplate<unsigned int>& out) {
  return AppendElements(value, out, [](const VXJson& v, int i) { return v.GetUintAt(i, 0); });
}

bool VXJsonHelper::ToFloatArray(VXSharedPtr<const VXJson> value, CCA_ArrayTemplate<float>& out) {
  return AppendElements(value, out, [](const VXJson& v, int i) { return v.GetFloatAt(i, 0.0f); });
}

namespace {

void InsertUint(VXJson& array, int i, unsigned int element) { array.InsertUintAt(i, element); }

}  // namespace

VXSharedPtr<VXJson> VXJsonHelper::FromByteArray(const CCA_ArrayTemplate<unsigned char>& in) {
  return BuildArray(in, InsertUint);
}

VXSharedPtr<VXJson> VXJsonHelper::FromWordArray(const CCA_ArrayTemplate<unsigned short>& in) {
  return BuildArray(in, InsertUint);
}

VXSharedPtr<VXJson> VXJsonHelper::FromDWordArray(const CCA_ArrayTemplate<unsigned int>& in) {
  return BuildArray(in, InsertUint);
}

VXSharedPtr<VXJson> VXJsonHelper::FromIntArray(const CCA_ArrayTemplate<int>& in) {
  return BuildArray(in, [](VXJson& array, int i, int element) { array.InsertIntAt(i, element); });
}

VXSharedPtr<VXJson> VXJsonHelper::FromFloatArray(const CCA_ArrayTemplate<float>& in) {
  return BuildArray(in, [](VXJson& array, int i, float element) { array.InsertFloatAt(i, element); });
}

VXSharedPtr<VXJson> VXJsonHelper::FromStringArray(const CCA_ObjArrayTemplate<CCA_String>& in) {
  return BuildArray(in, [](VXJson& array, int i, const CCA_String& element) {
    array.InsertStringAt(i, element.c_str());
  });
}

VXSharedPtr<VXJson> VXJsonHelper::FromStringArray(const CCA_ObjArrayTemplate<CCA_WString>& in) {
  return BuildArray(in, [](VXJson& array, int i, const CCA_WString& element) {
    array.InsertStringAt(i, CCA_StringConverter::unicode_to_utf8(element.c_str(), -1).c_str());
  });
}
