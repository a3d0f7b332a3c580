// Colour texts to packed colours and back. Both forms are read in place:
// nothing is allocated.

#include <vxutility/ColorString.h>

#include <cstdio>
#include <cstring>

#include <vxbase/Types.h>

#include "encoding/AsciiDecimal.h"

namespace {

/// 0-15 for a hexadecimal digit, -1 for anything else.
int HexDigit(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  return -1;
}

/// A two-digit pair as 32 bits: a digit of -1 sets every bit above it.
unsigned int HexPair(const char* digits) {
  return (static_cast<unsigned int>(HexDigit(digits[0])) << 4) | static_cast<unsigned int>(HexDigit(digits[1]));
}

/// Gray level `g` copied into the three low bytes (bits of a wide value
/// spill over, as they do for every packed form).
unsigned int PackGray(unsigned int g) { return (((g << 8) | g) << 8) | g; }
/// The first component in the low byte.
unsigned int PackRgb(unsigned int r, unsigned int g, unsigned int b) { return (((b << 8) | g) << 8) | r; }
/// The first component in the high byte.
unsigned int PackCmyk(unsigned int c, unsigned int m, unsigned int y, unsigned int k) {
  return (((((c << 8) | m) << 8) | y) << 8) | k;
}

bool ParseHexColor(const char* digits, unsigned int& color, unsigned int& space) {
  switch (std::strlen(digits)) {
    case 2:
      color = PackGray(HexPair(digits));
      space = CA_ColorSpace_Gray;
      return true;
    case 6:
      color = PackRgb(HexPair(digits), HexPair(digits + 2), HexPair(digits + 4));
      space = CA_ColorSpace_RGB;
      return true;
    case 8:
      color = PackCmyk(HexPair(digits), HexPair(digits + 2), HexPair(digits + 4), HexPair(digits + 6));
      space = CA_ColorSpace_CMYK;
      return true;
    default:
      return false;
  }
}

/// Reads the space-separated numbers of [text, end) into `values`; returns
/// how many there are, or 5 as soon as there are more than four (no colour
/// has that many).
int ReadDecimalList(const char* text, const char* end, unsigned int (&values)[4]) {
  const char* p = text;
  while (p < end && vxutility_detail::IsAsciiSpace(*p)) ++p;
  int count = 0;
  while (p < end) {
    if (count == 4) return 5;
    values[count++] = static_cast<unsigned int>(vxutility_detail::ReadAsciiDecimal(p, end));
    // Only the space character separates numbers: a tab or a comma belongs
    // to the current item.
    p = static_cast<const char*>(std::memchr(p, ' ', static_cast<std::size_t>(end - p)));
    if (p == nullptr) break;
    while (p < end && *p == ' ') ++p;
  }
  return count;
}

bool ParseDecimalColor(const char* text, unsigned int& color, unsigned int& space) {
  unsigned int x[4];
  switch (ReadDecimalList(text, text + std::strlen(text), x)) {
    case 1:
      color = PackGray(x[0]);
      space = CA_ColorSpace_Gray;
      return true;
    case 3:
      color = PackRgb(x[0], x[1], x[2]);
      space = CA_ColorSpace_RGB;
      return true;
    case 4:
      color = PackCmyk(x[0], x[1], x[2], x[3]);
      space = CA_ColorSpace_CMYK;
      return true;
    default:
      return false;
  }
}

}  // namespace

bool ParseColorString(const char* text, unsigned int& color, unsigned int& space) {
  if (text[0] == '#') return ParseHexColor(text + 1, color, space);
  return ParseDecimalColor(text, color, space);
}

bool ParseColorByte(const unsigned int& color, const unsigned int& space, std::string& text) {
  if (space != CA_ColorSpace_RGB) return false;
  char buffer[8];
  std::snprintf(buffer, sizeof buffer, "#%02X%02X%02X", color & 0xFF, (color >> 8) & 0xFF, (color >> 16) & 0xFF);
  text.assign(buffer, 7);
  return true;
}
