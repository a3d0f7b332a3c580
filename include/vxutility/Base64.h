#pragma once
/// Base64 text (the standard alphabet with "+" and "/", "=" padding, no line
/// breaks) to and from bytes, held in CCA_String byte buffers.

#include <vxbase/String.h>
#include <vxutility/vxutility_export.h>

/// Encodes `length` bytes at `data` as Base64 text, padded with "=" to a
/// multiple of four characters. A negative length, a null `data` with a
/// non-zero length, or an input whose text would not fit an int gives an
/// empty string.
VXUTILITY_EXPORT CCA_String Base64Encode(const unsigned char* data, int length);

/// Decodes at most `length` characters of `text` (-1: up to its NUL) into
/// bytes, NUL bytes included. Reading stops quietly at the first "=" or other
/// character outside the alphabet (white space, line breaks, "-", "_", NUL,
/// bytes above 0x7F); a final group of k < 4 characters gives k - 1 bytes.
/// Nothing is reported: invalid input gives the bytes decoded before it. A
/// length below -1, or a null `text` with a non-zero length, gives an empty
/// string. An explicit length is trusted: `text` must hold `length` readable
/// bytes even when a NUL comes first, since whole blocks are read before
/// the NUL is seen.
VXUTILITY_EXPORT CCA_String Base64Decode(const char* text, int length);
