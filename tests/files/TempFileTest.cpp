#include <vxutility/TempFile.h>

#include <cstdlib>
#include <ctime>
#include <regex>

#include "files/ScratchDir.h"

namespace {

/// Points the system's temporary directory at the scratch directory, so the
/// default constructor never names a file in the host's own one.
class TempFileTest : public ScratchDirTest {
 protected:
  void SetUp() override {
    ScratchDirTest::SetUp();
    const char* old = std::getenv("TMPDIR");
    hadTmpDir_ = old != nullptr;
    if (hadTmpDir_) oldTmpDir_ = old;
    setenv("TMPDIR", root_.substr(0, root_.size() - 1).c_str(), 1);
  }
  void TearDown() override {
    if (hadTmpDir_) {
      setenv("TMPDIR", oldTmpDir_.c_str(), 1);
    } else {
      unsetenv("TMPDIR");
    }
    ScratchDirTest::TearDown();
  }

  static std::string Pid() { return std::to_string(getpid()); }

  bool hadTmpDir_ = false;
  std::string oldTmpDir_;
};

/// Runs `make` until two clock readings around it agree, so that names
/// built from the clock can be compared.
template <typename Make>
auto WithinOneSecond(Make make) {
  for (;;) {
    const std::time_t before = std::time(nullptr);
    auto result = make();
    if (std::time(nullptr) == before) return result;
  }
}

TEST_F(TempFileTest, NameHasEveryPartThatIsTurnedOn) {
  for (int mask = 0; mask < 32; ++mask) {
    const bool appId = mask & 1, random = mask & 2, prefix = mask & 4, suffix = mask & 8, ext = mask & 16;
    SCOPED_TRACE(mask);
    TempFile temp(root_.c_str());
    temp.setUseAppID(appId);
    temp.setUseRandomNumber(random);
    if (prefix) temp.setPrefix("scan");
    if (suffix) temp.setSuffix("p1");
    if (ext) temp.setFileExt("png");
    temp.generateFilePath();

    std::string pattern = std::regex_replace(root_, std::regex("[.]"), "\\.");
    if (prefix) pattern += "scan_";
    if (appId) pattern += Pid() + "_";
    if (random) pattern += "[0-9]{5}";
    if (suffix) pattern += "_p1";
    if (ext) pattern += "\\.png";
    EXPECT_TRUE(std::regex_match(temp.getFilePath(), std::regex(pattern)))
        << temp.getFilePath() << " !~ " << pattern;
  }
}

TEST_F(TempFileTest, DirectoriesAreTakenAsText) {
  EXPECT_EQ(TempFile::getSystemTempDir(), root_);  // separator appended once
  setenv("TMPDIR", root_.c_str(), 1);
  EXPECT_EQ(TempFile::getSystemTempDir(), root_);  // not doubled

  EXPECT_EQ(TempFile().getDir(), root_);
  EXPECT_EQ(TempFile(nullptr).getDir(), root_);

  TempFile windowsStyle("D:\\work");
  windowsStyle.setUseRandomNumber(false);
  windowsStyle.generateFilePath();
  EXPECT_EQ(windowsStyle.getFilePath(), "D:\\work" + Pid() + "_");
  windowsStyle.setPrefix("later");  // the path is made once
  windowsStyle.generateFilePath();
  EXPECT_EQ(windowsStyle.getFilePath(), "D:\\work" + Pid() + "_");

  TempFile nothing;
  nothing.setUseAppID(false);
  nothing.setUseRandomNumber(false);
  nothing.setFileExt(".pdf");
  EXPECT_EQ(nothing.getFilePath(), "");
  nothing.generateFilePath();
  EXPECT_EQ(nothing.getFilePath(), root_ + "..pdf");  // the dot is not removed
}

TEST_F(TempFileTest, NullTextKeepsAndEmptyTextClears) {
  TempFile bare("");
  bare.setUseAppID(false);
  bare.setUseRandomNumber(false);
  bare.setPrefix("a");
  bare.setPrefix(nullptr);
  bare.setSuffix("b");
  bare.setFileExt("txt");
  bare.setFileExt(nullptr);
  bare.generateFilePath();
  EXPECT_EQ(bare.getFilePath(), "a__b.txt");

  TempFile cleared("");
  cleared.setUseAppID(false);
  cleared.setPrefix("a");
  cleared.setPrefix("");
  cleared.setFileExt("txt");
  cleared.setFileExt("");
  cleared.generateFilePath();
  EXPECT_TRUE(std::regex_match(cleared.getFilePath(), std::regex("[0-9]{5}")));
}

TEST_F(TempFileTest, SameSecondSameOptionsSamePath) {
  const auto paths = WithinOneSecond([this] {
    TempFile a(root_.c_str()), b(root_.c_str());
    a.generateFilePath();
    b.generateFilePath();
    return std::make_pair(a.getFilePath(), b.getFilePath());
  });
  EXPECT_EQ(paths.first, paths.second);
}

TEST_F(TempFileTest, FileIsRemovedUnlessToldOtherwise) {
  std::string removed, kept;
  {
    TempFile temp;
    temp.generateFilePath();
    removed = WriteFile(temp.getFilePath().substr(root_.size()), "x");
    ASSERT_EQ(removed, temp.getFilePath());
  }
  EXPECT_FALSE(Exists(removed));
  {
    TempFile temp;
    temp.setAutoRemove(false);
    temp.setPrefix("kept");
    temp.generateFilePath();
    kept = WriteFile(temp.getFilePath().substr(root_.size()), "x");
  }
  EXPECT_TRUE(Exists(kept));
  {
    TempFile neverCreated;
    neverCreated.setPrefix("never");
    neverCreated.generateFilePath();
    TempFile notGenerated;  // empty path: nothing to remove
  }
  EXPECT_EQ(EntryCount(), 1u);  // only the kept file
}

TEST_F(TempFileTest, CopiesCarryThePathAndTheFlag) {
  std::string path;
  {
    TempFile original(root_.c_str());
    original.setPrefix("copy");
    original.generateFilePath();
    path = WriteFile(original.getFilePath().substr(root_.size()), "x");

    TempFile copy(original);
    EXPECT_EQ(copy.getFilePath(), path);
    TempFile assigned("elsewhere/");
    assigned = original;
    EXPECT_EQ(assigned.getFilePath(), path);
    EXPECT_EQ(assigned.getDir(), root_);
    assigned.setAutoRemove(false);
    original.setAutoRemove(false);
  }  // only the copy removes it; the others find nothing or are told not to
  EXPECT_FALSE(Exists(path));
}

}  // namespace
