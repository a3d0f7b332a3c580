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

// What the scan reads for every segment.
struct SegmentEntry {
  float minX, minY, maxX, maxY;
  float magnitude;
  int kind;
  int index;    // into the lines or the curves
  bool finite;  // every coordinate is finite
};

struct PreparedCurve {
  BezierCurve curve;
  ControlBox box;
  CurveSamples samples;
};

struct PreparedLine {
  CA_PathPoint start, end;
};

}  // namespace
}  // namespace vxhittest

struct VXHitTestPath::Data {
  std::vector<vxhittest::SegmentEntry> segments;
  std::vector<vxhittest::PreparedLine> lines;
  std::vector<vxhittest::PreparedCurve> curves;

  // The walk's visitor: collects every segment, never stops.
  bool Line(const CA_PathPoint& start, const CA_PathPoint& end) {
    using namespace vxhittest;
    const CA_PathPoint ends[2] = {start, end};
    Add(vxhittest::Line, ends, 2, static_cast<int>(lines.size()));
    lines.push_back({start, end});
    return false;
  }

  bool Curve(int kind, const CA_PathPoint* points) {
    using namespace vxhittest;
    const int count = kind == Cubic ? 4 : 3;
    Add(kind, points, count, static_cast<int>(curves.size()));
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

  void Add(int kind, const CA_PathPoint* points, int count, int index) {
    using namespace vxhittest;
    SegmentEntry entry{points[0].x, points[0].y, points[0].x, points[0].y, 0, kind, index, true};
    float nonFinite = 0;
    for (int i = 0; i < count; ++i) {
      entry.minX = std::min(entry.minX, points[i].x);
      entry.maxX = std::max(entry.maxX, points[i].x);
      entry.minY = std::min(entry.minY, points[i].y);
      entry.maxY = std::max(entry.maxY, points[i].y);
      nonFinite += NonFinite(points[i].x, points[i].y, 0, 0);
    }
    entry.finite = nonFinite == 0;
    entry.magnitude = Magnitude(entry.minX, entry.minY, entry.maxX, entry.maxY);
    segments.push_back(entry);
  }
};

VXHitTestPath::VXHitTestPath(const CCA_Path& path) : m_pData(new Data) {
  const int count = path.GetPointCount();
  if (count > 0) vxhittest::WalkPathSegments(&path.GetPoint(0), count, *m_pData);
}

VXHitTestPath::~VXHitTestPath() { delete m_pData; }

bool VXHitTestPath::JudgePoint(const CCA_GPoint& point, float tolerance, bool fillArea) const {
  using namespace vxhittest;
  PointQuery query(point, tolerance, fillArea);
  const QueryPoint& q = query.Point();
  for (const SegmentEntry& s : m_pData->segments) {
    const bool bounded = q.bounded && s.finite;
    if (s.kind == Line) {
      const unsigned reach =
          bounded ? LineBoxReach(q, s.minX, s.minY, s.maxX, s.maxY, s.magnitude) : ReachAnything;
      if ((reach & query.Wanted()) == 0) continue;
      const PreparedLine& line = m_pData->lines[s.index];
      if (query.ReachedLine(reach, line.start, line.end)) return true;
    } else {
      const unsigned reach = bounded ? BoxReach(q, s.minX, s.minY, s.maxX, s.maxY, s.magnitude) : ReachAnything;
      if ((reach & query.Wanted()) == 0) continue;
      const PreparedCurve& c = m_pData->curves[s.index];
      if (query.SampledCurve(reach, c.box, c.curve, c.samples)) return true;
    }
  }
  return false;
}
