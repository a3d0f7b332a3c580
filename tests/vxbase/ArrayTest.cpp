#include <gtest/gtest.h>

#include <vxbase/Array.h>
#include <vxbase/String.h>

namespace {

struct GrowthCase {
  int count;      // elements (and allocated slots) before the growth
  int growBy;     // grow-by in force
  int newCount;   // requested size
  int allocated;  // expected allocated count afterwards
};

class ArrayGrowth : public ::testing::TestWithParam<GrowthCase> {};

TEST_P(ArrayGrowth, FollowsGrowByOrClampedEighth) {
  const GrowthCase& c = GetParam();
  CCA_ArrayTemplate<int> array;
  if (c.count > 0) {
    ASSERT_TRUE(array.SetSize(c.count, 0));
    ASSERT_EQ(array.GetAllocatedCount(), c.count < 4 ? 4 : c.count);
  }
  ASSERT_TRUE(array.SetSize(c.newCount, c.growBy));
  EXPECT_EQ(array.GetSize(), c.newCount);
  EXPECT_EQ(array.GetAllocatedCount(), c.allocated);
}

INSTANTIATE_TEST_SUITE_P(
    Clamps, ArrayGrowth,
    ::testing::Values(GrowthCase{0, 0, 1, 4},            // empty: at least 4
                      GrowthCase{7, 0, 8, 11},           // 7 / 8 = 0 -> 4
                      GrowthCase{8, 0, 9, 12},           // 8 / 8 = 1 -> 4
                      GrowthCase{40, 0, 41, 45},         // 40 / 8 = 5
                      GrowthCase{8192, 0, 8193, 9216},   // 8192 / 8 = 1024
                      GrowthCase{9000, 0, 9001, 10024},  // 1125 clamped to 1024
                      GrowthCase{8, 10, 9, 18},          // explicit grow-by
                      GrowthCase{8, 3, 100, 100},        // at least the new count
                      GrowthCase{8, -1, 9, 12}));        // -1 keeps the stored 0

TEST(Array, KeepsGrowByWhenGivenMinusOne) {
  CCA_ArrayTemplate<int> array;
  ASSERT_TRUE(array.SetSize(4, 16));
  EXPECT_EQ(array.GetAllocatedCount(), 16);
  ASSERT_TRUE(array.SetSize(17, -1));
  EXPECT_EQ(array.GetGrowBy(), 16);
  EXPECT_EQ(array.GetAllocatedCount(), 16 + 16);
}

TEST(Array, NewElementsAreZeroEvenAfterShrinking) {
  CCA_ArrayTemplate<unsigned> array;
  ASSERT_TRUE(array.SetSize(6));
  for (int i = 0; i < 6; ++i) array[i] = 0xFFFFFFFFu;
  ASSERT_TRUE(array.SetSize(2));
  ASSERT_TRUE(array.SetSize(6));
  EXPECT_EQ(array[1], 0xFFFFFFFFu);
  for (int i = 2; i < 6; ++i) EXPECT_EQ(array[i], 0u) << i;
}

TEST(Array, AddReturnsIndexAndRejectsBadSizes) {
  CCA_ArrayTemplate<double> array;
  EXPECT_EQ(array.Add(1.5), 0);
  EXPECT_EQ(array.Add(2.5), 1);
  EXPECT_FALSE(array.SetSize(-1));
  EXPECT_EQ(array.GetSize(), 2);
  EXPECT_DOUBLE_EQ(array.GetAt(1), 2.5);
  array.RemoveAll();
  EXPECT_EQ(array.GetSize(), 0);
  EXPECT_EQ(array.GetData(), nullptr);
}

TEST(Array, AddingOwnElementSurvivesReallocation) {
  CCA_ObjArrayTemplate<CCA_String> array;
  array.Add(CCA_String("first"));
  for (int i = 0; i < 100; ++i) array.Add(array[0]);  // forces several moves
  EXPECT_EQ(array.GetSize(), 101);
  EXPECT_TRUE(array[100] == "first");
}

TEST(Array, RemoveAtShiftsTail) {
  CCA_ArrayTemplate<int> array;
  for (int i = 0; i < 6; ++i) array.Add(i);
  EXPECT_TRUE(array.RemoveAt(1, 2));
  ASSERT_EQ(array.GetSize(), 4);
  EXPECT_EQ(array[0], 0);
  EXPECT_EQ(array[1], 3);
  EXPECT_EQ(array[3], 5);
  EXPECT_FALSE(array.RemoveAt(4));
}

struct Tracked {
  static int live;
  static int constructed;
  int value;
  Tracked() : value(7) { ++live, ++constructed; }
  Tracked(const Tracked& o) : value(o.value) { ++live, ++constructed; }
  Tracked(Tracked&& o) noexcept : value(o.value) { ++live; }
  Tracked& operator=(const Tracked&) = default;
  ~Tracked() { --live; }
};
int Tracked::live = 0;
int Tracked::constructed = 0;

TEST(ObjArray, ConstructsAndDestroysEachElementOnce) {
  Tracked::live = 0;
  Tracked::constructed = 0;
  {
    CCA_ObjArrayTemplate<Tracked> array;
    ASSERT_TRUE(array.SetSize(3));
    EXPECT_EQ(Tracked::live, 3);
    EXPECT_EQ(array[2].value, 7);  // default-constructed, not just zeroed
    ASSERT_TRUE(array.SetSize(50));  // relocates the first three
    EXPECT_EQ(Tracked::live, 50);
    ASSERT_TRUE(array.SetSize(10));
    EXPECT_EQ(Tracked::live, 10);
    CCA_ObjArrayTemplate<Tracked> copy(array);
    EXPECT_EQ(Tracked::live, 20);
  }
  EXPECT_EQ(Tracked::live, 0);
  EXPECT_EQ(Tracked::constructed, 50 + 10);
}

TEST(ObjArray, CopiesAreIndependent) {
  CCA_ObjArrayTemplate<CCA_String> array;
  array.Add(CCA_String("a"));
  CCA_ObjArrayTemplate<CCA_String> copy = array;
  copy[0] = "changed";
  EXPECT_TRUE(array[0] == "a");
  CCA_ObjArrayTemplate<CCA_String> moved(std::move(copy));
  EXPECT_EQ(copy.GetSize(), 0);
  EXPECT_TRUE(moved[0] == "changed");
}

}  // namespace
