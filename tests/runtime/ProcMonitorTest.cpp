// The process list over /proc, status fields, the watching settings and
// their selector, forced ends and the wide diagnostics.

#include <gtest/gtest.h>

#include <climits>
#include <cstdio>
#include <cstring>
#include <cwchar>
#include <string>

#include <unistd.h>

#include <vxutility/ProcMonitor.h>
#include <vxutility/VXProcess.h>

#include "runtime/ProcMonitorDetail.h"
#include "runtime/OpenMonitor.h"
#include "runtime/RuntimeTestSupport.h"

namespace {

using testing::internal::CaptureStdout;
using testing::internal::GetCapturedStdout;

std::string OwnImageName() {
  char path[4096];
  const ssize_t length = readlink("/proc/self/exe", path, sizeof path - 1);
  if (length <= 0) return std::string();
  path[length] = '\0';
  return std::strrchr(path, '/') + 1;
}

long StatusKb(OpenMonitor& monitor, long pid, const char* key) {
  char value[256];
  return monitor.GetStatusByPid(pid, const_cast<char*>(key), value) == 1 ? std::atol(value) : -1;
}

TEST(ProcMonitor, FreshListShowsOwnProcessUnwatched) {
  OpenMonitor monitor;
  const std::deque<PROC_INFO_DATA> list = monitor.GetQueprocData();
  ASSERT_GT(list.size(), 1u);
  for (const PROC_INFO_DATA& record : list) {
    EXPECT_GT(record.pId, 0);
    EXPECT_FALSE(record.monitor);
    EXPECT_EQ(record.interval, 0);
    EXPECT_EQ(record.max_mem, 0);
    EXPECT_EQ(record.last_time, 0);
    EXPECT_LT(std::strlen(record.proc), sizeof record.proc);
  }
  const PROC_INFO_DATA* own = monitor.Find(getpid());
  ASSERT_NE(own, nullptr);
  EXPECT_EQ(std::string(own->proc), OwnImageName());
  EXPECT_TRUE(own->mem_valid);

  PROC_INFO_DATA data{};
  ASSERT_EQ(monitor.GetMemeryDataByPid(getpid(), data), 1);
  const long rss = StatusKb(monitor, getpid(), "VmRSS");
  EXPECT_GT(data.mem, 100);  // a running test binary holds far more than 100 KB
  EXPECT_NEAR(static_cast<double>(data.mem), static_cast<double>(rss), rss * 0.2);
  EXPECT_NEAR(static_cast<double>(monitor.GetMemeryDataByPid(getpid())), static_cast<double>(rss), rss * 0.2);
}

TEST(ProcMonitor, UnknownIdsGiveMinusOne) {
  OpenMonitor monitor;
  for (long pid : {0L, -1L, static_cast<long>(INT_MAX), LONG_MAX}) {
    PROC_INFO_DATA data{};
    data.pId = 1234;
    EXPECT_EQ(monitor.GetMemeryDataByPid(pid, data), -1) << pid;
    EXPECT_EQ(data.pId, 1234);
    EXPECT_EQ(monitor.GetMemeryDataByPid(pid), -1) << pid;
  }
}

TEST(ProcMonitor, ReadsStatusFieldsByExactKey) {
  OpenMonitor monitor;
  const std::string ownName = std::string(OwnImageName()).substr(0, 15);  // Name: holds 15 bytes
  const struct {
    long pid;
    const char* key;
    int result;
    std::string value;
  } cases[] = {
      {getpid(), "Name", 1, ownName},
      {getpid(), "Pid", 1, std::to_string(getpid())},
      {getpid(), "VmRS", -1, ""},  // a prefix of a key is no key
      {getpid(), "NoSuchKey", -1, ""},
      {getpid(), "", -1, ""},
      {0, "Name", -1, ""},
      {INT_MAX, "Name", -1, ""},
  };
  for (const auto& c : cases) {
    char value[256];
    std::memset(value, 'x', sizeof value);
    EXPECT_EQ(monitor.GetStatusByPid(c.pid, const_cast<char*>(c.key), value), c.result) << c.key;
    EXPECT_EQ(std::string(value), c.value) << c.key;
  }
  char value[256];
  ASSERT_EQ(monitor.GetStatusByPid(getpid(), const_cast<char*>("VmRSS"), value), 1);
  EXPECT_NE(std::strstr(value, " kB"), nullptr) << value;
  EXPECT_EQ(monitor.GetStatusByPid(getpid(), nullptr, value), -1);
  EXPECT_EQ(monitor.GetStatusByPid(getpid(), const_cast<char*>("Name"), nullptr), -1);
}

TEST(ProcMonitor, SelectorSetsExactlyOneField) {
  const struct {
    int what;
    int result;
    bool monitor;
    int interval;
    long maxMem;
  } cases[] = {
      {1, 1, true, 0, 0}, {7, 1, true, 0, 0}, {6, 1, false, 5, 0},
      {4, 1, false, 0, 900}, {8, -1, false, 0, 0}, {0, -1, false, 0, 0},
  };
  for (const auto& c : cases) {
    OpenMonitor monitor;
    PROC_INFO_DATA data{};
    data.pId = getpid();
    data.monitor = true;
    data.interval = 5;
    data.max_mem = 900;
    EXPECT_EQ(monitor.SetProcMonitorDataByPid(data, c.what), c.result) << c.what;
    const PROC_INFO_DATA* own = monitor.Find(getpid());
    ASSERT_NE(own, nullptr);
    EXPECT_EQ(own->monitor, c.monitor) << c.what;
    EXPECT_EQ(own->interval, c.interval) << c.what;
    EXPECT_EQ(own->max_mem, c.maxMem) << c.what;
  }
  OpenMonitor monitor;
  PROC_INFO_DATA missing{};
  missing.pId = INT_MAX;
  missing.monitor = true;
  EXPECT_EQ(monitor.SetProcMonitorDataByPid(missing, 1), 1);
  EXPECT_EQ(monitor.SetProcMonitorDataByPName(missing, 1), 1);  // empty name matches nothing listed
  for (const PROC_INFO_DATA& record : monitor.GetQueprocData()) EXPECT_FALSE(record.monitor);
}

TEST(ProcMonitor, ByNameChangesOnlyTheFirstListedAndSettingsSurviveRefresh) {
  VXProcess first;
  VXProcess second;
  ASSERT_TRUE(StartHelper(first, {"sleep", "20000"}));
  ASSERT_TRUE(StartHelper(second, {"sleep", "20000"}));
  OpenMonitor monitor;
  PROC_INFO_DATA data{};
  std::strcpy(data.proc, "runtime_helper");
  data.max_mem = 4096;
  ASSERT_EQ(monitor.SetProcMonitorDataByPName(data, 4), 1);
  data.monitor = true;
  ASSERT_EQ(monitor.SetProcMonitorDataByPName(data, 1), 1);
  int marked = 0;
  long firstListed = 0;
  for (const PROC_INFO_DATA& record : monitor.GetQueprocData()) {
    if (std::strcmp(record.proc, "runtime_helper") != 0) continue;
    if (firstListed == 0) firstListed = record.pId;
    marked += record.monitor;
  }
  EXPECT_EQ(marked, 1);

  ASSERT_EQ(monitor.UpdateProcData(), 1);
  const PROC_INFO_DATA* kept = monitor.Find(firstListed);
  ASSERT_NE(kept, nullptr);
  EXPECT_TRUE(kept->monitor);
  EXPECT_EQ(kept->max_mem, 4096);
  EXPECT_TRUE(kept->mem_valid);

  // An ended process drops out at the next refresh.
  first.terminate();
  ASSERT_TRUE(first.wait(5000));
  ASSERT_EQ(monitor.UpdateProcData(), 1);
  EXPECT_EQ(monitor.Find(static_cast<long>(first.pid())), nullptr);
}

TEST(ProcMonitor, CopiesCarryTheListAndTheFieldName) {
  OpenMonitor monitor;
  PROC_INFO_DATA data{};
  data.pId = getpid();
  data.interval = 9;
  monitor.SetProcMonitorDataByPid(data, 2);
  monitor.SetMemeryString(const_cast<char*>("Pid"));
  OpenMonitor copy(monitor);
  OpenMonitor assigned;
  assigned = monitor;
  for (OpenMonitor* m : {&copy, &assigned}) {
    ASSERT_NE(m->Find(getpid()), nullptr);
    EXPECT_EQ(m->Find(getpid())->interval, 9);
  }
  assigned = assigned;
  EXPECT_EQ(assigned.GetQueprocData().size(), monitor.GetQueprocData().size());
}

TEST(ProcMonitor, KillProcessEndsAChildAndReportsMissingIds) {
  VXProcess child;
  ASSERT_TRUE(StartHelper(child, {"sleep", "20000"}));
  OpenMonitor monitor;
  CaptureStdout();
  EXPECT_EQ(monitor.KillProcess(static_cast<long>(child.pid())), 1);
  EXPECT_EQ(GetCapturedStdout(), "");
  EXPECT_TRUE(child.wait(5000));
  EXPECT_EQ(child.exitState(), XProcExitNone);  // ended by a signal that was not the object's own

  // 0 and -1 would reach whole process groups through kill(): refused.
  for (long pid : {0L, -1L, static_cast<long>(INT_MAX), LONG_MAX}) {
    CaptureStdout();
    EXPECT_EQ(monitor.KillProcess(pid), -1);
    EXPECT_EQ(GetCapturedStdout(), "\nOpen Process fAiled:3\n3") << pid;
  }
}

/// Writes with the orientation of `kind`: 'n' narrow, 'w' wide, '-' nothing.
void WriteOriented(std::FILE* stream, char kind, const char* text) {
  if (kind == 'n') std::fprintf(stream, "%s", text);
  if (kind == 'w') std::fwprintf(stream, L"%s", text);
}

TEST(ProcMonitor, WideDiagnosticsComeOutWhateverTheStreamOrientation) {
  const struct {
    char before;
    char after;
    const char* expected;
  } cases[] = {
      {'n', 'n', "<\nOpen Process fAiled:3\n>"},  // the caller printed with printf
      {'w', 'w', "<\nOpen Process fAiled:3\n>"},  // the caller printed with wprintf
      {'-', 'w', "\nOpen Process fAiled:3\n>"},   // nothing yet: either may follow
      {'-', 'n', "\nOpen Process fAiled:3\n>"},
  };
  for (const auto& c : cases) {
    std::FILE* stream = std::tmpfile();
    ASSERT_NE(stream, nullptr);
    WriteOriented(stream, c.before, "<");
    detail::PrintWideDiagnostic(stream, L"\nOpen Process fAiled:%d\n", 3);
    WriteOriented(stream, c.after, ">");
    std::fflush(stream);
    char buffer[128] = {};
    const ssize_t got = pread(fileno(stream), buffer, sizeof buffer, 0);  // a wide stream cannot fread
    ASSERT_GE(got, 0);
    EXPECT_EQ(std::string(buffer, static_cast<std::size_t>(got)), c.expected) << c.before << c.after;
    std::fclose(stream);
  }
}

TEST(ProcMonitor, LongTextsAreCutWithoutSplittingACharacter) {
  const std::string euro = "\xE2\x82\xAC";  // three bytes
  const struct {
    std::string text;
    std::size_t length;
  } cases[] = {
      {std::string(300, 'a'), 255},
      {std::string(253, 'a') + euro, 253},  // 256 bytes: the euro sign would not fit whole
      {std::string(252, 'a') + euro, 255},
      {"VmRSS", 5},
  };
  for (const auto& c : cases) {
    char field[256];
    detail::CopyCut(field, sizeof field, c.text.data(), c.text.size());
    EXPECT_EQ(std::strlen(field), c.length);
    EXPECT_EQ(c.text.compare(0, c.length, field), 0);
  }
}

}  // namespace
