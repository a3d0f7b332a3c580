#include <gtest/gtest.h>

#include <cstring>

#include <vxutility/vxutility.h>

TEST(Version, IsTheReleaseText) {
  ASSERT_NE(GetUtilityVersion(), nullptr);
  EXPECT_STREQ(GetUtilityVersion(), "5.0.23.1024.1305");
  EXPECT_EQ(GetUtilityVersion(), GetUtilityVersion());  // one constant text
}
