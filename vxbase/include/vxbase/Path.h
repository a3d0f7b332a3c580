#pragma once
/// Vector paths: a sequence of point records whose flags tell what each point
/// starts, ends or controls.

#include <vxbase/Array.h>
#include <vxbase/Geometry.h>
#include <vxbase/vxbase_export.h>

/// Flag bits of a path point.
enum CA_PathPointFlag {
  PathFlagClose = 0x2,      ///< the figure closes after the segment ending here
  PathFlagMoveTo = 0x100,   ///< starts a figure
  PathFlagLineTo = 0x200,   ///< ends a straight segment
  PathFlagQuadTo = 0x400,   ///< control point of a quadratic curve; the end follows
  PathFlagCubicTo = 0x800,  ///< first control point of a cubic curve; two points follow
  PathFlagArcTo = 0x1000,   ///< first of the four records of an elliptical arc
};

/// One point record of a path.
struct CA_PathPoint {
  float x = 0;
  float y = 0;
  int flags = 0;
};

/// A copyable sequence of path points. Appends that cannot get memory leave
/// the path unchanged.
class VXBASE_EXPORT CCA_Path {
 public:
  CCA_Path() = default;
  CCA_Path(const CCA_Path& other) = default;
  CCA_Path& operator=(const CCA_Path& other) = default;
  CCA_Path(CCA_Path&& other) noexcept = default;
  CCA_Path& operator=(CCA_Path&& other) noexcept = default;
  ~CCA_Path();

  /// The number of point records; 0 for an empty path.
  int GetPointCount() const;
  /// The record at `index`; the caller keeps 0 <= index < GetPointCount().
  CA_PathPoint& GetPoint(int index);
  const CA_PathPoint& GetPoint(int index) const;
  /// Copies the coordinates and flags of point `index`; false when out of range.
  bool GetPoint(int index, CCA_GPoint& point, int& flags) const;

  /// Appends one raw record; false when memory cannot be obtained.
  bool AddPoint(float x, float y, int flags);
  bool MoveTo(float x, float y);
  bool LineTo(float x, float y);
  /// A quadratic curve: control point (flagged PathFlagQuadTo), then end point.
  bool QuadTo(float cx, float cy, float x, float y);
  /// A cubic curve: first control (flagged PathFlagCubicTo), second control, end.
  bool CubicBezierTo(float c1x, float c1y, float c2x, float c2y, float x, float y);
  /// An elliptical arc in four records: (rx, ry) flagged PathFlagArcTo, then
  /// (rotation, largeArc), (sweep, 0) and the end point (x, y).
  bool ArcTo(float rx, float ry, float rotation, float largeArc, float sweep, float x, float y);
  /// Sets PathFlagClose on the last point; false for an empty path.
  bool Close();
  void RemoveAll();

 private:
  bool AddPoints(const CA_PathPoint* points, int count);

  CCA_ArrayTemplate<CA_PathPoint> m_points;
};
