// File names under non-UTF-8 locales: every file function reaches the file
// named by the path in the local encoding, whole characters included.

#include <vxutility/Encoding.h>
#include <vxutility/FileUtils.h>

#include "files/ScratchDir.h"
#include "support/ScopedLocale.h"

namespace {

using FileLocaleTest = ScratchDirTest;

struct NameCase {
  const char* locale;
  std::string utf8;
  std::string local;
};

TEST_F(FileLocaleTest, EveryFunctionReachesTheLocalName) {
  const NameCase cases[] = {
      {kLatin1Locale, "caf\xC3\xA9", "caf\xE9"},
      {kGb18030Locale, "\xE4\xB9\x97\xE4\xB8\xAD", "\x81\x5C\xD6\xD0"},  // first trail byte is 0x5C
      {kShiftJisLocale, "\xE3\x82\xBD\xE6\x97\xA5", "\x83\x5C\x93\xFA"},  // first trail byte is 0x5C
  };
  for (const NameCase& c : cases) {
    SCOPED_TRACE(c.locale);
    ScopedCtypeLocale locale(c.locale);
    if (!locale.ok()) continue;
    // Both separators, as given: `\` is replaced before the name is encoded.
    const std::string file = Path(c.utf8 + "/" + c.utf8 + ".txt");
    ASSERT_TRUE(VXCreateFile(Path(c.utf8 + "\\" + c.utf8 + ".txt").c_str()));
    EXPECT_TRUE(fs::is_regular_file(Path(c.local + "/" + c.local + ".txt")));
    EXPECT_EQ(EntryCount(), 2);  // one directory, one file: no character was split
    EXPECT_EQ(GetFileFlags(file.c_str()), 51);
    EXPECT_EQ(GetFileFlags(Path(c.utf8).c_str()), 53);
    EXPECT_EQ(CheckFilePath(file.c_str(), 3), 3);
    EXPECT_TRUE(VXFileInfo(Utf82Unicode(file.c_str(), -1).c_str(), -1).IsFile());
    WriteFile(c.local + "/" + c.local + ".txt", "text");
    VXCopyFile(file.c_str(), Path(c.utf8 + ".copy").c_str());
    EXPECT_EQ(ReadFile(Path(c.local + ".copy")), "text");
    fs::remove_all(Path(c.local));
    fs::remove(Path(c.local + ".copy"));
  }
}

TEST_F(FileLocaleTest, NameTheLocaleCannotHoldReachesNoFile) {
  ScopedCtypeLocale locale(kLatin1Locale);
  const std::string path = Path("\xE4\xB8\xAD/x.txt");  // U+4E2D is not in Latin-1
  fs::create_directory(Path("?"));  // what a lossy conversion would reach instead
  EXPECT_FALSE(VXCreateFile(path.c_str()));
  EXPECT_EQ(GetFileFlags(Path("\xE4\xB8\xAD").c_str()), 0);
  WriteFile("x", "x");
  VXCopyFile(Path("x").c_str(), Path("\xE4\xB8\xAD").c_str());
  EXPECT_EQ(EntryCount(), 2);
}

}  // namespace
