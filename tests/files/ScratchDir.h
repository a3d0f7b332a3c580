#pragma once
// A fresh directory per test, removed afterwards, so tests never touch the
// host's own files.

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

namespace fs = std::filesystem;

class ScratchDirTest : public ::testing::Test {
 protected:
  void SetUp() override {
    std::string pattern = (fs::temp_directory_path() / "vxfiles-XXXXXX").string();
    ASSERT_NE(mkdtemp(pattern.data()), nullptr);
    root_ = pattern + "/";
  }

  void TearDown() override { fs::remove_all(root_); }

  /// `name` inside the scratch directory.
  std::string Path(const std::string& name) const { return root_ + name; }

  /// Writes `bytes` to `name`, gives it `mode` and returns its path.
  std::string WriteFile(const std::string& name, const std::string& bytes, int mode = 0644) const {
    std::ofstream(Path(name), std::ios::binary) << bytes;
    fs::permissions(Path(name), fs::perms(mode));
    return Path(name);
  }

  static std::string ReadFile(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(in), {});
  }

  /// Every entry below the scratch directory, to see that nothing was left.
  long EntryCount() const { return std::distance(fs::recursive_directory_iterator(root_), {}); }

  std::string root_;
};
