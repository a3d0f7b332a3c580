// Counting, layout and release order of VXSharedPtr and its control blocks.

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

TEST(SharedPtr, CountsCopiesOfCountedNullAndDefaultHandles) {
  VXSharedPtr<Base> counted(static_cast<Base*>(nullptr));
  EXPECT_EQ(TakeByValue(counted), 2);
  EXPECT_TRUE(!counted && counted.use_count() == 1);
  VXSharedPtr<Base> none;
  EXPECT_EQ(VXSharedPtr<Base>(none).use_count(), 0);
}

TEST(SharedPtr, ConversionAndAssignmentReleaseEachObjectOnce) {
  int deaths[2] = {0, 0};
  VXSharedPtr<Tracked> derived(new Tracked(&deaths[0]));
  VXSharedPtr<const Base> base(derived);
  VXSharedPtr<const Base>& alias = base;
  base = alias;
  EXPECT_TRUE(base.get() == derived.get() && derived.use_count() == 2);
  derived = VXSharedPtr<Tracked>();
  EXPECT_EQ(deaths[0], 0);
  base = VXSharedPtr<Tracked>(new Tracked(&deaths[1]));
  EXPECT_EQ(deaths[0] * 10 + deaths[1], 10);  // deleted once, through the virtual destructor
  void* const* fields = reinterpret_cast<void* const*>(&base);  // the object, then the block
  auto* block = static_cast<sp_counted_impl<Tracked>*>(fields[1]);
  EXPECT_TRUE(fields[0] == base.get() && block->ownedPtr == base.get() && block->useCount == 1);
  static_assert(sizeof(VXSharedPtr<Base>) == 2 * sizeof(void*), "two pointers");
}

}  // namespace
