// Reads a point, a tolerance and raw path records (x, y and flags, any bits)
// from the input; the streaming hit test, the prepared path and the plain
// implementation must give the same answer in both modes.

#include <cstdint>
#include <cstdlib>
#include <cstring>

#include <vxutility/HitTest.h>

#include "hittest/HitTestOracle.h"

namespace {

template <typename T>
T Take(const std::uint8_t*& data, std::size_t& size) {
  T value{};
  if (size >= sizeof(T)) {
    std::memcpy(&value, data, sizeof(T));
    data += sizeof(T);
    size -= sizeof(T);
  }
  return value;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const CCA_GPoint point{Take<float>(data, size), Take<float>(data, size)};
  const float tolerance = Take<float>(data, size);
  CCA_Path path;
  while (size >= 3 * sizeof(float) && path.GetPointCount() < 256) {
    const float x = Take<float>(data, size), y = Take<float>(data, size);
    // Segment and close bits only, so that most records make segments.
    const int flags = Take<std::int32_t>(data, size) & (PathFlagMoveTo | PathFlagLineTo | PathFlagQuadTo |
                                                         PathFlagCubicTo | PathFlagArcTo | PathFlagClose);
    path.AddPoint(x, y, flags);
  }
  const VXHitTestPath prepared(path);
  for (bool fill : {false, true}) {
    const bool expected = hittest_oracle::JudgePointOnPath(point, tolerance, path, fill);
    if (JudgePointOnPath(point, tolerance, path, 0, fill, CA_FillMode_Winding) != expected) std::abort();
    if (prepared.JudgePoint(point, tolerance, fill) != expected) std::abort();
  }
  return 0;
}
