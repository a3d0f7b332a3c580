#pragma once
// How much of a caller's text a file function looks at.

/// All of `text` for a negative `length`, else `length` characters but never
/// past a NUL, so a length longer than the text is never read beyond it.
template <typename CharT>
int BoundedTextLength(const CharT* text, int length) {
  if (text == nullptr) return 0;
  int count = 0;
  while ((length < 0 || count < length) && text[count] != CharT(0)) ++count;
  return count;
}
