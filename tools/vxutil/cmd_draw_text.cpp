// vxutil draw-text DESCRIPTION.json OUT.png: renders a text description
// (the JSON DrawTextOnDevice reads) into a PNG image.

#include <cstdio>
#include <cstring>
#include <string>

#include <vxbase/Device.h>
#include <vxbase/Dib.h>
#include <vxbase/Font.h>
#include <vxbase/Stream.h>

#include <vxutility/ColorString.h>
#include <vxutility/ImageCodec.h>
#include <vxutility/TextDraw.h>
#include <vxutility/VXJsonFactory.h>

#include "Command.h"

namespace {

const char kName[] = "draw-text";
constexpr int kMaxSide = 16384;

struct Canvas {
  int width = 640;
  int height = 120;
  unsigned int background = 0xFFFFFFFF;  // 0xAARRGGBB
};

/// "WxH" with both sides in 1 ... kMaxSide.
bool ParseSize(const std::string& text, int& width, int& height) {
  const std::size_t x = text.find('x');
  long long w = 0, h = 0;
  if (x == std::string::npos || !ParseIntArg(text.substr(0, x), w) || !ParseIntArg(text.substr(x + 1), h)) {
    return false;
  }
  if (w < 1 || h < 1 || w > kMaxSide || h > kMaxSide) return false;
  width = static_cast<int>(w);
  height = static_cast<int>(h);
  return true;
}

/// An RGB or gray colour text as opaque 0xAARRGGBB.
bool ParseBackground(const std::string& text, unsigned int& argb) {
  unsigned int packed = 0, space = 0;
  if (!ParseColorString(text.c_str(), packed, space) || space == 3) return false;
  argb = 0xFF000000u | ((packed & 0xFF) << 16) | (packed & 0xFF00) | ((packed >> 16) & 0xFF);
  return true;
}

/// A bitmap of the canvas's size filled with its background; false when it
/// cannot be made.
bool MakeBitmap(const Canvas& canvas, CCA_Dib& dib) {
  if (!dib.Create(canvas.width, canvas.height, CA_DibFormat_Argb32)) return false;
  for (int y = 0; y < canvas.height; ++y) {
    for (int x = 0; x < canvas.width; ++x) dib.SetPixel(x, y, canvas.background);
  }
  return true;
}

/// Draws `json` on a new bitmap; false (with a message) when nothing is drawn.
bool Render(const std::string& json, const Canvas& canvas, CCA_Dib& dib) {
  VXSharedPtr<VXJson> root =
      VXJsonFactory::ParseJsonString(json.c_str(), static_cast<unsigned int>(json.size()), nullptr);
  if (!root) {
    std::fprintf(stderr, "vxutil %s: the description is not a JSON object\n", kName);
    return false;
  }
  if (!MakeBitmap(canvas, dib)) {
    std::fprintf(stderr, "vxutil %s: cannot make a %dx%d bitmap\n", kName, canvas.width, canvas.height);
    return false;
  }
  CCA_DibDevice device(&dib);
  if (DrawTextOnDevice(&device, root) == 0) {
    std::fprintf(stderr, "vxutil %s: the description has no \"Content\" to draw\n", kName);
    return false;
  }
  return true;
}

bool WritePng(CCA_Dib& dib, const std::string& path) {
  CCA_FileStreamWriter writer(path.c_str());
  if (!writer.IsOpen() || ImageEncode(&dib, CA_ImageFormat_PNG, &writer) == 0 || !writer.Close()) {
    std::fprintf(stderr, "vxutil %s: cannot write '%s'\n", kName, path.c_str());
    return false;
  }
  return true;
}

int Run(const Args& args) {
  Canvas canvas;
  std::vector<std::string> files;
  for (std::size_t i = 0; i < args.size(); ++i) {
    const std::string& arg = args[i];
    if (arg == "--size" || arg == "--background") {
      if (i + 1 == args.size()) return UsageError(kName, arg + " needs a value");
      const std::string& value = args[++i];
      if (arg == "--size" && !ParseSize(value, canvas.width, canvas.height)) {
        return UsageError(kName, "--size takes WxH, each side 1 to 16384");
      }
      if (arg == "--background" && !ParseBackground(value, canvas.background)) {
        return UsageError(kName, "--background takes an RGB or gray colour such as #FFFFFF");
      }
    } else {
      files.push_back(arg);
    }
  }
  if (files.size() != 2) return UsageError(kName, "expects DESCRIPTION.json and OUT.png");
  std::string json;
  if (!ReadInput(files[0], json)) {
    std::fprintf(stderr, "vxutil %s: cannot read '%s'\n", kName, files[0].c_str());
    return 1;
  }
  CCA_Dib dib;
  if (!Render(json, canvas, dib) || !WritePng(dib, files[1])) return 1;
  std::printf("%s: %dx%d PNG\n", files[1].c_str(), canvas.width, canvas.height);
  return 0;
}

/// Pixels of `dib` in columns [x0, x1) that differ from `background`.
int InkIn(const CCA_Dib& dib, int x0, int x1, unsigned int background) {
  int ink = 0;
  for (int y = 0; y < dib.GetHeight(); ++y) {
    for (int x = x0; x < x1 && x < dib.GetWidth(); ++x) ink += dib.GetPixel(x, y) != background;
  }
  return ink;
}

int Demo() {
  if (!CCA_FontMgr::GetDefault()->IsAvailable()) {
    std::printf("this build has no font backend: no text is drawn\n");
    return 0;
  }
  // Latin on the left half, Chinese (from a CJK face when the named one
  // lacks it) on the right half.
  const char* json =
      "{\"Content\":\"Hello, vxutility \\u4f60\\u597d\\u4e16\\u754c\","
      "\"Font\":{\"FontName\":\"DejaVu Sans\",\"FontSize\":20,\"Color\":\"#1F4E79\"},\"DeltaX\":8,\"DeltaY\":6}";
  Canvas canvas;
  canvas.width = 360;
  canvas.height = 48;
  CCA_Dib drawn;
  if (!Render(json, canvas, drawn)) return 1;
  CCA_MemoryStreamWriter png;
  if (ImageEncode(&drawn, CA_ImageFormat_PNG, &png) == 0) return 1;
  CCA_MemoryStreamReader reader(png.GetData(), png.GetSize());
  CCA_Dib* decoded = ImageDecode(&reader);
  if (decoded == nullptr) return 1;
  const int latin = InkIn(*decoded, 0, 200, canvas.background);
  const int chinese = InkIn(*decoded, 200, canvas.width, canvas.background);
  int differing = 0;
  for (int y = 0; y < canvas.height; ++y) {
    for (int x = 0; x < canvas.width; ++x) differing += decoded->GetPixel(x, y) != drawn.GetPixel(x, y);
  }
  std::printf("drew %s\nPNG of %zu bytes decodes to %dx%d; ink pixels: %d Latin, %d Chinese; %d differ\n", json,
              png.GetSize(), decoded->GetWidth(), decoded->GetHeight(), latin, chinese, differing);
  const bool ok = decoded->GetWidth() == canvas.width && decoded->GetHeight() == canvas.height && latin > 0 &&
                  chinese > 0 && differing == 0;
  delete decoded;
  return ok ? 0 : 1;
}

const CommandRegistrar kRegistrar({kName, "DESCRIPTION.json OUT.png [--size WxH] [--background #RRGGBB]",
                                   "render a JSON text description to a PNG image", Run, Demo, 36});

}  // namespace
