// DrawTextOnDevice through a device that records what it is handed.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include <vxbase/Font.h>
#include <vxbase/Matrix.h>

#include <vxutility/TextDraw.h>
#include <vxutility/VXJsonFactory.h>

namespace {

/// Overrides only the three operations a device must have.
class RecordingDevice : public ICA_Device {
 public:
  int DrawText(const wchar_t* text, int length, CCA_Font* font, float size, CCA_Matrix* matrix,
               unsigned int argb) override {
    calls.push_back("DrawText");
    this->text.assign(text, static_cast<std::size_t>(length));
    this->length = length;
    face = font->GetFaceName();
    fontFile = font->GetFontFile();
    weight = font->GetWeight();
    italic = font->IsItalic();
    this->size = size;
    this->matrix = *matrix;
    this->argb = argb;
    return 7;  // ignored by the caller
  }
  void CompleteText() override { calls.push_back("CompleteText"); }
  void CompleteDrawing() override { calls.push_back("CompleteDrawing"); }

  std::vector<std::string> calls;
  std::wstring text;
  int length = -1;
  std::wstring face;
  std::string fontFile;
  int weight = 0;
  bool italic = false;
  float size = 0;
  CCA_Matrix matrix{0, 0, 0, 0, 0, 0};
  unsigned int argb = 0;
};

VXSharedPtr<const VXJson> Parse(const char* json) {
  VXSharedPtr<VXJson> root = VXJsonFactory::ParseJsonString(json, static_cast<unsigned int>(std::string(json).size()),
                                                            nullptr);
  EXPECT_TRUE(root.get() != nullptr) << json;
  return root;
}

struct DrawCase {
  const char* json;
  const wchar_t* text;
  const wchar_t* face;
  int weight;
  bool italic;
  float size;
  float dx, dy;  // the matrix's translation
  unsigned int argb;
};

constexpr float kSize26 = 34.666664f;  // 26 points at 96 pixels per inch
constexpr float kSize12 = 16.0f;

TEST(DrawTextOnDevice, HandsTheDescribedRunToTheDevice) {
  const DrawCase cases[] = {
      {R"({"Content":"Hi"})", L"Hi", L"SimSun", 400, false, kSize26, 0, 26, 0xFF000000},
      {R"({"Content":"Hi","Font":{"FontSize":12,"FontName":"Serif","Bold":true,"Color":"#FF0000"},"DeltaX":10,"DeltaY":5})",
       L"Hi", L"Serif", 700, false, kSize12, 10, 17, 0xFFFF0000},
      // Colour belongs to "Font": a top-level one is not read.
      {R"({"Content":"Hi","Color":"#FF0000"})", L"Hi", L"SimSun", 400, false, kSize26, 0, 26, 0xFF000000},
      // Sizes that are not positive integers keep 26.
      {R"({"Content":"Hi","Font":{"FontSize":0}})", L"Hi", L"SimSun", 400, false, kSize26, 0, 26, 0xFF000000},
      {R"({"Content":"Hi","Font":{"FontSize":-3}})", L"Hi", L"SimSun", 400, false, kSize26, 0, 26, 0xFF000000},
      {R"({"Content":"Hi","Font":{"FontSize":12.5}})", L"Hi", L"SimSun", 400, false, kSize26, 0, 26, 0xFF000000},
      {R"({"Content":"Hi","Font":{"FontSize":"12"}})", L"Hi", L"SimSun", 400, false, kSize26, 0, 26, 0xFF000000},
      {R"({"Content":"Hi","Font":{"FontName":""}})", L"Hi", L"SimSun", 400, false, kSize26, 0, 26, 0xFF000000},
      // Colour texts: unreadable is black, gray and CMYK go through as packed values.
      {R"({"Content":"Hi","Font":{"Color":"red"}})", L"Hi", L"SimSun", 400, false, kSize26, 0, 26, 0xFF000000},
      {R"({"Content":"Hi","Font":{"Color":"#80"}})", L"Hi", L"SimSun", 400, false, kSize26, 0, 26, 0xFF808080},
      {R"({"Content":"Hi","Font":{"Color":"0 0 255"}})", L"Hi", L"SimSun", 400, false, kSize26, 0, 26, 0xFF0000FF},
      {R"({"Content":"Hi","Font":{"Color":"#00FF0080"}})", L"Hi", L"SimSun", 400, false, kSize26, 0, 26, 0xFF8000FF},
      {R"({"Content":"Hi","Font":{"Color":""}})", L"Hi", L"SimSun", 400, false, kSize26, 0, 26, 0xFF000000},
      // Booleans only as booleans; Italic alone.
      {R"({"Content":"Hi","Font":{"Bold":"true","Italic":true}})", L"Hi", L"SimSun", 400, true, kSize26, 0, 26,
       0xFF000000},
      {R"({"Content":"Hi","Font":{"Bold":false,"Italic":1}})", L"Hi", L"SimSun", 400, false, kSize26, 0, 26,
       0xFF000000},
      // "Font" of another kind reads as an object without members.
      {R"({"Content":"Hi","Font":[12]})", L"Hi", L"SimSun", 400, false, kSize26, 0, 26, 0xFF000000},
      // Offsets: floats, integers, and the wrong kind as 0.
      {R"({"Content":"Hi","DeltaX":-2.5,"DeltaY":0.25,"Font":{"FontSize":72}})", L"Hi", L"SimSun", 400, false, 96.0f,
       -2.5f, 72.25f, 0xFF000000},
      {R"({"Content":"Hi","DeltaX":"5","DeltaY":true})", L"Hi", L"SimSun", 400, false, kSize26, 0, 26, 0xFF000000},
      {R"({"Content":"Hi","DeltaY":1e300})", L"Hi", L"SimSun", 400, false, kSize26, 0, 26, 0xFF000000},
      // Text and face names are UTF-8; invalid bytes become U+FFFD.
      {R"({"Content":"\u6c49\u5b57 A","Font":{"FontName":"\u5b8b\u4f53"}})", L"\u6c49\u5b57 A", L"\u5b8b\u4f53", 400,
       false, kSize26, 0, 26, 0xFF000000},
      {"{\"Content\":\"\xff\"}", L"\uFFFD", L"SimSun", 400, false, kSize26, 0, 26, 0xFF000000},
  };
  for (const DrawCase& c : cases) {
    RecordingDevice device;
    VXSharedPtr<const VXJson> description = Parse(c.json);
    EXPECT_EQ(DrawTextOnDevice(&device, description), 1) << c.json;
    EXPECT_EQ(device.calls, (std::vector<std::string>{"DrawText", "CompleteText", "CompleteDrawing"})) << c.json;
    EXPECT_EQ(device.text, c.text) << c.json;
    EXPECT_EQ(device.length, static_cast<int>(std::wstring(c.text).size())) << c.json;
    EXPECT_EQ(device.face, c.face) << c.json;
    EXPECT_EQ(device.weight, c.weight) << c.json;
    EXPECT_EQ(device.italic, c.italic) << c.json;
    EXPECT_EQ(device.size, c.size) << c.json;
    const CCA_Matrix& m = device.matrix;
    EXPECT_TRUE(m.a == 1 && m.b == 0 && m.c == 0 && m.d == 1) << c.json;
    EXPECT_EQ(m.e, c.dx) << c.json;
    EXPECT_EQ(m.f, c.dy) << c.json;
    EXPECT_EQ(device.argb, c.argb) << std::hex << device.argb << " " << c.json;
  }
}

TEST(DrawTextOnDevice, DrawsNothingWithoutContentOrDevice) {
  const char* const empty[] = {R"({"Content":""})", "{}", R"({"Content":5})", R"({"content":"Hi"})",
                               R"(["Content","Hi"])"};
  for (const char* json : empty) {
    RecordingDevice device;
    VXSharedPtr<const VXJson> description = Parse(json);
    EXPECT_EQ(DrawTextOnDevice(&device, description), 0) << json;
    EXPECT_TRUE(device.calls.empty()) << json;
  }
  // Descriptions that are not objects at all: a string and a null member.
  VXSharedPtr<const VXJson> holder = Parse(R"({"s":"Hi","n":null})");
  RecordingDevice device;
  EXPECT_EQ(DrawTextOnDevice(&device, holder->GetMember("s")), 0);
  EXPECT_EQ(DrawTextOnDevice(&device, holder->GetMember("n")), 0);
  EXPECT_EQ(DrawTextOnDevice(&device, VXSharedPtr<const VXJson>()), 0);
  EXPECT_EQ(DrawTextOnDevice(&device, VXSharedPtr<const VXJson>(static_cast<const VXJson*>(nullptr))), 0);
  EXPECT_TRUE(device.calls.empty());
}

TEST(DrawTextOnDevice, ReleasesTheDescriptionOnEveryPath) {
  RecordingDevice device;
  struct {
    ICA_Device* device;
    const char* json;
  } const paths[] = {{nullptr, R"({"Content":"Hi"})"}, {&device, R"({"Content":""})"},
                     {&device, R"({"Content":"Hi","Font":{"FontSize":9}})"}};
  for (const auto& path : paths) {
    VXSharedPtr<const VXJson> description = Parse(path.json);
    const int before = description.use_count();
    DrawTextOnDevice(path.device, description);
    EXPECT_EQ(description.use_count(), before) << path.json;
  }
}

}  // namespace
