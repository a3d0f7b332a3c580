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

constexpr int kSampleSteps = 50;           // samples at t = 0, 1/50, ..., 1
constexpr float kSearchHalfWidth = 0.02f;  // one sample step either side
constexpr float kSearchStop = 0.000001f;   // narrowest parameter interval
constexpr double kMinProgress = 0.0001;    // the search goes on while it gains this much

struct CurvePoint {
  double x;
  double y;
};

struct Curve {
  int kind;
  CA_PathPoint p0, p1, p2, p3;
};

Curve MakeCurve(int kind, const CA_PathPoint* points) {
  return {kind, points[0], points[1], points[2], kind == Cubic ? points[3] : CA_PathPoint()};
}

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

CurvePoint Apply(const Curve& c, const QuadraticWeights& w) {
  return {w.w0 * c.p0.x + w.w1 * c.p1.x + w.w2 * c.p2.x, w.w0 * c.p0.y + w.w1 * c.p1.y + w.w2 * c.p2.y};
}

CurvePoint Apply(const Curve& c, const CubicWeights& w) {
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

CurvePoint Evaluate(const Curve& c, float t) {
  return c.kind == Quadratic ? Apply(c, QuadraticAt(t)) : Apply(c, CubicAt(t));
}

CurvePoint EvaluateSample(const Curve& c, int i) {
  return c.kind == Quadratic ? Apply(c, SampleWeights(QuadraticAt, i)) : Apply(c, SampleWeights(CubicAt, i));
}

double DistanceTo(float px, float py, const CurvePoint& b) {
  const double dy = py - b.y;
  const double dx = px - b.x;
  return std::sqrt(dy * dy + dx * dx);
}

double DistanceAt(const Curve& curve, float px, float py, float t) {
  return DistanceTo(px, py, Evaluate(curve, t));
}

// Halves the interval from `t` toward `bound` while the curve keeps coming
// closer; true as soon as a probe lies within the tolerance.
bool SearchToward(const Curve& curve, float px, float py, float tolerance, float t, double previous,
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

// Samples of one side of the point's line, in the order of increasing t.
struct SampleList {
  CCA_GPoint at[kSampleSteps + 1];
  int count = 0;

  void Add(const CCA_GPoint& sample) { at[count++] = sample; }
};

// What the samples tell: the nearest one and, when crossings are counted,
// the samples by side and the largest steps between them.
struct SampleRun {
  bool sorting = false;  // only the area test needs the sides and the steps
  SampleList left;       // x <= px
  SampleList right;      // x > px
  SampleList up;         // y <= py
  SampleList down;       // y > py
  double maxDX = 0;
  double maxDY = 0;
  float minDist = 0;
  float tBest = 0;
};

void Sample(const Curve& curve, float px, float py, SampleRun& run) {
  CurvePoint previous{0, 0};
  for (int i = 0; i <= kSampleSteps; ++i) {
    const float t = SampleParameter(i);
    const CurvePoint b = EvaluateSample(curve, i);
    if (run.sorting) {
      const CCA_GPoint sample{static_cast<float>(b.x), static_cast<float>(b.y)};
      (px < b.x ? run.right : run.left).Add(sample);
      (py < b.y ? run.down : run.up).Add(sample);
      if (i >= 1) {
        run.maxDY = std::max(run.maxDY, std::fabs(b.y - previous.y));
        run.maxDX = std::max(run.maxDX, std::fabs(b.x - previous.x));
      }
      previous = b;
    }
    // The double distance against the single nearest one: a sample whose
    // distance rounds to the same float still replaces it when closer.
    const double distance = DistanceTo(px, py, b);
    if (i == 0 || distance < run.minDist) {
      run.minDist = static_cast<float>(distance);
      run.tBest = t;
    }
  }
}

bool Refine(const Curve& curve, float px, float py, float tolerance, const SampleRun& run) {
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

bool BeyondBothAxes(float px, float py, const ControlBox& box) {
  return (px < box.minX || px > box.maxX) && (py < box.minY || py > box.maxY);
}

}  // namespace

bool TestCurveSegment(float px, float py, float tolerance, int kind, const CA_PathPoint* points,
                      SideCounts* counts) {
  if (BeyondBothAxes(px, py, GetControlBox(points, kind == Cubic ? 4 : 3))) return false;

  const Curve curve = MakeCurve(kind, points);
  SampleRun run;
  run.sorting = counts != nullptr;
  Sample(curve, px, py, run);
  if (Refine(curve, px, py, tolerance, run)) {
    if (counts != nullptr) {
      Raise(counts->plusX);
      Raise(counts->minusX);
      Raise(counts->plusY);
      Raise(counts->minusY);
    }
    return true;
  }
  if (counts == nullptr) return false;
  const float maxDX = static_cast<float>(run.maxDX);
  const float maxDY = static_cast<float>(run.maxDY);
  CountSideCrossings(px, py, run.left.at, run.left.count, counts->minusX, maxDX, maxDY, SideLeft);
  CountSideCrossings(px, py, run.right.at, run.right.count, counts->plusX, maxDX, maxDY, SideRight);
  CountSideCrossings(px, py, run.up.at, run.up.count, counts->minusY, maxDX, maxDY, SideUp);
  CountSideCrossings(px, py, run.down.at, run.down.count, counts->plusY, maxDX, maxDY, SideDown);
  return false;
}

void CountSideCrossings(float px, float py, const CCA_GPoint* samples, int count, std::int32_t& counter,
                        float maxDX, float maxDY, int side) {
  const bool alongY = side == SideLeft || side == SideRight;
  if (!alongY && side != SideUp && side != SideDown) return;
  const float p = alongY ? py : px;
  const float threshold = alongY ? maxDY : maxDX;
  SideTally above;
  SideTally below;
  for (int i = 0; i < count; ++i) {
    const float c = alongY ? samples[i].y : samples[i].x;
    if (c > p) above.Add(c, p);
    if (c < p) below.Add(c, p);
    if (above.count >= 1 && below.count >= 1 && threshold > std::fabs(above.nearest - below.nearest)) Raise(counter);
  }
}

}  // namespace vxhittest
