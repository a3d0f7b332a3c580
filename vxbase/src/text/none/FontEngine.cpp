// Font backend of a build without FreeType and fontconfig: no face is ever
// found and no text is drawn.

#include "text/FontEngine.h"

namespace vxbase_detail {

class FontEngine {};

FontEngine* NewFontEngine() { return nullptr; }

void DeleteFontEngine(FontEngine* engine) { delete engine; }

bool MatchFont(FontEngine*, const FontRequest&, FontFace&) { return false; }

int RenderText(FontEngine*, const FontFace&, const TextRun&, GlyphSink&) { return 0; }

}  // namespace vxbase_detail
