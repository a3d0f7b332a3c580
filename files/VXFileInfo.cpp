// The status of one path. The record keeps the mode word in one layout on
// every platform (the Windows C runtime's), so the queries below never differ
// between systems; the system call that fills it lives in unix/ and windows/.

#include <vxutility/VXFileInfo.h>

#include <string>

#include <vxbase/String.h>
#include <vxutility/Encoding.h>

#include "files/NativePath.h"

struct VXFileStatus {
  unsigned short mode;
};

namespace {

constexpr unsigned short kModeDirectory = 0x4000;
constexpr unsigned short kModeRegular = 0x8000;
constexpr unsigned short kModeOwnerRead = 0x0100;
constexpr unsigned short kModeOwnerWrite = 0x0080;

/// Fills `status` for `path`; false when the path cannot be queried.
bool QueryFileStatus(const std::wstring& path, VXFileStatus& status);

/// Native separators throughout, without one trailing separator: `dir/`
/// asks about `dir`. A lone separator is the root on POSIX and stays; on
/// Windows `C:` becomes `C:\`, the drive's root.
template <typename CharT>
void NormaliseStatusPath(CCA_StringT<CharT>& path) {
  const CharT native = CharT(kNativePathSep);
  path.Replace(CharT('/'), native);
  path.Replace(CharT('\\'), native);
  const bool isPosixRoot = !kPathsHaveDriveLetters && path.GetLength() == 1;
  if (!path.IsEmpty() && path.GetLast() == native && !isPosixRoot) {
    path.Delete(path.GetLength() - 1, 1);
  }
  if (kPathsHaveDriveLetters && !path.IsEmpty() && path.GetLast() == CharT(':')) path += native;
}

/// A new record for `path`, or null when it is empty or cannot be queried.
VXFileStatus* NewStatus(const std::wstring& path) {
  VXFileStatus status{};
  if (path.empty() || !QueryFileStatus(path, status)) return nullptr;
  return new VXFileStatus(status);
}

}  // namespace

VXFileInfo::VXFileInfo(const char* path, int length) : m_pStatus(nullptr) {
  CCA_String normalised(path, CA_TextLengthWithin(path, length));
  NormaliseStatusPath(normalised);
  m_pStatus = NewStatus(Utf82Unicode(normalised, normalised.GetLength()));
}

VXFileInfo::VXFileInfo(const wchar_t* path, int length) : m_pStatus(nullptr) {
  CCA_WString normalised(path, CA_TextLengthWithin(path, length));
  NormaliseStatusPath(normalised);
  m_pStatus = NewStatus(std::wstring(normalised.c_str()));
}

VXFileInfo::VXFileInfo(const VXFileInfo& other)
    : m_pStatus(other.m_pStatus ? new VXFileStatus(*other.m_pStatus) : nullptr) {}

VXFileInfo& VXFileInfo::operator=(const VXFileInfo& other) {
  if (this != &other) {
    VXFileStatus* copy = other.m_pStatus ? new VXFileStatus(*other.m_pStatus) : nullptr;
    delete m_pStatus;
    m_pStatus = copy;
  }
  return *this;
}

VXFileInfo::~VXFileInfo() { delete m_pStatus; }

bool VXFileInfo::IsExists() const { return m_pStatus != nullptr; }

bool VXFileInfo::IsDir() const { return m_pStatus && (m_pStatus->mode & kModeDirectory); }

bool VXFileInfo::IsFile() const { return m_pStatus && (m_pStatus->mode & kModeRegular); }

bool VXFileInfo::ReadEnable() const { return m_pStatus && (m_pStatus->mode & kModeOwnerRead); }

bool VXFileInfo::WriteEnable() const { return m_pStatus && (m_pStatus->mode & kModeOwnerWrite); }

#if defined(_WIN32)
#include "windows/VXFileInfo.inc"
#else
#include "unix/VXFileInfo.inc"
#endif
