// vxutil hittest: is a point on a path's outline, or inside its area?

#include <cfloat>
#include <cmath>
#include <cstdio>
#include <string>

#include <vxutility/HitTest.h>

#include "Command.h"
#include "PathText.h"

namespace {

const char kName[] = "hittest";

bool ParseFloat(const std::string& text, float& value) {
  double number = 0;
  if (!ParseFloatArg(text, number) || std::fabs(number) > FLT_MAX) return false;
  value = static_cast<float>(number);
  return true;
}

int Run(const Args& args) {
  bool fill = false;
  Args positional;
  for (const std::string& arg : args) {
    if (arg == "--fill") {
      fill = true;
    } else if (arg.compare(0, 2, "--") == 0) {
      return UsageError(kName, "unknown option '" + arg + "'");
    } else {
      positional.push_back(arg);
    }
  }
  if (positional.size() != 4) return UsageError(kName, "expects a path, a point (x y) and a tolerance");
  CCA_Path path;
  std::string error;
  if (!ParsePathText(positional[0], path, error)) return UsageError(kName, error);
  CCA_GPoint point;
  float tolerance = 0;
  if (!ParseFloat(positional[1], point.x) || !ParseFloat(positional[2], point.y)) {
    return UsageError(kName, "the point needs two numbers");
  }
  if (!ParseFloat(positional[3], tolerance)) return UsageError(kName, "the tolerance must be a number");
  const bool hit = JudgePointOnPath(point, tolerance, path, 0, fill, CA_FillMode_Alternate);
  std::printf("%s\n", hit ? "hit" : "miss");
  return hit ? 0 : 1;
}

struct DemoProbe {
  CCA_GPoint point;
  bool fill;
  bool expected;
};

int Demo() {
  const char* text = "M 0 0 L 10 0 A 5 5 0 0 1 10 10 L 0 10 Z";
  CCA_Path path;
  std::string error;
  if (!ParsePathText(text, path, error)) return 1;
  std::printf("path %s, tolerance 1\n", text);
  const DemoProbe probes[] = {
      {{5, 0.5f}, false, true}, {{5, 4}, false, false}, {{5, 4}, true, true},
      {{15, 5}, false, true},   {{17, 5}, true, false},
  };
  int wrong = 0;
  for (const DemoProbe& p : probes) {
    const bool hit = JudgePointOnPath(p.point, 1, path, 0, p.fill, CA_FillMode_Alternate);
    char where[64];
    std::snprintf(where, sizeof where, "(%g, %g)", p.point.x, p.point.y);
    std::printf("  %-10s %-8s %s\n", where, p.fill ? "area" : "outline", hit ? "hit" : "miss");
    if (hit != p.expected) ++wrong;
  }
  return wrong == 0 ? 0 : 1;
}

const CommandRegistrar kRegistrar({kName, "[--fill] PATH X Y TOLERANCE",
                                   "hit-test a point against a path ('M 0 0 L 10 0 A 5 5 0 0 1 10 10 Z'); "
                                   "exit 0 on a hit, 1 on a miss",
                                   Run, Demo, 30});

}  // namespace
