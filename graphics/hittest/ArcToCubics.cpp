// The endpoint form of an arc is turned into centre form in the frame where
// the ellipse is the unit circle, then split into pieces of at most a
// quarter turn (plus a little, so that exact quarter turns stay one piece),
// each approximated by the usual cubic with handle length
// 4/3 tan(quarter of the piece's angle). Single precision throughout.

#include "graphics/hittest/ArcToCubics.h"

#include <cmath>

namespace vxhittest {
namespace {

constexpr float kTurn = 6.2831855f;
constexpr float kRotationSlack = -0.0001f;  // rotations just below zero stay as they are
constexpr float kPieceAngle = 1.5717964f;   // a quarter turn + 0.001
constexpr int kMaxPieces = 4;               // |angle| <= one turn
constexpr float kHandleFactor = 2.6666667f;

struct ArcInput {
  float x0, y0, rx, ry, rotation, largeArc, sweep, x1, y1;
};

ArcInput ReadArc(const CA_PathPoint& start, const CA_PathPoint* records) {
  const CA_PathPoint& radii = records[0];
  const CA_PathPoint& rotation = records[1];
  const CA_PathPoint& sweep = records[2];
  const CA_PathPoint& end = records[3];
  return {start.x, start.y, radii.x, radii.y, rotation.x, rotation.y, sweep.x, end.x, end.y};
}

// Brings the rotation into [-0.0001, one turn) by whole turns. A rotation so
// large (or infinite) that a turn no longer changes it is kept as it is.
float WrapRotation(float rotation) {
  while (rotation >= kTurn) {
    const float next = rotation - kTurn;
    if (next == rotation) break;
    rotation = next;
  }
  while (rotation < kRotationSlack) {
    const float next = rotation + kTurn;
    if (next == rotation) break;
    rotation = next;
  }
  return rotation;
}

// The ellipse's frame: rotation sine and cosine and the radii.
struct Frame {
  float s, c, rx, ry;

  float U(float x, float y) const { return (c / rx) * x + (s / rx) * y; }
  float V(float x, float y) const { return (-s / ry) * x + (c / ry) * y; }
  float X(float u, float v) const { return c * rx * u - s * ry * v; }
  float Y(float u, float v) const { return s * rx * u + c * ry * v; }
};

// Radii too small to reach from start to end grow until they just do.
void ScaleRadiiToReach(const ArcInput& arc, Frame& frame) {
  const float hx = (arc.x1 - arc.x0) / 2;
  const float hy = (arc.y1 - arc.y0) / 2;
  const float xp = frame.c * hx + frame.s * hy;
  const float yp = frame.c * hy - frame.s * hx;
  const float lambda = (yp * yp) / (frame.ry * frame.ry) + (xp * xp) / (frame.rx * frame.rx);
  if (lambda > 1) {
    const float scale = std::sqrt(lambda);
    frame.rx *= scale;
    frame.ry *= scale;
  }
}

// k = ceil(|delta| / piece angle). Only a NaN angle (a degenerate arc) falls
// outside 0 ... kMaxPieces; it gives no piece.
int PieceCount(float delta) {
  const float pieces = std::ceil(std::fabs(delta / kPieceAngle));
  if (!(pieces >= 0.0f && pieces <= static_cast<float>(kMaxPieces))) return 0;
  return static_cast<int>(pieces);
}

// One piece from angle a to angle b on the unit circle around (uc, vc):
// its two control points and its end.
void WritePiece(const Frame& frame, float uc, float vc, float a, float b, CA_PathPoint* out) {
  const float h = (b - a) / 2;
  const float sinQuarter = std::sin(h / 2);
  const float t = kHandleFactor * (sinQuarter * sinQuarter) / std::sin(h);
  const float u1 = uc + std::cos(a) - t * std::sin(a);
  const float v1 = vc + std::sin(a) + t * std::cos(a);
  const float u3 = uc + std::cos(b);
  const float v3 = vc + std::sin(b);
  const float u2 = u3 + t * std::sin(b);
  const float v2 = v3 - t * std::cos(b);
  out[0] = {frame.X(u1, v1), frame.Y(u1, v1), 0};
  out[1] = {frame.X(u2, v2), frame.Y(u2, v2), 0};
  out[2] = {frame.X(u3, v3), frame.Y(u3, v3), 0};
}

}  // namespace

int ArcToCubicPoints(const CA_PathPoint& from, const CA_PathPoint* records, CA_PathPoint (&points)[kMaxArcPoints]) {
  const ArcInput in = ReadArc(from, records);
  const float rotation = WrapRotation(in.rotation);
  Frame frame{std::sin(rotation), std::cos(rotation), std::fabs(in.rx), std::fabs(in.ry)};
  ScaleRadiiToReach(in, frame);

  const float us = frame.U(in.x0, in.y0);
  const float vs = frame.V(in.x0, in.y0);
  const float ue = frame.U(in.x1, in.y1);
  const float ve = frame.V(in.x1, in.y1);

  // Centre: on the perpendicular bisector of the chord, on the side the
  // flags choose.
  const float d = (ue - us) * (ue - us) + (ve - vs) * (ve - vs);
  float g = 1 / d - 0.25f;
  if (g < 0) g = 0;
  float f = std::sqrt(g);
  if (in.sweep == in.largeArc) f = -f;
  const float uc = (us + ue) / 2 - f * (ve - vs);
  const float vc = (vs + ve) / 2 + f * (ue - us);

  const float theta0 = std::atan2(vs - vc, us - uc);
  const float theta1 = std::atan2(ve - vc, ue - uc);
  float delta = theta1 - theta0;
  if (delta < 0 && in.sweep != 0) {
    delta += kTurn;
  } else if (delta > 0 && in.sweep == 0) {
    delta -= kTurn;
  }

  const int k = PieceCount(delta);
  points[0] = {in.x0, in.y0, PathFlagMoveTo};
  for (int i = 0; i < k; ++i) {
    const float a = static_cast<float>(i) * delta / static_cast<float>(k) + theta0;
    const float b = static_cast<float>(i + 1) * delta / static_cast<float>(k) + theta0;
    WritePiece(frame, uc, vc, a, b, &points[1 + 3 * i]);
  }
  return k;
}

int ConvertArcToCubics(CCA_Path& out, CCA_Path arc) {
  if (arc.GetPointCount() < 5) return 0;
  CA_PathPoint points[kMaxArcPoints];
  const int k = ArcToCubicPoints(arc.GetPoint(0), &arc.GetPoint(1), points);
  out.MoveTo(points[0].x, points[0].y);
  for (int i = 0; i < k; ++i) {
    const CA_PathPoint* piece = &points[1 + 3 * i];
    out.CubicBezierTo(piece[0].x, piece[0].y, piece[1].x, piece[1].y, piece[2].x, piece[2].y);
  }
  return k;
}

}  // namespace vxhittest
