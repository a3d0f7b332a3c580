// Page selection texts to page indices. The list is read in place, token by
// token, so a call allocates nothing beyond the growth of the caller's array.

#include <vxutility/PageRange.h>

#include <cstring>

#include "encoding/AsciiDecimal.h"

namespace {

enum class Selection { List, All, Even, Odd };

bool IsOneOf(const char* text, const char* lower, const char* upper, const char* capitalised) {
  return std::strcmp(text, lower) == 0 || std::strcmp(text, upper) == 0 || std::strcmp(text, capitalised) == 0;
}

/// The keyword `text` spells, in one of its three exact forms.
Selection ReadSelection(const char* text) {
  if (text == nullptr || text[0] == '\0' || IsOneOf(text, "all", "ALL", "All")) return Selection::All;
  if (IsOneOf(text, "even", "EVEN", "Even")) return Selection::Even;
  if (IsOneOf(text, "odd", "ODD", "Odd")) return Selection::Odd;
  return Selection::List;
}

/// Appends first + offset, first + 2 + offset, ... for the indices below
/// `pageCount`; the sum wraps like 32-bit arithmetic instead of overflowing.
void AppendEveryOther(CCA_ArrayTemplate<int>& pages, int first, int pageCount, int offset) {
  for (int index = first; index < pageCount; index += 2) {
    pages.Add(static_cast<int>(static_cast<unsigned int>(index) + static_cast<unsigned int>(offset)));
    if (index > pageCount - 2) break;  // the next step would pass INT_MAX
  }
}

/// Reads one list against the highest value accepted so far; list values go
/// to the callback less `base` (0 for indices, 1 for page numbers).
class ListReader {
 public:
  ListReader(FillPageArray& fill, int last, int base) : m_fill(fill), m_nLast(last), m_nBase(base) {}

  void Read(const char* text) {
    const char* end = text + std::strlen(text);
    for (const char* token = text;;) {
      const char* comma = static_cast<const char*>(std::memchr(token, ',', static_cast<std::size_t>(end - token)));
      const char* tokenEnd = comma ? comma : end;
      // An empty token ends the list; after a trailing ',' that changes nothing.
      if (tokenEnd == token || !Take(token, tokenEnd) || comma == nullptr) return;
      token = comma + 1;
    }
  }

 private:
  /// Handles the token [begin, end); false ends the list.
  bool Take(const char* begin, const char* end) {
    const char* dash = LastDash(begin, end);
    if (dash == nullptr || dash == begin) return TakeNumber(vxutility_detail::ReadAsciiDecimal(begin, end));
    if (dash + 1 == end) return false;
    return TakeRange(vxutility_detail::ReadAsciiDecimal(begin, dash), vxutility_detail::ReadAsciiDecimal(dash + 1, end));
  }

  static const char* LastDash(const char* begin, const char* end) {
    for (const char* p = end; p != begin;) {
      if (*--p == '-') return p;
    }
    return nullptr;
  }

  bool TakeNumber(int n) {
    if (n <= m_nLast) return false;
    m_nLast = n;
    return m_fill.DoSomething(n - m_nBase);
  }

  bool TakeRange(int first, int last) {
    if (first >= last || first <= m_nLast) return false;
    m_nLast = last;
    for (long long v = first; v <= last; ++v) {
      if (!m_fill.DoSomething(static_cast<int>(v - m_nBase))) return false;
    }
    return true;
  }

  FillPageArray& m_fill;
  int m_nLast;
  const int m_nBase;
};

/// Both parsers: `firstLast` is the value a list's first number must pass,
/// `base` what is taken off each list value to make an index.
void ParsePages(const char* text, int pageCount, CCA_ArrayTemplate<int>& pages, int offset, int firstLast, int base) {
  if (pageCount < 1) return;
  switch (ReadSelection(text)) {
    case Selection::All:
      for (int index = 0; index < pageCount; ++index) pages.Add(index);
      return;
    case Selection::Even:
      AppendEveryOther(pages, 1, pageCount, offset);
      return;
    case Selection::Odd:
      AppendEveryOther(pages, 0, pageCount, offset);
      return;
    case Selection::List: {
      FillPageArray fill(pageCount, &pages);
      ListReader(fill, firstLast, base).Read(text);
      return;
    }
  }
}

}  // namespace

void ParsePageIndexRange(const char* text, int pageCount, CCA_ArrayTemplate<int>& pages, int offset) {
  ParsePages(text, pageCount, pages, offset, -1, 0);
}

void ParsePageNumberRange(const char* text, int pageCount, CCA_ArrayTemplate<int>& pages, int offset) {
  ParsePages(text, pageCount, pages, offset, 0, 1);
}
