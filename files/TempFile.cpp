// Names for temporary files. The object makes the name only; the caller
// creates the file, and the object deletes it when it goes.

#include <vxutility/TempFile.h>

#include <cstdlib>
#include <ctime>
#include <mutex>

#include "files/NativePath.h"

namespace {

constexpr int kRandomDigitCount = 5;

/// The directory the system designates for temporary files; empty if none.
std::string SystemTempDirectory();
unsigned CurrentProcessId();
/// Deletes the file `path`, never a directory; failure is ignored.
void RemoveFileOnly(const std::string& path);

/// Five decimal digits from the C library's generator, re-seeded from the
/// clock: names made in the same second come out the same. The generator is
/// the process's, so the seeding and the five draws are made under one lock:
/// two threads making names never take each other's draws.
std::string RandomDigits() {
  static std::mutex generatorLock;
  const std::lock_guard<std::mutex> hold(generatorLock);
  std::srand(static_cast<unsigned>(std::time(nullptr)));
  std::string digits;
  for (int i = 0; i < kRandomDigitCount; ++i) digits += static_cast<char>('0' + std::rand() % 10);
  return digits;
}

/// Replaces `field` by `text`; a null text keeps the field.
void AssignUnlessNull(std::string& field, const char* text) {
  if (text != nullptr) field = text;
}

}  // namespace

TempFile::TempFile() : TempFile(nullptr) {}

TempFile::TempFile(const char* directory)
    : autoRemove(true),
      useAppID(true),
      useRandomNumber(true),
      dir(directory ? std::string(directory) : getSystemTempDir()) {}

TempFile::TempFile(const TempFile& other) = default;

TempFile& TempFile::operator=(const TempFile& other) = default;

TempFile::~TempFile() {
  if (autoRemove && !filePath.empty()) RemoveFileOnly(filePath);
}

void TempFile::setAutoRemove(bool value) { autoRemove = value; }

void TempFile::setUseAppID(bool value) { useAppID = value; }

void TempFile::setUseRandomNumber(bool value) { useRandomNumber = value; }

void TempFile::setPrefix(const char* text) { AssignUnlessNull(prefix, text); }

void TempFile::setSuffix(const char* text) { AssignUnlessNull(suffix, text); }

void TempFile::setFileExt(const char* text) { AssignUnlessNull(fileExt, text); }

void TempFile::generateFilePath() {
  if (filePath.empty()) filePath = dir + generateFileName();
}

const std::string& TempFile::getDir() const { return dir; }

const std::string& TempFile::getFilePath() const { return filePath; }

std::string TempFile::getSystemTempDir() {
  std::string directory = SystemTempDirectory();
  if (!directory.empty() && directory.back() != kNativePathSep) directory += kNativePathSep;
  return directory;
}

std::string TempFile::generateFileName() const {
  std::string name;
  if (!prefix.empty()) name += prefix + "_";
  if (useAppID) name += std::to_string(CurrentProcessId()) + "_";
  if (useRandomNumber) name += RandomDigits();
  if (!suffix.empty()) name += "_" + suffix;
  if (!fileExt.empty()) name += "." + fileExt;
  return name;
}

#if defined(_WIN32)
#include "windows/TempFile.inc"
#else
#include "unix/TempFile.inc"
#endif
