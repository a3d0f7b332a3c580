#include <gtest/gtest.h>

#include <random>
#include <string>

#include "encoding/Base64Internal.h"
#include <vxutility/Base64.h>

// The vector block coders change nothing: random bytes of every length to 300
// and a few long ones, then their text cut short and with a character outside
// the alphabet at a random place, against the tables alone. Where the processor
// has a vector unit, it takes all but the last few blocks of valid input.
TEST(Base64, VectorCodersMatchTheTables) {
  std::mt19937 random(2026);
  const std::string stops("=\n -_.\0\x80\xFF", 9);
  for (int length = 0; length < 303; ++length) {
    const int n = length < 300 ? length : 4099 << (length - 300) * 4;  // 4 KB, 64 KB, 1 MB
    std::basic_string<unsigned char> bytes(n, 0);
    for (auto& b : bytes) b = static_cast<unsigned char>(random());
    const CCA_String encoded = Base64Encode(bytes.data(), n);
    ASSERT_TRUE(encoded == vxbase64::EncodeScalar(bytes.data(), n)) << n;
    std::string text(encoded.c_str(), encoded.GetLength());
#if defined(__x86_64__) || defined(__i386__)
    if (__builtin_cpu_supports("ssse3")) {  // each writes back what is already there
      ASSERT_GT(vxbase64::EncodeBlocks(bytes.data(), n, &text[0]) + 28, std::size_t(n));
      ASSERT_GT(vxbase64::DecodeBlocks(reinterpret_cast<const unsigned char*>(text.data()), n, &bytes[0]) + 32,
                std::size_t(n));
    }
#endif
    text.resize(text.size() - random() % (n > 0 ? 3 : 1));
    if (!text.empty() && random() % 8 != 0) text[random() % text.size()] = stops[random() % stops.size()];
    const int size = static_cast<int>(text.size());
    ASSERT_TRUE(Base64Decode(text.data(), size) == vxbase64::DecodeScalar(text.data(), size)) << n;
  }
}
