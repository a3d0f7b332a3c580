// Deliberately direct: a segment list rebuilt on every call, arcs turned
// into cubic pieces first, four sample lists per curve, every segment tested
// in order (twice in the area mode when the area test fails). Built with the
// library's floating-point options, since answers at the boundaries depend
// on every rounding.

#include "hittest/HitTestOracle.h"

#include <algorithm>
#include <climits>
#include <cmath>
#include <vector>

namespace hittest_oracle {
namespace {

enum Kind { kLine = 1, kQuadratic = 2, kCubic = 3 };

struct Segment {
  int kind;
  std::vector<CA_PathPoint> points;
};

struct Counts {
  int plusX = 0, minusX = 0, plusY = 0, minusY = 0;
};

void Raise(int& counter) {
  if (counter < INT_MAX) ++counter;
}

struct Box {
  float minX = 0, minY = 0, maxX = 0, maxY = 0;
};

Box ControlBox(const std::vector<CA_PathPoint>& points) {
  Box box;
  if (points.empty()) return box;
  box.minX = box.maxX = points[0].x;
  box.minY = box.maxY = points[0].y;
  for (size_t i = 1; i < points.size(); ++i) {
    if (points[i].x < box.minX) box.minX = points[i].x;
    if (points[i].x >= box.maxX) box.maxX = points[i].x;
    if (points[i].y < box.minY) box.minY = points[i].y;
    if (points[i].y >= box.maxY) box.maxY = points[i].y;
  }
  return box;
}

// ---- arcs ------------------------------------------------------------------

// Start, radii, rotation and large-arc flag, sweep flag, end: the records
// as a path lays them down. Appends the figure start and k cubic pieces.
void ArcToCubics(const CA_PathPoint& from, const CA_PathPoint* rec, std::vector<CA_PathPoint>& out) {
  const float x0 = from.x, y0 = from.y, x1 = rec[3].x, y1 = rec[3].y;
  const float largeArc = rec[1].y, sweep = rec[2].x;
  float rotation = rec[1].x;
  while (rotation >= 6.2831855f && rotation - 6.2831855f != rotation) rotation -= 6.2831855f;
  while (rotation < -0.0001f && rotation + 6.2831855f != rotation) rotation += 6.2831855f;
  const float s = std::sin(rotation), c = std::cos(rotation);
  float rx = std::fabs(rec[0].x), ry = std::fabs(rec[0].y);
  const float hx = (x1 - x0) / 2, hy = (y1 - y0) / 2;
  const float xp = c * hx + s * hy, yp = c * hy - s * hx;
  const float lambda = (yp * yp) / (ry * ry) + (xp * xp) / (rx * rx);
  if (lambda > 1) {
    rx *= std::sqrt(lambda);
    ry *= std::sqrt(lambda);
  }
  auto u = [&](float x, float y) { return (c / rx) * x + (s / rx) * y; };
  auto v = [&](float x, float y) { return (-s / ry) * x + (c / ry) * y; };
  const float us = u(x0, y0), vs = v(x0, y0), ue = u(x1, y1), ve = v(x1, y1);
  const float d = (ue - us) * (ue - us) + (ve - vs) * (ve - vs);
  float g = 1 / d - 0.25f;
  if (g < 0) g = 0;
  float f = std::sqrt(g);
  if (sweep == largeArc) f = -f;
  const float uc = (us + ue) / 2 - f * (ve - vs), vc = (vs + ve) / 2 + f * (ue - us);
  const float theta0 = std::atan2(vs - vc, us - uc), theta1 = std::atan2(ve - vc, ue - uc);
  float delta = theta1 - theta0;
  if (delta < 0 && sweep != 0) {
    delta += 6.2831855f;
  } else if (delta > 0 && sweep == 0) {
    delta -= 6.2831855f;
  }
  const float pieces = std::ceil(std::fabs(delta / 1.5717964f));
  const int k = pieces >= 0.0f && pieces <= 4.0f ? static_cast<int>(pieces) : 0;
  out.push_back({x0, y0, PathFlagMoveTo});
  auto map = [&](float pu, float pv) {
    return CA_PathPoint{c * rx * pu - s * ry * pv, s * rx * pu + c * ry * pv, 0};
  };
  for (int i = 0; i < k; ++i) {
    const float a = static_cast<float>(i) * delta / static_cast<float>(k) + theta0;
    const float b = static_cast<float>(i + 1) * delta / static_cast<float>(k) + theta0;
    const float h = (b - a) / 2;
    const float sq = std::sin(h / 2);
    const float t = 2.6666667f * (sq * sq) / std::sin(h);
    const float u1 = uc + std::cos(a) - t * std::sin(a), v1 = vc + std::sin(a) + t * std::cos(a);
    const float u3 = uc + std::cos(b), v3 = vc + std::sin(b);
    const float u2 = u3 + t * std::sin(b), v2 = v3 - t * std::cos(b);
    out.push_back(map(u1, v1));
    out.push_back(map(u2, v2));
    out.push_back(map(u3, v3));
  }
}

// ---- the segment list ------------------------------------------------------

std::vector<Segment> BuildSegments(const CCA_Path& path) {
  std::vector<Segment> segments;
  const int n = path.GetPointCount();
  CA_PathPoint figureStart;
  for (int i = 0; i < n; ++i) {
    const CA_PathPoint p = path.GetPoint(i);
    if (p.flags & PathFlagMoveTo) {
      figureStart = p;
      continue;
    }
    if (i == 0) continue;
    const CA_PathPoint q = path.GetPoint(i - 1);
    if (p.flags & PathFlagLineTo) {
      segments.push_back({kLine, {q, p}});
    } else if (p.flags & PathFlagQuadTo) {
      if (i < n - 1) {
        segments.push_back({kQuadratic, {q, p, path.GetPoint(i + 1)}});
        i += 1;
      }
    } else if (p.flags & PathFlagCubicTo) {
      if (i < n - 2) {
        segments.push_back({kCubic, {q, p, path.GetPoint(i + 1), path.GetPoint(i + 2)}});
        i += 2;
      }
    } else if (p.flags & PathFlagArcTo) {
      if (i < n - 3) {
        const CA_PathPoint records[4] = {p, path.GetPoint(i + 1), path.GetPoint(i + 2), path.GetPoint(i + 3)};
        std::vector<CA_PathPoint> cubics;
        ArcToCubics(q, records, cubics);
        for (size_t j = 0; 3 * j + 3 < cubics.size(); ++j) {
          segments.push_back({kCubic, {cubics.begin() + 3 * j, cubics.begin() + 3 * j + 4}});
        }
        i += 3;
      }
    }
    const CA_PathPoint last = path.GetPoint(i);
    if (last.flags & PathFlagClose) segments.push_back({kLine, {last, figureStart}});
  }
  return segments;
}

// ---- straight segments -----------------------------------------------------

bool TestLine(float px, float py, float tolerance, const Segment& segment, Counts& counts) {
  const CA_PathPoint& p0 = segment.points[0];
  const CA_PathPoint& p1 = segment.points[1];
  const float d0 = std::sqrt((px - p0.x) * (px - p0.x) + (py - p0.y) * (py - p0.y));
  const float d1 = std::sqrt((px - p1.x) * (px - p1.x) + (py - p1.y) * (py - p1.y));
  const Box box = ControlBox(segment.points);
  const float axis = std::sqrt(2.0f) * tolerance;
  const float xc = ((py - p0.y) / (p1.y - p0.y)) * (p1.x - p0.x) + p0.x;
  const float yc = ((px - p0.x) / (p1.x - p0.x)) * (p1.y - p0.y) + p0.y;
  if (box.minY <= yc && yc <= box.maxY) {
    if (py - yc > axis) {
      Raise(counts.minusY);
    } else if (yc - py > axis) {
      Raise(counts.plusY);
    }
  }
  if (box.minX <= xc && xc <= box.maxX) {
    if (xc - px > axis) {
      Raise(counts.plusX);
    } else if (px - xc > axis) {
      Raise(counts.minusX);
    }
  }
  const bool beyondX = px < box.minX || px > box.maxX, beyondY = py < box.minY || py > box.maxY;
  const bool withinX = box.minX < px && px < box.maxX, withinY = box.minY < py && py < box.maxY;
  const bool nearEnd = d0 <= tolerance || d1 <= tolerance;
  if (beyondX && beyondY) return nearEnd;
  if (withinX && beyondY) return nearEnd || std::fabs(py - yc) <= axis;
  if (beyondX && withinY) return nearEnd || std::fabs(px - xc) <= axis;
  return std::fabs(px - xc) <= axis || std::fabs(py - yc) <= axis;
}

// ---- curves ----------------------------------------------------------------

struct CurvePoint {
  double x, y;
};

CurvePoint Evaluate(const Segment& s, float t) {
  const CA_PathPoint& p0 = s.points[0];
  const CA_PathPoint& p1 = s.points[1];
  const CA_PathPoint& p2 = s.points[2];
  const float omt = 1.0f - t;
  if (s.kind == kQuadratic) {
    const double w0 = std::pow(static_cast<double>(omt), 2.0);
    const float w1 = 2.0f * t * omt, w2 = t * t;
    return {w0 * p0.x + w1 * p1.x + w2 * p2.x, w0 * p0.y + w1 * p1.y + w2 * p2.y};
  }
  const CA_PathPoint p3 = s.points.size() >= 4 ? s.points[3] : CA_PathPoint();
  const double w0 = std::pow(static_cast<double>(omt), 3.0);
  const double w1 = 3.0f * t * std::pow(static_cast<double>(omt), 2.0);
  const float w2 = 3.0f * t * t * omt;
  const double w3 = std::pow(static_cast<double>(t), 3.0);
  return {w0 * p0.x + w1 * p1.x + w2 * p2.x + w3 * p3.x, w0 * p0.y + w1 * p1.y + w2 * p2.y + w3 * p3.y};
}

double DistanceAt(const Segment& s, float px, float py, float t) {
  const CurvePoint b = Evaluate(s, t);
  return std::sqrt((py - b.y) * (py - b.y) + (px - b.x) * (px - b.x));
}

bool Search(const Segment& s, float px, float py, float tolerance, float t, double previous, float bound) {
  while (std::fabs(bound - t) >= 0.000001f) {
    t = (t + bound) / 2;
    const double d = DistanceAt(s, px, py, t);
    if (d <= tolerance) return true;
    if (!(previous - d > 0.0001)) return false;
    previous = d;
  }
  return false;
}

void CountCrossings(float px, float py, const std::vector<CCA_GPoint>& samples, int& counter, float maxDX,
                    float maxDY, bool alongY) {
  const float p = alongY ? py : px;
  const float threshold = alongY ? maxDY : maxDX;
  int above = 0, below = 0;
  float nearestAbove = 1000.0f, nearestBelow = 1000.0f, above0 = 0.0f, below0 = 0.0f;
  for (const CCA_GPoint& sample : samples) {
    const float c = alongY ? sample.y : sample.x;
    if (c > p) {
      ++above;
      if (std::fabs(c - p) < nearestAbove) nearestAbove = std::fabs(c - p), above0 = c;
    }
    if (c < p) {
      ++below;
      if (std::fabs(c - p) < nearestBelow) nearestBelow = std::fabs(c - p), below0 = c;
    }
    if (above >= 1 && below >= 1 && threshold > std::fabs(above0 - below0)) Raise(counter);
  }
}

bool TestCurve(float px, float py, float tolerance, const Segment& s, Counts& counts) {
  if (s.points.size() < 3 || (s.kind == kCubic && s.points.size() < 4)) return false;
  const Box box = ControlBox(s.points);
  if ((px < box.minX || px > box.maxX) && (py < box.minY || py > box.maxY)) return false;
  std::vector<CCA_GPoint> left, right, up, down;
  double maxDX = 0, maxDY = 0;
  float minDist = 0, tBest = 0;
  CurvePoint previous{0, 0};
  for (int i = 0; i <= 50; ++i) {
    const float t = static_cast<float>(i) / 50.0f;
    const CurvePoint b = Evaluate(s, t);
    const CCA_GPoint sample{static_cast<float>(b.x), static_cast<float>(b.y)};
    (px < b.x ? right : left).push_back(sample);
    (py < b.y ? down : up).push_back(sample);
    if (i >= 1) {
      maxDY = std::max(maxDY, std::fabs(b.y - previous.y));
      maxDX = std::max(maxDX, std::fabs(b.x - previous.x));
    }
    previous = b;
    // The double distance against the single nearest one: a sample whose
    // distance rounds to the same float still replaces it when closer.
    const double distance = std::sqrt((py - b.y) * (py - b.y) + (px - b.x) * (px - b.x));
    if (i == 0 || distance < minDist) {
      minDist = static_cast<float>(distance);
      tBest = t;
    }
  }
  bool hit = minDist <= tolerance;
  if (!hit) {
    const float tLo = std::max(0.0f, tBest - 0.02f), tHi = std::min(1.0f, tBest + 0.02f);
    const float tA = (tBest + tLo) / 2, tB = (tBest + tHi) / 2;
    const double dA = DistanceAt(s, px, py, tA), dB = DistanceAt(s, px, py, tB);
    hit = dA > dB ? minDist - dB > 0.0001 && Search(s, px, py, tolerance, tB, dB, tHi)
                  : minDist - dA > 0.0001 && Search(s, px, py, tolerance, tA, dA, tLo);
  }
  if (hit) {
    Raise(counts.plusX), Raise(counts.minusX), Raise(counts.plusY), Raise(counts.minusY);
    return true;
  }
  const float fx = static_cast<float>(maxDX), fy = static_cast<float>(maxDY);
  CountCrossings(px, py, left, counts.minusX, fx, fy, true);
  CountCrossings(px, py, right, counts.plusX, fx, fy, true);
  CountCrossings(px, py, up, counts.minusY, fx, fy, false);
  CountCrossings(px, py, down, counts.plusY, fx, fy, false);
  return false;
}

bool AnyHit(const CCA_GPoint& point, float tolerance, const std::vector<Segment>& segments, Counts& counts) {
  for (const Segment& s : segments) {
    const bool hit = s.kind == kLine ? s.points.size() == 2 && TestLine(point.x, point.y, tolerance, s, counts)
                                     : TestCurve(point.x, point.y, tolerance, s, counts);
    if (hit) return true;
  }
  return false;
}

}  // namespace

bool JudgePointOnPath(const CCA_GPoint& point, float tolerance, const CCA_Path& path, bool fillArea) {
  const std::vector<Segment> segments = BuildSegments(path);
  Counts counts;
  if (fillArea) {
    if (AnyHit(point, tolerance, segments, counts)) return true;
    if (counts.plusX >= 1 && counts.minusX >= 1 && counts.plusY >= 1 && counts.minusY >= 1) return true;
  }
  Counts unused;
  return AnyHit(point, tolerance, segments, unused);
}

}  // namespace hittest_oracle
