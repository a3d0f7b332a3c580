// The lenient readers under a caller's numeric locale: a private, non-UTF-8
// locale made with localedef, whose decimal point is a comma.

#include <sys/stat.h>

#include <clocale>
#include <cstdlib>
#include <string>

#include <vxutility/VXJsonHelper.h>

#include "json/JsonTestUtil.h"

namespace {

using H = VXJsonHelper;

TEST(JsonHelper, StringsFollowTheCallersNumericLocale) {
  // A private, non-UTF-8 locale whose decimal point is a comma.
  const std::string dir = testing::TempDir() + "vx-json-locale";
  mkdir(dir.c_str(), 0700);
  const std::string build = "localedef -i de_DE -f ISO-8859-1 " + dir + "/de_DE.ISO-8859-1 >/dev/null 2>&1";
  if (std::system(build.c_str()) != 0) GTEST_SKIP() << "localedef could not build de_DE.ISO-8859-1";
  setenv("LOCPATH", dir.c_str(), 1);
  const std::string previous = std::setlocale(LC_NUMERIC, nullptr);
  ASSERT_NE(std::setlocale(LC_NUMERIC, "de_DE.ISO-8859-1"), nullptr);
  const double point = H::ToDouble(Element("\"2.5\"")), comma = H::ToDouble(Element("\"2,5\""));
  const std::string text = Str(H::ToString(Element("2.5"), 2));
  const int integer = H::ToInt(Element("\"1.999\""));
  std::setlocale(LC_NUMERIC, previous.c_str());
  unsetenv("LOCPATH");
  EXPECT_EQ(point, 2.0);
  EXPECT_EQ(comma, 2.5);
  EXPECT_EQ(text, "2,50");
  EXPECT_EQ(integer, 1);
  EXPECT_EQ(Str(H::ToString(Element("2.5"), 2)), "2.50");  // the caller's locale is back
}

}  // namespace
