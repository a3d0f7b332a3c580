#include <gtest/gtest.h>

#include <climits>
#include <vector>

#include <vxutility/PageRange.h>

namespace {

using Pages = std::vector<int>;
using Parser = void (*)(const char*, int, CCA_ArrayTemplate<int>&, int);

Pages Contents(const CCA_ArrayTemplate<int>& array) {
  return Pages(array.GetData(), array.GetData() + array.GetSize());
}

Pages Parse(Parser parser, const char* text, int pageCount, int offset = 0) {
  CCA_ArrayTemplate<int> pages;
  parser(text, pageCount, pages, offset);
  return Contents(pages);
}

struct ListCase {
  const char* text;
  Pages expected;
};

const Pages kAllOfTen = {0, 1, 2, 3, 4, 5, 6, 7, 8, 9};

TEST(ParsePageIndexRange, ReadsKeywordsAndLists) {
  const ListCase cases[] = {
      {nullptr, kAllOfTen},
      {"", kAllOfTen},
      {"all", kAllOfTen},
      {"ALL", kAllOfTen},
      {"All", kAllOfTen},
      {"even", {1, 3, 5, 7, 9}},
      {"EVEN", {1, 3, 5, 7, 9}},
      {"Even", {1, 3, 5, 7, 9}},
      {"odd", {0, 2, 4, 6, 8}},
      {"ODD", {0, 2, 4, 6, 8}},
      {"Odd", {0, 2, 4, 6, 8}},
      {"0,2,4-6", {0, 2, 4, 5, 6}},
      {" 1 , 3 - 5 ", {1, 3, 4, 5}},
      {"3,1", {3}},
      {"3,3", {3}},
      {"1-3,2-5", {1, 2, 3}},
      {"1-3,3", {1, 2, 3}},
      {"1-3,4", {1, 2, 3, 4}},
      {"8-12", {8, 9}},
      {"9,10,11", {9}},
      {"1,,5", {1}},
      {",1", {}},
      {"1,2,", {1, 2}},
      {"2-2", {}},
      {"5-", {}},
      {"5-,6", {}},
      {"-2", {}},
      {"-", {0}},
      {"4-2", {}},
      {"aLL", {0}},
      {" all", {0}},
      {"Even ", {0}},
      {"x", {0}},
      {"1-3-5", {1, 2, 3, 4, 5}},
      {"2x-4y", {2, 3, 4}},
      {" -3", {0, 1, 2, 3}},  // the dash is not the first character: a range from 0
      {"+2", {2}},
      {"0-4294967298", {0, 1, 2}},  // the end wraps modulo 2^32
      {"7-2147483647", {7, 8, 9}},
  };
  for (const ListCase& c : cases) {
    EXPECT_EQ(Parse(ParsePageIndexRange, c.text, 10), c.expected) << (c.text ? c.text : "(null)");
  }
}

TEST(ParsePageNumberRange, ReadsOneBasedNumbers) {
  const ListCase cases[] = {
      {"1,3-4", {0, 2, 3}}, {"10", {9}},       {"0", {}},         {"11", {}},
      {"0-3", {}},          {"1-3,3", {0, 1, 2}}, {"9-12", {8, 9}}, {"even", {1, 3, 5, 7, 9}},
      {"odd", {0, 2, 4, 6, 8}}, {"all", kAllOfTen}, {"-1", {}},   {"2,1", {1}},
  };
  for (const ListCase& c : cases) EXPECT_EQ(Parse(ParsePageNumberRange, c.text, 10), c.expected) << c.text;
}

TEST(PageRanges, OffsetMovesEvenAndOddOnly) {
  for (Parser parser : {ParsePageIndexRange, ParsePageNumberRange}) {
    EXPECT_EQ(Parse(parser, "odd", 10, 100), Pages({100, 102, 104, 106, 108}));
    EXPECT_EQ(Parse(parser, "even", 10, 100), Pages({101, 103, 105, 107, 109}));
    EXPECT_EQ(Parse(parser, "even", 10, -1), Pages({0, 2, 4, 6, 8}));
    EXPECT_EQ(Parse(parser, "all", 10, 100), kAllOfTen);
    EXPECT_EQ(Parse(parser, nullptr, 3, 100), Pages({0, 1, 2}));
    EXPECT_EQ(Parse(parser, "odd", 2, INT_MAX), Pages({INT_MAX}));
  }
  EXPECT_EQ(Parse(ParsePageIndexRange, "1,2", 10, 100), Pages({1, 2}));
  EXPECT_EQ(Parse(ParsePageNumberRange, "1,2", 10, 100), Pages({0, 1}));
}

TEST(PageRanges, SmallPageCounts) {
  for (Parser parser : {ParsePageIndexRange, ParsePageNumberRange}) {
    for (const char* text : {"all", "even", "odd", "1", "0-1", static_cast<const char*>(nullptr)}) {
      EXPECT_EQ(Parse(parser, text, 0), Pages()) << (text ? text : "(null)");
      EXPECT_EQ(Parse(parser, text, -5), Pages()) << (text ? text : "(null)");
    }
    EXPECT_EQ(Parse(parser, "even", 1, 7), Pages());
    EXPECT_EQ(Parse(parser, "odd", 1, 7), Pages({7}));
    EXPECT_EQ(Parse(parser, "all", 1), Pages({0}));
    EXPECT_EQ(Parse(parser, "even", 2), Pages({1}));
    EXPECT_EQ(Parse(parser, "odd", 2), Pages({0}));
    EXPECT_EQ(Parse(parser, "all", 2), Pages({0, 1}));
  }
  EXPECT_EQ(Parse(ParsePageIndexRange, "0-5", 1), Pages({0}));
  EXPECT_EQ(Parse(ParsePageNumberRange, "1-5", 2), Pages({0, 1}));
}

TEST(PageRanges, AppendAfterExistingContent) {
  CCA_ArrayTemplate<int> pages;
  pages.Add(42);
  pages.Add(1);
  ParsePageIndexRange("1,2", 10, pages, 0);
  ParsePageNumberRange("odd", 3, pages, 0);
  EXPECT_EQ(Contents(pages), Pages({42, 1, 1, 2, 0, 2}));
}

TEST(FillPageArray, AppendsPagesInRange) {
  CCA_ArrayTemplate<int> pages;
  FillPageArray fill(3, &pages);
  IDoSomething& callback = fill;
  EXPECT_TRUE(callback.DoSomething(2));
  EXPECT_TRUE(callback.DoSomething(0));
  EXPECT_FALSE(callback.DoSomething(3));
  EXPECT_TRUE(callback.DoSomething(-1));  // every page
  EXPECT_EQ(Contents(pages), Pages({2, 0, 0, 1, 2}));

  IDoSomething plain;
  EXPECT_TRUE(plain.DoSomething(12345));
}

}  // namespace
