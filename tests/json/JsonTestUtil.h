#pragma once
// Small helpers shared by the JSON suites.

#include <string>

#include <gtest/gtest.h>

#include <vxutility/VXJsonFactory.h>

using JsonPtr = VXSharedPtr<VXJson>;
using ConstJsonPtr = VXSharedPtr<const VXJson>;

/// Parses NUL-terminated text that the test knows to be valid.
inline VXSharedPtr<VXJson> Parse(const char* text) {
  return VXJsonFactory::ParseJsonString(text, 0xFFFFFFFFu, nullptr);
}

/// The single element of `[text]`, kept alive by a clone of it.
inline VXSharedPtr<VXJson> Element(const std::string& text) {
  return Parse(("[" + text + "]").c_str())->GetAt(0)->Clone();
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
