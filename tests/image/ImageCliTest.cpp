// vxutil image, run as a person would run it.

#include <gtest/gtest.h>

#include <sys/wait.h>

#include <cstdio>
#include <string>

#include "files/ScratchDir.h"
#include "image/ImageTestSupport.h"

namespace {

struct CliRun {
  int status;
  std::string output;
};

CliRun Vxutil(const std::string& arguments) {
  const std::string command = std::string(VXUTIL_PATH) + " " + arguments + " 2>/dev/null";
  CliRun run{-1, ""};
  FILE* pipe = popen(command.c_str(), "r");
  if (pipe == nullptr) return run;
  char buffer[256];
  for (std::size_t got; (got = fread(buffer, 1, sizeof buffer, pipe)) > 0;) run.output.append(buffer, got);
  const int status = pclose(pipe);
  run.status = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
  return run;
}

using ImageCli = ScratchDirTest;

TEST_F(ImageCli, ConvertsByExtensionAndDescribes) {
  DibPtr dib = MakeTestDib(21, 13, CA_DibFormat_Argb32);
  const std::string input = WriteFile("in.bmp", EncodeToBytes(dib.get(), CA_ImageFormat_BMP));
  struct Case {
    const char* out;
    const char* info;
  } cases[] = {
      {"a.png", "format: PNG\nsize: 21x13\npixel format: Argb32\n"},
      {"b.JPG", "format: JPEG\nsize: 21x13\npixel format: Rgb24\n"},
      {"c.tiff", "format: TIF\nsize: 21x13\npixel format: Argb32\n"},
  };
  for (const Case& c : cases) {
    const CliRun convert = Vxutil("image convert " + input + " " + Path(c.out));
    EXPECT_EQ(convert.status, 0) << c.out;
    const CliRun info = Vxutil("image info " + Path(c.out));
    EXPECT_EQ(info.status, 0);
    EXPECT_EQ(info.output, c.info);
  }
}

TEST_F(ImageCli, FailuresLeaveNoOutputBehind) {
  const std::string damaged = WriteFile("bad.png", std::string("\x89PNG\r\n\x1A\n", 8) + "garbage");
  DibPtr dib = MakeTestDib(4, 4, CA_DibFormat_Rgb24);
  const std::string good = WriteFile("good.bmp", EncodeToBytes(dib.get(), CA_ImageFormat_BMP));
  struct Case {
    std::string arguments;
    int status;
  } cases[] = {
      {"image convert " + damaged + " " + Path("x.png"), 1},
      {"image convert " + good + " " + Path("x.webp"), 2},
      {"image convert " + good + " " + Path("no/such/dir.png"), 1},
      {"image info " + damaged, 1},
      {"image info " + Path(""), 1},
      {"image info", 2},
  };
  for (const Case& c : cases) EXPECT_EQ(Vxutil(c.arguments).status, c.status) << c.arguments;
  EXPECT_FALSE(fs::exists(Path("x.png")));
  EXPECT_FALSE(fs::exists(Path("x.webp")));
}

}  // namespace
