// Parses arbitrary bytes; whatever parses is written back and parsed again,
// and must come back as the same kind of container with as many children.

#include <cstdint>
#include <cstdlib>

#include <vxutility/VXJsonFactory.h>

// Undefined behaviour ends the run, so the fuzzer reports it as a crash; the
// one known report from inside RapidJSON's own headers is suppressed.
extern "C" const char* __ubsan_default_options() {
  return "halt_on_error=1:print_stacktrace=1:suppressions=" VX_UBSAN_SUPPRESSIONS;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size > 0xFFFFFFFFu) return 0;
  const char* text = reinterpret_cast<const char*>(data);
  VXSharedPtr<VXJson> root = VXJsonFactory::ParseJsonString(text, static_cast<unsigned int>(size), nullptr);
  if (!root) return 0;
  const CCA_String written = root->ToJsonString();
  VXSharedPtr<VXJson> again = VXJsonFactory::ParseJsonString(written.c_str(), 0xFFFFFFFFu, nullptr);
  if (!again || again->GetType() != root->GetType() || again->GetSize() != root->GetSize()) std::abort();
  return 0;
}
