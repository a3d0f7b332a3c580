// Path text, temporary names and module locations.

#include <vxutility/FileUtils.h>

#include <gtest/gtest.h>

#include <ctime>
#include <filesystem>
#include <tuple>

#include "TestPlatform.h"

TEST(PathSeparators, EverySeparatorIsReplaced) {
  EXPECT_EQ(ConvertPathSep("//x\\\\", '|'), "||x||");
  EXPECT_EQ(ConvertPathSep(static_cast<const char*>(nullptr), '|'), "");
  char buffer[] = "a\\b/c";
  EXPECT_EQ(ToNativePathSep(buffer), buffer);
  const char sep = test_platform::kNativeSep;
  EXPECT_EQ(std::string(buffer), (std::string{'a', sep, 'b', sep, 'c'}));
}

TEST(PathJoin, ExactlyOneSeparatorBetweenParts) {
  const std::pair<std::string, const char*> cases[] = {
      {PathJoin("a\\", "\\b", nullptr), "a\\b"},
      {PathJoin("", "/b", nullptr), "/b"},                // first part kept as it is
      {PathJoin("a", "//b", nullptr), "a//b"},            // only one leading separator dropped
      {PathJoin("a", nullptr, "", "c", nullptr), "a/c"},  // skipped, not an end
      {PathJoin("a/", "/b", "c", "d/", nullptr), "a/b/c/d/"},
      {PathJoin(nullptr, nullptr, nullptr), ""},
  };
  for (const auto& [joined, expected] : cases) EXPECT_EQ(joined, expected);
}

/// `result` points `offset` bytes into `path`, or is an empty text for -1.
bool PointsAt(const char* result, const char* path, int offset) {
  return offset < 0 ? *result == '\0' : result == path + offset;
}

TEST(PathParts, ExtensionNameAndNameWithExtension) {
  // path, length, extension's offset, name, offset of the name with extension
  const std::tuple<const char*, int, int, const char*, int> cases[] = {
      {"C:\\dir\\report.pdf", -1, 13, "report", 7},
      {"dir/file.tar.gz", -1, 12, "file.tar", 4},
      {"noext", -1, -1, "noext", -1},
      {"/.hidden", -1, 1, "", 1},
      {"a.b/cd", 5, 1, "c", 4},             // the dot scan does not stop at a separator
      {"dir\\", -1, -1, "", 4},             // points at the path's NUL
      {"name.txt", 4, -1, "name", -1},
      {"name.txt.bak", 8, 4, "name", -1},   // the extension runs on to the NUL
      {"a/b\\c.txt", 3, -1, "b", 2},
      {"a.b\0c/d.txt", 11, 7, "d", 6},      // an explicit length runs past a NUL
      {nullptr, -1, -1, "", -1},
  };
  for (const auto& [path, length, ext, name, nameWithExt] : cases) {
    SCOPED_TRACE(testing::Message() << (path ? path : "null") << " length " << length);
    EXPECT_TRUE(PointsAt(GetFileExt(path, length), path, ext));
    EXPECT_EQ(GetFileName(path, length), name);
    EXPECT_TRUE(PointsAt(GetFileNameWithExt(path, length), path, nameWithExt));
  }
}

TEST(MakeTempFilename, PrefixSecondsSuffixKeptWhole) {
  const std::string prefix(1500, 'p'), suffix(1500, 's');
  const std::string name = MakeTempFilename(prefix.c_str(), suffix.c_str());
  const std::string stamp = name.substr(1500, name.size() - 3000);
  EXPECT_EQ(name, prefix + stamp + suffix);
  EXPECT_EQ(std::to_string(std::stoul(stamp)), stamp);  // decimal digits only
  EXPECT_NEAR(std::stod(stamp), static_cast<double>(std::time(nullptr)), 1.0);
}

// The test program links the shared library like any caller, so that it is
// a loaded module. The lookups give a resolved directory ending with the
// native separator.
std::string Resolved(const char* directory) {
  return std::filesystem::canonical(directory).make_preferred().u8string() + test_platform::kNativeSep;
}

TEST(ModulePath, LoadedLibrariesAreFoundByTheirWholeName) {
  const std::string name = VXUTILITY_LIBRARY_NAME;
  const CCA_String app = GetAppPath();
  EXPECT_EQ(app.c_str(), Resolved(FILES_TEST_DIR));
  EXPECT_EQ(GetDllPath(name.c_str()).c_str(), Resolved(VXUTILITY_LIBRARY_DIR));
  EXPECT_EQ(GetDllPath(VXUTILITY_LIBRARY_FILE), GetDllPath(name.c_str()));  // a full path names it too
  EXPECT_EQ(GetDllPath(nullptr), app);
  EXPECT_EQ(GetDllPath("no-such-module"), app);
  EXPECT_EQ(GetDllPath(name.substr(0, name.size() - 2).c_str()), app);  // names are matched whole
}
