#pragma once
// The start of every array the helpers build, and the appending loop of the
// array readers.

#include <vxutility/VXJsonFactory.h>

namespace json_arrays {

/// A new, empty JSON array.
inline VXSharedPtr<VXJson> NewArray() { return VXJsonFactory::ParseJsonString("[]", static_cast<unsigned int>(-1), nullptr); }

/// Appends `read(value, i)` for each element i of the JSON array to `out`,
/// growing it one element at a time; an element is dropped only when `out`
/// cannot grow. False, `out` untouched, for a null handle or a non-array.
template <typename Array, typename Read>
bool AppendElements(const VXSharedPtr<const VXJson>& value, Array& out, Read read) {
  if (!value || value->GetType() != VXJsonType_Array) return false;
  const int count = value->GetSize();
  for (int i = 0; i < count; ++i) {
    auto element = read(*value, i);
    const int at = out.GetSize();
    if (!out.SetSize(at + 1, -1)) continue;
    out[at] = element;
  }
  return true;
}

/// Appends `insert(array, i, in[i])` for every element of `in` to a new array.
template <typename Array, typename Insert>
VXSharedPtr<VXJson> BuildArray(const Array& in, Insert insert) {
  VXSharedPtr<VXJson> array = NewArray();
  for (int i = 0; i < in.GetSize(); ++i) insert(*array, i, in[i]);
  return array;
}

}  // namespace json_arrays
