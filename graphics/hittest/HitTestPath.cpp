// A path prepared for many hit tests: the walk is done once, arcs become
// their cubic pieces, and each segment keeps its box and, for curves, its
// samples, which do not depend on the point. A query scans the boxes and
// hands the segments that can still matter to the same tests the streaming
// walk uses, so both answer alike.

#include <algorithm>
#include <vector>

#include <vxutility/HitTest.h>

#include "graphics/hittest/ArcToCubics.h"
#include "graphics/hittest/PathWalk.h"
#include "graphics/hittest/PointQuery.h"

namespace vxhittest {
namespace {

// What a query reads of every straight segment.
struct LineEntry {
  ControlBox box;
  float magnitude;
  LineFuzz fuzz;
  bool finite;  // both ends are finite
  CA_PathPoint start, end;
};

// What a query reads of every curve before testing it.
struct CurveEntry {
  ControlBox box;  // exact for finite points, unused otherwise
  float magnitude;
  bool finite;
  int index;  // into the prepared curves
};

struct PreparedCurve {
  BezierCurve curve;
  ControlBox box;  // by the tests' own rule, also for points that are not finite
  CurveSamples samples;
};

ControlBox BoxOf(const CA_PathPoint* points, int count, bool& finite) {
  ControlBox box{points[0].x, points[0].y, points[0].x, points[0].y};
  float nonFinite = 0;
  for (int i = 0; i < count; ++i) {
    box.minX = std::min(box.minX, points[i].x);
    box.maxX = std::max(box.maxX, points[i].x);
    box.minY = std::min(box.minY, points[i].y);
    box.maxY = std::max(box.maxY, points[i].y);
    nonFinite += NonFinite(points[i].x, points[i].y, 0, 0);
  }
  finite = nonFinite == 0;
  return box;
}

float MagnitudeOf(const ControlBox& b) { return Magnitude(b.minX, b.minY, b.maxX, b.maxY); }

}  // namespace
}  // namespace vxhittest

struct VXHitTestPath::Data {
  std::vector<vxhittest::LineEntry> lines;
  std::vector<vxhittest::CurveEntry> curveEntries;
  std::vector<vxhittest::PreparedCurve> curves;

  // The walk's visitor: collects every segment, never stops.
  bool Line(const CA_PathPoint& start, const CA_PathPoint& end) {
    using namespace vxhittest;
    const CA_PathPoint ends[2] = {start, end};
    LineEntry entry;
    entry.box = BoxOf(ends, 2, entry.finite);
    entry.magnitude = MagnitudeOf(entry.box);
    entry.fuzz = MakeLineFuzz(start, end);
    entry.start = start;
    entry.end = end;
    lines.push_back(entry);
    return false;
  }

  bool Curve(int kind, const CA_PathPoint* points) {
    using namespace vxhittest;
    const int count = kind == Cubic ? 4 : 3;
    CurveEntry entry;
    entry.box = BoxOf(points, count, entry.finite);
    entry.magnitude = MagnitudeOf(entry.box);
    entry.index = static_cast<int>(curves.size());
    curveEntries.push_back(entry);
    curves.emplace_back();
    PreparedCurve& prepared = curves.back();
    prepared.curve = MakeCurve(kind, points);
    prepared.box = GetControlBox(points, count);
    SampleCurve(prepared.curve, prepared.samples);
    return false;
  }

  bool Arc(const CA_PathPoint& start, const CA_PathPoint* records) {
    CA_PathPoint points[vxhittest::kMaxArcPoints];
    const int pieces = vxhittest::ArcToCubicPoints(start, records, points);
    for (int i = 0; i < pieces; ++i) Curve(vxhittest::Cubic, &points[3 * i]);
    return false;
  }
};

VXHitTestPath::VXHitTestPath(const CCA_Path& path) : m_pData(new Data) {
  const int count = path.GetPointCount();
  if (count > 0) vxhittest::WalkPathSegments(&path.GetPoint(0), count, *m_pData);
}

VXHitTestPath::~VXHitTestPath() { delete m_pData; }

// Lines first: they are cheap, and the counters they raise let more curves
// be skipped.
bool VXHitTestPath::JudgePoint(const CCA_GPoint& point, float tolerance, bool fillArea) const {
  using namespace vxhittest;
  PointQuery query(point, tolerance, fillArea);
  const QueryPoint& q = query.Point();
  for (const LineEntry& l : m_pData->lines) {
    const unsigned reach = q.bounded && l.finite ? LineBoxReach(q, l.box, l.magnitude, l.fuzz) : ReachAnything;
    if ((reach & query.Wanted()) != 0 && query.ReachedLine(reach, l.start, l.end, l.box)) return true;
  }
  for (const CurveEntry& c : m_pData->curveEntries) {
    const ControlBox& b = c.box;
    const unsigned reach =
        q.bounded && c.finite ? BoxReach(q, b.minX, b.minY, b.maxX, b.maxY, c.magnitude) : ReachAnything;
    if ((reach & query.Wanted()) == 0) continue;
    const PreparedCurve& prepared = m_pData->curves[c.index];
    if (query.SampledCurve(reach, prepared.box, prepared.curve, prepared.samples)) return true;
  }
  return false;
}
