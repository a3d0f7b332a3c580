// A program that uses the installed library exactly as a client would.
#include <cstdio>

#include <vxutility/vxutility.h>

int main() {
  std::printf("%s\n", GetUtilityVersion());
  CCA_String text("consumer", -1);
  return text.GetLength() == 8 ? 0 : 1;
}
