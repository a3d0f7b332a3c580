// A dynamic library by name: load, look up, unload, and the text of the
// last failure.

#include <vxutility/VXLibrary.h>

#include <cstdarg>
#include <cstdio>
#include <string>

#include <vxutility/Encoding.h>
#include <vxutility/FileUtils.h>

#include "runtime/VXLibraryPlatform.h"

struct VXLibraryPrivate {
  void* m_hModule = nullptr;
  std::string m_strName;
  std::string m_strPath;
  std::string m_strError;
};

namespace {

/// Error texts are kept to what a 1,024-byte buffer holds.
constexpr std::size_t kLongestError = 1023;

std::string ToLocal(const char* utf8) { return utf8 != nullptr ? Utf82Local(utf8, -1) : std::string(); }

bool IsLineBreak(char c) { return c == '\r' || c == '\n'; }

/// Cuts a final line break, and the one before it when there was one.
void CutTrailingLineBreak(std::string& text) {
  const std::size_t length = text.size();
  if (length > 1 && IsLineBreak(text.back())) {
    text.pop_back();
    if (length > 2 && IsLineBreak(text.back())) text.pop_back();
  }
}

/// Cuts to at most kLongestError bytes, never inside a UTF-8 sequence.
void CutToLongestError(std::string& text) {
  if (text.size() <= kLongestError) return;
  std::size_t end = kLongestError;
  while (end > 0 && (static_cast<unsigned char>(text[end]) & 0xC0) == 0x80) --end;
  text.resize(end);
}

std::string Format(const char* format, ...) {
  va_list args;
  va_start(args, format);
  va_list again;
  va_copy(again, args);
  const int length = std::vsnprintf(nullptr, 0, format, args);
  va_end(args);
  std::string text(length > 0 ? static_cast<std::size_t>(length) : 0, '\0');
  if (length > 0) std::vsnprintf(&text[0], text.size() + 1, format, again);
  va_end(again);
  CutToLongestError(text);
  return text;
}

/// The system's text in UTF-8 with its line break cut; as it came when the
/// conversion gives nothing.
std::string SystemErrorText(std::string text) {
  CutTrailingLineBreak(text);
  std::string utf8 = Local2Utf8(text.c_str(), -1);
  if (!utf8.empty()) text = std::move(utf8);
  CutToLongestError(text);
  return text;
}

}  // namespace

VXLibrary::VXLibrary(const char* dir, const char* name) : m_pPrivate(new VXLibraryPrivate) {
  m_pPrivate->m_strName = ToLocal(name);
  std::string path = ToLocal(dir);
  if (!path.empty() && path.back() != '/' && path.back() != '\\') path += detail::kLibrarySeparator;
  m_pPrivate->m_strPath = path + m_pPrivate->m_strName + detail::kLibrarySuffix;
}

VXLibrary::VXLibrary(const char* path) : m_pPrivate(new VXLibraryPrivate) {
  m_pPrivate->m_strPath = ToLocal(path);
  m_pPrivate->m_strName = GetFileName(m_pPrivate->m_strPath.c_str(), -1).c_str();
}

VXLibrary::~VXLibrary() {
  Unload();
  delete m_pPrivate;
}

bool VXLibrary::Load() {
  VXLibraryPrivate& self = *m_pPrivate;
  self.m_strError.clear();
  std::string message;
  unsigned code = 0;
  void* module = detail::LoadModule(self.m_strPath, &message, &code);
  // The new handle replaces the old, which is let go, so one Unload unloads.
  if (self.m_hModule != nullptr) detail::FreeModule(self.m_hModule);
  self.m_hModule = module;
  if (module == nullptr) {
    self.m_strError = !message.empty() ? SystemErrorText(message)
                                       : Format("load library \"%s\" fail, errorcode=%u", self.m_strName.c_str(), code);
  }
  return module != nullptr;
}

void* VXLibrary::Resolve(const char* symbol) {
  if (symbol == nullptr || *symbol == '\0') return nullptr;
  VXLibraryPrivate& self = *m_pPrivate;
  self.m_strError.clear();
  if (self.m_hModule == nullptr) {
    self.m_strError = "Library not load";
    return nullptr;
  }
  void* address = detail::FindSymbol(self.m_hModule, symbol);
  if (address == nullptr) {
    self.m_strError = Format("\"%s\" not found in library \"%s\"", symbol, self.m_strName.c_str());
  }
  return address;
}

void VXLibrary::Unload() {
  m_pPrivate->m_strError.clear();
  if (m_pPrivate->m_hModule == nullptr) return;
  detail::FreeModule(m_pPrivate->m_hModule);
  m_pPrivate->m_hModule = nullptr;
}

bool VXLibrary::IsLoaded() const { return m_pPrivate->m_hModule != nullptr; }

const char* VXLibrary::LibraryName() const { return m_pPrivate->m_strName.c_str(); }

const char* VXLibrary::LibraryPath() const { return m_pPrivate->m_strPath.c_str(); }

const char* VXLibrary::ErrorMessage() const { return m_pPrivate->m_strError.c_str(); }

#if defined(_WIN32)
#include "windows/VXLibrary.inc"
#else
#include "unix/VXLibrary.inc"
#endif
