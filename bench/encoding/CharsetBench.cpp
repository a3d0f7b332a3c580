// UTF-8 to wide text and back through the base library's converter, beside
// iconv and the C library's mbstowcs/wcstombs under a UTF-8 locale, on mixed
// CJK text and on ASCII text.

#include <benchmark/benchmark.h>

#include <clocale>
#include <cstdlib>
#include <iconv.h>
#include <string>

#include <vxbase/StringConverter.h>

#include "bench/support/RatioReporter.h"

namespace {

std::string Repeat(const std::string& piece, std::size_t length) {
  std::string text;
  while (text.size() + piece.size() <= length) text += piece;
  return text;
}

// Chinese document text: CJK with full-width punctuation and a few ASCII
// words and numbers (about one character in eight).
const std::string kCjkPiece =
    "本文档说明了页面处理流程，包括第 12 页的图像（PNG 格式）和文字排版。"
    "系统会根据用户的选择自动调整字体大小与颜色，并在完成后保存为 PDF 文件。";
// Chinese words and ASCII words in equal measure: the kind of character
// changes every few characters.
const std::string kHalfAsciiPiece =
    "\xE4\xB8\xAD\xE6\x96\x87\xE6\xB7\xB7\xE5\x90\x88 text 123, "
    "\xE6\x96\x87\xE6\xA1\xA3\xE5\xA4\x84\xE7\x90\x86 page 7 \xE9\xA1\xB5\xE9\x9D\xA2. ";
// The first `length` bytes of `text`, cut back to a character boundary.
std::string Prefix(const std::string& text, std::size_t length) {
  while (length > 0 && (static_cast<unsigned char>(text[length]) & 0xC0) == 0x80) --length;
  return text.substr(0, length);
}

const std::string kAsciiPiece = "The quick brown fox jumps over the lazy dog, 0123456789. ";

std::wstring IconvDecode(iconv_t cd, const std::string& text) {
  std::wstring out(text.size(), L'\0');
  char* in = const_cast<char*>(text.data());
  std::size_t inLeft = text.size();
  char* o = reinterpret_cast<char*>(&out[0]);
  std::size_t outLeft = out.size() * sizeof(wchar_t);
  iconv(cd, &in, &inLeft, &o, &outLeft);
  out.resize(out.size() - outLeft / sizeof(wchar_t));
  return out;
}

std::string IconvEncode(iconv_t cd, const std::wstring& text) {
  std::string out(text.size() * 4, '\0');
  char* in = reinterpret_cast<char*>(const_cast<wchar_t*>(text.data()));
  std::size_t inLeft = text.size() * sizeof(wchar_t);
  char* o = &out[0];
  std::size_t outLeft = out.size();
  iconv(cd, &in, &inLeft, &o, &outLeft);
  out.resize(out.size() - outLeft);
  return out;
}

std::wstring LibcDecode(const std::string& text) {
  std::wstring out(text.size() + 1, L'\0');
  const std::size_t n = std::mbstowcs(&out[0], text.c_str(), out.size());
  out.resize(n == static_cast<std::size_t>(-1) ? 0 : n);
  return out;
}

std::string LibcEncode(const std::wstring& text) {
  std::string out(text.size() * 4 + 1, '\0');
  const std::size_t n = std::wcstombs(&out[0], text.c_str(), out.size());
  out.resize(n == static_cast<std::size_t>(-1) ? 0 : n);
  return out;
}

template <typename Convert>
void RegisterConversion(const std::string& name, int64_t bytes, Convert convert) {
  benchmark::RegisterBenchmark(name.c_str(), [=](benchmark::State& state) {
    for (auto _ : state) benchmark::DoNotOptimize(convert());
    state.SetBytesProcessed(state.iterations() * bytes);
  });
}

// Converters opened once, as a caller converting often would keep them.
iconv_t g_toWide;
iconv_t g_toUtf8;

void RegisterCase(const std::string& name, const std::string& text) {
  const int length = static_cast<int>(text.size());
  const std::wstring wide(CCA_StringConverter::utf8_to_unicode(text.c_str(), length).c_str());
  const int wideLength = static_cast<int>(wide.size());
  const auto bytes = static_cast<int64_t>(text.size());
  const std::string toWide = "to-wide/" + name + "/";
  RegisterConversion(toWide + "ours", bytes, [=] { return CCA_StringConverter::utf8_to_unicode(text.c_str(), length); });
  RegisterConversion(toWide + "iconv", bytes, [=] { return IconvDecode(g_toWide, text); });
  RegisterConversion(toWide + "mbstowcs", bytes, [=] { return LibcDecode(text); });
  const std::string toUtf8 = "to-utf8/" + name + "/";
  RegisterConversion(toUtf8 + "ours", bytes, [=] { return CCA_StringConverter::unicode_to_utf8(wide.c_str(), wideLength); });
  RegisterConversion(toUtf8 + "iconv", bytes, [=] { return IconvEncode(g_toUtf8, wide); });
  RegisterConversion(toUtf8 + "wcstombs", bytes, [=] { return LibcEncode(wide); });
}

}  // namespace

int main(int argc, char** argv) {
  if (std::setlocale(LC_ALL, "C.UTF-8") == nullptr) {
    std::fprintf(stderr, "the C.UTF-8 locale is missing\n");
    return 1;
  }
  g_toWide = iconv_open("WCHAR_T", "UTF-8");
  g_toUtf8 = iconv_open("UTF-8", "WCHAR_T");
  RegisterCase("cjk-1MB", Repeat(kCjkPiece, 1 << 20));
  RegisterCase("half-ascii-1MB", Repeat(kHalfAsciiPiece, 1 << 20));
  RegisterCase("ascii-1MB", Repeat(kAsciiPiece, 1 << 20));
  RegisterCase("cjk-48B", Prefix(kCjkPiece, 48));
  RegisterCase("ascii-48B", Prefix(kAsciiPiece, 48));
  const int status = RunBenchmarksWithRatios(argc, argv);
  iconv_close(g_toWide);
  iconv_close(g_toUtf8);
  return status;
}
