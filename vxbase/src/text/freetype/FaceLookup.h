#pragma once
// Face lookups through fontconfig.

#include "text/FontEngine.h"

namespace vxbase_detail {

/// The face for `request`: the first family that is installed, else (with
/// CA_FontLoad_AnyFace) the installed face closest to the first family.
/// False when fontconfig finds nothing acceptable.
bool LookUpFace(const FontRequest& request, FontFace& face);

/// An installed face that has a glyph for `ch`, closest to `weight` and
/// `italic`; false when no installed face has one.
bool LookUpFaceForChar(char32_t ch, int weight, bool italic, FontFace& face);

}  // namespace vxbase_detail
