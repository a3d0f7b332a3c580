// Face lookups through fontconfig: a family by name with weight and slant,
// and a face that covers one character.

#include "text/freetype/FaceLookup.h"

#include <fontconfig/fontconfig.h>

#include <vxbase/Font.h>

namespace vxbase_detail {
namespace {

/// Owns one fontconfig pattern.
class Pattern {
 public:
  explicit Pattern(FcPattern* pattern) : m_pPattern(pattern) {}
  ~Pattern() {
    if (m_pPattern != nullptr) FcPatternDestroy(m_pPattern);
  }
  Pattern(const Pattern&) = delete;
  Pattern& operator=(const Pattern&) = delete;
  FcPattern* get() const { return m_pPattern; }

 private:
  FcPattern* m_pPattern;
};

/// Families fontconfig resolves by its own aliases: any face it picks for
/// them counts as the family itself.
bool IsGenericFamily(const std::string& family) {
  static const char* const kGeneric[] = {"serif", "sans-serif", "sans", "monospace", "mono",
                                         "cursive", "fantasy", "system-ui", "emoji", "math"};
  for (const char* generic : kGeneric) {
    if (FcStrCmpIgnoreCase(reinterpret_cast<const FcChar8*>(family.c_str()),
                           reinterpret_cast<const FcChar8*>(generic)) == 0) {
      return true;
    }
  }
  return false;
}

/// A pattern asking for `family` (may be empty), `weight` and `italic`.
FcPattern* NewRequest(const std::string& family, int weight, bool italic) {
  FcPattern* pattern = FcPatternCreate();
  if (pattern == nullptr) return nullptr;
  if (!family.empty()) FcPatternAddString(pattern, FC_FAMILY, reinterpret_cast<const FcChar8*>(family.c_str()));
  FcPatternAddDouble(pattern, FC_WEIGHT, FcWeightFromOpenTypeDouble(weight));
  FcPatternAddInteger(pattern, FC_SLANT, italic ? FC_SLANT_ITALIC : FC_SLANT_ROMAN);
  FcPatternAddBool(pattern, FC_SCALABLE, FcTrue);
  return pattern;
}

/// fontconfig's best match for `request` (consumed), or null.
FcPattern* BestMatch(FcPattern* request) {
  Pattern owned(request);
  if (request == nullptr) return nullptr;
  if (!FcConfigSubstitute(nullptr, request, FcMatchPattern)) return nullptr;
  FcDefaultSubstitute(request);
  FcResult result = FcResultNoMatch;
  return FcFontMatch(nullptr, request, &result);
}

/// True when one of `match`'s family names is `family`.
bool HasFamily(FcPattern* match, const std::string& family) {
  FcChar8* name = nullptr;
  for (int i = 0; FcPatternGetString(match, FC_FAMILY, i, &name) == FcResultMatch; ++i) {
    if (FcStrCmpIgnoreCase(name, reinterpret_cast<const FcChar8*>(family.c_str())) == 0) return true;
  }
  return false;
}

bool ReadFace(FcPattern* match, FontFace& face) {
  FcChar8* file = nullptr;
  if (FcPatternGetString(match, FC_FILE, 0, &file) != FcResultMatch || file == nullptr) return false;
  int index = 0;
  if (FcPatternGetInteger(match, FC_INDEX, 0, &index) != FcResultMatch) index = 0;
  face.path = reinterpret_cast<const char*>(file);
  face.index = index;
  return true;
}

/// Looks `family` up; with `mustBeInstalled` only a face of that family
/// (or any face for a generic family) is accepted.
bool LookUpFamily(const std::string& family, int weight, bool italic, bool mustBeInstalled, FontFace& face) {
  Pattern match(BestMatch(NewRequest(family, weight, italic)));
  if (match.get() == nullptr) return false;
  if (mustBeInstalled && !family.empty() && !IsGenericFamily(family) && !HasFamily(match.get(), family)) {
    return false;
  }
  return ReadFace(match.get(), face);
}

}  // namespace

bool LookUpFace(const FontRequest& request, FontFace& face) {
  const bool style = (request.flags & CA_FontLoad_MatchStyle) != 0;
  const int weight = style ? request.weight : 400;
  const bool italic = style && request.italic;
  if (!request.family.empty() && LookUpFamily(request.family, weight, italic, true, face)) return true;
  if (!request.family2.empty() && request.family2 != request.family &&
      LookUpFamily(request.family2, weight, italic, true, face)) {
    return true;
  }
  if ((request.flags & CA_FontLoad_AnyFace) == 0) return false;
  return LookUpFamily(request.family, weight, italic, false, face);
}

bool LookUpFaceForChar(char32_t ch, int weight, bool italic, FontFace& face) {
  FcPattern* request = NewRequest(std::string(), weight, italic);
  FcCharSet* wanted = FcCharSetCreate();
  if (request == nullptr || wanted == nullptr || !FcCharSetAddChar(wanted, ch) ||
      !FcPatternAddCharSet(request, FC_CHARSET, wanted)) {
    if (wanted != nullptr) FcCharSetDestroy(wanted);
    if (request != nullptr) FcPatternDestroy(request);
    return false;
  }
  FcCharSetDestroy(wanted);  // the pattern holds its own reference
  Pattern match(BestMatch(request));
  if (match.get() == nullptr) return false;
  FcCharSet* covered = nullptr;
  if (FcPatternGetCharSet(match.get(), FC_CHARSET, 0, &covered) != FcResultMatch ||
      !FcCharSetHasChar(covered, ch)) {
    return false;
  }
  return ReadFace(match.get(), face);
}

}  // namespace vxbase_detail
