#pragma once
// A fresh directory per test, removed afterwards, so tests never touch the
// host's own files.

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>

#include "TestPlatform.h"

namespace fs = std::filesystem;

class ScratchDirTest : public ::testing::Test {
 protected:
  /// A new directory of our own under the system's temporary directory,
  /// ending with the native separator.
  void SetUp() override {
    std::random_device random;
    for (int attempt = 0; attempt < 100 && root_.empty(); ++attempt) {
      const fs::path dir = fs::temp_directory_path() / ("vxfiles-" + std::to_string(random()));
      std::error_code error;
      if (fs::create_directory(dir, error)) root_ = dir.u8string() + test_platform::kNativeSep;
    }
    ASSERT_FALSE(root_.empty());
  }

  /// Windows refuses to delete a read-only file: everything is made
  /// writable first.
  void TearDown() override {
    if (root_.empty()) return;
    std::error_code error;
    for (const auto& entry : fs::recursive_directory_iterator(fs::u8path(root_), error)) {
      fs::permissions(entry.path(), fs::perms::owner_write, fs::perm_options::add, error);
    }
    fs::remove_all(fs::u8path(root_), error);
  }

  /// `name` inside the scratch directory, in UTF-8 like the library's paths.
  std::string Path(const std::string& name) const { return root_ + name; }

  /// Writes `bytes` to `name`, gives it `mode` and returns its path.
  std::string WriteFile(const std::string& name, const std::string& bytes, int mode = 0644) const {
    const fs::path path = fs::u8path(Path(name));
    std::ofstream(path, std::ios::binary) << bytes;
    fs::permissions(path, fs::perms(mode));
    return Path(name);
  }

  static std::string ReadFile(const std::string& path) {
    std::ifstream in(fs::u8path(path), std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(in), {});
  }

  /// Every entry below the scratch directory, to see that nothing was left.
  long EntryCount() const { return std::distance(fs::recursive_directory_iterator(fs::u8path(root_)), {}); }

  std::string root_;
};
