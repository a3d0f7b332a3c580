// Decodes arbitrary text with its exact length and as a NUL-terminated
// string; checks the result against the documented bounds and that the
// decoded bytes encode back to the accepted prefix of the text, and that the
// vector block coders give what the tables alone give.

#include <vxutility/Base64.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "encoding/Base64Internal.h"

// The characters the decoder accepts; it stops at the first other one.
constexpr char kAlphabet[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size > (1u << 20)) return 0;
  const std::string text(reinterpret_cast<const char*>(data), size);
  const CCA_String bytes = Base64Decode(text.data(), static_cast<int>(text.size()));
  const std::size_t accepted = std::min(text.find_first_not_of(kAlphabet), text.size());
  const std::size_t expected = accepted / 4 * 3 + (accepted % 4 == 0 ? 0 : accepted % 4 - 1);
  if (static_cast<std::size_t>(bytes.GetLength()) != expected) std::abort();

  // Whole groups re-encode to the same characters.
  const std::size_t whole = accepted / 4 * 4;
  const auto* decoded = reinterpret_cast<const unsigned char*>(bytes.c_str());
  const CCA_String again = Base64Encode(decoded, bytes.GetLength() / 3 * 3);
  if (std::string(again.c_str(), again.GetLength()) != text.substr(0, whole)) std::abort();

  // The NUL-terminated form stops at the first NUL, which is never accepted.
  if (Base64Decode(text.c_str(), -1) != bytes) std::abort();

  // The tables alone agree with the vector block coders, both ways.
  if (vxbase64::DecodeScalar(text.data(), static_cast<int>(text.size())) != bytes) std::abort();
  if (vxbase64::EncodeScalar(data, static_cast<int>(size)) != Base64Encode(data, static_cast<int>(size))) std::abort();
  return 0;
}
