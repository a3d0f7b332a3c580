// vxutil: try and script the vxutility library from the command line.

#include <cstdio>
#include <algorithm>
#include <cstring>

#include <vxutility/vxutility.h>

#include "Command.h"

#if defined(_WIN32)
#include <fcntl.h>
#include <io.h>
#endif

namespace {

/// The standard streams carry bytes unchanged on every system, so that
/// binary data can be piped and the output is the same everywhere: Windows
/// would otherwise write "\r\n" for "\n" and stop reading at a 0x1A byte.
void UseBinaryStandardStreams() {
#if defined(_WIN32)
  _setmode(_fileno(stdin), _O_BINARY);
  _setmode(_fileno(stdout), _O_BINARY);
  _setmode(_fileno(stderr), _O_BINARY);
#endif
}

void PrintHelp(std::FILE* out) {
  std::fprintf(out,
               "usage: vxutil <command> [arguments]\n"
               "       vxutil --help | version | demo\n\n"
               "commands:\n");
  std::fprintf(out, "  %-10s %s\n", "version", "print the library version");
  std::fprintf(out, "  %-10s %s\n", "demo", "run one short step of every family");
  for (const VxutilCommand& command : CommandRegistry::All()) {
    std::fprintf(out, "  %-10s %s\n  %-10s   vxutil %s %s\n", command.name, command.summary, "",
                 command.name, command.usage);
  }
}

int RunDemo() {
  std::printf("vxutility %s\n", GetUtilityVersion());
  std::vector<VxutilCommand> steps;
  for (const VxutilCommand& command : CommandRegistry::All()) {
    if (command.demo != nullptr) steps.push_back(command);
  }
  std::stable_sort(steps.begin(), steps.end(), [](const VxutilCommand& a, const VxutilCommand& b) {
    return a.demoOrder < b.demoOrder;
  });
  int failures = 0;
  for (const VxutilCommand& step : steps) {
    std::printf("\n== %s ==\n", step.name);
    std::fflush(stdout);
    if (step.demo() != 0) {
      std::printf("!! %s step failed\n", step.name);
      ++failures;
    }
  }
  std::printf("\ndemo: %zu steps, %d failed\n", steps.size(), failures);
  return failures == 0 ? 0 : 1;
}

}  // namespace

int main(int argc, char** argv) {
  UseBinaryStandardStreams();
  if (argc < 2) {
    PrintHelp(stderr);
    return 2;
  }
  const char* name = argv[1];
  if (std::strcmp(name, "--help") == 0 || std::strcmp(name, "-h") == 0 || std::strcmp(name, "help") == 0) {
    PrintHelp(stdout);
    return 0;
  }
  if (std::strcmp(name, "version") == 0) {
    if (argc != 2) return UsageError("version", "takes no arguments");
    std::printf("%s\n", GetUtilityVersion());
    return 0;
  }
  if (std::strcmp(name, "demo") == 0) {
    if (argc != 2) return UsageError("demo", "takes no arguments");
    return RunDemo();
  }
  const VxutilCommand* command = CommandRegistry::Find(name);
  if (command == nullptr) {
    std::fprintf(stderr, "vxutil: unknown command '%s' (try vxutil --help)\n", name);
    return 2;
  }
  return command->run(Args(argv + 2, argv + argc));
}
