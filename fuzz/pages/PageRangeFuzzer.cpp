// Parses arbitrary selection texts with both parsers. The first bytes pick
// the page count and offset. Every list index must lie inside the document,
// and list indices must rise strictly after the content already present.

#include <cstdint>
#include <cstdlib>
#include <set>
#include <string>

#include <vxutility/PageRange.h>

namespace {

void Check(void (*parser)(const char*, int, CCA_ArrayTemplate<int>&, int), const char* text, int pageCount,
           int offset) {
  CCA_ArrayTemplate<int> pages;
  pages.Add(-12345);  // earlier content stays first
  parser(text, pageCount, pages, offset);
  if (pages.GetSize() < 1 || pages[0] != -12345 || (pageCount < 1 && pages.GetSize() != 1)) std::abort();
  static const std::set<std::string> kKeywords = {"", "all", "ALL", "All", "even", "EVEN", "Even", "odd", "ODD", "Odd"};
  if (kKeywords.count(text) != 0) return;  // only lists are bounded: even and odd carry the offset
  for (int i = 1; i < pages.GetSize(); ++i) {
    if (pages[i] < 0 || pages[i] >= pageCount || (i > 1 && pages[i] <= pages[i - 1])) std::abort();
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size < 2) return 0;
  const int pageCount = static_cast<int>(data[0]) - 8;  // a few empty documents too
  const int offset = static_cast<int>(static_cast<std::int8_t>(data[1]));
  const std::string text(reinterpret_cast<const char*>(data + 2), size - 2);
  Check(ParsePageIndexRange, text.c_str(), pageCount, offset);
  Check(ParsePageNumberRange, text.c_str(), pageCount, offset);
  return 0;
}
