#pragma once
// Small helpers shared by the JSON suites.

#include <cstdlib>
#include <string>

#include <gtest/gtest.h>

#include <vxutility/VXJsonFactory.h>

using JsonPtr = VXSharedPtr<VXJson>;
using ConstJsonPtr = VXSharedPtr<const VXJson>;

/// Parses NUL-terminated text that the test knows to be valid.
inline VXSharedPtr<VXJson> Parse(const char* text) {
  return VXJsonFactory::ParseJsonString(text, 0xFFFFFFFFu, nullptr);
}

/// The single element of `[text]`, kept alive by a clone of it; for "=x",
/// the double std::strtod reads from x (so NaN and infinities too).
inline JsonPtr Element(const std::string& text) {
  JsonPtr array = Parse(text[0] == '=' ? "[]" : ("[" + text + "]").c_str());
  if (text[0] == '=') array->InsertDoubleAt(0, std::strtod(text.c_str() + 1, nullptr));
  return array->GetAt(0)->Clone();
}

inline std::string Str(const CCA_String& text) { return text.c_str(); }

template <typename T>
std::string Text(const VXSharedPtr<T>& value) {
  return Str(value->ToJsonString());
}

/// Runs `action` and returns what it printed on standard output.
template <typename Action>
std::string CapturedStdout(Action action) {
  testing::internal::CaptureStdout();
  action();
  std::fflush(stdout);
  return testing::internal::GetCapturedStdout();
}
