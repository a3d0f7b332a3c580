#pragma once
/// Geometry records: integer and float points, sizes and rectangles. Fields
/// are public and laid out in declared order; each is zero by default.

/// A point in whole units.
struct CCA_Point {
  int x = 0;
  int y = 0;
};

/// A size in whole units.
struct CCA_Size {
  int width = 0;
  int height = 0;
};

/// A point in float units.
struct CCA_GPoint {
  float x = 0;
  float y = 0;
};

/// A size in float units.
struct CCA_GSize {
  float width = 0;
  float height = 0;
};

/// A rectangle in whole units.
struct CCA_Rect {
  int left = 0;
  int top = 0;
  int right = 0;
  int bottom = 0;
};

/// A rectangle in float units.
struct CCA_GRect {
  float left = 0;
  float top = 0;
  float right = 0;
  float bottom = 0;
};
