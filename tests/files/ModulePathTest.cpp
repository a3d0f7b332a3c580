// Links the shared library like any caller, so that it is a loaded module.

#include <vxutility/FileUtils.h>

#include <gtest/gtest.h>

#include <filesystem>

namespace {

bool SameDirectory(const CCA_String& found, const char* expected) {
  std::error_code error;
  return std::filesystem::equivalent(static_cast<const char*>(found), expected, error);
}

TEST(ModulePath, AppPathIsTheTestProgramsDirectory) {
  const CCA_String app = GetAppPath();
  ASSERT_FALSE(app.IsEmpty());
  EXPECT_EQ(app.GetLast(), '/');
  EXPECT_TRUE(SameDirectory(app, FILES_TEST_DIR)) << app.c_str();
}

TEST(ModulePath, DllPathFindsLoadedLibrariesByName) {
  const CCA_String library = GetDllPath("libvxutility.so.5");
  ASSERT_FALSE(library.IsEmpty());
  EXPECT_EQ(library.GetLast(), '/');
  EXPECT_TRUE(SameDirectory(library, VXUTILITY_LIBRARY_DIR)) << library.c_str();
  EXPECT_EQ(GetDllPath(VXUTILITY_LIBRARY_FILE), library);  // a full path names it too
}

TEST(ModulePath, NullOrUnknownNameGivesTheExecutablesDirectory) {
  const CCA_String app = GetAppPath();
  EXPECT_EQ(GetDllPath(nullptr), app);
  EXPECT_EQ(GetDllPath("libno-such-module.so"), app);
  EXPECT_EQ(GetDllPath(""), app);
  EXPECT_EQ(GetDllPath("libvxutility.so"), app);  // names are matched whole
}

}  // namespace
