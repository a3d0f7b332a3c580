// The value interface's own code: its destructor (which anchors its vtable in
// the library) and the names of the classifications.

#include <vxutility/VXJson.h>

VXJson::~VXJson() {}

const char* GetJsonTypeString(VXJsonType type) {
  static const char* const kNames[] = {"null",   "int",    "uint",    "int64", "uint64", "float",
                                       "double", "string", "boolean", "array", "object"};
  const unsigned index = static_cast<unsigned>(type);
  return index < sizeof(kNames) / sizeof(kNames[0]) ? kNames[index] : "unknown";
}
