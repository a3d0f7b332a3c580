// The library's hit test against the plain one on random paths: every
// answer, in both modes, must be the same. Paths mix every segment kind,
// arcs with every flag value, raw flag combinations, repeated and missing
// records, scales from tiny to huge and coordinates that are not finite;
// points sit on and near records, box lines and curve samples, where the
// answers turn on single roundings.
//
// HITTEST_DIFF_QUERIES and HITTEST_DIFF_SEED set the size and the seed of a
// run (the CI runs a fixed seed; a longer campaign passes its own).

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <iomanip>
#include <limits>
#include <random>
#include <sstream>
#include <string>
#include <vector>

#include <vxutility/HitTest.h>

#include "hittest/HitTestOracle.h"

namespace {

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr long kDefaultQueries = 25000;
#else
constexpr long kDefaultQueries = 400000;
#endif
constexpr int kQueriesPerPath = 50;

long EnvNumber(const char* name, long fallback) {
  const char* text = std::getenv(name);
  return text != nullptr && *text != '\0' ? std::strtol(text, nullptr, 10) : fallback;
}

// The records as "x y flags; ..." with full precision, to replay a failure.
std::string Describe(const CCA_Path& path) {
  std::ostringstream text;
  text.precision(9);
  for (int i = 0; i < path.GetPointCount(); ++i) {
    const CA_PathPoint& r = path.GetPoint(i);
    text << r.x << ' ' << r.y << " 0x" << std::hex << r.flags << std::dec << "; ";
  }
  return text.str();
}

const float kNaN = std::numeric_limits<float>::quiet_NaN();
const float kInf = std::numeric_limits<float>::infinity();

class RandomPaths {
 public:
  explicit RandomPaths(unsigned long seed) : m_random(seed) {}

  CCA_Path NextPath() {
    m_scale = Pick({1.0f, 1.0f, 1.0f, 1e-3f, 1e-30f, 1e4f, 1e30f});
    m_grid = Chance(0.5);
    CCA_Path path;
    const int pieces = Int(1, 12);
    for (int i = 0; i < pieces; ++i) AddPiece(path);
    m_records.clear();
    for (int i = 0; i < path.GetPointCount(); ++i) m_records.push_back(path.GetPoint(i));
    return path;
  }

  // A point where answers are decided: on or near a record, on a record's
  // lines, near a point of the curve through the records, or anywhere.
  CCA_GPoint NextPoint() {
    if (m_records.empty() || Chance(0.05)) return {Coordinate(), Coordinate()};
    const CA_PathPoint& a = m_records[Int(0, static_cast<int>(m_records.size()) - 1)];
    const CA_PathPoint& b = m_records[Int(0, static_cast<int>(m_records.size()) - 1)];
    const CA_PathPoint& c = m_records[Int(0, static_cast<int>(m_records.size()) - 1)];
    switch (Int(0, 5)) {
      case 0:
        return {a.x + Offset(), a.y + Offset()};
      case 1:
        return {a.x, b.y + Offset()};  // on a vertical box line
      case 2:
        return {a.x + Offset(), b.y};  // on a horizontal box line
      case 3: {                        // near a curve sample or between two
        const double t = Chance(0.5) ? Int(0, 50) / 50.0 : Real(0, 1);
        const double u = 1 - t;
        return {static_cast<float>(u * u * a.x + 2 * t * u * b.x + t * t * c.x) + Offset(),
                static_cast<float>(u * u * a.y + 2 * t * u * b.y + t * t * c.y) + Offset()};
      }
      case 4:
        return {(a.x + b.x) / 2 + Offset(), (a.y + b.y) / 2 + Offset()};
      default:
        return {Coordinate(), b.y};
    }
  }

  float NextTolerance() {
    if (Chance(0.02)) return Pick({0.0f, -1.0f, kNaN, kInf, 1e-38f});
    return Chance(0.5) ? Int(0, 8) * 0.5f * m_scale : static_cast<float>(Real(0, 4)) * m_scale;
  }

 private:
  void AddPiece(CCA_Path& path) {
    const int flagsOfChoice = Chance(0.1) ? Int(0, 0x1f03) : 0;
    switch (Int(0, 9)) {
      case 0:
        path.MoveTo(Coordinate(), Coordinate());
        break;
      case 1:
      case 2:
        path.LineTo(Coordinate(), Coordinate());
        break;
      case 3:
        path.QuadTo(Coordinate(), Coordinate(), Coordinate(), Coordinate());
        break;
      case 4:
        path.CubicBezierTo(Coordinate(), Coordinate(), Coordinate(), Coordinate(), Coordinate(), Coordinate());
        break;
      case 5:
        path.ArcTo(Radius(), Radius(), Rotation(), Flag(), Flag(), Coordinate(), Coordinate());
        break;
      case 6:  // from where the path stands: nowhere, or almost along an axis
        if (path.GetPointCount() > 0) {
          const CA_PathPoint last = path.GetPoint(path.GetPointCount() - 1);
          const float step = Coordinate() - last.x, nudge = Chance(0.5) ? Offset() * 1e-3f : 1e-44f;
          switch (Int(0, 3)) {
            case 0:
              path.LineTo(last.x, last.y);
              break;
            case 1:
              path.ArcTo(Radius(), Radius(), 0, Flag(), Flag(), last.x, last.y);
              break;
            case 2:
              path.LineTo(last.x + step, last.y + nudge);
              break;
            default:
              path.LineTo(last.x + nudge, last.y + step);
              break;
          }
        }
        break;
      case 7:
        path.AddPoint(Coordinate(), Coordinate(), flagsOfChoice);
        break;
      case 8:
        path.Close();
        break;
      default:
        path.AddPoint(Coordinate(), Coordinate(), Pick({PathFlagQuadTo, PathFlagCubicTo, PathFlagArcTo}));
        break;
    }
  }

  float Coordinate() {
    if (Chance(0.01)) return Pick({kNaN, kInf, -kInf});
    if (m_grid) return static_cast<float>(Int(-10, 10)) * m_scale;
    return static_cast<float>(Real(-20, 20)) * m_scale;
  }
  float Offset() {
    if (Chance(0.2)) return 0;
    return static_cast<float>(Real(-3, 3) * std::pow(10.0, -Int(0, 6))) * m_scale;
  }
  float Radius() { return Chance(0.1) ? Pick({0.0f, -5.0f, kNaN}) * m_scale : static_cast<float>(Real(0, 25)) * m_scale; }
  float Rotation() { return Chance(0.1) ? Pick({6.2831855f, -0.00005f, 1e30f, -kInf}) : static_cast<float>(Real(-7, 14)); }
  float Flag() { return Chance(0.9) ? static_cast<float>(Int(0, 1)) : Pick({0.5f, -1.0f, 2.0f, kNaN}); }

  bool Chance(double p) { return std::uniform_real_distribution<double>(0, 1)(m_random) < p; }
  int Int(int lo, int hi) { return std::uniform_int_distribution<int>(lo, hi)(m_random); }
  double Real(double lo, double hi) { return std::uniform_real_distribution<double>(lo, hi)(m_random); }
  template <typename T>
  T Pick(std::initializer_list<T> values) {
    return *(values.begin() + Int(0, static_cast<int>(values.size()) - 1));
  }

  std::mt19937_64 m_random;
  std::vector<CA_PathPoint> m_records;
  float m_scale = 1;
  bool m_grid = false;
};

TEST(JudgePointOnPath, AnswersAsThePlainWayOnRandomPaths) {
  const long queries = EnvNumber("HITTEST_DIFF_QUERIES", kDefaultQueries);
  const unsigned long seed = static_cast<unsigned long>(EnvNumber("HITTEST_DIFF_SEED", 20261123));
  RandomPaths random(seed);
  long hits[2] = {0, 0};
  int failures = 0;
  for (long done = 0; done < queries && failures < 10; done += kQueriesPerPath) {
    const CCA_Path path = random.NextPath();
    const VXHitTestPath prepared(path);
    for (int q = 0; q < kQueriesPerPath; ++q) {
      const CCA_GPoint point = random.NextPoint();
      const float tolerance = random.NextTolerance();
      for (bool fill : {false, true}) {
        const bool expected = hittest_oracle::JudgePointOnPath(point, tolerance, path, fill);
        hits[fill] += expected ? 1 : 0;
        const bool streamed = JudgePointOnPath(point, tolerance, path, 0, fill, CA_FillMode_Winding);
        const bool fromPrepared = prepared.JudgePoint(point, tolerance, fill);
        if (streamed == expected && fromPrepared == expected) continue;
        ++failures;
        ADD_FAILURE() << std::setprecision(9) << "query " << done + q << (fill ? " (area)" : " (outline)")
                      << (streamed == expected ? " prepared" : " streamed") << ": point (" << point.x << ", "
                      << point.y << "), tolerance " << tolerance << ", expected " << expected << "; path " << Describe(path);
      }
    }
  }
  // The points must land where answers are decided: both answers occur often.
  EXPECT_GT(hits[0], queries / 20);
  EXPECT_GT(hits[1], hits[0]);
  EXPECT_LT(hits[1], queries - queries / 20);
}

// The plain way keeps the library's rules where they were settled: a closer
// sample replaces the nearest even when both distances round to one float.
TEST(HitTestOracle, FollowsTheSettledRules) {
  CCA_Path nearTie;
  nearTie.MoveTo(17, 6);
  nearTie.QuadTo(2, 8, 17, 2);
  EXPECT_TRUE(hittest_oracle::JudgePointOnPath({13.8304892f, 8.9333849f}, 2.56087971f, nearTie, false));
  CCA_Path lShape;
  lShape.MoveTo(0, 0);
  for (const CCA_GPoint& p : {CCA_GPoint{10, 0}, {10, 5}, {5, 5}, {5, 10}, {0, 10}}) lShape.LineTo(p.x, p.y);
  lShape.Close();
  EXPECT_TRUE(hittest_oracle::JudgePointOnPath({7, 7}, 1, lShape, true));
  EXPECT_FALSE(hittest_oracle::JudgePointOnPath({7, 7}, 1, lShape, false));
}

}  // namespace
