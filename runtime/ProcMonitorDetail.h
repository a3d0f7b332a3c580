#pragma once
// What each system's ProcMonitor file provides (unix/ProcMonitor.inc,
// windows/ProcMonitor.inc).

#include <cstdio>
#include <deque>

#include <vxutility/ProcMonitor.h>

namespace detail {

/// Appends one zero-filled record per process whose status can be read, with
/// id, image name and resident memory. False when the process table itself
/// cannot be read.
bool ListProcesses(std::deque<PROC_INFO_DATA>& list);
/// Copies the value of status field `key` of `pid` into `value` (256 bytes,
/// leading blanks removed). False with an empty value when the process or
/// the field is missing.
bool ReadStatusField(long pid, const char* key, char* value);
/// Whether `pid` names a process the caller may end; false with the error.
bool ProbeProcess(long pid, unsigned& errorCode);
/// Ends `pid` by force; false with the error. Ids that name no single
/// process (0, negative, too large) are refused as missing.
bool EndProcess(long pid, unsigned& errorCode);
/// Prints `format` with `code` as wide text on `stream`, and makes sure it
/// comes out whatever the stream's orientation, leaving that orientation as
/// it was.
void PrintWideDiagnostic(std::FILE* stream, const wchar_t* format, int code);
/// Portable: copies `text` into a field of `capacity` bytes, cut before a
/// UTF-8 sequence that would not fit whole; always NUL-terminated.
void CopyCut(char* field, std::size_t capacity, const char* text, std::size_t length);

}  // namespace detail
