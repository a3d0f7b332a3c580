#include <vxutility/VXLibrary.h>

#include <dlfcn.h>
#include <stdlib.h>

#include <clocale>
#include <cstdlib>

#include <string>
#include <type_traits>

#include <gtest/gtest.h>

static_assert(!std::is_copy_constructible<VXLibrary>::value && !std::is_copy_assignable<VXLibrary>::value,
              "a copy would share and free the record twice");

namespace {

const std::string kPluginDir = VXTEST_PLUGIN_DIR;
const std::string kPluginPath = VXTEST_PLUGIN_PATH;

bool LoadedInProcess(const std::string& path) {
  void* handle = dlopen(path.c_str(), RTLD_NOW | RTLD_NOLOAD);
  if (handle == nullptr) return false;
  dlclose(handle);
  return true;
}

bool EndsInsideUtf8Sequence(const std::string& text) {
  std::size_t lead = text.size();
  while (lead > 0 && (static_cast<unsigned char>(text[lead - 1]) & 0xC0) == 0x80) --lead;
  if (lead == 0) return false;
  const unsigned char first = static_cast<unsigned char>(text[lead - 1]);
  const std::size_t expected = first >= 0xF0 ? 4 : first >= 0xE0 ? 3 : first >= 0xC0 ? 2 : 1;
  return text.size() - (lead - 1) != expected;
}

}  // namespace

TEST(VXLibraryTest, PathsAndNamesFromDirectoryAndName) {
  const struct {
    const char* dir;
    const char* name;
    const char* path;
  } cases[] = {
      {"/app/bin", "codec", "/app/bin/codec.so"},
      {"/app/bin/", "codec", "/app/bin/codec.so"},
      {"C:\\app\\bin\\", "codec", "C:\\app\\bin\\codec.so"},
      {"C:/app/bin/", "codec", "C:/app/bin/codec.so"},
      {"/d", "x.so", "/d/x.so.so"},          // the suffix is always added
      {"", "codec", "codec.so"},             // the loader searches for it
      {nullptr, "codec", "codec.so"},
      {"/\xC3\xA9t\xC3\xA9", "\xC3\xA9", "/\xC3\xA9t\xC3\xA9/\xC3\xA9.so"},  // UTF-8 is local here
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.path);
    VXLibrary library(c.dir, c.name);
    EXPECT_STREQ(library.LibraryPath(), c.path);
    EXPECT_STREQ(library.LibraryName(), c.name);
    EXPECT_FALSE(library.IsLoaded());
  }
}

TEST(VXLibraryTest, PathsAndNamesFromOnePath) {
  const std::pair<const char*, const char*> cases[] = {
      {"/app/bin/codec.so", "codec"},
      {"C:\\app\\bin\\codec.dll", "codec"},
      {"libm.so.6", "libm.so"},
      {"plain", "plain"},
      {"/app/bin/", ""},
  };
  for (const auto& [path, name] : cases) {
    SCOPED_TRACE(path);
    VXLibrary library(path);
    EXPECT_STREQ(library.LibraryPath(), path);
    EXPECT_STREQ(library.LibraryName(), name);
  }
}

TEST(VXLibraryTest, LoadResolveAndUnloadTheTestPlugin) {
  VXLibrary library(kPluginDir.c_str(), "vxtest_plugin");
  EXPECT_EQ(library.Resolve("vxtest_plugin_answer"), nullptr);
  EXPECT_STREQ(library.ErrorMessage(), "Library not load");

  ASSERT_TRUE(library.Load()) << library.ErrorMessage();
  EXPECT_TRUE(library.IsLoaded());
  EXPECT_STREQ(library.ErrorMessage(), "");
  auto answer = reinterpret_cast<int (*)()>(library.Resolve("vxtest_plugin_answer"));
  auto add = reinterpret_cast<int (*)(int, int)>(library.Resolve("vxtest_plugin_add"));
  ASSERT_NE(answer, nullptr);
  ASSERT_NE(add, nullptr);
  EXPECT_EQ(answer(), 42);
  EXPECT_EQ(add(40, 2), 42);
  EXPECT_STREQ(library.ErrorMessage(), "");

  EXPECT_EQ(library.Resolve("vxtest_plugin_hidden"), nullptr);
  EXPECT_STREQ(library.ErrorMessage(), "\"vxtest_plugin_hidden\" not found in library \"vxtest_plugin\"");
  // An empty or null symbol is refused before anything else: the text stays.
  EXPECT_EQ(library.Resolve(""), nullptr);
  EXPECT_EQ(library.Resolve(nullptr), nullptr);
  EXPECT_STREQ(library.ErrorMessage(), "\"vxtest_plugin_hidden\" not found in library \"vxtest_plugin\"");

  library.Unload();
  EXPECT_FALSE(library.IsLoaded());
  EXPECT_STREQ(library.ErrorMessage(), "");
  EXPECT_FALSE(LoadedInProcess(kPluginPath));
  EXPECT_EQ(library.Resolve("vxtest_plugin_answer"), nullptr);
  EXPECT_STREQ(library.ErrorMessage(), "Library not load");
}

// Each Load takes a reference of the system's; the older one is let go, so
// one Unload (or the destructor) really unloads.
TEST(VXLibraryTest, RepeatedLoadsLeaveOneReference) {
  {
    VXLibrary library(kPluginPath.c_str());
    EXPECT_STREQ(library.LibraryName(), "vxtest_plugin");
    for (int i = 0; i < 3; ++i) ASSERT_TRUE(library.Load()) << library.ErrorMessage();
    library.Unload();
    EXPECT_FALSE(LoadedInProcess(kPluginPath));
    ASSERT_TRUE(library.Load());
    ASSERT_TRUE(library.Load());
  }
  EXPECT_FALSE(LoadedInProcess(kPluginPath));
}

TEST(VXLibraryTest, FailedLoadGivesTheSystemTextWithoutLineBreak) {
  const std::string missing = kPluginDir + "/no-such-library.so";
  VXLibrary library(missing.c_str());
  EXPECT_FALSE(library.Load());
  EXPECT_FALSE(library.IsLoaded());
  const std::string error = library.ErrorMessage();
  EXPECT_NE(error.find("no-such-library.so"), std::string::npos) << error;
  ASSERT_FALSE(error.empty());
  EXPECT_NE(error.back(), '\n');
  EXPECT_NE(error.back(), '\r');

  // A failed Load after a good one leaves nothing loaded and nothing held.
  VXLibrary plugin(kPluginPath.c_str());
  ASSERT_TRUE(plugin.Load());
  EXPECT_TRUE(library.Load() == false && plugin.IsLoaded());
  plugin.Unload();
  EXPECT_FALSE(LoadedInProcess(kPluginPath));
}

TEST(VXLibraryTest, LongTextsAreCutTo1023BytesOnACharacterBoundary) {
  VXLibrary library(kPluginPath.c_str());
  ASSERT_TRUE(library.Load());
  const struct {
    const char* label;
    std::string symbol;
  } cases[] = {
      {"ASCII", std::string(2000, 'a')},
      {"two-byte characters", [] {
         std::string s;
         for (int i = 0; i < 1000; ++i) s += "\xC3\xA9";
         return s;
       }()},
      {"three-byte characters after an odd prefix", "x" + [] {
         std::string s;
         for (int i = 0; i < 700; ++i) s += "\xE2\x82\xAC";
         return s;
       }()},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.label);
    EXPECT_EQ(library.Resolve(c.symbol.c_str()), nullptr);
    const std::string error = library.ErrorMessage();
    EXPECT_LE(error.size(), 1023u);
    EXPECT_GE(error.size(), 1020u);
    EXPECT_EQ(error.compare(0, 11, "\"" + c.symbol.substr(0, 10)), 0);
    EXPECT_FALSE(EndsInsideUtf8Sequence(error));
  }
}

// Under a Latin-1 locale the UTF-8 names reach the loader as Latin-1, and
// the loader's text (which quotes the path) comes back as UTF-8. The locale
// is made for the test in a private directory.
TEST(VXLibraryTest, NamesAreHandedToTheLoaderInTheLocalEncoding) {
  char dirTemplate[] = "/tmp/vxlibrary-locale-XXXXXX";
  ASSERT_NE(mkdtemp(dirTemplate), nullptr);
  const std::string localeDir = dirTemplate;
  const std::string command = "localedef -i fr_FR -f ISO-8859-1 " + localeDir + "/fr_FR.ISO-8859-1 >/dev/null 2>&1";
  const bool made = std::system(command.c_str()) == 0;
  setenv("LOCPATH", localeDir.c_str(), 1);
  const bool active = made && std::setlocale(LC_CTYPE, "fr_FR.ISO-8859-1") != nullptr;
  if (active) {
    VXLibrary library("/nonexistent/\xC3\xA9t\xC3\xA9", "\xC3\xA9");
    EXPECT_STREQ(library.LibraryPath(), "/nonexistent/\xE9t\xE9/\xE9.so");
    EXPECT_STREQ(library.LibraryName(), "\xE9");
    EXPECT_FALSE(library.Load());
    EXPECT_NE(std::string(library.ErrorMessage()).find("/nonexistent/\xC3\xA9t\xC3\xA9/\xC3\xA9.so"), std::string::npos)
        << library.ErrorMessage();
  }
  std::setlocale(LC_CTYPE, "C");
  unsetenv("LOCPATH");
  std::system(("rm -rf " + localeDir).c_str());
  if (!active) GTEST_SKIP() << "no Latin-1 locale could be made with localedef";
}
