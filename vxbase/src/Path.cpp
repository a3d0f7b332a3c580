#include <vxbase/Path.h>

CCA_Path::~CCA_Path() = default;

int CCA_Path::GetPointCount() const { return m_points.GetSize(); }

CA_PathPoint& CCA_Path::GetPoint(int index) { return m_points[index]; }

const CA_PathPoint& CCA_Path::GetPoint(int index) const { return m_points[index]; }

bool CCA_Path::GetPoint(int index, CCA_GPoint& point, int& flags) const {
  if (index < 0 || index >= m_points.GetSize()) return false;
  const CA_PathPoint& p = m_points[index];
  point.x = p.x;
  point.y = p.y;
  flags = p.flags;
  return true;
}

bool CCA_Path::AddPoints(const CA_PathPoint* points, int count) {
  CCA_MutexLock lock(m_points.GetLock());
  const int first = m_points.GetSize();
  if (!m_points.SetSize(first + count, -1)) return false;
  for (int i = 0; i < count; ++i) m_points[first + i] = points[i];
  return true;
}

bool CCA_Path::AddPoint(float x, float y, int flags) {
  const CA_PathPoint point{x, y, flags};
  return AddPoints(&point, 1);
}

bool CCA_Path::MoveTo(float x, float y) { return AddPoint(x, y, PathFlagMoveTo); }

bool CCA_Path::LineTo(float x, float y) { return AddPoint(x, y, PathFlagLineTo); }

bool CCA_Path::QuadTo(float cx, float cy, float x, float y) {
  const CA_PathPoint points[2] = {{cx, cy, PathFlagQuadTo}, {x, y, 0}};
  return AddPoints(points, 2);
}

bool CCA_Path::CubicBezierTo(float c1x, float c1y, float c2x, float c2y, float x, float y) {
  const CA_PathPoint points[3] = {{c1x, c1y, PathFlagCubicTo}, {c2x, c2y, 0}, {x, y, 0}};
  return AddPoints(points, 3);
}

bool CCA_Path::ArcTo(float rx, float ry, float rotation, float largeArc, float sweep, float x, float y) {
  const CA_PathPoint points[4] = {
      {rx, ry, PathFlagArcTo}, {rotation, largeArc, 0}, {sweep, 0, 0}, {x, y, 0}};
  return AddPoints(points, 4);
}

bool CCA_Path::Close() {
  CCA_MutexLock lock(m_points.GetLock());
  const int count = m_points.GetSize();
  if (count == 0) return false;
  m_points[count - 1].flags |= PathFlagClose;
  return true;
}

void CCA_Path::RemoveAll() { m_points.RemoveAll(); }
