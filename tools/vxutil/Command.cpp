#include "Command.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <iostream>
#include <iterator>
#include <sstream>

namespace {

std::vector<VxutilCommand>& Registry() {
  static std::vector<VxutilCommand> commands;
  return commands;
}

}  // namespace

void CommandRegistry::Add(const VxutilCommand& command) { Registry().push_back(command); }

std::vector<VxutilCommand> CommandRegistry::All() {
  std::vector<VxutilCommand> commands = Registry();
  std::sort(commands.begin(), commands.end(),
            [](const VxutilCommand& a, const VxutilCommand& b) { return std::strcmp(a.name, b.name) < 0; });
  return commands;
}

const VxutilCommand* CommandRegistry::Find(const std::string& name) {
  for (const VxutilCommand& command : Registry()) {
    if (name == command.name) return &command;
  }
  return nullptr;
}

int UsageError(const char* command, const std::string& message) {
  std::fprintf(stderr, "vxutil %s: %s\n", command, message.c_str());
  if (const VxutilCommand* found = CommandRegistry::Find(command)) {
    std::fprintf(stderr, "usage: vxutil %s %s\n", found->name, found->usage);
  }
  return 2;
}

bool ReadInput(const std::string& path, std::string& contents) {
  if (path == "-") {
    std::ostringstream buffer;
    buffer << std::cin.rdbuf();
    contents = buffer.str();
    return !std::cin.bad();
  }
  std::ifstream file(path, std::ios::binary);
  if (!file) return false;
  contents.assign(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
  return !file.bad();
}

bool ParseIntArg(const std::string& text, long long& value) {
  if (text.empty()) return false;
  errno = 0;
  char* end = nullptr;
  value = std::strtoll(text.c_str(), &end, 10);
  return errno == 0 && end != nullptr && *end == '\0';
}

bool ParseFloatArg(const std::string& text, double& value) {
  if (text.empty()) return false;
  errno = 0;
  char* end = nullptr;
  value = std::strtod(text.c_str(), &end);
  return errno == 0 && end != nullptr && *end == '\0';
}
