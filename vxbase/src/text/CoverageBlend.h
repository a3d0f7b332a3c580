#pragma once
// Blending an antialiased glyph's coverage into a bitmap.

#include <vxbase/Dib.h>

#include "text/FontEngine.h"

namespace vxbase_detail {

/// Blends `argb` (0xAARRGGBB, not premultiplied) through `mask` into
/// `target`, source over destination, clipped to the bitmap. Argb32 keeps
/// straight (not premultiplied) alpha; Gray8 takes the colour's luminance.
void BlendCoverage(CCA_Dib& target, const GlyphMask& mask, unsigned int argb);

}  // namespace vxbase_detail
