#include <vxutility/FileUtils.h>

#include <gtest/gtest.h>

#include <cstdint>
#include <ctime>

namespace {

TEST(PathSeparators, EverySeparatorIsReplaced) {
  EXPECT_EQ(ConvertPathSep("a\\b/c", '|'), "a|b|c");
  EXPECT_EQ(ConvertPathSep("//x\\\\", '\\'), "\\\\x\\\\");
  EXPECT_EQ(ConvertPathSep(static_cast<const char*>(nullptr), '|'), "");
  EXPECT_EQ(ConvertPathSep("", '|'), "");

  char buffer[] = "a\\b/c";
  EXPECT_EQ(ConvertPathSep(buffer, '|'), buffer);
  EXPECT_STREQ(buffer, "a|b|c");
  EXPECT_EQ(ConvertPathSep(static_cast<char*>(nullptr), '|'), nullptr);
  char empty[] = "";
  EXPECT_EQ(ConvertPathSep(empty, '|'), empty);

  std::string text = "a\\b/c";
  ConvertPathSep(text, '|');
  EXPECT_EQ(text, "a|b|c");
}

TEST(PathSeparators, NativeIsSlashOnThisPlatform) {
  EXPECT_EQ(ToNativePathSep("a\\b/c"), "a/b/c");
  EXPECT_EQ(ToNativePathSep(static_cast<const char*>(nullptr)), "");
  char buffer[] = "x\\y";
  EXPECT_STREQ(ToNativePathSep(buffer), "x/y");
  std::string text = "\\root\\dir";
  ToNativePathSep(text);
  EXPECT_EQ(text, "/root/dir");
}

TEST(PathJoin, ExactlyOneSeparatorBetweenParts) {
  const struct {
    std::string joined;
    const char* expected;
  } cases[] = {
      {PathJoin("a", "b", nullptr), "a/b"},
      {PathJoin("a/", "/b", nullptr), "a/b"},
      {PathJoin("a\\", "\\b", nullptr), "a\\b"},
      {PathJoin("", "/b", nullptr), "/b"},             // first part kept as it is
      {PathJoin(nullptr, "\\b", nullptr), "\\b"},
      {PathJoin("a", "//b", nullptr), "a//b"},         // only one leading separator dropped
      {PathJoin("a", "", "c", nullptr), "a/c"},
      {PathJoin("a", nullptr, "c", nullptr), "a/c"},   // a null part is skipped, the list goes on
      {PathJoin("C:\\data\\", "/sub", "file.txt", nullptr), "C:\\data\\sub/file.txt"},
      {PathJoin("a", "b", "c", "d/", nullptr), "a/b/c/d/"},
      {PathJoin("a//b", "c", nullptr), "a//b/c"},      // inner separators untouched
      {PathJoin("", "", nullptr), ""},
      {PathJoin(nullptr, nullptr, nullptr), ""},
      {PathJoin("/", "/", nullptr), "/"},
  };
  for (const auto& c : cases) EXPECT_EQ(c.joined, c.expected);
}

/// A function that answers with a pointer into its path argument.
struct PointerCase {
  const char* path;
  int length;
  int offset;  // where the result points into `path`; -1: an empty text
};

void ExpectPointsAt(const char* result, const PointerCase& c) {
  SCOPED_TRACE(c.path);
  if (c.offset < 0) {
    EXPECT_STREQ(result, "");
  } else {
    EXPECT_EQ(result, c.path + c.offset);
  }
}

TEST(PathParts, FileExtPointsIntoThePath) {
  const PointerCase cases[] = {
      {"archive.tar.gz", -1, 11},
      {"noext", -1, -1},
      {"name.txt", 4, -1},        // only "name" is looked at
      {"name.txt", 5, 4},
      {"name.txt.bak", 8, 4},     // result runs on to the NUL: ".txt.bak"
      {"a.b/c", -1, 1},           // the scan does not stop at a separator
      {".hidden", -1, 0},
      {"dir/", -1, -1},
      {"x.", -1, 1},
      {"", -1, -1},
      {"a.b\0.c", 6, 1},          // an explicit length stops at a NUL
  };
  for (const PointerCase& c : cases) ExpectPointsAt(GetFileExt(c.path, c.length), c);
  EXPECT_STREQ(GetFileExt(nullptr, -1), "");
}

TEST(PathParts, FileNameIsTheLastComponentWithoutExtension) {
  const struct {
    const char* path;
    int length;
    const char* expected;
  } cases[] = {
      {"C:\\dir\\report.pdf", -1, "report"},
      {"/report", -1, "report"},
      {"dir/report", -1, "report"},
      {"report", -1, "report"},
      {".hidden", -1, ""},
      {"dir/file.tar.gz", -1, "file.tar"},
      {"a.b/c", -1, "c"},         // a dot before the separator is no extension
      {"a.b\\c.d", -1, "c"},
      {"dir/", -1, ""},
      {"dir\\", -1, ""},
      {"dir/report.pdf", 10, "report"},
      {"dir/report.pdf", 12, "report"},
      {"dir/report.pdf", 3, "dir"},
      {"dir/report.pdf", 0, ""},
      {"", -1, ""},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.path);
    EXPECT_EQ(GetFileName(c.path, c.length), c.expected);
  }
  EXPECT_EQ(GetFileName(nullptr, -1), "");
}

TEST(PathParts, FileNameWithExtNeedsASeparator) {
  const PointerCase cases[] = {
      {"C:\\dir\\report.pdf", -1, 7},
      {"/a/b.txt", -1, 3},
      {"report.pdf", -1, -1},
      {"dir/", -1, 4},             // points at the path's NUL
      {"a/b\\c.txt", 3, 2},        // "b\\c.txt": only the first 3 bytes are searched
      {"a/b\\c.txt", 1, -1},
      {"", -1, -1},
  };
  for (const PointerCase& c : cases) ExpectPointsAt(GetFileNameWithExt(c.path, c.length), c);
  EXPECT_STREQ(GetFileNameWithExt(nullptr, -1), "");
}

TEST(MakeTempFilename, PrefixSecondsSuffix) {
  const auto before = static_cast<std::uint32_t>(std::time(nullptr));
  const std::string name = MakeTempFilename("pre_", ".tmp");
  const std::string bare = MakeTempFilename(nullptr, nullptr);
  const auto after = static_cast<std::uint32_t>(std::time(nullptr));

  ASSERT_GT(name.size(), 8u);
  EXPECT_EQ(name.substr(0, 4), "pre_");
  EXPECT_EQ(name.substr(name.size() - 4), ".tmp");
  const unsigned long stamp = std::stoul(name.substr(4, name.size() - 8));
  EXPECT_GE(stamp, before);
  EXPECT_LE(stamp, after);
  EXPECT_EQ(bare.find_first_not_of("0123456789"), std::string::npos);
  EXPECT_LE(std::stoul(bare), after);
}

TEST(MakeTempFilename, LongTextIsKeptWhole) {
  const std::string prefix(1500, 'p');
  const std::string suffix(1500, 's');
  const std::string name = MakeTempFilename(prefix.c_str(), suffix.c_str());
  EXPECT_EQ(name.substr(0, prefix.size()), prefix);
  EXPECT_EQ(name.substr(name.size() - suffix.size()), suffix);
  EXPECT_GT(name.size(), prefix.size() + suffix.size());
}

}  // namespace
