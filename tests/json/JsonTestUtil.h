#pragma once
// Small helpers shared by the JSON suites.

#include <string>

#include <gtest/gtest.h>

#include <vxutility/VXJsonFactory.h>

/// Parses NUL-terminated text that the test knows to be valid.
inline VXSharedPtr<VXJson> Parse(const char* text) {
  return VXJsonFactory::ParseJsonString(text, 0xFFFFFFFFu, nullptr);
}

inline std::string Text(const VXSharedPtr<VXJson>& value) {
  return std::string(value->ToJsonString().c_str());
}
inline std::string Text(const VXSharedPtr<const VXJson>& value) {
  return std::string(value->ToJsonString().c_str());
}

/// Runs `action` and returns what it printed on standard output.
template <typename Action>
std::string CapturedStdout(Action action) {
  testing::internal::CaptureStdout();
  action();
  std::fflush(stdout);
  return testing::internal::GetCapturedStdout();
}
