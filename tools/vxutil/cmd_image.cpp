// vxutil image info FILE | convert IN OUT: what an image file holds, and
// conversion between the formats this build can code.

#include <algorithm>
#include <cctype>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>

#include <vxutility/ImageCodec.h>

#include "Command.h"

namespace {

const struct {
  CA_ImageFormat format;
  const char* name;
  const char* extensions;  // space-separated, lower case
} kFormats[] = {{CA_ImageFormat_BMP, ImageFormat_BMP, "bmp dib"},
                {CA_ImageFormat_JPEG, ImageFormat_JPEG, "jpg jpeg jpe"},
                {CA_ImageFormat_JPEG2000, ImageFormat_JPEG2000, "jp2"},
                {CA_ImageFormat_PNG, ImageFormat_PNG, "png"},
                {CA_ImageFormat_TIF, ImageFormat_TIF, "tif tiff"},
                {CA_ImageFormat_GIF, ImageFormat_GIF, "gif"}};

const char* FormatName(CA_ImageFormat format) {
  for (const auto& f : kFormats) {
    if (f.format == format) return f.name;
  }
  return "unknown";
}

const char* LayoutName(CA_DibFormat format) {
  switch (format) {
    case CA_DibFormat_Gray8: return "Gray8";
    case CA_DibFormat_Rgb24: return "Rgb24";
    case CA_DibFormat_Argb32: return "Argb32";
    default: return "none";
  }
}

/// The format named by the extension of `path`; Unknown when none fits.
CA_ImageFormat FormatForPath(const std::string& path) {
  const std::size_t dot = path.find_last_of('.');
  if (dot == std::string::npos || path.find_first_of("/\\", dot) != std::string::npos) return CA_ImageFormat_Unknown;
  std::string ext = path.substr(dot + 1);
  std::transform(ext.begin(), ext.end(), ext.begin(), [](unsigned char c) { return std::tolower(c); });
  for (const auto& f : kFormats) {
    if (!ext.empty() && (" " + std::string(f.extensions) + " ").find(" " + ext + " ") != std::string::npos) {
      return f.format;
    }
  }
  return CA_ImageFormat_Unknown;
}

int Fail(const std::string& message) {
  std::fprintf(stderr, "vxutil image: %s\n", message.c_str());
  return 1;
}

int Info(const std::string& path) {
  CCA_FileStreamReader reader(path.c_str());
  if (!reader.IsOpen()) return Fail(path + ": cannot be read as a file");
  const CA_ImageFormat format = CA_GetImageFormat(&reader);
  std::unique_ptr<ICA_ImageDecoder> decoder(CCA_Context::Get()->GetCodecFactory()->CreateImageDecoder(format));
  if (format == CA_ImageFormat_Unknown) return Fail(path + ": not an image format this library knows");
  if (!decoder) return Fail(path + ": this build has no " + FormatName(format) + " decoder");
  if (decoder->Open(&reader, 1) == 0) return Fail(path + ": damaged or too large " + FormatName(format) + " image");
  std::printf("format: %s\nsize: %dx%d\npixel format: %s\n", FormatName(format), decoder->GetWidth(),
              decoder->GetHeight(), LayoutName(decoder->GetDibFormat()));
  return 0;
}

int Convert(const std::string& in, const std::string& out) {
  const CA_ImageFormat target = FormatForPath(out);
  if (target == CA_ImageFormat_Unknown) return UsageError("image", "OUT needs one of the extensions .bmp .png .jpg .tif .gif .jp2");
  CCA_FileStreamReader reader(in.c_str());
  if (!reader.IsOpen()) return Fail(in + ": cannot be read as a file");
  std::unique_ptr<CCA_Dib> dib(ImageDecode(&reader));
  if (!dib) return Fail(in + ": cannot be decoded");
  CCA_FileStreamWriter writer(out.c_str());
  if (!writer.IsOpen()) return Fail(out + ": cannot be written");
  const bool written = ImageEncode(dib.get(), target, &writer) != 0;
  if (!writer.Close() || !written) {
    std::remove(out.c_str());
    return Fail(out + ": " + FormatName(target) + " encoding failed");
  }
  std::printf("%s: %dx%d %s -> %s: %s\n", in.c_str(), dib->GetWidth(), dib->GetHeight(),
              LayoutName(dib->GetFormat()), out.c_str(), FormatName(target));
  return 0;
}

int Run(const Args& args) {
  if (args.size() == 2 && args[0] == "info") return Info(args[1]);
  if (args.size() == 3 && args[0] == "convert") return Convert(args[1], args[2]);
  return UsageError("image", "expects 'info FILE' or 'convert IN OUT'");
}

/// Encodes a small colour ramp in every format this build has and decodes it
/// back, reporting the size of each file and the largest channel error.
int Demo() {
  CCA_Dib ramp;
  if (!ramp.Create(64, 48, CA_DibFormat_Rgb24)) return 1;
  for (int y = 0; y < 48; ++y) {
    for (int x = 0; x < 64; ++x) ramp.SetPixel(x, y, 0xFF000000u | (x * 4u) << 16 | (y * 5u) << 8 | 0x80u);
  }
  int failures = 0;
  for (const auto& f : kFormats) {
    CCA_MemoryStreamWriter writer;
    if (ImageEncode(&ramp, f.format, &writer) == 0) {
      std::printf("%-8s no encoder in this build\n", f.name);
      continue;
    }
    CCA_MemoryStreamReader reader(writer.GetData(), writer.GetSize());
    std::unique_ptr<CCA_Dib> back(ImageDecode(&reader));
    if (!back || back->GetWidth() != 64 || back->GetHeight() != 48) {
      std::printf("%-8s %6zu bytes, decoding FAILED\n", f.name, writer.GetSize());
      ++failures;
      continue;
    }
    int worst = 0;
    for (int y = 0; y < 48; ++y) {
      for (int x = 0; x < 64; ++x) {
        const unsigned a = ramp.GetPixel(x, y), b = back->GetPixel(x, y);
        for (int shift = 0; shift < 24; shift += 8) {
          worst = std::max(worst, std::abs(int((a >> shift) & 0xFF) - int((b >> shift) & 0xFF)));
        }
      }
    }
    std::printf("%-8s %6zu bytes, 64x48 %s back, largest channel error %d\n", f.name, writer.GetSize(),
                LayoutName(back->GetFormat()), worst);
  }
  return failures == 0 ? 0 : 1;
}

const CommandRegistrar kRegistrar({"image", "info FILE | convert IN OUT  (OUT's extension picks the format)",
                                   "describe or convert an image file", Run, Demo, 35});

}  // namespace
