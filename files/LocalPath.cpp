// File names in the local encoding.

#include "files/LocalPath.h"

#include <algorithm>

#include <vxutility/Encoding.h>

#include "files/NativePath.h"

namespace vxfiles_detail {
namespace {

/// A character the local encoding lacks becomes '?': more of them in the
/// result than in the argument means the name would not be the caller's.
template <typename CharT>
bool KeptEveryCharacter(const std::basic_string<CharT>& given, const std::string& local) {
  return std::count(given.begin(), given.end(), CharT('?')) == std::count(local.begin(), local.end(), '?');
}

}  // namespace

bool LocalPathOf(const char* utf8, char separator, std::string& local) {
  std::string text = utf8 ? utf8 : "";
  std::replace_if(text.begin(), text.end(), IsPathSep<char>, separator);
  local = Utf82Local(text.c_str(), static_cast<int>(text.size()));
  return KeptEveryCharacter(text, local);
}

bool LocalPathOf(const std::wstring& wide, std::string& local) {
  local = Unicode2Local(wide.c_str(), static_cast<int>(wide.size()));
  return KeptEveryCharacter(wide, local);
}

}  // namespace vxfiles_detail
