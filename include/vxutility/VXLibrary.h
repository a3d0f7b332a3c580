#pragma once
/// A dynamic library by name: loaded on request, its symbols looked up, and
/// unloaded with the object. The object keeps the text of its last failure.
///
/// Names and paths are UTF-8 and handed to the loader in the local encoding;
/// error texts are UTF-8. One object is used by one thread at a time.

#include <vxutility/vxutility_export.h>

struct VXLibraryPrivate;

class VXUTILITY_EXPORT VXLibrary {
 public:
  /// Names the library `name` in directory `dir`: the path is `dir`, a
  /// separator unless `dir` already ends with `/` or `\`, `name` and the
  /// platform's suffix (".so", ".dylib" on macOS, ".dll" on Windows), which is
  /// added even when `name` has one. An empty or null `dir` gives the bare
  /// name with the suffix, which the loader searches for. Nothing is loaded.
  VXLibrary(const char* dir, const char* name);
  /// Names the library at `path`, taken as given; its name is the last
  /// component without extension. Nothing is loaded.
  explicit VXLibrary(const char* path);
  /// Unloads the library if it is loaded.
  ~VXLibrary();
  VXLibrary(const VXLibrary&) = delete;
  VXLibrary& operator=(const VXLibrary&) = delete;

  /// Loads the library from its path; true when loaded. On failure the error
  /// text is the system's (trailing line break cut) and the object is not
  /// loaded. A second Load keeps the new handle and releases the older one.
  bool Load();
  /// The address of an exported symbol; null when the library is not loaded
  /// ("Library not load") or does not export it. A null or empty symbol
  /// gives null and leaves the error text alone.
  void* Resolve(const char* symbol);
  /// Clears the error text and releases the library if it is loaded.
  void Unload();
  /// True between a successful Load and Unload.
  bool IsLoaded() const;

  /// The name (local encoding), valid while the object lives.
  const char* LibraryName() const;
  /// The path handed to the loader (local encoding), valid while the object lives.
  const char* LibraryPath() const;
  /// The last error text, at most 1,023 bytes; empty after an operation that
  /// succeeded. Valid until the next Load, Resolve or Unload.
  const char* ErrorMessage() const;

 private:
  VXLibraryPrivate* m_pPrivate;
};
