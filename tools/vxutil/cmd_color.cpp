// vxutil color TEXT: the colour space and packed value of a colour text.

#include <cstdio>
#include <string>

#include <vxutility/ColorString.h>

#include "Command.h"

namespace {

const char* SpaceName(unsigned int space) {
  switch (space) {
    case 1: return "gray";
    case 2: return "RGB";
    case 3: return "CMYK";
    default: return "?";
  }
}

/// Prints the colour of `text`; false when it is not a colour.
bool Describe(const char* text) {
  unsigned int color = 0, space = 0;
  if (!ParseColorString(text, color, space)) return false;
  std::printf("space %u (%s)\ncolor 0x%08X\n", space, SpaceName(space), color);
  std::string hex;
  if (ParseColorByte(color, space, hex)) std::printf("%s\n", hex.c_str());
  return true;
}

int Run(const Args& args) {
  if (args.size() != 1) return UsageError("color", "expects one colour text");
  if (!Describe(args[0].c_str())) {
    std::fprintf(stderr, "vxutil color: not a colour: '%s'\n", args[0].c_str());
    return 1;
  }
  return 0;
}

int Demo() {
  for (const char* text : {"#1a2B3c", "255 0 0", "#00FF0080"}) {
    std::printf("'%s':\n", text);
    if (!Describe(text)) return 1;
  }
  return 0;
}

const CommandRegistrar kRegistrar({"color", "TEXT  (\"#RRGGBB\", \"#GG\", \"#CCMMYYKK\" or \"R G B\" ...)",
                                   "parse a colour text", Run, Demo, 30});

}  // namespace
