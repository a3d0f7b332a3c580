// Page selection parsing beside a straightforward parser that copies the
// text, splits it into strings and reads each part; also counts the heap
// allocations of one call beyond those the result array itself needs.

#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include <vxutility/PageRange.h>

#include "bench/support/AllocationCounter.h"
#include "bench/support/RatioReporter.h"

namespace {

std::vector<std::string> Split(const std::string& text, char separator) {
  std::vector<std::string> parts;
  std::size_t start = 0;
  for (std::size_t at; (at = text.find(separator, start)) != std::string::npos; start = at + 1) {
    parts.push_back(text.substr(start, at - start));
  }
  parts.push_back(text.substr(start));
  return parts;
}

// The same list rules, written the obvious way.
void PlainParse(const char* text, int pageCount, CCA_ArrayTemplate<int>& pages) {
  const std::string copy(text);
  int last = -1;
  std::vector<std::string> tokens = Split(copy, ',');
  if (!tokens.empty() && tokens.back().empty()) tokens.pop_back();
  for (const std::string& token : tokens) {
    if (token.empty()) return;
    const std::size_t dash = token.rfind('-');
    if (dash == std::string::npos || dash == 0) {
      const int n = std::atoi(token.c_str());
      if (n <= last || n >= pageCount) return;
      last = n;
      pages.Add(n);
      continue;
    }
    const int a = std::atoi(token.substr(0, dash).c_str());
    const int b = std::atoi(token.substr(dash + 1).c_str());
    if (dash + 1 == token.size() || a >= b || a <= last) return;
    last = b;
    for (int v = a; v <= b; ++v) {
      if (v >= pageCount) return;
      pages.Add(v);
    }
  }
}

/// A rising list of numbers and ranges of about `length` bytes.
std::string ListText(std::size_t length) {
  std::string text;
  for (int page = 0; text.size() < length; page += 4) {
    char token[32];
    std::snprintf(token, sizeof token, page % 8 == 0 ? "%d," : "%d-%d,", page, page + 2);
    text += token;
  }
  text.pop_back();
  return text.substr(0, text.rfind(',', length));
}

void Register(const std::string& name, const std::string& text) {
  const int pageCount = 0x7fffffff;
  benchmark::RegisterBenchmark((name + "/ours").c_str(), [=](benchmark::State& state) {
    for (auto _ : state) {
      CCA_ArrayTemplate<int> pages;
      ParsePageIndexRange(text.c_str(), pageCount, pages, 0);
      benchmark::DoNotOptimize(pages.GetData());
    }
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * text.size()));
  });
  benchmark::RegisterBenchmark((name + "/plain").c_str(), [=](benchmark::State& state) {
    for (auto _ : state) {
      CCA_ArrayTemplate<int> pages;
      PlainParse(text.c_str(), pageCount, pages);
      benchmark::DoNotOptimize(pages.GetData());
    }
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * text.size()));
  });
}

/// Prints the allocations of one call of each parser and of filling the
/// result alone.
void ReportAllocations(const std::string& name, const std::string& text) {
  CCA_ArrayTemplate<int> ours, plain;
  const long oursCount = allocation_counter::Count([&] { ParsePageIndexRange(text.c_str(), 0x7fffffff, ours, 0); });
  const long plainCount = allocation_counter::Count([&] { PlainParse(text.c_str(), 0x7fffffff, plain); });
  CCA_ArrayTemplate<int> result;
  const long resultCount = allocation_counter::Count([&] {
    for (int i = 0; i < ours.GetSize(); ++i) result.Add(ours[i]);
  });
  std::printf("allocations %-14s ours %ld, result alone %ld, beyond the result %ld; plain %ld\n", name.c_str(),
              oursCount, resultCount, oursCount - resultCount, plainCount);
}

}  // namespace

int main(int argc, char** argv) {
  const std::pair<std::string, std::string> cases[] = {
      {"list-1MB", ListText(1 << 20)}, {"list-16B", "1,3,5-7,9,11-12"}, {"list-32B", ListText(32)},
      {"list-64B", ListText(64)}};
  for (const auto& c : cases) Register(c.first, c.second);
  const int status = RunBenchmarksWithRatios(argc, argv);
  for (const auto& c : cases) ReportAllocations(c.first, c.second);
  return status;
}
