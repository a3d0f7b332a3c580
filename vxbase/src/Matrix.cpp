#include <vxbase/Matrix.h>

CCA_Matrix::CCA_Matrix(float a_, float b_, float c_, float d_, float e_, float f_)
    : a(a_), b(b_), c(c_), d(d_), e(e_), f(f_) {}

void CCA_Matrix::Translate(float dx, float dy) {
  e += dx;
  f += dy;
}

void CCA_Matrix::Scale(float sx, float sy) {
  Concat(CCA_Matrix(sx, 0, 0, sy, 0, 0));
}

void CCA_Matrix::Concat(const CCA_Matrix& m) {
  const CCA_Matrix t = *this;
  a = t.a * m.a + t.b * m.c;
  b = t.a * m.b + t.b * m.d;
  c = t.c * m.a + t.d * m.c;
  d = t.c * m.b + t.d * m.d;
  e = t.e * m.a + t.f * m.c + m.e;
  f = t.e * m.b + t.f * m.d + m.f;
}

CCA_GPoint CCA_Matrix::Transform(const CCA_GPoint& p) const {
  return CCA_GPoint{a * p.x + c * p.y + e, b * p.x + d * p.y + f};
}

bool CCA_Matrix::IsIdentity() const {
  return a == 1 && b == 0 && c == 0 && d == 1 && e == 0 && f == 0;
}
