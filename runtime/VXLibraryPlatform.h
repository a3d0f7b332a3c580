#pragma once
// What each platform file (unix/VXLibrary.inc, windows/VXLibrary.inc)
// provides for VXLibrary.

#include <string>

namespace detail {

/// Appended to a library's name by the two-part constructor.
extern const char kLibrarySuffix[];
/// Put between a directory and a name that do not meet at a separator.
extern const char kLibrarySeparator;

/// Loads the library at `path` (local encoding). Null on failure, with the
/// system's text in `*message` (local encoding, may be empty when the
/// system has none) and its code in `*code`.
void* LoadModule(const std::string& path, std::string* message, unsigned* code);
/// Releases one load of the library.
void FreeModule(void* module);
/// The address of `symbol` in the library; null when it is not exported.
void* FindSymbol(void* module, const char* symbol);

}  // namespace detail
