// A program that uses the installed library exactly as a client would.
#include <cstdio>

#include <vxutility/vxutility.h>

int main() {
  std::printf("%s\n", GetUtilityVersion());
  VXSharedPtr<VXJson> root =
      VXJsonFactory::ParseJsonString("{\"Font\":{\"FontSize\":12}}", 0xFFFFFFFF, nullptr);
  if (!root.get()) return 1;
  const int size = VXJsonHelper::ToInt(root->GetMember("Font")->GetMember("FontSize"));
  const CCA_String encoded = Base64Encode(reinterpret_cast<const unsigned char*>("vx"), 2);
  return size == 12 && encoded == "dng=" ? 0 : 1;
}
