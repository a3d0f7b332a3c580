#include <vxbase/Dib.h>

#include <cstdlib>
#include <new>

#include "image/PixelRow.h"

int CA_DibBytesPerPixel(CA_DibFormat format) {
  switch (format) {
    case CA_DibFormat_Gray8: return 1;
    case CA_DibFormat_Rgb24: return 3;
    case CA_DibFormat_Argb32: return 4;
    default: return 0;
  }
}

bool CA_DibSizeAllowed(std::int64_t width, std::int64_t height) {
  if (width <= 0 || height <= 0) return false;
  if (width > CA_DibMaxArea || height > CA_DibMaxArea) return false;
  return width * height <= CA_DibMaxArea;
}

CCA_Dib::~CCA_Dib() { std::free(m_pBuffer); }

bool CCA_Dib::Create(int width, int height, CA_DibFormat format) {
  const int bytesPerPixel = CA_DibBytesPerPixel(format);
  if (bytesPerPixel == 0 || !CA_DibSizeAllowed(width, height)) return false;
  // Width and area are at most 2^28, so the pitch fits an int (at most 2^30)
  // and the whole block fits size_t on every supported target.
  const std::int64_t pitch = (static_cast<std::int64_t>(width) * bytesPerPixel + 3) / 4 * 4;
  void* block = std::calloc(static_cast<std::size_t>(height), static_cast<std::size_t>(pitch));
  if (block == nullptr) return false;
  std::free(m_pBuffer);
  m_pBuffer = static_cast<std::uint8_t*>(block);
  m_nWidth = width;
  m_nHeight = height;
  m_nPitch = static_cast<int>(pitch);
  m_Format = format;
  return true;
}

std::uint8_t* CCA_Dib::GetScanline(int row) {
  if (row < 0 || row >= m_nHeight) return nullptr;
  return m_pBuffer + static_cast<std::size_t>(row) * static_cast<std::size_t>(m_nPitch);
}

const std::uint8_t* CCA_Dib::GetScanline(int row) const {
  return const_cast<CCA_Dib*>(this)->GetScanline(row);
}

unsigned int CCA_Dib::GetPixel(int x, int y) const {
  const std::uint8_t* row = GetScanline(y);
  if (row == nullptr || x < 0 || x >= m_nWidth) return 0;
  return vxbase_image::ReadArgb(row, x, m_Format);
}

void CCA_Dib::SetPixel(int x, int y, unsigned int argb) {
  std::uint8_t* row = GetScanline(y);
  if (row == nullptr || x < 0 || x >= m_nWidth) return;
  vxbase_image::WriteArgb(row, x, m_Format, argb);
}

CCA_Dib* CCA_Dib::Convert(CA_DibFormat format) const {
  if (m_pBuffer == nullptr || CA_DibBytesPerPixel(format) == 0) return nullptr;
  CCA_Dib* copy = new (std::nothrow) CCA_Dib;
  if (copy == nullptr || !copy->Create(m_nWidth, m_nHeight, format)) {
    delete copy;
    return nullptr;
  }
  for (int y = 0; y < m_nHeight; ++y) {
    vxbase_image::ConvertRow(GetScanline(y), m_Format, copy->GetScanline(y), format, m_nWidth);
  }
  return copy;
}
