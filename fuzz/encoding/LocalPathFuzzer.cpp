// Runs arbitrary bytes through the local codec under GB18030 (a multibyte
// encoding whose characters may end in ASCII bytes, `\` among them) and
// through the path functions. Decoding gives at most one character per byte,
// only scalar values, no ASCII character out of a byte above 0x7F, and text
// that survives encoding and decoding again. The path parts stay inside the
// bytes they were given, and a file name keeps every character whole.

#include <clocale>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

#include <vxbase/StringConverter.h>
#include <vxutility/Encoding.h>
#include <vxutility/FileUtils.h>

#include "files/LocalPath.h"

namespace {

bool IsSep(char c) { return c == '/' || c == '\\'; }

void Check(bool ok, const char* what) {
  if (ok) return;
  std::fprintf(stderr, "check failed: %s\n", what);
  std::abort();
}

void CheckCodec(const char* text, int length) {
  const CCA_WString wide = CCA_StringConverter::local_to_unicode(text, length);
  Check(wide.GetLength() <= length, "one character per byte at most");
  int ascii = 0;
  for (int i = 0; i < length && text[i] != '\0'; ++i) ascii += static_cast<unsigned char>(text[i]) < 0x80;
  int wideAscii = 0;
  for (int i = 0; i < wide.GetLength(); ++i) {
    const auto v = static_cast<std::uint32_t>(wide[i]);
    Check(v <= 0x10FFFF && (v < 0xD800 || v > 0xDFFF), "scalar values only");
    wideAscii += v < 0x80;
  }
  // A byte below 0x80 is a character of its own, or the trail of a valid
  // multibyte character: never more ASCII out than in.
  Check(wideAscii <= ascii, "ASCII comes only from ASCII");
  const CCA_String local = CCA_StringConverter::unicode_to_local(wide, wide.GetLength());
  Check(CCA_StringConverter::local_to_unicode(local, local.GetLength()) == wide, "round trip");
  Check(Local2Utf8(text, length) == Unicode2Utf8(wide, wide.GetLength()), "two steps agree");
}

void CheckPathParts(const char* path, int length) {
  // Each pointer is into the path, or an empty text of the library's own.
  const char* ext = GetFileExt(path, length);
  if (ext >= path && ext < path + length) {
    Check(*ext == '.', "extension starts with its dot");
    for (const char* p = ext + 1; p < path + length; ++p) Check(*p != '.', "the last dot");
  } else {
    Check(*ext == '\0', "no extension");
  }
  const char* name = GetFileNameWithExt(path, length);
  if (name > path && name <= path + length) {
    Check(IsSep(name[-1]), "name after a separator");
    for (const char* p = name; p < path + length; ++p) Check(!IsSep(*p), "no separator in the name");
  } else {
    Check(*name == '\0', "no name");
  }
  const CCA_String stem = GetFileName(path, length);
  Check(stem.GetLength() <= length, "name inside the path");
  for (int i = 0; i < stem.GetLength(); ++i) Check(!IsSep(stem[i]), "no separator in the stem");
}

void CheckLocalName(const std::string& utf8) {
  std::string local;
  if (!vxfiles_detail::LocalPathOf(utf8.c_str(), '/', local)) return;
  // Every `/` of the name is a separator the caller wrote: a character whose
  // trail byte is 0x5C has not been split.
  const std::wstring wide = Utf82Unicode(utf8.c_str(), -1);
  std::size_t separators = 0;
  for (wchar_t c : wide) separators += (c == L'/' || c == L'\\');
  std::size_t slashes = 0;
  const std::wstring back = Local2Unicode(local.c_str(), -1);
  for (wchar_t c : back) {
    Check(c != L'\\', "no backslash left");
    slashes += (c == L'/');
  }
  Check(separators == slashes, "separators kept, characters whole");
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
  setenv("LOCPATH", FUZZ_LOCPATH, 1);
  if (std::setlocale(LC_CTYPE, "zh_CN.GB18030") == nullptr) {
    std::fprintf(stderr, "zh_CN.GB18030 is missing from %s (scripts/make-locales.sh)\n", FUZZ_LOCPATH);
    std::abort();
  }
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size > (1u << 16)) return 0;
  const char* text = reinterpret_cast<const char*>(data);
  const int length = static_cast<int>(size);
  CheckCodec(text, length);
  CheckPathParts(text, length);
  const std::string utf8 = Local2Utf8(text, length);
  CheckLocalName(utf8);
  return 0;
}
