// Named shared memory: the two states, every failure message, the name rule,
// who removes a block, large blocks and two processes sharing one.

#include <gtest/gtest.h>

#include <cstdio>
#include <cstring>
#include <fstream>
#include <sstream>
#include <string>

#include <sys/mman.h>
#include <unistd.h>

#include <vxutility/VXProcess.h>
#include <vxutility/VXSharedMemory.h>

#include "runtime/RuntimeTestSupport.h"

namespace {

constexpr unsigned kRead = VXSharedMemory::PermissionRead;
constexpr unsigned kWrite = VXSharedMemory::PermissionWrite;

bool InDevShm(const std::string& posixName) { return access(("/dev/shm" + posixName).c_str(), F_OK) == 0; }

/// The permissions column of /proc/self/maps for the mapping at `address`.
std::string MappingPermissions(const void* address) {
  std::ifstream maps("/proc/self/maps");
  std::string line;
  const auto where = reinterpret_cast<uintptr_t>(address);
  while (std::getline(maps, line)) {
    std::istringstream fields(line);
    uintptr_t start = 0, end = 0;
    char dash = 0;
    std::string permissions;
    fields >> std::hex >> start >> dash >> end >> permissions;
    if (where >= start && where < end) return permissions;
  }
  return std::string();
}

/// Every block name of a test starts with this process's own prefix; none
/// may be left behind.
class SharedMemoryTest : public ::testing::Test {
 protected:
  std::string Name(const std::string& suffix) const { return prefix_ + suffix; }

  void TearDown() override {
    for (const char* suffix : {"a", "b", "rw", "big", "x_y_z", "pair"}) {
      EXPECT_FALSE(InDevShm("/" + Name(suffix))) << suffix;
    }
  }

 private:
  std::string prefix_ = "vxutility-test-" + std::to_string(getpid()) + "-";
};

TEST_F(SharedMemoryTest, FailuresLeaveTheirMessageUntilTheNextOperation) {
  VXSharedMemory block(Name("a").c_str());
  VXSharedMemory other(Name("a").c_str());
  const struct {
    const char* step;
    bool (*run)(VXSharedMemory&, VXSharedMemory&);
    bool result;
    const char* message;
  } steps[] = {
      {"detach fresh", [](VXSharedMemory& b, VXSharedMemory&) { return b.Detach(true); }, true, ""},
      {"destroy fresh", [](VXSharedMemory& b, VXSharedMemory&) { return b.Destroy(); }, true, ""},
      {"attach missing", [](VXSharedMemory& b, VXSharedMemory&) { return b.Attach(kRead); }, false,
       "OpenFileMapping error, errorcode=2"},
      {"create no flag", [](VXSharedMemory& b, VXSharedMemory&) { return b.Create(4096, 0); }, false,
       "Invalid permission flag(0)"},
      {"create size 0", [](VXSharedMemory& b, VXSharedMemory&) { return b.Create(0, kWrite); }, false,
       "Create shared memory error, errorcode=22"},
      {"create", [](VXSharedMemory& b, VXSharedMemory&) { return b.Create(4096, kWrite); }, true, ""},
      {"create again", [](VXSharedMemory& b, VXSharedMemory&) { return b.Create(4096, kWrite); }, false,
       "Already exists"},
      {"attach flag 4", [](VXSharedMemory& b, VXSharedMemory&) { return b.Attach(4); }, false,
       "Invalid permission flag(4)"},
      {"attach both bits", [](VXSharedMemory& b, VXSharedMemory&) { return b.Attach(kRead | kWrite | 8); }, true, ""},
      {"attach again", [](VXSharedMemory& b, VXSharedMemory&) { return b.Attach(kRead); }, false,
       "Already attached"},
      {"detach", [](VXSharedMemory& b, VXSharedMemory&) { return b.Detach(false); }, true, ""},
      {"detach twice", [](VXSharedMemory& b, VXSharedMemory&) { return b.Detach(false); }, true, ""},
      {"second object attaches", [](VXSharedMemory&, VXSharedMemory& o) { return o.Attach(kRead); }, true, ""},
      {"destroy", [](VXSharedMemory& b, VXSharedMemory&) { return b.Destroy(); }, true, ""},
      {"destroy twice", [](VXSharedMemory& b, VXSharedMemory&) { return b.Destroy(); }, true, ""},
      {"name is gone", [](VXSharedMemory& b, VXSharedMemory&) { return b.Attach(kRead); }, false,
       "OpenFileMapping error, errorcode=2"},
  };
  for (const auto& step : steps) {
    VXSharedMemory& target = std::strncmp(step.step, "second", 6) == 0 ? other : block;
    EXPECT_EQ(step.run(block, other), step.result) << step.step;
    EXPECT_STREQ(target.GetErrorMessage(), step.message) << step.step;
    if (std::strcmp(step.step, "attach again") == 0) {
      EXPECT_NE(block.GetData(), nullptr);
    }
    if (std::strcmp(step.step, "detach") == 0) {
      EXPECT_EQ(block.GetData(), nullptr);
    }
  }
  EXPECT_NE(other.GetData(), nullptr);  // a view outlives the name
}

TEST_F(SharedMemoryTest, ReadersSeeTheWritersContentsReadOnly) {
  VXSharedMemory writer(Name("rw").c_str());
  ASSERT_TRUE(writer.Create(4096, kWrite));
  ASSERT_TRUE(writer.Attach(kWrite));
  EXPECT_EQ(MappingPermissions(writer.GetData()), "rw-s");
  std::strcpy(static_cast<char*>(writer.GetData()), "shared text");
  static_cast<char*>(writer.GetData())[4095] = 'z';

  VXSharedMemory reader(Name("rw").c_str());
  ASSERT_TRUE(reader.Attach(kRead));
  EXPECT_EQ(MappingPermissions(reader.GetData()), "r--s");
  EXPECT_STREQ(static_cast<const char*>(reader.GetData()), "shared text");
  EXPECT_EQ(static_cast<const char*>(reader.GetData())[4095], 'z');
  const VXSharedMemory& constReader = reader;
  EXPECT_EQ(constReader.GetData(), reader.GetData());
}

TEST_F(SharedMemoryTest, ReadOnlyBlocksCannotBeAttachedForWriting) {
  if (geteuid() == 0) GTEST_SKIP() << "permission bits do not bind the superuser";
  VXSharedMemory block(Name("a").c_str());
  ASSERT_TRUE(block.Create(100, kRead));
  VXSharedMemory writer(Name("a").c_str());
  EXPECT_FALSE(writer.Attach(kWrite));
  EXPECT_STREQ(writer.GetErrorMessage(), "OpenFileMapping error, errorcode=13");
  EXPECT_TRUE(writer.Attach(kRead));
}

TEST_F(SharedMemoryTest, OnlyTheObjectThatMadeTheBlockRemovesIt) {
  VXSharedMemory maker(Name("b").c_str());
  VXSharedMemory opener(Name("b").c_str());
  ASSERT_TRUE(maker.Create(4096, kWrite));
  ASSERT_TRUE(opener.Create(8192, kWrite));  // exists: opened, not resized
  ASSERT_TRUE(opener.Destroy());
  EXPECT_TRUE(InDevShm("/" + Name("b")));
  ASSERT_TRUE(opener.Attach(kRead));
  ASSERT_TRUE(maker.Destroy());
  EXPECT_FALSE(InDevShm("/" + Name("b")));
}

TEST_F(SharedMemoryTest, NamesBecomeOnePosixName) {
  const struct {
    std::string given;
    std::string alias;
  } cases[] = {
      {Name("x/y\\z"), Name("x_y_z")},
      {"/" + Name("x_y_z"), Name("x_y_z")},
  };
  for (const auto& c : cases) {
    VXSharedMemory block(c.given.c_str());
    ASSERT_TRUE(block.Create(64, kWrite)) << block.GetErrorMessage();
    EXPECT_TRUE(InDevShm("/" + Name("x_y_z")));
    VXSharedMemory alias(c.alias.c_str());
    EXPECT_TRUE(alias.Attach(kRead)) << c.given;
  }
}

TEST_F(SharedMemoryTest, SystemRefusalsCarryTheirCode) {
  VXSharedMemory tooLong(Name(std::string(300, 'n')).c_str());
  EXPECT_FALSE(tooLong.Create(64, kWrite));
  EXPECT_STREQ(tooLong.GetErrorMessage(), "Create shared memory error, errorcode=22");

  // Created by someone else but not yet sized: nothing to map.
  const std::string unsized = "/" + Name("a");
  const int fd = shm_open(unsized.c_str(), O_RDWR | O_CREAT | O_EXCL, 0600);
  ASSERT_GE(fd, 0);
  VXSharedMemory block(Name("a").c_str());
  EXPECT_FALSE(block.Attach(kRead));
  EXPECT_STREQ(block.GetErrorMessage(), "MapViewOfFile error, errorcode=22");
  EXPECT_EQ(block.GetData(), nullptr);
  close(fd);
  shm_unlink(unsized.c_str());
  EXPECT_TRUE(block.Detach(false));
  EXPECT_STREQ(block.GetErrorMessage(), "");
}

TEST_F(SharedMemoryTest, BlocksPastTwoGigabytes) {
  const unsigned size = 3u << 30;
  VXSharedMemory block(Name("big").c_str());
  ASSERT_TRUE(block.Create(size, kWrite)) << block.GetErrorMessage();
  ASSERT_TRUE(block.Attach(kWrite)) << block.GetErrorMessage();
  volatile char* bytes = static_cast<char*>(block.GetData());
  bytes[size - 1] = 'e';
  EXPECT_EQ(bytes[size - 1], 'e');
}

TEST_F(SharedMemoryTest, TwoProcessesShareABlock) {
  VXSharedMemory block(Name("pair").c_str());
  ASSERT_TRUE(block.Create(4096, kWrite));
  ASSERT_TRUE(block.Attach(kWrite));
  VXProcess writer;
  ASSERT_TRUE(StartHelper(writer, {"shm-write", Name("pair"), "from the child"}));
  ASSERT_TRUE(writer.wait(10000));
  EXPECT_EQ(writer.exitcode(), 0);
  EXPECT_STREQ(static_cast<const char*>(block.GetData()), "from the child");

  std::strcpy(static_cast<char*>(block.GetData()), "from the parent");
  Pipe out;
  VXProcess reader;
  reader.setStartFlags(XProcInheritHandles);
  reader.redirectStdOutput(AsHandle(out.write), AsHandle(out.write));
  ASSERT_TRUE(StartHelper(reader, {"shm-read", Name("pair")}));
  out.CloseWrite();
  EXPECT_EQ(out.ReadAll(), "from the parent");
  EXPECT_TRUE(reader.wait(10000));
}

}  // namespace
