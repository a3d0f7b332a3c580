// vxutil json: read JSON text, print it back compact or print one value.

#include <cstdio>
#include <cstdlib>
#include <string>

#include <vxutility/vxutility.h>

#include "Command.h"

namespace {

const char kName[] = "json";

/// Follows a dotted path of member names and array indexes ("Font.FontSize",
/// "Items.0"); a null handle when a step is missing.
VXSharedPtr<const VXJson> FindByPath(VXSharedPtr<const VXJson> value, const std::string& path) {
  std::size_t start = 0;
  while (value && start <= path.size()) {
    std::size_t end = path.find('.', start);
    if (end == std::string::npos) end = path.size();
    const std::string step = path.substr(start, end - start);
    long long index = 0;
    if (value->GetType() == VXJsonType_Array && ParseIntArg(step, index)) {
      value = (index >= 0 && index <= 0x7fffffff) ? value->GetAt(static_cast<int>(index))
                                                  : VXSharedPtr<const VXJson>();
    } else {
      value = value->GetMember(step.c_str());
    }
    start = end + 1;
  }
  return value;
}

/// "%g"-style text of a few numbers, separated by spaces.
std::string Numbers(std::initializer_list<double> values) {
  std::string text;
  char number[40];
  for (double value : values) {
    std::snprintf(number, sizeof number, "%s%.9g", text.empty() ? "" : " ", value);
    text += number;
  }
  return text;
}

std::string Hex(unsigned int color) {
  char text[16];
  std::snprintf(text, sizeof text, "0x%08X", color);
  return text;
}

/// One way of reading a value for --as; false when the value does not fit.
struct Conversion {
  const char* name;
  bool (*convert)(const VXSharedPtr<const VXJson>& value, std::string& text);
};

template <bool (*Read)(VXSharedPtr<const VXJson>, unsigned int&)>
bool AsColor(const VXSharedPtr<const VXJson>& value, std::string& text) {
  unsigned int color = 0;
  if (!Read(value, color)) return false;
  text = Hex(color);
  return true;
}

const Conversion kConversions[] = {
    {"rgb", AsColor<VXJsonHelper::ToRGB>},
    {"argb", AsColor<VXJsonHelper::ToARGB>},
    {"cmyk", AsColor<VXJsonHelper::ToCMYK>},
    {"gray", AsColor<VXJsonHelper::ToGray>},
    {"matrix",
     [](const VXSharedPtr<const VXJson>& value, std::string& text) {
       CCA_Matrix m;
       if (!VXJsonHelper::ToMatrix(value, m)) return false;
       text = Numbers({m.a, m.b, m.c, m.d, m.e, m.f});
       return true;
     }},
    {"point",
     [](const VXSharedPtr<const VXJson>& value, std::string& text) {
       CCA_GPoint p;
       if (!VXJsonHelper::ToPointF(value, p)) return false;
       text = Numbers({p.x, p.y});
       return true;
     }},
    {"rect",
     [](const VXSharedPtr<const VXJson>& value, std::string& text) {
       CCA_GRect r;
       if (!VXJsonHelper::ToRectF(value, r)) return false;
       text = Numbers({r.left, r.top, r.right, r.bottom});
       return true;
     }},
    {"int",
     [](const VXSharedPtr<const VXJson>& value, std::string& text) {
       text = std::to_string(VXJsonHelper::ToInt(value));
       return true;
     }},
    {"number",
     [](const VXSharedPtr<const VXJson>& value, std::string& text) {
       text = Numbers({VXJsonHelper::ToDouble(value)});
       return true;
     }},
    {"bool",
     [](const VXSharedPtr<const VXJson>& value, std::string& text) {
       text = VXJsonHelper::ToBoolean(value) ? "true" : "false";
       return true;
     }},
    {"string",
     [](const VXSharedPtr<const VXJson>& value, std::string& text) {
       text = VXJsonHelper::ToString(value, 0).c_str();
       return true;
     }},
};

const Conversion* FindConversion(const std::string& name) {
  for (const Conversion& conversion : kConversions) {
    if (name == conversion.name) return &conversion;
  }
  return nullptr;
}

int RunJson(const Args& args) {
  Args positional;
  const Conversion* conversion = nullptr;
  for (std::size_t i = 0; i < args.size(); ++i) {
    if (args[i] != "--as") {
      positional.push_back(args[i]);
      continue;
    }
    if (++i == args.size()) return UsageError(kName, "--as needs a kind");
    conversion = FindConversion(args[i]);
    if (conversion == nullptr) return UsageError(kName, "unknown kind '" + args[i] + "'");
  }
  if (positional.empty() || positional.size() > 2) return UsageError(kName, "expects a file and an optional path");
  std::string text;
  if (!ReadInput(positional[0], text)) {
    std::fprintf(stderr, "vxutil json: cannot read '%s'\n", positional[0].c_str());
    return 1;
  }
  VXSharedPtr<VXJson> root =
      VXJsonFactory::ParseJsonString(text.c_str(), static_cast<unsigned int>(text.size()), nullptr);
  if (!root) return 1;  // the parser has said why on standard output
  VXSharedPtr<const VXJson> value = root;
  if (positional.size() == 2) {
    value = FindByPath(value, positional[1]);
    if (!value) {
      std::fprintf(stderr, "vxutil json: no value at '%s'\n", positional[1].c_str());
      return 1;
    }
  }
  if (conversion == nullptr) {
    std::printf("%s\n", VXJsonFactory::BuildJsonString(value, nullptr).c_str());
    return 0;
  }
  std::string converted;
  if (!conversion->convert(value, converted)) {
    std::fprintf(stderr, "vxutil json: the value is not an array, so not a %s\n", conversion->name);
    return 1;
  }
  std::printf("%s\n", converted.c_str());
  return 0;
}

int DemoJson() {
  const char text[] = "{ \"Font\": { \"Name\": \"Sans\", \"FontSize\": 12 }, \"Items\": [1, 2.5, \"x\\/y\"] }";
  VXSharedPtr<VXJson> root = VXJsonFactory::ParseJsonString(text, 0xFFFFFFFFu, nullptr);
  if (!root) return 1;
  std::printf("parsed:   %s\n", root->ToJsonString().c_str());
  VXSharedPtr<const VXJson> size = root->GetMember("Font")->GetMember("FontSize");
  std::printf("Font.FontSize is %s %d\n", GetJsonTypeString(size->GetType()), size->GetInt());
  root->GetMutableMember("Font")->SetDoubleMember("FontSize", 10.5);
  root->GetMutableMember("Items")->InsertBooleanAt(0, true);
  std::printf("edited:   %s\n", VXJsonFactory::BuildJsonString(root, nullptr).c_str());

  std::printf("ToDouble(Font.FontSize) = %g, ToString(Items.2, 3) = %s\n",
              VXJsonHelper::ToDouble(root->GetMember("Font")->GetMember("FontSize")),
              VXJsonHelper::ToString(root->GetMember("Items")->GetAt(2), 3).c_str());
  CCA_ArrayTemplate<unsigned char> bytes;
  VXJsonHelper::ToByteArray(VXJsonFactory::ParseJsonString("[1, 300, -1]", 0xFFFFFFFFu, nullptr), bytes);
  std::printf("ToByteArray([1, 300, -1]) = %d %d %d, FromByteArray back: %s\n", bytes[0], bytes[1], bytes[2],
              VXJsonHelper::FromByteArray(bytes)->ToJsonString().c_str());
  unsigned int color = 0;
  VXJsonHelper::ToRGB(VXJsonHelper::FromRGB(0x00102030u), color);
  std::printf("FromRGB(0x00102030) = %s, read back 0x%08X\n", VXJsonHelper::FromRGB(0x00102030u)->ToJsonString().c_str(),
              color);
  CCA_Matrix matrix;
  matrix.Translate(10, 20);
  std::printf("FromMatrix(translate 10,20) = %s\n", VXJsonHelper::FromMatrix(matrix)->ToJsonString().c_str());
  CCA_Path path;
  path.MoveTo(0, 0);
  path.LineTo(10, 0);
  path.LineTo(10, 10);
  path.Close();
  std::printf("FromPath(triangle) = %s\n", VXJsonHelper::FromPath(path)->ToJsonString().c_str());
  return 0;
}

const CommandRegistrar kRegistrar({kName, "<file|-> [path] [--as rgb|argb|cmyk|gray|matrix|point|rect|int|number|bool|string]",
                                   "print JSON compact, or the value at a dotted member/index path, optionally converted",
                                   RunJson, DemoJson, 10});

}  // namespace
