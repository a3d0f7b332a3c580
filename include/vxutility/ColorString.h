#pragma once
/// Colours written as text: "#GG" (gray), "#RRGGBB" (RGB) and "#CCMMYYKK"
/// (CMYK) in hexadecimal, or one, three or four decimal numbers separated by
/// spaces. A colour is packed into 32 bits with its colour space
/// (CA_ColorSpace: 1 gray, 2 RGB, 3 CMYK): gray 0x00GGGGGG, RGB 0x00BBGGRR,
/// CMYK 0xCCMMYYKK.

#include <string>

#include <vxutility/vxutility_export.h>

/// Reads the colour in the NUL-terminated `text` (never null). A hexadecimal
/// text needs exactly 2, 6 or 8 characters after the "#"; a character that is
/// not a hexadecimal digit counts as the digit -1 and sets every bit above
/// its pair. Decimal numbers are read as atoi reads them, split at spaces
/// only, and are not clamped: values past 255 spill into the next byte.
/// Returns false, leaving `color` and `space` untouched, for any other count
/// of digits or numbers.
VXUTILITY_EXPORT bool ParseColorString(const char* text, unsigned int& color, unsigned int& space);

/// Writes an RGB colour as "#RRGGBB" (upper-case, bits 24-31 ignored) into
/// `text`. Returns false, leaving `text` untouched, when `space` is not 2.
VXUTILITY_EXPORT bool ParseColorByte(const unsigned int& color, const unsigned int& space, std::string& text);
