#include <gtest/gtest.h>

#include <vxbase/String.h>

namespace {

// The same operations on both string kinds.
template <typename S>
struct Text;
template <>
struct Text<CCA_String> {
  using Char = char;
  static const char* Of(const char* narrow, std::string& keep) { return keep = narrow, keep.c_str(); }
};
template <>
struct Text<CCA_WString> {
  using Char = wchar_t;
  static const wchar_t* Of(const char* narrow, std::wstring& keep) {
    keep.assign(narrow, narrow + std::char_traits<char>::length(narrow));
    return keep.c_str();
  }
};

template <typename S>
class StringKinds : public ::testing::Test {
 protected:
  using Char = typename Text<S>::Char;
  const Char* T(const char* narrow) { return Text<S>::Of(narrow, keep_[next_++ % 8]); }
  std::basic_string<Char> keep_[8];
  int next_ = 0;
};

using Kinds = ::testing::Types<CCA_String, CCA_WString>;
TYPED_TEST_SUITE(StringKinds, Kinds);

TYPED_TEST(StringKinds, LengthRules) {
  EXPECT_EQ(TypeParam(this->T("hello")).GetLength(), 5);
  EXPECT_EQ(TypeParam(this->T("hello"), 3).GetLength(), 3);
  EXPECT_EQ(TypeParam(nullptr, 4).GetLength(), 0);
  TypeParam empty;
  EXPECT_TRUE(empty.IsEmpty());
  EXPECT_NE(static_cast<const typename TestFixture::Char*>(empty), nullptr);
  EXPECT_EQ(empty.GetLast(), 0);
  EXPECT_EQ(TypeParam(this->T("abc")).GetLast(), 'c');
}

TYPED_TEST(StringKinds, BufferCarriesNulCharacters) {
  TypeParam s(this->T("ab"));
  auto* buffer = s.GetBuffer(5);
  ASSERT_NE(buffer, nullptr);
  EXPECT_EQ(buffer[0], 'a');  // contents are kept
  buffer[2] = 0;
  buffer[3] = 'x';
  buffer[4] = 0;
  s.ReleaseBuffer(5);
  EXPECT_EQ(s.GetLength(), 5);
  EXPECT_EQ(s[3], 'x');
  EXPECT_EQ(s.GetLast(), 0);
  TypeParam copy(s);
  EXPECT_EQ(copy.GetLength(), 5);
  EXPECT_TRUE(copy == s);
  EXPECT_FALSE(copy == this->T("ab"));  // the NUL and what follows count
  s.ReleaseBuffer(-1);                  // up to the first NUL
  EXPECT_EQ(s.GetLength(), 2);
}

TYPED_TEST(StringKinds, EditsInPlace) {
  TypeParam s(this->T("a/b/c"));
  EXPECT_EQ(s.Replace('/', '\\'), 2);
  EXPECT_TRUE(s == this->T("a\\b\\c"));
  EXPECT_EQ(s.Delete(s.GetLength() - 1, 1), 4);
  EXPECT_TRUE(s == this->T("a\\b\\"));
  EXPECT_EQ(s.Delete(1, 100), 1);  // count clamped to the end
  EXPECT_EQ(s.Delete(5, 1), 1);    // index past the end: nothing
  EXPECT_EQ(s.Insert(99, ':'), 2); // index clamped to the end
  EXPECT_EQ(s.Insert(0, '['), 3);
  EXPECT_TRUE(s == this->T("[a:"));
  s = this->T("new");
  s += s;  // appending itself
  EXPECT_TRUE(s == this->T("newnew"));
  s = static_cast<const typename TestFixture::Char*>(nullptr);
  EXPECT_TRUE(s.IsEmpty());
}

TYPED_TEST(StringKinds, ComparisonOrdersByCharacterThenLength) {
  EXPECT_TRUE(TypeParam(this->T("abc")) < TypeParam(this->T("abd")));
  EXPECT_TRUE(TypeParam(this->T("ab")) < TypeParam(this->T("abc")));
  EXPECT_TRUE(TypeParam(this->T("abc")) != this->T("abcd"));
  EXPECT_TRUE(this->T("abc") == TypeParam(this->T("abc")));
}

}  // namespace
