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

struct Case {
  const char* text;
  Pages expected;
  int pageCount = 10;
  int offset = 0;
};

void ExpectAll(Parser parser, const std::vector<Case>& cases) {
  for (const Case& c : cases) {
    CCA_ArrayTemplate<int> pages;
    parser(c.text, c.pageCount, pages, c.offset);
    EXPECT_EQ(Contents(pages), c.expected) << (c.text ? c.text : "(null)") << " of " << c.pageCount;
  }
}

const Pages kAllOfTen = {0, 1, 2, 3, 4, 5, 6, 7, 8, 9}, kEven = {1, 3, 5, 7, 9}, kOdd = {0, 2, 4, 6, 8};

TEST(ParsePageIndexRange, ReadsKeywordsAndLists) {
  ExpectAll(ParsePageIndexRange, {
      {nullptr, kAllOfTen}, {"", kAllOfTen}, {"all", kAllOfTen}, {"ALL", kAllOfTen}, {"All", kAllOfTen},
      {"even", kEven}, {"EVEN", kEven}, {"Even", kEven}, {"odd", kOdd}, {"ODD", kOdd}, {"Odd", kOdd},
      // Other spellings and surrounding spaces are not keywords but a list.
      {"aLL", {0}}, {" all", {0}}, {"Even ", {0}}, {"x", {0}},
      {"0,2,4-6", {0, 2, 4, 5, 6}}, {" 1 , 3 - 5 ", {1, 3, 4, 5}}, {"1-3-5", {1, 2, 3, 4, 5}}, {"2x-4y", {2, 3, 4}},
      // Early ends: a value not above the last, a page past the count, an empty token, a bad range.
      {"3,1", {3}}, {"3,3", {3}}, {"1-3,2-5", {1, 2, 3}}, {"1-3,3", {1, 2, 3}}, {"1-3,4", {1, 2, 3, 4}},
      {"8-12", {8, 9}}, {"9,10,11", {9}}, {"1,,5", {1}}, {",1", {}}, {"1,2,", {1, 2}}, {"0-5", {0}, 1},
      {"2-2", {}}, {"5-", {}}, {"5-,6", {}}, {"-2", {}}, {"-", {0}}, {"4-2", {}}, {"1,2", {1, 2}, 10, 100},
      // A dash after a space makes a range from 0; an end past int wraps modulo 2^32.
      {" -3", {0, 1, 2, 3}}, {"+2", {2}}, {"0-4294967298", {0, 1, 2}}, {"7-2147483647", {7, 8, 9}},
  });
}

TEST(ParsePageNumberRange, ReadsOneBasedNumbers) {
  ExpectAll(ParsePageNumberRange, {
      {"1,3-4", {0, 2, 3}}, {"10", {9}}, {"0", {}}, {"11", {}}, {"0-3", {}}, {"1-3,3", {0, 1, 2}},
      {"9-12", {8, 9}}, {"-1", {}}, {"2,1", {1}}, {"1-5", {0, 1}, 2}, {"1,2", {0, 1}, 10, 100},
  });
}

// The offset moves even and odd only; page counts below 1, 1 and 2.
TEST(PageRanges, KeywordsWithOffsetsAndSmallCounts) {
  for (Parser parser : {ParsePageIndexRange, ParsePageNumberRange}) {
    ExpectAll(parser, {
        {"odd", {100, 102, 104, 106, 108}, 10, 100}, {"even", {101, 103, 105, 107, 109}, 10, 100},
        {"even", kOdd, 10, -1}, {"all", kAllOfTen, 10, 100}, {nullptr, {0, 1, 2}, 3, 100},
        {"odd", {INT_MAX}, 2, INT_MAX}, {"even", {}, 1, 7}, {"odd", {7}, 1, 7}, {"all", {0}, 1},
        {"even", {1}, 2}, {"odd", {0}, 2}, {"all", {0, 1}, 2},
    });
    for (const char* text : {"all", "even", "odd", "1", "0-1", static_cast<const char*>(nullptr)}) {
      ExpectAll(parser, {{text, {}, 0}, {text, {}, -5}});
    }
  }
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
  EXPECT_TRUE(IDoSomething().DoSomething(12345));
}

}  // namespace
