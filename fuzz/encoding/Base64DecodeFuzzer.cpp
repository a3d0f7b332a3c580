// Decodes arbitrary text with its exact length and as a NUL-terminated
// string; checks the result against the documented bounds and that the
// decoded bytes encode back to the accepted prefix of the text.

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>

#include <vxutility/Base64.h>

namespace {

/// The characters the decoder accepts before it stops.
std::size_t AcceptedPrefix(const std::string& text) {
  std::size_t n = 0;
  while (n < text.size()) {
    const char c = text[n];
    const bool inAlphabet = (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '+' ||
                            c == '/';
    if (!inAlphabet) break;
    ++n;
  }
  return n;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size > (1u << 20)) return 0;
  const std::string text(reinterpret_cast<const char*>(data), size);
  const CCA_String bytes = Base64Decode(text.data(), static_cast<int>(text.size()));
  const std::size_t accepted = AcceptedPrefix(text);
  const std::size_t expected = accepted / 4 * 3 + (accepted % 4 == 0 ? 0 : accepted % 4 - 1);
  if (static_cast<std::size_t>(bytes.GetLength()) != expected) std::abort();

  // Whole groups re-encode to the same characters.
  const std::size_t whole = accepted / 4 * 4;
  const CCA_String again = Base64Encode(reinterpret_cast<const unsigned char*>(bytes.c_str()),
                                        static_cast<int>(whole / 4 * 3));
  if (static_cast<std::size_t>(again.GetLength()) != whole || std::memcmp(again.c_str(), text.data(), whole) != 0) {
    std::abort();
  }

  // The NUL-terminated form stops at the first NUL, which is never accepted.
  const CCA_String terminated = Base64Decode(text.c_str(), -1);
  if (terminated != bytes) std::abort();
  return 0;
}
