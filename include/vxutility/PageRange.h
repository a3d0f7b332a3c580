#pragma once
/// Page selections ("1,3,5-7", all, even, odd) turned into 0-based page
/// indices appended to a caller's array.
///
/// The whole text "all"/"ALL"/"All" (or a null or empty text) selects every
/// page, "even"/"EVEN"/"Even" the indices 1, 3, 5, ..., "odd"/"ODD"/"Odd" the
/// indices 0, 2, 4, ...; any other text is a list of ','-separated tokens,
/// each a number or a range a-b split at its last '-' (a leading '-' makes a
/// negative number), each part read as atoi reads it. Values must rise
/// strictly from token to token and a range needs a start below its end: a
/// token that breaks a rule, an empty token or a page past the end stops the
/// list, keeping what was appended before it. Nothing is reported.

#include <vxbase/Array.h>
#include <vxutility/vxutility_export.h>

/// Something done for one page at a time.
class VXUTILITY_EXPORT IDoSomething {
 public:
  /// Nothing to release here; derived callbacks release their own state.
  virtual ~IDoSomething();
  /// Handles `page`; false asks the caller to stop. This one does nothing and
  /// returns true.
  virtual bool DoSomething(int page);
};

/// Appends pages of a document to an array the caller owns (and keeps alive
/// while this object is used).
class VXUTILITY_EXPORT FillPageArray : public IDoSomething {
 public:
  /// Appends to `*pPages` for a document of `nPageCount` pages; nothing can
  /// fail here (the array is only used by DoSomething).
  FillPageArray(int nPageCount, CCA_ArrayTemplate<int>* pPages);
  /// A negative page appends every index 0 ... page count - 1 and returns
  /// true; a page at or past the page count appends nothing and returns
  /// false; any other page is appended and gives true (an append that cannot
  /// get memory loses that one value and still gives true).
  bool DoSomething(int page) override;

 private:
  int m_nPageCount;
  CCA_ArrayTemplate<int>* m_pPages;
};

/// Appends the pages selected by `text` (null: all) for a document of
/// `pageCount` pages; list numbers are 0-based indices. `offset` is added to
/// the indices of even and odd only. A page count below 1 appends nothing.
VXUTILITY_EXPORT void ParsePageIndexRange(const char* text, int pageCount, CCA_ArrayTemplate<int>& pages, int offset);

/// As ParsePageIndexRange, with list numbers read as 1-based page numbers
/// (number n appends index n - 1; 0 and below stop the list).
VXUTILITY_EXPORT void ParsePageNumberRange(const char* text, int pageCount, CCA_ArrayTemplate<int>& pages, int offset);
