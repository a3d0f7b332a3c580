#pragma once
// The hit test written the plain way, kept only to check the library's
// streaming one: every call turns the path into a list of segments (arcs
// converted to cubic pieces), then tests each segment in order. It must
// give the library's answer on every input.

#include <vxbase/Geometry.h>
#include <vxbase/Path.h>

namespace hittest_oracle {

/// The answer of JudgePointOnPath, computed the plain way.
bool JudgePointOnPath(const CCA_GPoint& point, float tolerance, const CCA_Path& path, bool fillArea);

}  // namespace hittest_oracle
