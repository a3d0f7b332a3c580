#pragma once
// The filter between the reader and the document it fills: it refuses
// containers nested deeper than kJsonMaxDepth, so the recursive reader stays
// within a bounded stack, and numbers the reader turned into an infinity
// (digits that carry a number past the double range, whatever its written
// exponent), so every tree the parser accepts can be written back whole. A
// refused event stops the reader.

#include <cmath>

#include "json/JsonStorage.h"

/// Passes every event on to `Handler`, counting open containers.
template <typename Handler>
class JsonDepthGuard {
 public:
  explicit JsonDepthGuard(Handler& handler) : m_handler(handler) {}

  /// True when the reader was stopped at a number beyond the double range.
  bool NumberTooBig() const { return m_numberTooBig; }

  bool Null() { return m_handler.Null(); }
  bool Bool(bool b) { return m_handler.Bool(b); }
  bool Int(int i) { return m_handler.Int(i); }
  bool Uint(unsigned u) { return m_handler.Uint(u); }
  bool Int64(int64_t i) { return m_handler.Int64(i); }
  bool Uint64(uint64_t u) { return m_handler.Uint64(u); }
  bool Double(double d) {
    if (!std::isfinite(d)) {
      m_numberTooBig = true;
      return false;
    }
    return m_handler.Double(d);
  }
  bool RawNumber(const char* str, rapidjson::SizeType length, bool copy) {
    return m_handler.RawNumber(str, length, copy);
  }
  bool String(const char* str, rapidjson::SizeType length, bool copy) {
    return m_handler.String(str, length, copy);
  }
  bool Key(const char* str, rapidjson::SizeType length, bool copy) { return m_handler.Key(str, length, copy); }
  bool StartObject() { return Open() && m_handler.StartObject(); }
  bool EndObject(rapidjson::SizeType members) {
    --m_depth;
    return m_handler.EndObject(members);
  }
  bool StartArray() { return Open() && m_handler.StartArray(); }
  bool EndArray(rapidjson::SizeType elements) {
    --m_depth;
    return m_handler.EndArray(elements);
  }

 private:
  bool Open() { return ++m_depth <= kJsonMaxDepth; }

  Handler& m_handler;
  unsigned m_depth = 0;
  bool m_numberTooBig = false;
};
