// Child processes: the command line, starting, exit mapping, waiting with a
// time-out, redirection, forced ends and what a child leaves behind.

#include <gtest/gtest.h>

#include <cerrno>
#include <chrono>
#include <climits>
#include <memory>
#include <string>
#include <vector>

#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>

#include <vxutility/VXProcess.h>

#include "runtime/RuntimeTestSupport.h"
#include "runtime/VXProcessDetail.h"

extern char** environ;

namespace {

constexpr int kNoExitCode = 0x1F2E3D4C;
using testing::internal::CaptureStdout;
using testing::internal::GetCapturedStdout;

TEST(VXProcessCommandLine, QuotesEntriesWithSpacesAndEscapesNothing) {
  const struct {
    std::vector<const char*> entries;
    const char* line;
  } cases[] = {
      {{"tool.exe"}, "tool.exe"},
      {{"a b.exe", "x y", "z"}, "\"a b.exe\" \"x y\" z"},
      {{"C:\\Program Files\\x\\tool.exe", "-o", "out dir\\a.pdf"},
       "\"C:\\Program Files\\x\\tool.exe\" -o \"out dir\\a.pdf\""},
      {{"p", "tab\there", "say \"hi\"", "back\\slash\\"}, "p tab\there \"say \"hi\"\" back\\slash\\"},
      {{"p", " ", "lead", "trail "}, "p \" \" lead \"trail \""},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(detail::BuildCommandLine(c.entries.data(), static_cast<int>(c.entries.size())), c.line);
  }
}

TEST(VXProcess, RefusesInvalidArgumentsWithoutStarting) {
  const char* empty[] = {""};
  const char* oneEmpty[] = {"x", ""};
  const struct {
    const char* program;
    int argc;
    const char* const* argv;
  } cases[] = {
      {nullptr, 0, nullptr}, {"", 0, nullptr}, {RUNTIME_HELPER, 1, nullptr},
      {RUNTIME_HELPER, 1, empty}, {RUNTIME_HELPER, 2, oneEmpty}, {RUNTIME_HELPER, INT_MAX, oneEmpty},
  };
  for (const auto& c : cases) {
    VXProcess process;
    CaptureStdout();
    EXPECT_FALSE(process.start(c.program, c.argc, c.argv));
    EXPECT_EQ(GetCapturedStdout(), "");
    EXPECT_EQ(process.state(), XProcNotRunning);
    EXPECT_EQ(process.pid(), 0u);
    EXPECT_TRUE(process.wait(-1));
  }
}

TEST(VXProcess, MapsHowTheChildEnded) {
  const struct {
    std::vector<std::string> args;
    XProcExitState exitState;
    int exitCode;
  } cases[] = {
      {{"exit", "3"}, XProcExitNormal, 3},
      {{"exit", "0"}, XProcExitNormal, 0},
      {{"exit", "255"}, XProcExitNormal, 255},
      {{"crash"}, XProcExitNone, kNoExitCode},
      {{"killself"}, XProcExitNone, kNoExitCode},  // SIGKILL, but not ours
  };
  for (const auto& c : cases) {
    VXProcess process;
    ASSERT_TRUE(StartHelper(process, c.args)) << c.args[0];
    EXPECT_EQ(process.state(), XProcRunning);
    EXPECT_EQ(process.exitcode(), kNoExitCode);
    CaptureStdout();
    EXPECT_TRUE(process.wait(-1));
    EXPECT_EQ(GetCapturedStdout(), "PROC: will wait proc " + std::to_string(process.pid()) + " unitl dead\n");
    EXPECT_EQ(process.state(), XProcNotRunning) << c.args[0];
    EXPECT_EQ(process.exitState(), c.exitState) << c.args[0];
    EXPECT_EQ(process.exitcode(), c.exitCode) << c.args[0];
  }
}

TEST(VXProcess, SystemRefusalsCarryTheirCode) {
  const struct {
    const char* program;
    int stdOut;
    const char* message;
  } cases[] = {
      {"vxutility-no-such-program", -1, "Start process fail, errorcode=2\n"},
      {"/nonexistent/dir/tool", -1, "Start process fail, errorcode=2\n"},
      {RUNTIME_HELPER, 999, "Start process fail, errorcode=9\n"},  // not an open descriptor
  };
  for (const auto& c : cases) {
    VXProcess process;
    process.setStartFlags(XProcInheritHandles);
    process.redirectStdOutput(AsHandle(c.stdOut), AsHandle(-1));
    CaptureStdout();
    EXPECT_FALSE(process.start(c.program, 0, nullptr));
    EXPECT_EQ(GetCapturedStdout(), c.message);
    EXPECT_EQ(process.state(), XProcNotRunning);
  }
}

TEST(VXProcess, ArgumentsReachTheChildUnchanged) {
  const std::vector<std::string> args = {"args", "two words", "tab\tinside", "\"quoted\"", "back\\slash", "*", "$HOME"};
  Pipe out;
  VXProcess process;
  process.setStartFlags(XProcInheritHandles);
  process.redirectStdOutput(AsHandle(out.write), AsHandle(out.write));
  ASSERT_TRUE(StartHelper(process, args));
  out.CloseWrite();
  const std::string printed = out.ReadAll();
  EXPECT_TRUE(process.wait(5000));
  std::string expected;
  for (std::size_t i = 1; i < args.size(); ++i) expected += "[" + args[i] + "]\n";
  EXPECT_EQ(printed, expected);
}

TEST(VXProcess, RedirectionNeedsTheInheritFlag) {
  const struct {
    unsigned flags;
    bool redirect;
    const char* output;
  } cases[] = {
      {XProcInheritHandles, true, "out:hello\nerr:hello\n"},
      {XProcInheritHandles | 0x100, true, "out:hello\nerr:hello\n"},  // unknown bits are ignored
      {0, true, ""},
      {XProcInheritHandles, false, ""},
  };
  for (const auto& c : cases) {
    Pipe out;
    VXProcess process;
    process.setStartFlags(c.flags);
    if (c.redirect) process.redirectStdOutput(AsHandle(out.write), AsHandle(out.write));
    ASSERT_TRUE(StartHelper(process, {"say", "hello"}));
    out.CloseWrite();
    EXPECT_EQ(out.ReadAll(), c.output) << c.flags;
    EXPECT_TRUE(process.wait(5000));
    EXPECT_EQ(process.exitcode(), 0);
  }
}

TEST(VXProcess, ChildKeepsOnlyItsStandardDescriptorsWithoutInheritance) {
  Pipe extra;
  fcntl(extra.read, F_SETFD, 0);  // both ends inheritable: only the flag decides
  const struct {
    unsigned flags;
    int descriptors;
  } cases[] = {{0, 3}, {XProcInheritHandles, 5}};
  for (const auto& c : cases) {
    VXProcess process;
    process.setStartFlags(c.flags);
    ASSERT_TRUE(StartHelper(process, {"fds"}));
    ASSERT_TRUE(process.wait(5000));
    if (c.flags == 0) {
      EXPECT_EQ(process.exitcode(), c.descriptors);
    } else {
      EXPECT_GE(process.exitcode(), c.descriptors);  // the caller may hold more
    }
  }
}

TEST(VXProcess, RunsInTheGivenDirectory) {
  char pattern[] = "/tmp/vxproc-cwd-XXXXXX";
  ASSERT_NE(mkdtemp(pattern), nullptr);
  const std::string dir = std::string(pattern) + "/with space";
  ASSERT_EQ(mkdir(dir.c_str(), 0700), 0);
  Pipe out;
  VXProcess process;
  process.setStartFlags(XProcInheritHandles);
  process.redirectStdOutput(AsHandle(out.write), AsHandle(-1));
  process.setCurrentDir(dir.c_str());
  ASSERT_TRUE(StartHelper(process, {"cwd"}));
  out.CloseWrite();
  EXPECT_EQ(out.ReadAll(), dir + "\n");
  EXPECT_TRUE(process.wait(5000));

  process.redirectStdOutput(AsHandle(-1), AsHandle(-1));  // the pipe's end is closed now
  process.setCurrentDir((dir + "/missing").c_str());
  CaptureStdout();
  EXPECT_FALSE(StartHelper(process, {"cwd"}));
  EXPECT_EQ(GetCapturedStdout(), "Start process fail, errorcode=2\n");
  process.setCurrentDir("");  // back to the caller's directory
  EXPECT_TRUE(StartHelper(process, {"exit", "0"}));
  EXPECT_TRUE(process.wait(5000));
  rmdir(dir.c_str());
  rmdir(pattern);
}

TEST(VXProcess, TimedWaitsAndForcedEnd) {
  VXProcess process;
  ASSERT_TRUE(StartHelper(process, {"sleep", "20000"}));
  EXPECT_FALSE(process.wait(0));
  const auto before = std::chrono::steady_clock::now();
  EXPECT_FALSE(process.wait(150));
  EXPECT_GE(std::chrono::steady_clock::now() - before, std::chrono::milliseconds(150));
  EXPECT_EQ(process.state(), XProcRunning);
  process.terminate();
  EXPECT_EQ(process.state(), XProcRunning);  // only a wait sees the end
  CaptureStdout();
  EXPECT_TRUE(process.wait(-1));
  GetCapturedStdout();
  EXPECT_EQ(process.exitcode(), 1);
  EXPECT_EQ(process.exitState(), XProcExitNormal);
  process.terminate();  // nothing runs: nothing happens
  EXPECT_TRUE(process.wait(0));

  // The exit code and state stay until the next wait, across a new start.
  ASSERT_TRUE(StartHelper(process, {"exit", "7"}));
  EXPECT_EQ(process.exitcode(), 1);
  EXPECT_TRUE(process.wait(5000));
  EXPECT_EQ(process.exitcode(), 7);
}

TEST(VXProcess, DestructionEndsAndCollectsARunningChild) {
  pid_t running = 0;
  pid_t finished = 0;
  {
    VXProcess process;
    ASSERT_TRUE(StartHelper(process, {"sleep", "20000"}));
    running = static_cast<pid_t>(process.pid());
  }
  EXPECT_EQ(kill(running, 0), -1);  // not even a zombie is left
  EXPECT_EQ(errno, ESRCH);
  {
    VXProcess process;
    ASSERT_TRUE(StartHelper(process, {"exit", "0"}));
    running = static_cast<pid_t>(process.pid());
    usleep(200 * 1000);  // ended on its own, never waited for
    CaptureStdout();
  }
  EXPECT_EQ(GetCapturedStdout(), "");
  EXPECT_EQ(kill(running, 0), -1);
  {
    VXProcess process;
    ASSERT_TRUE(StartHelper(process, {"exit", "0"}));
    ASSERT_TRUE(process.wait(5000));
    finished = static_cast<pid_t>(process.pid());
  }
  EXPECT_EQ(kill(finished, 0), -1);
}

TEST(VXProcess, ChildCollectedElsewhereTakesTheInvalidHandleBranch) {
  auto process = std::make_unique<VXProcess>();
  ASSERT_TRUE(StartHelper(*process, {"exit", "4"}));
  const std::string pid = std::to_string(process->pid());
  int status = 0;
  ASSERT_EQ(waitpid(static_cast<pid_t>(process->pid()), &status, 0), static_cast<pid_t>(process->pid()));
  CaptureStdout();
  EXPECT_TRUE(process->wait(1000));
  const std::string printed = GetCapturedStdout();
  EXPECT_EQ(printed.rfind("Wait proc finish fail, pid=" + pid + ", errorcode=10, hProc=", 0), 0u) << printed;
  EXPECT_EQ(printed.substr(printed.size() - 15), "\nhand invalid.\n");
  EXPECT_EQ(process->exitcode(), kNoExitCode);
  EXPECT_EQ(process->exitState(), XProcExitNone);
  EXPECT_EQ(process->state(), XProcRunning);
  // The child is gone, so the destructor's forced end fails and says so.
  CaptureStdout();
  process.reset();
  EXPECT_EQ(GetCapturedStdout(), "Terminate fail, errorcode=3\n");
}

TEST(VXProcess, ManyCyclesLeaveNoZombieAndNoDescriptor) {
  const int descriptors = OpenDescriptorCount();
  for (int i = 0; i < 1000; ++i) {
    VXProcess process;
    ASSERT_TRUE(StartHelper(process, {"exit", "0"}));
    ASSERT_TRUE(process.wait(10000));
  }
  EXPECT_EQ(OpenDescriptorCount(), descriptors);
  int status = 0;
  EXPECT_EQ(waitpid(-1, &status, WNOHANG), -1);
  EXPECT_EQ(errno, ECHILD);
}

// Kernels without process descriptors wait by asking without blocking.
TEST(VXProcess, WaitWithoutProcessDescriptorHonoursTheTimeOut) {
  pid_t child = 0;
  char* const argv[] = {const_cast<char*>(RUNTIME_HELPER), const_cast<char*>("sleep"), const_cast<char*>("300"),
                        nullptr};
  ASSERT_EQ(posix_spawn(&child, RUNTIME_HELPER, nullptr, nullptr, argv, environ), 0);
  detail::ChildEnd end;
  unsigned error = 0;
  const auto before = std::chrono::steady_clock::now();
  EXPECT_EQ(detail::WaitChild(static_cast<unsigned>(child), nullptr, 50, end, error), detail::ChildWait::TimedOut);
  EXPECT_GE(std::chrono::steady_clock::now() - before, std::chrono::milliseconds(50));
  EXPECT_EQ(detail::WaitChild(static_cast<unsigned>(child), nullptr, 0, end, error), detail::ChildWait::TimedOut);
  EXPECT_EQ(detail::WaitChild(static_cast<unsigned>(child), nullptr, 30000, end, error), detail::ChildWait::Ended);
  EXPECT_EQ(end.exitCode, 0);
  EXPECT_FALSE(end.abnormal);
  EXPECT_EQ(detail::WaitChild(static_cast<unsigned>(child), nullptr, 0, end, error), detail::ChildWait::Failed);
  EXPECT_TRUE(detail::IsInvalidChildError(error));
}

}  // namespace
