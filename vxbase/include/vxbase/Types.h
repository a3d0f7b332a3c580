#pragma once
/// Scalar type names and small enumerations shared by the family.

#include <cstdint>

typedef std::int64_t int64;
typedef std::uint64_t uint64;

/// Colour spaces of a packed 32-bit colour.
enum CA_ColorSpace : int {
  CA_ColorSpace_Gray = 1,
  CA_ColorSpace_RGB = 2,
  CA_ColorSpace_CMYK = 3,
};

/// How the inside of a path is decided when it is filled.
enum CA_FillMode : int {
  CA_FillMode_Alternate = 0,
  CA_FillMode_Winding = 1,
};
