// Path text taken apart and joined: results stay inside the input and keep
// their promises whatever the bytes.

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>

#include <vxutility/FileUtils.h>

namespace {

bool IsSep(char ch) { return ch == '/' || ch == '\\'; }

void Check(bool condition) {
  if (!condition) std::abort();
}

/// `result` is either an empty text or points into [begin, end].
bool InsideOrEmpty(const char* result, const char* begin, const char* end) {
  for (const char* p = begin; p <= end; ++p) {
    if (p == result) return true;
  }
  return *result == '\0';
}

void CheckTakingApart(const std::string& input, int length) {
  const char* path = input.c_str();
  const int visible = static_cast<int>(std::strlen(path));
  const int considered = (length < 0 || length > visible) ? visible : length;

  const char* ext = GetFileExt(path, length);
  Check(InsideOrEmpty(ext, path, path + considered));
  Check(*ext == '\0' || *ext == '.');

  const char* withExt = GetFileNameWithExt(path, length);
  Check(InsideOrEmpty(withExt, path, path + considered));
  Check(*withExt == '\0' || IsSep(withExt[-1]));

  const CCA_String name = GetFileName(path, length);
  Check(name.GetLength() <= considered);
  for (int i = 0; i < name.GetLength(); ++i) Check(!IsSep(name[i]));
}

void CheckJoining(const std::string& input) {
  const std::size_t third = input.size() / 3;
  const std::string a = input.substr(0, third);
  const std::string b = input.substr(third, third);
  const std::string c = input.substr(2 * third);
  const std::string joined = PathJoin(a.c_str(), b.c_str(), c.c_str(), nullptr);
  Check(joined.size() <= std::strlen(a.c_str()) + std::strlen(b.c_str()) + std::strlen(c.c_str()) + 2);

  const std::string converted = ConvertPathSep(input.c_str(), '|');
  for (char ch : converted) Check(!IsSep(ch));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size > 4096) return 0;
  const std::string input(reinterpret_cast<const char*>(data), size);
  CheckTakingApart(input, -1);
  CheckTakingApart(input, static_cast<int>(size / 2));
  CheckJoining(input);
  return 0;
}
