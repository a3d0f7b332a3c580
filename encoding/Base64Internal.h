#pragma once
// The pieces of the Base64 coder that tests and the fuzzer compare: the
// vector block coders behind their processor check, and the whole coder with
// them switched off.

#include <vxbase/String.h>

#include <cstddef>

namespace vxbase64 {

/// Encodes whole three-byte groups from the front of `data` with the widest
/// vector unit the processor has; returns how many bytes it took (a multiple
/// of 3, possibly 0: always 0 without such a unit) and writes four
/// characters per group to `out`. Reads at most `length` bytes.
std::size_t EncodeBlocks(const unsigned char* data, std::size_t length, char* out);

/// Decodes whole blocks of characters from the front of `text` as long as
/// every character of a block is in the alphabet; returns how many it took
/// (a multiple of 4, possibly 0) and writes three bytes per four characters
/// to `out`. A block holding any other character is left whole to the
/// caller. Reads at most `length` characters.
std::size_t DecodeBlocks(const unsigned char* text, std::size_t length, unsigned char* out);

/// Base64Encode and Base64Decode with the vector block coders left out.
CCA_String EncodeScalar(const unsigned char* data, int length);
CCA_String DecodeScalar(const char* text, int length);

}  // namespace vxbase64
