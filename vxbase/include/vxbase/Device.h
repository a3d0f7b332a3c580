#pragma once
/// Drawing devices: the interface every device implements, and a device
/// that draws into a bitmap.

#include <vxbase/vxbase_export.h>

class CCA_Dib;
class CCA_Font;
class CCA_Matrix;

/// A drawing surface. Only the first three operations must be implemented;
/// every further operation has a default body, so a caller can derive a
/// device that overrides just those three.
class VXBASE_EXPORT ICA_Device {
 public:
  virtual ~ICA_Device();

  /// Draws `length` characters of `text` (UTF-16 on Windows, UTF-32 on
  /// Linux) with `font` at `size` pixels and `argb` (0xAARRGGBB, not
  /// premultiplied). `matrix` maps text space (y down) to the device; its
  /// translation is the origin of the baseline. Returns the number of
  /// glyphs drawn, 0 when nothing was drawn.
  virtual int DrawText(const wchar_t* text, int length, CCA_Font* font, float size, CCA_Matrix* matrix,
                       unsigned int argb) = 0;
  /// Ends the current run of text.
  virtual void CompleteText() = 0;
  /// Ends the page: everything drawn so far is final.
  virtual void CompleteDrawing() = 0;

  /// The size of the surface in pixels; 0 when it has none.
  virtual int GetDeviceWidth() const { return 0; }
  virtual int GetDeviceHeight() const { return 0; }
};

/// Draws into a CCA_Dib it does not own, which must outlive the device.
/// Text is rendered antialiased and blended with the colour's alpha; ink
/// outside the bitmap is clipped. Characters the font's face lacks are drawn
/// from another installed face that has them.
class VXBASE_EXPORT CCA_DibDevice : public ICA_Device {
 public:
  /// A device over `target` (null or empty: nothing is ever drawn).
  explicit CCA_DibDevice(CCA_Dib* target);
  ~CCA_DibDevice() override;

  /// Returns the number of glyphs placed (ink may still be clipped); 0 for
  /// an empty text, a null font or matrix, a size that is not a finite
  /// number in (0, 4096] after the matrix's scale, a matrix that is not
  /// finite or is degenerate, a font whose LoadFont found no face, or a
  /// build without a font backend. A font never loaded draws with the best
  /// installed face.
  int DrawText(const wchar_t* text, int length, CCA_Font* font, float size, CCA_Matrix* matrix,
               unsigned int argb) override;
  /// Nothing to finish: glyphs go straight into the bitmap.
  void CompleteText() override;
  void CompleteDrawing() override;

  int GetDeviceWidth() const override;
  int GetDeviceHeight() const override;

 private:
  CCA_Dib* m_pTarget;
};
