#pragma once
// The name a file function hands to the system. Arguments come in UTF-8 (or
// wide); the system's narrow calls take names in the local encoding, so every
// file function converts the same way and one argument reaches one file.

#include <string>

namespace vxfiles_detail {

/// `utf8` with every `/` and `\` made `separator` (while the text is still
/// UTF-8, where neither byte is ever part of another character), then in the
/// local encoding. False when that encoding cannot hold one of its characters.
bool LocalPathOf(const char* utf8, char separator, std::string& local);

/// `wide` in the local encoding; false when it cannot hold one of its
/// characters.
bool LocalPathOf(const std::wstring& wide, std::string& local);

}  // namespace vxfiles_detail
