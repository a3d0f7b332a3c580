#pragma once
// The scalar kinds of a JSON value: which stored values each kind accepts,
// how an accepted value reads, and how a value of the kind is stored.

#include <cstring>

#include <vxbase/Types.h>

#include "json/JsonStorage.h"

namespace json_kinds {

/// Largest magnitude a floating-point number may have to read as a float.
constexpr double kFloatReadLimit = 3.4028234e38;

/// What every kind can store; strings narrow it.
struct StorableKind {
  template <typename T>
  static bool Storable(const T&) {
    return true;
  }
};

/// Stores `read()` in `out` when the value is `accepted`; false otherwise, with
/// `out` untouched.
template <typename T, typename Read>
bool ReadWhen(bool accepted, T& out, Read read) {
  if (!accepted) return false;
  out = read();
  return true;
}

struct IntKind : StorableKind {
  using Type = int;
  static bool Read(const JsonValue& v, int& out) { return ReadWhen(v.IsInt(), out, [&] { return v.GetInt(); }); }
  static JsonValue Make(int value, JsonPool&) { return JsonValue(value); }
};

struct UintKind : StorableKind {
  using Type = unsigned int;
  static bool Read(const JsonValue& v, unsigned int& out) {
    return ReadWhen(v.IsUint(), out, [&] { return v.GetUint(); }) ||
           ReadWhen(v.IsInt(), out, [&] { return static_cast<unsigned int>(v.GetInt()); });
  }
  static JsonValue Make(unsigned int value, JsonPool&) { return JsonValue(value); }
};

struct Int64Kind : StorableKind {
  using Type = int64;
  static bool Read(const JsonValue& v, int64& out) {
    return ReadWhen(v.IsInt64(), out, [&] { return static_cast<int64>(v.GetInt64()); });
  }
  static JsonValue Make(int64 value, JsonPool&) { return JsonValue(static_cast<int64_t>(value)); }
};

struct Uint64Kind : StorableKind {
  using Type = uint64;
  static bool Read(const JsonValue& v, uint64& out) {
    return ReadWhen(v.IsUint64(), out, [&] { return static_cast<uint64>(v.GetUint64()); }) ||
           ReadWhen(v.IsInt64(), out, [&] { return static_cast<uint64>(v.GetInt64()); });
  }
  static JsonValue Make(uint64 value, JsonPool&) { return JsonValue(static_cast<uint64_t>(value)); }
};

struct StringKind {
  using Type = const char*;
  /// False for a text longer than a value can hold; null stores "".
  static bool Storable(const char* value) {
    rapidjson::SizeType length = 0;
    return value == nullptr || JsonLength(value, length);
  }
  static bool Read(const JsonValue& v, const char*& out) {
    return ReadWhen(v.IsString(), out, [&] { return v.GetString(); });
  }
  /// Copies a Storable `value` up to its NUL into the pool; null stores "".
  static JsonValue Make(const char* value, JsonPool& pool) {
    if (value == nullptr) value = "";
    return JsonValue(value, static_cast<rapidjson::SizeType>(std::strlen(value)), pool);
  }
};

struct BooleanKind : StorableKind {
  using Type = bool;
  static bool Read(const JsonValue& v, bool& out) { return ReadWhen(v.IsBool(), out, [&] { return v.GetBool(); }); }
  static JsonValue Make(bool value, JsonPool&) { return JsonValue(value); }
};

struct FloatKind : StorableKind {
  using Type = float;
  static bool Read(const JsonValue& v, float& out) {
    if (v.IsDouble()) {
      const double d = v.GetDouble();
      // NaN fails both comparisons, so it is never narrowed.
      return ReadWhen(d >= -kFloatReadLimit && d <= kFloatReadLimit, out, [&] { return static_cast<float>(d); });
    }
    return ReadWhen(v.IsInt(), out, [&] { return static_cast<float>(v.GetInt()); });
  }
  static JsonValue Make(float value, JsonPool&) { return JsonValue(static_cast<double>(value)); }
};

struct DoubleKind : StorableKind {
  using Type = double;
  static bool Read(const JsonValue& v, double& out) {
    return ReadWhen(v.IsDouble(), out, [&] { return v.GetDouble(); }) ||
           ReadWhen(v.IsInt(), out, [&] { return static_cast<double>(v.GetInt()); });
  }
  static JsonValue Make(double value, JsonPool&) { return JsonValue(value); }
};

/// The value a failed GetX returns: zero of the kind ("" for strings).
template <typename Kind>
typename Kind::Type Missing() {
  return typename Kind::Type();
}
template <>
inline const char* Missing<StringKind>() {
  return "";
}

}  // namespace json_kinds
