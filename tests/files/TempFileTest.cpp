#include <vxutility/TempFile.h>

#include <regex>

#include "files/ScratchDir.h"

using TempFileTest = ScratchDirTest;
using test_platform::kTempDirVariable;

// The directory is taken as text (no separator added), the extension's own
// dot is kept and the path is made once.
TEST_F(TempFileTest, NameHasEveryPartThatIsTurnedOn) {
  for (int mask = 0; mask < 32; ++mask) {
    SCOPED_TRACE(mask);
    TempFile temp("D:\\work");
    temp.setUseAppID(mask & 1);
    temp.setUseRandomNumber(mask & 2);
    temp.setPrefix("scan");
    temp.setPrefix(mask & 4 ? nullptr : "");  // null keeps, empty clears
    if (mask & 8) temp.setSuffix("p1");
    if (mask & 16) temp.setFileExt(".png");
    temp.generateFilePath();
    temp.setSuffix("later");  // too late: the path is made once
    temp.generateFilePath();
    const std::string pattern = std::string("D:\\\\work") + (mask & 4 ? "scan_" : "") +
                                (mask & 1 ? std::to_string(test_platform::ProcessId()) + "_" : "") + (mask & 2 ? "[0-9]{5}" : "") +
                                (mask & 8 ? "_p1" : "") + (mask & 16 ? "\\.\\.png" : "");
    EXPECT_TRUE(std::regex_match(temp.getFilePath(), std::regex(pattern))) << temp.getFilePath();
  }
}

TEST_F(TempFileTest, SystemDirectoryEndsWithOneSeparator) {
  const char* saved = std::getenv(kTempDirVariable);
  const std::string systemDir = saved ? saved : "";
  for (const std::string& dir : {root_, root_.substr(0, root_.size() - 1)}) {
    test_platform::SetEnv(kTempDirVariable, dir);
    EXPECT_EQ(TempFile().getDir(), root_);  // the system's, ending with one separator
  }
  test_platform::SetEnv(kTempDirVariable, systemDir);
}

TEST_F(TempFileTest, FileIsRemovedUnlessToldOtherwise) {
  {
    TempFile original(root_.c_str()), keep(root_.c_str());
    keep.setAutoRemove(false);
    keep.setPrefix("kept");
    keep.generateFilePath();
    original.generateFilePath();
    WriteFile(keep.getFilePath().substr(root_.size()), "x");
    WriteFile(original.getFilePath().substr(root_.size()), "x");
    const TempFile copy(original);  // removes it too; the second to go finds nothing
    EXPECT_EQ(copy.getFilePath(), original.getFilePath());
  }
  ASSERT_EQ(EntryCount(), 1);
  EXPECT_EQ(fs::directory_iterator(root_)->path().filename().string().substr(0, 5), "kept_");
}
