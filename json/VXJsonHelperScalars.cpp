// Lenient scalar readers of VXJsonHelper.

#include <vxutility/VXJsonHelper.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "json/JsonNumberConversions.h"

using namespace json_numbers;

namespace {

/// Digits past the 1074th decimal place of a double are always zero.
constexpr int kMaxPrecision = 1074;

/// `value` written with the printf `format`, however long the text.
CCA_String FormatNumber(const char* format, double value) {
  const int length = std::snprintf(nullptr, 0, format, value);
  CCA_String text;
  if (length <= 0) return text;
  char* buffer = text.GetBuffer(length);
  if (buffer == nullptr) return text;
  std::snprintf(buffer, static_cast<std::size_t>(length) + 1, format, value);
  text.ReleaseBuffer(length);
  return text;
}

/// "%0.<precision>f" (or "lf"), or "%f"/"%lf" when precision is 0 or less.
CCA_String FixedPoint(double value, int precision, bool isDouble) {
  char format[32];
  if (precision > 0) {
    if (precision > kMaxPrecision) precision = kMaxPrecision;
    std::snprintf(format, sizeof format, isDouble ? "%s%dlf" : "%s%df", "%0.", precision);
  } else {
    std::snprintf(format, sizeof format, "%s", isDouble ? "%lf" : "%f");
  }
  return FormatNumber(format, value);
}

}  // namespace

VXJsonHelper& VXJsonHelper::operator=(const VXJsonHelper&) { return *this; }

VXJsonHelper& VXJsonHelper::operator=(VXJsonHelper&&) { return *this; }

int VXJsonHelper::ToInt(VXSharedPtr<const VXJson> value) {
  if (!value) return -1;
  switch (value->GetType()) {
    case VXJsonType_Int: return value->GetInt(nullptr);
    case VXJsonType_Uint: return static_cast<int>(value->GetUint(nullptr));
    case VXJsonType_Float: return TruncateToInt(value->GetFloat(nullptr));
    case VXJsonType_Double: return TruncateToInt(value->GetDouble(nullptr));
    case VXJsonType_String: return ClampedAtoi(value->GetString(nullptr));
    case VXJsonType_Boolean: return value->GetBoolean(nullptr) ? 1 : 0;
    default: return -1;
  }
}

unsigned int VXJsonHelper::ToUint(VXSharedPtr<const VXJson> value) {
  if (!value) return 0;
  switch (value->GetType()) {
    case VXJsonType_Int: return static_cast<unsigned int>(value->GetInt(nullptr));
    case VXJsonType_Uint: return value->GetUint(nullptr);
    case VXJsonType_Float: return TruncateToUint(value->GetFloat(nullptr));
    case VXJsonType_Double: return TruncateToUint(value->GetDouble(nullptr));
    case VXJsonType_String: return static_cast<unsigned int>(ClampedAtoi(value->GetString(nullptr)));
    case VXJsonType_Boolean: return value->GetBoolean(nullptr) ? 1u : 0u;
    default: return 0;
  }
}

// Every kind's double is exact or rounds once, so narrowing it gives what a
// direct conversion to float would.
float VXJsonHelper::ToFloat(VXSharedPtr<const VXJson> value) { return NarrowToFloat(ToDouble(value)); }

double VXJsonHelper::ToDouble(VXSharedPtr<const VXJson> value) {
  if (!value) return 0.0;
  switch (value->GetType()) {
    case VXJsonType_Int: return static_cast<double>(value->GetInt(nullptr));
    case VXJsonType_Uint: return static_cast<double>(value->GetUint(nullptr));
    case VXJsonType_Float: return static_cast<double>(value->GetFloat(nullptr));
    case VXJsonType_Double: return value->GetDouble(nullptr);
    case VXJsonType_String: return std::atof(value->GetString(nullptr));
    case VXJsonType_Boolean: return value->GetBoolean(nullptr) ? 1.0 : 0.0;
    default: return 0.0;
  }
}

bool VXJsonHelper::ToBoolean(VXSharedPtr<const VXJson> value) {
  if (!value) return false;
  switch (value->GetType()) {
    case VXJsonType_Int: return value->GetInt(nullptr) != 0;
    case VXJsonType_Uint: return value->GetUint(nullptr) != 0;
    case VXJsonType_Float: return value->GetFloat(nullptr) != 0.0f;  // NaN is true
    case VXJsonType_Double: return value->GetDouble(nullptr) != 0.0;
    case VXJsonType_String: return std::strcmp(value->GetString(nullptr), "true") == 0;
    case VXJsonType_Boolean: return value->GetBoolean(nullptr);
    default: return false;
  }
}

CCA_String VXJsonHelper::ToString(VXSharedPtr<const VXJson> value, int precision) {
  if (!value) return CCA_String();
  char digits[16];
  switch (value->GetType()) {
    case VXJsonType_Int:
      std::snprintf(digits, sizeof digits, "%d", value->GetInt(nullptr));
      return CCA_String(digits);
    case VXJsonType_Uint:
      std::snprintf(digits, sizeof digits, "%u", value->GetUint(nullptr));
      return CCA_String(digits);
    case VXJsonType_Float: return FixedPoint(value->GetFloat(nullptr), precision, false);
    case VXJsonType_Double: return FixedPoint(value->GetDouble(nullptr), precision, true);
    case VXJsonType_String: return CCA_String(value->GetString(nullptr), -1);
    case VXJsonType_Boolean: return CCA_String(value->GetBoolean(nullptr) ? "true" : "false");
    default: return CCA_String();
  }
}

CCA_ObjArrayTemplate<CCA_String> VXJsonHelper::ToString(VXSharedPtr<const VXJson>, const char*) {
  return CCA_ObjArrayTemplate<CCA_String>();
}
