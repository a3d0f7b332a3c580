// Curves are sampled, not solved: 51 evenly spaced parameters find the
// nearest sample, a short halving search refines it toward the side where
// the curve comes closer, and the crossings with the point's lines are read
// from the samples that lie on either side of them. The parameter and the
// stored samples are single precision; curve points and distances are
// double, with the powers of (1 - t) and t^3 from std::pow.

#include "graphics/hittest/CurveSegmentTest.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace vxhittest {
namespace {

constexpr int kSampleSteps = kCurveSamples - 1;
constexpr float kSearchHalfWidth = 0.02f;  // one sample step either side
constexpr float kSearchStop = 0.000001f;   // narrowest parameter interval
constexpr double kMinProgress = 0.0001;    // the search goes on while it gains this much

struct CurvePoint {
  double x;
  double y;
};

// The Bernstein weights at t. The terms without a power function stay in
// single precision, as the parameter is; the curve point sums in double.
struct QuadraticWeights {
  double w0;
  float w1, w2;
};

struct CubicWeights {
  double w0, w1;
  float w2;
  double w3;
};

QuadraticWeights QuadraticAt(float t) {
  const float omt = 1.0f - t;
  return {std::pow(static_cast<double>(omt), 2.0), 2.0f * t * omt, t * t};
}

CubicWeights CubicAt(float t) {
  const float omt = 1.0f - t;
  return {std::pow(static_cast<double>(omt), 3.0), 3.0f * t * std::pow(static_cast<double>(omt), 2.0),
          3.0f * t * t * omt, std::pow(static_cast<double>(t), 3.0)};
}

CurvePoint Apply(const BezierCurve& c, const QuadraticWeights& w) {
  return {w.w0 * c.p0.x + w.w1 * c.p1.x + w.w2 * c.p2.x, w.w0 * c.p0.y + w.w1 * c.p1.y + w.w2 * c.p2.y};
}

CurvePoint Apply(const BezierCurve& c, const CubicWeights& w) {
  return {w.w0 * c.p0.x + w.w1 * c.p1.x + w.w2 * c.p2.x + w.w3 * c.p3.x,
          w.w0 * c.p0.y + w.w1 * c.p1.y + w.w2 * c.p2.y + w.w3 * c.p3.y};
}

float SampleParameter(int i) { return static_cast<float>(i) / static_cast<float>(kSampleSteps); }

// The sample parameters never change, so their weights are computed once,
// by the same functions the search uses.
template <typename Weights>
const Weights& SampleWeights(Weights (*at)(float), int i) {
  static const auto table = [at] {
    std::array<Weights, kSampleSteps + 1> weights{};
    for (int j = 0; j <= kSampleSteps; ++j) weights[j] = at(SampleParameter(j));
    return weights;
  }();
  return table[i];
}

CurvePoint Evaluate(const BezierCurve& c, float t) {
  return c.kind == Quadratic ? Apply(c, QuadraticAt(t)) : Apply(c, CubicAt(t));
}

CurvePoint EvaluateSample(const BezierCurve& c, int i) {
  return c.kind == Quadratic ? Apply(c, SampleWeights(QuadraticAt, i)) : Apply(c, SampleWeights(CubicAt, i));
}

double DistanceTo(float px, float py, const CurvePoint& b) {
  const double dy = py - b.y;
  const double dx = px - b.x;
  return std::sqrt(dy * dy + dx * dx);
}

double DistanceAt(const BezierCurve& curve, float px, float py, float t) {
  return DistanceTo(px, py, Evaluate(curve, t));
}

// Halves the interval from `t` toward `bound` while the curve keeps coming
// closer; true as soon as a probe lies within the tolerance.
bool SearchToward(const BezierCurve& curve, float px, float py, float tolerance, float t, double previous,
                  float bound) {
  for (;;) {
    if (std::fabs(bound - t) < kSearchStop) return false;
    t = (t + bound) / 2;
    const double d = DistanceAt(curve, px, py, t);
    if (d <= tolerance) return true;
    if (!(previous - d > kMinProgress)) return false;
    previous = d;
  }
}

struct Nearest {
  float minDist = 0;
  float tBest = 0;
};

Nearest FindNearestSample(const CurveSamples& s, float px, float py) {
  Nearest nearest;
  for (int i = 0; i < kCurveSamples; ++i) {
    // The double distance against the single nearest one: a sample whose
    // distance rounds to the same float still replaces it when closer.
    const double distance = DistanceTo(px, py, {s.x[i], s.y[i]});
    if (i == 0 || distance < nearest.minDist) {
      nearest.minDist = static_cast<float>(distance);
      nearest.tBest = SampleParameter(i);
    }
  }
  return nearest;
}

bool Refine(const BezierCurve& curve, float px, float py, float tolerance, const Nearest& run) {
  if (run.minDist <= tolerance) return true;
  const float tLo = std::max(0.0f, run.tBest - kSearchHalfWidth);
  const float tHi = std::min(1.0f, run.tBest + kSearchHalfWidth);
  const float tA = (run.tBest + tLo) / 2;
  const float tB = (run.tBest + tHi) / 2;
  const double dA = DistanceAt(curve, px, py, tA);
  const double dB = DistanceAt(curve, px, py, tB);
  if (dA > dB) return run.minDist - dB > kMinProgress && SearchToward(curve, px, py, tolerance, tB, dB, tHi);
  return run.minDist - dA > kMinProgress && SearchToward(curve, px, py, tolerance, tA, dA, tLo);
}

// The samples on one side of the point's line and the nearest of them
// (samples 1000 or more away never become the nearest).
struct SideTally {
  int count = 0;
  float nearestDistance = 1000.0f;
  float nearest = 0.0f;

  void Add(float c, float p) {
    ++count;
    if (std::fabs(c - p) < nearestDistance) {
      nearestDistance = std::fabs(c - p);
      nearest = c;
    }
  }
};

// The crossing rule over one side list: `forEach` hands each member's
// compared coordinate, in the order of increasing t.
template <typename ForEachMember>
void CountCrossings(ForEachMember forEach, float p, float threshold, std::int32_t& counter) {
  SideTally above;
  SideTally below;
  forEach([&](float c) {
    if (c > p) above.Add(c, p);
    if (c < p) below.Add(c, p);
    if (above.count >= 1 && below.count >= 1 && threshold > std::fabs(above.nearest - below.nearest)) Raise(counter);
  });
}

// One side's list read in place: the samples on `side` of the point's line,
// rounded to single precision.
void CountSampledSide(float px, float py, const CurveSamples& s, std::int32_t& counter, int side) {
  const bool alongY = side == SideLeft || side == SideRight;
  const auto members = [&](auto visit) {
    for (int i = 0; i < kCurveSamples; ++i) {
      const bool right = px < s.x[i], down = py < s.y[i];
      const bool member = side == SideLeft ? !right : side == SideRight ? right : side == SideUp ? !down : down;
      if (member) visit(static_cast<float>(alongY ? s.y[i] : s.x[i]));
    }
  };
  CountCrossings(members, alongY ? py : px, static_cast<float>(alongY ? s.maxDY : s.maxDX), counter);
}

void CountCurveCrossings(float px, float py, const CurveSamples& s, SideCounts& counts, unsigned wanted) {
  if (wanted & ReachMinusX) CountSampledSide(px, py, s, counts.minusX, SideLeft);
  if (wanted & ReachPlusX) CountSampledSide(px, py, s, counts.plusX, SideRight);
  if (wanted & ReachMinusY) CountSampledSide(px, py, s, counts.minusY, SideUp);
  if (wanted & ReachPlusY) CountSampledSide(px, py, s, counts.plusY, SideDown);
}

bool BeyondBothAxes(float px, float py, const ControlBox& box) {
  return (px < box.minX || px > box.maxX) && (py < box.minY || py > box.maxY);
}

}  // namespace

BezierCurve MakeCurve(int kind, const CA_PathPoint* points) {
  return {kind, points[0], points[1], points[2], kind == Cubic ? points[3] : CA_PathPoint()};
}

void SampleCurve(const BezierCurve& curve, CurveSamples& s) {
  s.maxDX = 0;
  s.maxDY = 0;
  for (int i = 0; i < kCurveSamples; ++i) {
    const CurvePoint b = EvaluateSample(curve, i);
    s.x[i] = b.x;
    s.y[i] = b.y;
    if (i >= 1) {
      s.maxDY = std::max(s.maxDY, std::fabs(b.y - s.y[i - 1]));
      s.maxDX = std::max(s.maxDX, std::fabs(b.x - s.x[i - 1]));
    }
  }
}

bool TestSampledCurve(float px, float py, float tolerance, const BezierCurve& curve, const CurveSamples& samples,
                      SideCounts* counts, unsigned wanted) {
  if ((wanted & ReachHit) && Refine(curve, px, py, tolerance, FindNearestSample(samples, px, py))) {
    if (counts != nullptr) {
      Raise(counts->plusX);
      Raise(counts->minusX);
      Raise(counts->plusY);
      Raise(counts->minusY);
    }
    return true;
  }
  if (counts != nullptr) CountCurveCrossings(px, py, samples, *counts, wanted);
  return false;
}

bool TestCurveSegment(float px, float py, float tolerance, int kind, const CA_PathPoint* points,
                      SideCounts* counts) {
  if (BeyondBothAxes(px, py, GetControlBox(points, kind == Cubic ? 4 : 3))) return false;
  const BezierCurve curve = MakeCurve(kind, points);
  CurveSamples samples;
  SampleCurve(curve, samples);
  return TestSampledCurve(px, py, tolerance, curve, samples, counts, ReachAnything);
}

void CountSideCrossings(float px, float py, const CCA_GPoint* samples, int count, std::int32_t& counter,
                        float maxDX, float maxDY, int side) {
  const bool alongY = side == SideLeft || side == SideRight;
  if (!alongY && side != SideUp && side != SideDown) return;
  const auto members = [&](auto visit) {
    for (int i = 0; i < count; ++i) visit(alongY ? samples[i].y : samples[i].x);
  };
  CountCrossings(members, alongY ? py : px, alongY ? maxDY : maxDX, counter);
}

}  // namespace vxhittest
