// Counting and release order of VXSharedPtr and its control blocks.

#include <gtest/gtest.h>

#include <vxutility/VXSharedPtr.h>

namespace {

struct Base {
  virtual ~Base() = default;
};

struct Tracked : Base {
  explicit Tracked(int* deaths) : m_deaths(deaths) {}
  ~Tracked() override { ++*m_deaths; }
  int* m_deaths;
};

int TakeByValue(VXSharedPtr<Base> handle) { return handle.use_count(); }

TEST(SharedPtr, CountedNullHandleCountsCopiesAndFreesOnce) {
  VXSharedPtr<Base> a(static_cast<Base*>(nullptr));
  EXPECT_FALSE(a);
  EXPECT_EQ(a.use_count(), 1);
  {
    VXSharedPtr<Base> b(a);
    VXSharedPtr<Base> c(b);
    EXPECT_EQ(a.use_count(), 3);
  }
  EXPECT_EQ(a.use_count(), 1);
}

TEST(SharedPtr, DefaultHandleHasNoBlock) {
  VXSharedPtr<Base> a;
  VXSharedPtr<Base> b(a);
  EXPECT_EQ(a.use_count(), 0);
  EXPECT_EQ(b.use_count(), 0);
  EXPECT_FALSE(b);
}

TEST(SharedPtr, ConversionSharesOneBlockAndDeletesThroughVirtualDestructor) {
  int deaths = 0;
  VXSharedPtr<Tracked> derived(new Tracked(&deaths));
  {
    VXSharedPtr<const Base> base(derived);
    EXPECT_EQ(derived.use_count(), 2);
    EXPECT_EQ(base.get(), derived.get());
    derived = VXSharedPtr<Tracked>();
    EXPECT_EQ(base.use_count(), 1);
    EXPECT_EQ(deaths, 0);
  }
  EXPECT_EQ(deaths, 1);
}

TEST(SharedPtr, SelfAssignmentKeepsCountAndObject) {
  int deaths = 0;
  VXSharedPtr<Base> a(new Tracked(&deaths));
  VXSharedPtr<Base>& alias = a;
  a = alias;
  EXPECT_EQ(a.use_count(), 1);
  EXPECT_EQ(deaths, 0);
}

TEST(SharedPtr, AssignmentReleasesPreviousObject) {
  int firstDeaths = 0;
  int secondDeaths = 0;
  VXSharedPtr<Base> a(new Tracked(&firstDeaths));
  VXSharedPtr<Base> b(new Tracked(&secondDeaths));
  a = b;
  EXPECT_EQ(firstDeaths, 1);
  EXPECT_EQ(secondDeaths, 0);
  EXPECT_EQ(b.use_count(), 2);
}

TEST(SharedPtr, PassingByValueCountsForTheCall) {
  int deaths = 0;
  VXSharedPtr<Base> a(new Tracked(&deaths));
  EXPECT_EQ(TakeByValue(a), 2);
  EXPECT_EQ(a.use_count(), 1);
}

TEST(SharedPtr, LayoutIsObjectThenBlock) {
  static_assert(sizeof(VXSharedPtr<Base>) == 2 * sizeof(void*), "two pointers");
  int deaths = 0;
  VXSharedPtr<Base> a(new Tracked(&deaths));
  void* const* fields = reinterpret_cast<void* const*>(&a);
  EXPECT_EQ(fields[0], static_cast<void*>(a.get()));
  auto* block = static_cast<sp_counted_impl<Base>*>(fields[1]);
  EXPECT_EQ(block->useCount, 1);
  EXPECT_EQ(block->ownedPtr, a.get());
}

}  // namespace
