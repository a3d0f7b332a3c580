// Parses arbitrary text as a colour; a failed parse must leave both outputs
// untouched, a successful one must give a known colour space, and an RGB
// colour must print as seven characters that parse back to its low bytes.

#include <cstdint>
#include <cstdlib>
#include <string>

#include <vxutility/ColorString.h>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string text(reinterpret_cast<const char*>(data), size);  // ends at its first NUL for the parser
  unsigned int color = 0xDEADBEEF, space = 77;
  const bool parsed = ParseColorString(text.c_str(), color, space);
  if (!parsed && (color != 0xDEADBEEF || space != 77)) std::abort();
  if (!parsed) return 0;
  if (space < 1 || space > 3) std::abort();
  std::string hex = "unchanged";
  const bool written = ParseColorByte(color, space, hex);
  if (written != (space == 2) || (!written && hex != "unchanged")) std::abort();
  if (!written) return 0;
  unsigned int back = 0, backSpace = 0;
  const bool parsedBack = ParseColorString(hex.c_str(), back, backSpace);
  if (hex.size() != 7 || !parsedBack || backSpace != 2 || back != (color & 0x00FFFFFF)) std::abort();
  return 0;
}
