// Where the running program and its loaded modules live. The system calls
// that name a module's file are in unix/ and windows/.

#include <vxutility/FileUtils.h>

#include <string>

#include <vxutility/Encoding.h>

#include "files/NativePath.h"

namespace {

/// Room for a module's full file name, as the system gives it.
constexpr std::size_t kModuleNameBufferSize = 10240;

/// The full file name of the executable (local encoding); empty when unknown.
std::string ExecutableFileName();
/// The full file name of the loaded module called `name`; empty when no
/// such module is loaded.
std::string LoadedModuleFileName(const char* name);

/// Everything up to and including the last native separator, in UTF-8;
/// empty when there is no separator.
CCA_String DirectoryInUtf8(const std::string& fileName) {
  const std::size_t sep = fileName.rfind(kNativePathSep);
  if (sep == std::string::npos) return CCA_String();
  const std::string utf8 = Local2Utf8(fileName.c_str(), static_cast<int>(sep + 1));
  return CCA_String(utf8.c_str(), static_cast<int>(utf8.size()));
}

}  // namespace

CCA_String GetAppPath() { return DirectoryInUtf8(ExecutableFileName()); }

CCA_String GetDllPath(const char* moduleName) {
  std::string fileName;
  if (moduleName != nullptr) fileName = LoadedModuleFileName(moduleName);
  if (fileName.empty()) fileName = ExecutableFileName();
  return DirectoryInUtf8(fileName);
}

#if defined(_WIN32)
#include "windows/ModulePath.inc"
#else
#include "unix/ModulePath.inc"
#endif
