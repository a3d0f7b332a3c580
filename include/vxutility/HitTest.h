#pragma once
/// Hit testing of a point against a vector path, on its outline or, when
/// asked, inside the area it encloses.

#include <vxbase/Geometry.h>
#include <vxbase/Path.h>
#include <vxbase/Types.h>

#include <vxutility/vxutility_export.h>

/// True when `point` lies within `tolerance` of the outline of `path`, or,
/// with `fillArea`, when the path's segments also cross the point's
/// horizontal and vertical lines on all four sides of it. Arcs are tested
/// as runs of cubic curves. The fourth argument and `fillMode` have no
/// effect. False for an empty path, a path without segments, and a miss.
VXUTILITY_EXPORT bool JudgePointOnPath(const CCA_GPoint& point, float tolerance, const CCA_Path& path, float,
                                       bool fillArea, CA_FillMode fillMode);
