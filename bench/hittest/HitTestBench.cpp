// Queries per second of JudgePointOnPath on a path of about 1,000 segments
// (lines, quadratic and cubic curves, arcs), outline and area, beside
// cairo_in_stroke and cairo_in_fill on the same path. The two answer
// different questions (cairo strokes with round joins and fills by the
// winding rule); only their cost is compared. Every allocation made during
// the timed loops is counted.

#include <benchmark/benchmark.h>
#include <cairo.h>

#include <cmath>
#include <vector>

#include <vxutility/HitTest.h>

#include "bench/support/AllocationCounter.h"
#include "bench/support/RatioReporter.h"
#include "graphics/hittest/ArcToCubics.h"
#include "graphics/hittest/PathWalk.h"

namespace {

// ---- the path ------------------------------------------------------------

constexpr int kFigures = 10;
constexpr int kSegmentsPerFigure = 100;
constexpr int kQueries = 256;
constexpr float kTolerance = 2.0f;
constexpr double kPi = 3.14159265358979323846;

struct Lcg {
  unsigned state = 12345;
  float Next() {  // 0 ... 1
    state = state * 1103515245u + 12345u;
    return static_cast<float>((state >> 8) & 0xffff) / 65535.0f;
  }
};

// Closed star-like figures whose sides cycle through line, quadratic,
// cubic and arc.
CCA_Path MakePath() {
  CCA_Path path;
  Lcg random;
  for (int f = 0; f < kFigures; ++f) {
    const float cx = 150.0f + 300.0f * static_cast<float>(f % 4);
    const float cy = 150.0f + 300.0f * static_cast<float>(f / 4);
    auto vertex = [&](int k, float radius) {
      const double angle = 2 * kPi * k / kSegmentsPerFigure;
      return CCA_GPoint{cx + radius * static_cast<float>(std::cos(angle)),
                        cy + radius * static_cast<float>(std::sin(angle))};
    };
    const CCA_GPoint start = vertex(0, 120);
    path.MoveTo(start.x, start.y);
    for (int k = 1; k <= kSegmentsPerFigure; ++k) {
      const CCA_GPoint end = k == kSegmentsPerFigure ? start : vertex(k, 80 + 40 * random.Next());
      const float bulge = 60 + 80 * random.Next();
      const double half = 2 * kPi * (k - 0.5) / kSegmentsPerFigure;
      const CCA_GPoint control{cx + bulge * static_cast<float>(std::cos(half)),
                               cy + bulge * static_cast<float>(std::sin(half))};
      switch (k % 4) {
        case 0:
          path.LineTo(end.x, end.y);
          break;
        case 1:
          path.QuadTo(control.x, control.y, end.x, end.y);
          break;
        case 2:
          path.CubicBezierTo(control.x, control.y, (control.x + end.x) / 2, (control.y + end.y) / 2, end.x, end.y);
          break;
        default:
          path.ArcTo(12 + 10 * random.Next(), 8 + 6 * random.Next(), random.Next(), 0, 1, end.x, end.y);
          break;
      }
    }
    path.Close();
  }
  return path;
}

// The same figures for cairo: quadratics raised to cubics, arcs as the
// library's cubic runs.
void AddToCairo(cairo_t* cr, const CCA_Path& path) {
  const int n = path.GetPointCount();
  CA_PathPoint current;
  CA_PathPoint figureStart;
  for (int i = 0; i < n; ++i) {
    const CA_PathPoint& p = path.GetPoint(i);
    if (p.flags & PathFlagMoveTo) {
      cairo_move_to(cr, p.x, p.y);
      figureStart = current = p;
    } else if (p.flags & PathFlagLineTo) {
      cairo_line_to(cr, p.x, p.y);
      current = p;
    } else if (p.flags & PathFlagQuadTo) {
      const CA_PathPoint& e = path.GetPoint(++i);
      cairo_curve_to(cr, current.x + 2.0 / 3 * (p.x - current.x), current.y + 2.0 / 3 * (p.y - current.y),
                     e.x + 2.0 / 3 * (p.x - e.x), e.y + 2.0 / 3 * (p.y - e.y), e.x, e.y);
      current = e;
    } else if (p.flags & PathFlagCubicTo) {
      const CA_PathPoint& c2 = path.GetPoint(i + 1);
      const CA_PathPoint& e = path.GetPoint(i + 2);
      cairo_curve_to(cr, p.x, p.y, c2.x, c2.y, e.x, e.y);
      i += 2;
      current = e;
    } else if (p.flags & PathFlagArcTo) {
      CCA_Path arc;
      arc.MoveTo(current.x, current.y);
      arc.ArcTo(p.x, p.y, path.GetPoint(i + 1).x, path.GetPoint(i + 1).y, path.GetPoint(i + 2).x,
                path.GetPoint(i + 3).x, path.GetPoint(i + 3).y);
      CCA_Path cubics;
      const int pieces = vxhittest::ConvertArcToCubics(cubics, arc);
      for (int j = 0; j < pieces; ++j) {
        const CA_PathPoint* q = &cubics.GetPoint(3 * j + 1);
        cairo_curve_to(cr, q[0].x, q[0].y, q[1].x, q[1].y, q[2].x, q[2].y);
      }
      i += 3;
      current = path.GetPoint(i);
    }
    if (path.GetPoint(i).flags & PathFlagClose) {
      cairo_close_path(cr);
      current = figureStart;
    }
  }
}

std::vector<CCA_GPoint> MakeQueries() {
  std::vector<CCA_GPoint> points;
  Lcg random;
  random.state = 777;
  for (int i = 0; i < kQueries; ++i) points.push_back({1200 * random.Next(), 900 * random.Next()});
  return points;
}

const CCA_Path& ThePath() {
  static const CCA_Path path = MakePath();
  return path;
}

const std::vector<CCA_GPoint>& TheQueries() {
  static const std::vector<CCA_GPoint> queries = MakeQueries();
  return queries;
}

// Lines and curves, arcs counted as their pieces.
struct SegmentCounter {
  int count = 0;
  bool Line(const CA_PathPoint&, const CA_PathPoint&) { return ++count, false; }
  bool Curve(int, const CA_PathPoint*) { return ++count, false; }
  bool Arc(const CA_PathPoint& start, const CA_PathPoint* records) {
    CA_PathPoint points[vxhittest::kMaxArcPoints];
    count += vxhittest::ArcToCubicPoints(start, records, points);
    return false;
  }
};

int SegmentCount() {
  SegmentCounter counter;
  vxhittest::WalkPathSegments(&ThePath().GetPoint(0), ThePath().GetPointCount(), counter);
  return counter.count;
}

// ---- the runs --------------------------------------------------------------

template <typename Query>
void RunQueries(benchmark::State& state, Query query) {
  const std::vector<CCA_GPoint>& queries = TheQueries();
  size_t next = 0;
  long long hits = 0;
  const long allocations = allocation_counter::Count([&] {
    for (auto _ : state) {
      hits += query(queries[next]) ? 1 : 0;
      next = (next + 1) % queries.size();
    }
  });
  const double iterations = static_cast<double>(state.iterations());
  state.counters["allocs/query"] = static_cast<double>(allocations) / iterations;
  state.counters["hit share"] = static_cast<double>(hits) / iterations;
  state.counters["queries/s"] = benchmark::Counter(iterations, benchmark::Counter::kIsRate);
  state.counters["segments"] = SegmentCount();
}

void BM_VxutilityStroke(benchmark::State& state) {
  RunQueries(state, [](const CCA_GPoint& p) {
    return JudgePointOnPath(p, kTolerance, ThePath(), 0, false, CA_FillMode_Winding);
  });
}

void BM_VxutilityFill(benchmark::State& state) {
  RunQueries(state, [](const CCA_GPoint& p) {
    return JudgePointOnPath(p, kTolerance, ThePath(), 0, true, CA_FillMode_Winding);
  });
}

// The extension that prepares the path once, as cairo holds its path.
const VXHitTestPath& ThePreparedPath() {
  static const VXHitTestPath prepared(ThePath());
  return prepared;
}

void BM_PreparedStroke(benchmark::State& state) {
  ThePreparedPath();
  RunQueries(state, [](const CCA_GPoint& p) { return ThePreparedPath().JudgePoint(p, kTolerance, false); });
}

void BM_PreparedFill(benchmark::State& state) {
  ThePreparedPath();
  RunQueries(state, [](const CCA_GPoint& p) { return ThePreparedPath().JudgePoint(p, kTolerance, true); });
}

struct CairoPath {
  cairo_surface_t* surface = cairo_image_surface_create(CAIRO_FORMAT_ARGB32, 1200, 900);
  cairo_t* cr = cairo_create(surface);
  CairoPath() {
    cairo_set_line_width(cr, 2 * kTolerance);
    AddToCairo(cr, ThePath());
  }
  ~CairoPath() {
    cairo_destroy(cr);
    cairo_surface_destroy(surface);
  }
};

void BM_CairoInStroke(benchmark::State& state) {
  CairoPath cairo;
  RunQueries(state, [&](const CCA_GPoint& p) { return cairo_in_stroke(cairo.cr, p.x, p.y) != 0; });
}

void BM_CairoInFill(benchmark::State& state) {
  CairoPath cairo;
  RunQueries(state, [&](const CCA_GPoint& p) { return cairo_in_fill(cairo.cr, p.x, p.y) != 0; });
}

// Named "<query>/<implementation>" for the ratio reporter.
BENCHMARK(BM_VxutilityStroke)->Name("outline/ours");
BENCHMARK(BM_CairoInStroke)->Name("outline/cairo");
BENCHMARK(BM_VxutilityFill)->Name("area/ours");
BENCHMARK(BM_CairoInFill)->Name("area/cairo");
BENCHMARK(BM_PreparedStroke)->Name("outline, prepared/ours");
BENCHMARK(BM_CairoInStroke)->Name("outline, prepared/cairo");
BENCHMARK(BM_PreparedFill)->Name("area, prepared/ours");
BENCHMARK(BM_CairoInFill)->Name("area, prepared/cairo");

}  // namespace

int main(int argc, char** argv) { return RunBenchmarksWithRatios(argc, argv); }
