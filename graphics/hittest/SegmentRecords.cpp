#include "graphics/hittest/SegmentRecords.h"

namespace vxhittest {

ControlBox GetControlBox(const CA_PathPoint* points, int count) {
  ControlBox box;
  if (count <= 0) return box;
  box.minX = box.maxX = points[0].x;
  box.minY = box.maxY = points[0].y;
  for (int i = 1; i < count; ++i) {
    const CA_PathPoint& p = points[i];
    if (p.x < box.minX) box.minX = p.x;
    if (p.x >= box.maxX) box.maxX = p.x;
    if (p.y < box.minY) box.minY = p.y;
    if (p.y >= box.maxY) box.maxY = p.y;
  }
  return box;
}

}  // namespace vxhittest
