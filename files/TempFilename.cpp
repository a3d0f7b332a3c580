// A file name stamped with the current second.

#include <vxutility/FileUtils.h>

#include <cstdint>
#include <ctime>

std::string MakeTempFilename(const char* prefix, const char* suffix) {
  // Only the low 32 bits of the clock go into the name.
  const auto seconds = static_cast<std::uint32_t>(std::time(nullptr));
  std::string name = prefix ? prefix : "";
  name += std::to_string(seconds);
  name += suffix ? suffix : "";
  return name;
}
