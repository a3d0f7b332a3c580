#pragma once
// A fresh directory per test, removed afterwards, so tests never touch the
// host's own files.

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

#include <unistd.h>

class ScratchDirTest : public ::testing::Test {
 protected:
  void SetUp() override {
    std::string pattern = (std::filesystem::temp_directory_path() / "vxfiles-XXXXXX").string();
    ASSERT_NE(mkdtemp(pattern.data()), nullptr);
    root_ = pattern + "/";
  }

  void TearDown() override {
    std::error_code error;
    std::filesystem::permissions(root_, std::filesystem::perms::owner_all,
                                 std::filesystem::perm_options::add, error);
    std::filesystem::remove_all(root_, error);
  }

  /// `name` inside the scratch directory.
  std::string Path(const std::string& name) const { return root_ + name; }

  /// Writes `bytes` to `name` and returns its path.
  std::string WriteFile(const std::string& name, const std::string& bytes) const {
    const std::string path = Path(name);
    std::ofstream(path, std::ios::binary) << bytes;
    return path;
  }

  std::string MakeDir(const std::string& name) const {
    const std::string path = Path(name);
    std::filesystem::create_directories(path);
    return path;
  }

  static bool Exists(const std::string& path) {
    std::error_code error;
    return std::filesystem::exists(path, error);
  }

  static std::string ReadFile(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
  }

  /// Every entry below the scratch directory, to see that nothing was left.
  std::size_t EntryCount() const {
    std::size_t count = 0;
    for (auto it = std::filesystem::recursive_directory_iterator(root_);
         it != std::filesystem::recursive_directory_iterator(); ++it) {
      ++count;
    }
    return count;
  }

  static bool RunningAsRoot() { return geteuid() == 0; }

  std::string root_;
};
