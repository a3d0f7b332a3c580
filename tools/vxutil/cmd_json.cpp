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

int RunJson(const Args& args) {
  if (args.empty() || args.size() > 2) return UsageError(kName, "expects a file and an optional path");
  std::string text;
  if (!ReadInput(args[0], text)) {
    std::fprintf(stderr, "vxutil json: cannot read '%s'\n", args[0].c_str());
    return 1;
  }
  VXSharedPtr<VXJson> root =
      VXJsonFactory::ParseJsonString(text.c_str(), static_cast<unsigned int>(text.size()), nullptr);
  if (!root) return 1;  // the parser has said why on standard output
  VXSharedPtr<const VXJson> value = root;
  if (args.size() == 2) {
    value = FindByPath(value, args[1]);
    if (!value) {
      std::fprintf(stderr, "vxutil json: no value at '%s'\n", args[1].c_str());
      return 1;
    }
  }
  std::printf("%s\n", VXJsonFactory::BuildJsonString(value, nullptr).c_str());
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
  return 0;
}

const CommandRegistrar kRegistrar({kName, "<file|-> [path]",
                                   "print JSON compact, or the value at a dotted member/index path",
                                   RunJson, DemoJson, 10});

}  // namespace
