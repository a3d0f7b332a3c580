// vxutil base64 encode|decode: standard input to standard output.

#include <climits>
#include <cstdio>
#include <cstring>
#include <string>

#include <vxutility/Base64.h>

#include "Command.h"

namespace {

// The encoder's text has to fit an int.
constexpr std::size_t kLargestInput = INT_MAX / 4 * 3 - 30;

void Write(const CCA_String& bytes) { std::fwrite(bytes.c_str(), 1, static_cast<std::size_t>(bytes.GetLength()), stdout); }

int Run(const Args& args) {
  if (args.size() != 1) return UsageError("base64", "expects one argument, encode or decode");
  const bool encode = args[0] == "encode";
  if (!encode && args[0] != "decode") return UsageError("base64", "unknown mode '" + args[0] + "'");
  std::string input;
  if (!ReadInput("-", input)) {
    std::fprintf(stderr, "vxutil base64: cannot read standard input\n");
    return 1;
  }
  if (input.size() > kLargestInput) {
    std::fprintf(stderr, "vxutil base64: input too large\n");
    return 1;
  }
  const int length = static_cast<int>(input.size());
  if (encode) {
    Write(Base64Encode(reinterpret_cast<const unsigned char*>(input.data()), length));
    std::fputc('\n', stdout);
  } else {
    Write(Base64Decode(input.data(), length));
  }
  return std::fflush(stdout) == 0 ? 0 : 1;
}

int Demo() {
  const char* text = "vxutility\n";
  const CCA_String encoded = Base64Encode(reinterpret_cast<const unsigned char*>(text), static_cast<int>(std::strlen(text)));
  const CCA_String decoded = Base64Decode(encoded, -1);
  std::printf("encode \"vxutility\\n\" -> %s\ndecode back -> %d bytes, %s\n", encoded.c_str(), decoded.GetLength(),
              decoded == text ? "same" : "DIFFERENT");
  return decoded == text ? 0 : 1;
}

const CommandRegistrar kRegistrar({"base64", "encode|decode  (standard input to standard output)",
                                   "Base64-encode or -decode bytes", Run, Demo, 20});

}  // namespace
