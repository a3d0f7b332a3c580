#pragma once
// A small SVG-like text form of a path, for the command line:
//   M x y | L x y | Q cx cy x y | C c1x c1y c2x c2y x y |
//   A rx ry rotation large sweep x y | Z
// Absolute coordinates only (z is taken as Z); numbers are separated by spaces or commas; the
// arc's rotation is in radians; a command's numbers may repeat without the
// letter (after M the repeats are lines).

#include <string>

#include <vxbase/Path.h>

/// Appends the figures of `text` to `path`; false with `error` set when the
/// text is not in the form above.
bool ParsePathText(const std::string& text, CCA_Path& path, std::string& error);
