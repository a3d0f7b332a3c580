#pragma once
/// A name for a temporary file, `<prefix>_<pid>_<ddddd>_<suffix>.<ext>`, in a
/// directory (by default the system's temporary directory). The object only
/// makes the name; the caller creates the file. Unless told otherwise the
/// file is deleted when the object goes. Paths are in the local encoding.

#include <string>

#include <vxutility/vxutility_export.h>

class VXUTILITY_EXPORT TempFile {
 public:
  /// Names files in getSystemTempDir().
  TempFile();
  /// Names files in `dir`, taken as text (no separator added); null means
  /// getSystemTempDir().
  TempFile(const char* dir);
  /// Copies every setting and the generated path.
  TempFile(const TempFile& other);
  /// Takes every setting and the generated path of `other`.
  TempFile& operator=(const TempFile& other);
  /// Deletes the file at the generated path when auto-removal is on, never
  /// a directory of that name; a missing file is no error.
  ~TempFile();

  /// Whether the destructor deletes the file (default true).
  void setAutoRemove(bool autoRemove);
  /// Whether the process id goes into the name (default true).
  void setUseAppID(bool useAppID);
  /// Whether five random digits go into the name (default true).
  void setUseRandomNumber(bool useRandomNumber);
  /// Text at the start of the name; null keeps the current one.
  void setPrefix(const char* prefix);
  /// Text after the digits; null keeps the current one.
  void setSuffix(const char* suffix);
  /// Extension without its dot; null keeps the current one.
  void setFileExt(const char* fileExt);

  /// Sets the path to the directory followed by a new name, once: later
  /// calls keep the first path. Threads may generate names at once: each
  /// gets the digits of the clock's seed.
  void generateFilePath();
  /// The directory text.
  const std::string& getDir() const;
  /// The generated path; empty before generateFilePath().
  const std::string& getFilePath() const;

  /// The system's temporary directory ending with the native separator
  /// (on POSIX `TMPDIR` when it names a directory, else /tmp); empty when
  /// the system gives none.
  static std::string getSystemTempDir();

 private:
  std::string generateFileName() const;

  bool autoRemove;
  bool useAppID;
  bool useRandomNumber;
  std::string prefix;
  std::string suffix;
  std::string fileExt;
  std::string dir;
  std::string filePath;
};
