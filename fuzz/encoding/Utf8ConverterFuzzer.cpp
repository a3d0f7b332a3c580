// Runs arbitrary bytes through the UTF-8 converter both ways. Decoding never
// gives more characters than bytes, only Unicode scalar values come out, and
// decoded text survives encoding and decoding again unchanged. The same bytes
// read as wide units must encode to UTF-8 that decodes to scalar values.

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

#include <vxbase/StringConverter.h>

namespace {

void CheckScalarValues(const CCA_WString& wide) {
  for (int i = 0; i < wide.GetLength(); ++i) {
    const auto v = static_cast<std::uint32_t>(wide[i]);
    if (v > 0x10FFFF || (v >= 0xD800 && v <= 0xDFFF)) std::abort();
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const char* text = reinterpret_cast<const char*>(data);
  const int length = static_cast<int>(size);
  const CCA_WString wide = CCA_StringConverter::utf8_to_unicode(text, length);
  if (wide.GetLength() > length) std::abort();
  CheckScalarValues(wide);
  const CCA_String utf8 = CCA_StringConverter::unicode_to_utf8(wide, wide.GetLength());
  if (CCA_StringConverter::utf8_to_unicode(utf8, utf8.GetLength()) != wide) std::abort();

  std::vector<wchar_t> units(size / sizeof(wchar_t));
  if (!units.empty()) std::memcpy(units.data(), data, units.size() * sizeof(wchar_t));
  const CCA_String encoded = CCA_StringConverter::unicode_to_utf8(units.data(), static_cast<int>(units.size()));
  CheckScalarValues(CCA_StringConverter::utf8_to_unicode(encoded, encoded.GetLength()));
  return 0;
}
