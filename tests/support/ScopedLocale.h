#pragma once
// Runs a test under another LC_CTYPE locale. The non-UTF-8 locales are
// compiled at test time into the directory LOCPATH names (the test_locales
// fixture); a locale that cannot be set fails the test, never skips it.

#include <gtest/gtest.h>

#include <clocale>
#include <string>

class ScopedCtypeLocale {
 public:
  explicit ScopedCtypeLocale(const char* name) : previous_(std::setlocale(LC_CTYPE, nullptr)) {
    ok_ = std::setlocale(LC_CTYPE, name) != nullptr;
    EXPECT_TRUE(ok_) << "locale " << name << " is not available (LOCPATH: "
                     << (std::getenv("LOCPATH") ? std::getenv("LOCPATH") : "unset") << ")";
  }
  ~ScopedCtypeLocale() { std::setlocale(LC_CTYPE, previous_.c_str()); }
  ScopedCtypeLocale(const ScopedCtypeLocale&) = delete;
  ScopedCtypeLocale& operator=(const ScopedCtypeLocale&) = delete;

  bool ok() const { return ok_; }

 private:
  std::string previous_;
  bool ok_ = false;
};

/// The locales the tests compile (scripts/make-locales.sh).
constexpr const char* kLatin1Locale = "en_US.ISO-8859-1";
constexpr const char* kAsciiLocale = "en_US.ASCII";
constexpr const char* kGb18030Locale = "zh_CN.GB18030";
constexpr const char* kShiftJisLocale = "ja_JP.SJIS";
