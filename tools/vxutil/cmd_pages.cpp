// vxutil pages TEXT COUNT [--numbers] [--offset N]: the page indices a
// selection text gives.

#include <climits>
#include <cstdio>
#include <string>

#include <vxutility/PageRange.h>

#include "Command.h"

namespace {

struct PagesRequest {
  std::string text;
  int pageCount = 0;
  bool numbers = false;
  int offset = 0;
};

bool ParseInt(const std::string& text, int& value) {
  long long wide = 0;
  if (!ParseIntArg(text, wide) || wide < INT_MIN || wide > INT_MAX) return false;
  value = static_cast<int>(wide);
  return true;
}

/// Reads the arguments; an empty message means they are fine.
std::string ReadRequest(const Args& args, PagesRequest& request) {
  std::vector<std::string> positional;
  for (std::size_t i = 0; i < args.size(); ++i) {
    if (args[i] == "--numbers") {
      request.numbers = true;
    } else if (args[i] == "--offset") {
      if (++i == args.size() || !ParseInt(args[i], request.offset)) return "--offset needs an integer";
    } else {
      positional.push_back(args[i]);
    }
  }
  if (positional.size() != 2) return "expects TEXT and COUNT";
  request.text = positional[0];
  if (!ParseInt(positional[1], request.pageCount)) return "COUNT must be an integer";
  return std::string();
}

void PrintPages(const PagesRequest& request) {
  CCA_ArrayTemplate<int> pages;
  (request.numbers ? ParsePageNumberRange : ParsePageIndexRange)(request.text.c_str(), request.pageCount, pages,
                                                                  request.offset);
  for (int i = 0; i < pages.GetSize(); ++i) std::printf(i == 0 ? "%d" : " %d", pages[i]);
  std::printf("\n");
}

int Run(const Args& args) {
  PagesRequest request;
  const std::string problem = ReadRequest(args, request);
  if (!problem.empty()) return UsageError("pages", problem);
  PrintPages(request);
  return 0;
}

int Demo() {
  PagesRequest request;
  request.pageCount = 10;
  for (const char* text : {"0,2,4-6", "even", "3,1"}) {
    request.text = text;
    std::printf("indices '%s' of 10: ", text);
    PrintPages(request);
  }
  request.numbers = true;
  request.text = "1,3-4";
  std::printf("numbers '1,3-4' of 10: ");
  PrintPages(request);
  return 0;
}

const CommandRegistrar kRegistrar({"pages", "TEXT COUNT [--numbers] [--offset N]",
                                   "page indices of a selection (\"1,3,5-7\", all, even, odd)", Run, Demo, 40});

}  // namespace
