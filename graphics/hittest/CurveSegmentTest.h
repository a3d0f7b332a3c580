#pragma once
// Hit and crossing test of one quadratic or cubic Bezier segment.

#include <vxbase/Geometry.h>

#include "graphics/hittest/SegmentRecords.h"

namespace vxhittest {

/// The sample lists of a curve, named by the side of the point they lie on.
enum CrossingSide {
  SideLeft = 1,   // x <= px; compared in y, counted into minusX
  SideRight = 2,  // x > px; compared in y, counted into plusX
  SideUp = 3,     // y <= py; compared in x, counted into minusY
  SideDown = 4,   // y > py; compared in x, counted into plusY
};

constexpr int kCurveSamples = 51;  // t = 0, 1/50, ..., 1

struct BezierCurve {
  int kind;  // Quadratic or Cubic
  CA_PathPoint p0, p1, p2, p3;
};

/// The curve of `kind` through three (Quadratic) or four (Cubic) points.
BezierCurve MakeCurve(int kind, const CA_PathPoint* points);

/// What a curve's samples are without a point: where they lie, and the
/// largest steps between neighbours along x and y.
struct CurveSamples {
  double x[kCurveSamples];
  double y[kCurveSamples];
  double maxDX;
  double maxDY;
};

void SampleCurve(const BezierCurve& curve, CurveSamples& samples);

/// True when (px, py) lies within `tolerance` of the curve of `kind`
/// through `points` (three for Quadratic, four for Cubic), found from 51
/// samples and a short halving search around the nearest one. When `counts`
/// is given, a hit adds 1 to every counter and a miss adds the crossings
/// read from the samples. False, with nothing counted, when the point lies
/// beyond the control box in both axes.
bool TestCurveSegment(float px, float py, float tolerance, int kind, const CA_PathPoint* points,
                      SideCounts* counts);

/// The same test on a curve already sampled, and past the box check, for
/// the parts in `wanted` (Reach bits) only: without ReachHit the nearest
/// sample is not searched (the caller knows the point is out of reach) and
/// the result is false; only the counters named are counted.
bool TestSampledCurve(float px, float py, float tolerance, const BezierCurve& curve, const CurveSamples& samples,
                      SideCounts* counts, unsigned wanted);

/// Adds 1 to `counter` for every sample, from the first one at which the
/// samples so far hold one on each side of the point's line (y = py for
/// sides 1 and 2, x = px for 3 and 4) whose nearest representatives lie
/// closer together than the largest sample step along that line (maxDX,
/// maxDY). Any other side counts nothing.
void CountSideCrossings(float px, float py, const CCA_GPoint* samples, int count, std::int32_t& counter,
                        float maxDX, float maxDY, int side);

}  // namespace vxhittest
