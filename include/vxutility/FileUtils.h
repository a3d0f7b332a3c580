#pragma once
/// Path text, program locations, copying and creating files.
///
/// The path text functions look at the first `length` bytes of `path`; a
/// negative `length` means the whole text up to its NUL, and an explicit one
/// is taken as it is, NUL bytes inside it included (the caller's buffer must
/// hold that many bytes).
///
/// The file functions take UTF-8 paths and reach the file whose name is that
/// path in the local encoding (`Utf82Local`), all of them the same one; a
/// path with a character the local encoding cannot hold names no file.
///
/// Both `/` and `\` are separators on input. The native separator is the
/// platform's: `/` on Linux and macOS, `\` on Windows.

#include <string>

#include <vxbase/String.h>
#include <vxutility/VXFileInfo.h>
#include <vxutility/vxutility_export.h>

/// A copy of `path` with every `/` and `\` replaced by `sep`; empty for a
/// null or empty path.
VXUTILITY_EXPORT std::string ConvertPathSep(const char* path, char sep);
/// Replaces every `/` and `\` of `path` by `sep` in place and returns `path`
/// (null stays null).
VXUTILITY_EXPORT char* ConvertPathSep(char* path, char sep);
/// Replaces every `/` and `\` of `path` by `sep` in place.
VXUTILITY_EXPORT void ConvertPathSep(std::string& path, char sep);

/// A copy of `path` with the native separator throughout; empty for a null
/// or empty path.
VXUTILITY_EXPORT std::string ToNativePathSep(const char* path);
/// Puts the native separator throughout `path` in place and returns it
/// (null stays null).
VXUTILITY_EXPORT char* ToNativePathSep(char* path);
/// Puts the native separator throughout `path` in place.
VXUTILITY_EXPORT void ToNativePathSep(std::string& path);

/// Joins parts with exactly one separator between them: one leading
/// separator of a later part is dropped and `/` is added unless the text so
/// far ends with one. Null or empty parts are skipped. The list of further
/// `const char*` parts ends with a null pointer, also when only two parts
/// are joined. Empty when every part is empty.
VXUTILITY_EXPORT std::string PathJoin(const char* first, const char* second, ...);

/// The extension with its dot (the last `.` among the first `length` bytes;
/// negative: the whole text), pointing into `path` and running on to its
/// NUL; an empty text when there is none.
VXUTILITY_EXPORT const char* GetFileExt(const char* path, int length);
/// The last component of the first `length` bytes (negative: the whole text)
/// without its extension; empty when the path ends with a separator or the
/// component starts with its only dot.
VXUTILITY_EXPORT CCA_String GetFileName(const char* path, int length);
/// The last component with its extension, pointing into `path` after the
/// last separator among the first `length` bytes (negative: the whole text);
/// an empty text when there is no separator.
VXUTILITY_EXPORT const char* GetFileNameWithExt(const char* path, int length);

/// The directory of the running executable in UTF-8, ending with the native
/// separator; empty when it cannot be found.
VXUTILITY_EXPORT CCA_String GetAppPath();
/// The directory of the loaded module named `moduleName` (local encoding) in
/// UTF-8, ending with the native separator. A null or unknown name gives the
/// executable's directory; empty when neither can be found.
VXUTILITY_EXPORT CCA_String GetDllPath(const char* moduleName);

/// `prefix`, the current time in seconds (low 32 bits, decimal) and
/// `suffix`; a null prefix or suffix counts as empty. Never truncated.
VXUTILITY_EXPORT std::string MakeTempFilename(const char* prefix, const char* suffix);
/// Copies `source` to `target` (UTF-8 paths) byte for byte. Both must be
/// regular files (the target may be missing): a directory, FIFO or device
/// on either side, or a source that cannot be opened, leaves the target
/// untouched, without waiting. A read or write error ends the copy silently.
VXUTILITY_EXPORT void VXCopyFile(const char* source, const char* target);
/// Creates the file at the UTF-8 `path` and every missing directory on the
/// way; an existing file is left unchanged. False when the path names
/// something other than a regular file (a FIFO is refused without waiting)
/// or the file cannot be had, after removing the directories this call
/// created, never one another caller made meanwhile. Safe to call from
/// several threads at once, for the same directories too.
VXUTILITY_EXPORT bool VXCreateFile(const char* path);
