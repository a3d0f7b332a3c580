#pragma once
// Subcommands of vxutil. Each lives in its own file and registers itself
// with a static CommandRegistrar, so adding a family touches no other file.

#include <string>
#include <vector>

using Args = std::vector<std::string>;

struct VxutilCommand {
  const char* name;      // the word after "vxutil"
  const char* usage;     // argument synopsis, shown by --help
  const char* summary;   // one line, shown by --help
  int (*run)(const Args& args);  // arguments after the name; returns the exit status
  int (*demo)();         // a step of "vxutil demo" (nullptr: none); 0 on success
  int demoOrder;         // steps run in increasing order
};

class CommandRegistry {
 public:
  static void Add(const VxutilCommand& command);
  /// Every registered command, sorted by name.
  static std::vector<VxutilCommand> All();
  static const VxutilCommand* Find(const std::string& name);
};

struct CommandRegistrar {
  explicit CommandRegistrar(const VxutilCommand& command) { CommandRegistry::Add(command); }
};

/// Prints "vxutil <command>: <message>" and the command's usage on standard
/// error; returns the usage-error status 2.
int UsageError(const char* command, const std::string& message);

/// Reads a whole file, or standard input for "-"; false when it cannot be read.
bool ReadInput(const std::string& path, std::string& contents);

/// Parses a whole decimal integer; false for anything else.
bool ParseIntArg(const std::string& text, long long& value);
/// Parses a whole decimal floating-point number; false for anything else.
bool ParseFloatArg(const std::string& text, double& value);
