#pragma once
/// A 2-D affine matrix: a point (x, y) maps to (a*x + c*y + e, b*x + d*y + f).

#include <vxbase/Geometry.h>
#include <vxbase/vxbase_export.h>

class VXBASE_EXPORT CCA_Matrix {
 public:
  /// The identity.
  CCA_Matrix() = default;
  CCA_Matrix(float a, float b, float c, float d, float e, float f);

  /// Moves everything the matrix maps by (dx, dy) afterwards.
  void Translate(float dx, float dy);
  /// Scales everything the matrix maps by (sx, sy) afterwards.
  void Scale(float sx, float sy);
  /// Appends `next`: the result maps through this matrix, then `next`.
  void Concat(const CCA_Matrix& next);
  /// The image of `point`.
  CCA_GPoint Transform(const CCA_GPoint& point) const;
  bool IsIdentity() const;

  float a = 1;
  float b = 0;
  float c = 0;
  float d = 1;
  float e = 0;
  float f = 0;
};
