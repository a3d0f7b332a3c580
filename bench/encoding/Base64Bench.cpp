// Base64 encoding and decoding beside a plain one-character-at-a-time coder
// and Debian's libb64, on 1 MB and on short inputs.

#include <benchmark/benchmark.h>

#include <array>
#include <cstdint>
#include <random>
#include <string>

extern "C" {
#include <b64/cdecode.h>
#include <b64/cencode.h>
}

#include <vxutility/Base64.h>

#include "bench/support/RatioReporter.h"

namespace {

constexpr char kAlphabet[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

// The references fill a CCA_String through GetBuffer/ReleaseBuffer as ours
// does, so every coder pays the same one allocation for its result.

// One output character per step, from a bit accumulator.
CCA_String PlainEncode(const unsigned char* data, std::size_t length) {
  CCA_String result;
  char* const begin = result.GetBuffer(static_cast<int>((length + 2) / 3 * 4));
  char* out = begin;
  std::uint32_t bits = 0;
  int count = 0;
  for (std::size_t i = 0; i < length; ++i) {
    bits = (bits << 8) | data[i];
    count += 8;
    while (count >= 6) {
      count -= 6;
      *out++ = kAlphabet[(bits >> count) & 63];
    }
  }
  if (count > 0) *out++ = kAlphabet[(bits << (6 - count)) & 63];
  while ((out - begin) % 4 != 0) *out++ = '=';
  result.ReleaseBuffer(static_cast<int>(out - begin));
  return result;
}

// One input character per step, through a lookup table.
CCA_String PlainDecode(const char* text, std::size_t length) {
  static const auto table = [] {
    std::array<int, 256> t;
    t.fill(-1);
    for (int i = 0; i < 64; ++i) t[static_cast<unsigned char>(kAlphabet[i])] = i;
    return t;
  }();
  CCA_String result;
  char* const begin = result.GetBuffer(static_cast<int>(length - length / 4));
  char* out = begin;
  std::uint32_t bits = 0;
  int count = 0;
  for (std::size_t i = 0; i < length; ++i) {
    const int v = table[static_cast<unsigned char>(text[i])];
    if (v < 0) break;
    bits = (bits << 6) | static_cast<std::uint32_t>(v);
    count += 6;
    if (count >= 8) {
      count -= 8;
      *out++ = static_cast<char>((bits >> count) & 0xFF);
    }
  }
  result.ReleaseBuffer(static_cast<int>(out - begin));
  return result;
}

CCA_String Libb64Encode(const unsigned char* data, std::size_t length) {
  CCA_String result;
  char* const out = result.GetBuffer(static_cast<int>(2 * length + 16));  // room for its line breaks
  base64_encodestate state;
  base64_init_encodestate(&state);
  int n = base64_encode_block(reinterpret_cast<const char*>(data), static_cast<int>(length), out, &state);
  n += base64_encode_blockend(out + n, &state);
  result.ReleaseBuffer(n);
  return result;
}

CCA_String Libb64Decode(const char* text, std::size_t length) {
  CCA_String result;
  char* const out = result.GetBuffer(static_cast<int>(length));
  base64_decodestate state;
  base64_init_decodestate(&state);
  result.ReleaseBuffer(base64_decode_block(text, static_cast<int>(length), out, &state));
  return result;
}

std::string RandomBytes(std::size_t length) {
  std::mt19937 random(7);
  std::string bytes(length, '\0');
  for (char& b : bytes) b = static_cast<char>(random());
  return bytes;
}

const unsigned char* Data(const std::string& s) { return reinterpret_cast<const unsigned char*>(s.data()); }

template <typename Coder>
void RegisterEncode(const std::string& name, std::size_t length, Coder coder) {
  benchmark::RegisterBenchmark(name.c_str(), [length, coder](benchmark::State& state) {
    const std::string bytes = RandomBytes(length);
    for (auto _ : state) benchmark::DoNotOptimize(coder(Data(bytes), bytes.size()));
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * length));
  });
}

template <typename Coder>
void RegisterDecode(const std::string& name, std::size_t length, Coder coder) {
  benchmark::RegisterBenchmark(name.c_str(), [length, coder](benchmark::State& state) {
    const std::string bytes = RandomBytes(length);
    const CCA_String text = PlainEncode(Data(bytes), bytes.size());
    const auto size = static_cast<std::size_t>(text.GetLength());
    for (auto _ : state) benchmark::DoNotOptimize(coder(text.c_str(), size));
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * size));
  });
}

void RegisterAll() {
  const std::pair<const char*, std::size_t> sizes[] = {
      {"1MB", 1 << 20}, {"16B", 16}, {"32B", 32}, {"48B", 48}, {"64B", 64}};
  for (const auto& size : sizes) {
    const std::string encode = std::string("encode/") + size.first + "/";
    RegisterEncode(encode + "ours", size.second, [](const unsigned char* d, std::size_t n) {
      return Base64Encode(d, static_cast<int>(n));
    });
    RegisterEncode(encode + "plain", size.second, PlainEncode);
    RegisterEncode(encode + "libb64", size.second, Libb64Encode);
    const std::string decode = std::string("decode/") + size.first + "/";
    RegisterDecode(decode + "ours", size.second, [](const char* t, std::size_t n) {
      return Base64Decode(t, static_cast<int>(n));
    });
    RegisterDecode(decode + "plain", size.second, PlainDecode);
    RegisterDecode(decode + "libb64", size.second, Libb64Decode);
  }
}

}  // namespace

int main(int argc, char** argv) {
  RegisterAll();
  return RunBenchmarksWithRatios(argc, argv);
}
