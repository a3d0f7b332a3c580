// Colour text parsing beside a straightforward parser that copies the text
// and splits it into strings; also counts the heap allocations of one call.

#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include <vxutility/ColorString.h>

#include "bench/support/AllocationCounter.h"
#include "bench/support/RatioReporter.h"

namespace {

int PlainHexDigit(char c) {
  const std::string digits = "0123456789abcdef";
  const std::size_t at = digits.find(static_cast<char>(c | 0x20));
  return at == std::string::npos ? -1 : static_cast<int>(at);
}

/// One, three or four components packed as gray, RGB or CMYK.
bool PlainPack(const std::vector<unsigned int>& v, unsigned int& color, unsigned int& space) {
  if (v.size() == 1) { color = v[0] * 0x010101u; space = 1; return true; }
  if (v.size() == 3) { color = (v[2] << 16) | (v[1] << 8) | v[0]; space = 2; return true; }
  if (v.size() == 4) { color = (v[0] << 24) | (v[1] << 16) | (v[2] << 8) | v[3]; space = 3; return true; }
  return false;
}

// The same forms, written the obvious way.
bool PlainParse(const char* text, unsigned int& color, unsigned int& space) {
  const std::string copy(text);
  std::vector<unsigned int> values;
  if (!copy.empty() && copy[0] == '#') {
    const std::string digits = copy.substr(1);
    if (digits.size() != 2 && digits.size() != 6 && digits.size() != 8) return false;
    for (std::size_t i = 0; i + 1 < digits.size(); i += 2) {
      values.push_back((static_cast<unsigned int>(PlainHexDigit(digits[i])) << 4) |
                       static_cast<unsigned int>(PlainHexDigit(digits[i + 1])));
    }
    return PlainPack(values, color, space);
  }
  std::size_t start = copy.find_first_not_of(" \t\n\v\f\r");
  while (start != std::string::npos && start < copy.size()) {
    const std::size_t end = copy.find(' ', start);
    values.push_back(static_cast<unsigned int>(std::atoi(copy.substr(start, end - start).c_str())));
    if (end == std::string::npos) break;
    start = copy.find_first_not_of(' ', end);
  }
  return PlainPack(values, color, space);
}

void Register(const std::string& name, const std::string& text) {
  const auto bytes = static_cast<int64_t>(text.size());
  benchmark::RegisterBenchmark((name + "/ours").c_str(), [=](benchmark::State& state) {
    unsigned int color = 0, space = 0;
    for (auto _ : state) benchmark::DoNotOptimize(ParseColorString(text.c_str(), color, space));
    state.SetBytesProcessed(state.iterations() * bytes);
  });
  benchmark::RegisterBenchmark((name + "/plain").c_str(), [=](benchmark::State& state) {
    unsigned int color = 0, space = 0;
    for (auto _ : state) benchmark::DoNotOptimize(PlainParse(text.c_str(), color, space));
    state.SetBytesProcessed(state.iterations() * bytes);
  });
}

void ReportAllocations(const std::string& name, const std::string& text) {
  unsigned int color = 0, space = 0;
  const long ours = allocation_counter::Count([&] { ParseColorString(text.c_str(), color, space); });
  const long plain = allocation_counter::Count([&] { PlainParse(text.c_str(), color, space); });
  std::printf("allocations %-16s ours %ld, plain %ld\n", name.c_str(), ours, plain);
}

}  // namespace

int main(int argc, char** argv) {
  std::string padded(1 << 20, ' ');
  padded += "10 20 30";
  const std::pair<std::string, std::string> cases[] = {{"hex-rgb", "#1a2B3c"},
                                                       {"hex-cmyk", "#00FF0080"},
                                                       {"decimal-rgb", "255 128 0"},
                                                       {"decimal-cmyk-pad", "  10   20   30   40   "},
                                                       {"decimal-1MB", padded}};
  for (const auto& c : cases) Register(c.first, c.second);
  const int status = RunBenchmarksWithRatios(argc, argv);
  for (const auto& c : cases) ReportAllocations(c.first, c.second);
  unsigned int color = 0x00A0B0C0, space = 2;
  std::string text;
  std::printf("allocations %-16s ours %ld\n", "ParseColorByte",
              allocation_counter::Count([&] { ParseColorByte(color, space, text); }));
  return status;
}
