// JSON text into a tree, and a tree back into text.

#include <vxutility/VXJsonFactory.h>

#include <cstdio>
#include <memory>
#include <utility>

#include <rapidjson/encodedstream.h>
#include <rapidjson/memorystream.h>
#include <rapidjson/reader.h>

#include "json/JsonDepthGuard.h"
#include "json/RapidjsonWrapper.h"

namespace {

using JsonInput = rapidjson::EncodedInputStream<rapidjson::UTF8<>, rapidjson::MemoryStream>;

/// Feeds the reader's events, depth-guarded, into a document (see
/// GenericDocument::Populate); keeps the reader's result, in which a number
/// the guard refused is the reader's own "number too big".
class GuardedParse {
 public:
  explicit GuardedParse(JsonInput& input) : m_input(input) {}

  template <typename Document>
  bool operator()(Document& document) {
    JsonDepthGuard<Document> guard(document);
    rapidjson::GenericReader<rapidjson::UTF8<>, rapidjson::UTF8<>, ThrowingAllocator> reader;
    m_result = reader.Parse<rapidjson::kParseDefaultFlags>(m_input, guard);
    if (guard.NumberTooBig()) m_result.Set(rapidjson::kParseErrorNumberTooBig, m_result.Offset());
    return !m_result.IsError();
  }

  const rapidjson::ParseResult& Result() const { return m_result; }

 private:
  JsonInput& m_input;
  rapidjson::ParseResult m_result;
};

/// A root handle that owns `document`; nothing is left behind when an
/// allocation on the way fails.
VXSharedPtr<VXJson> RootHandle(std::unique_ptr<JsonDocument> document) {
  std::unique_ptr<RapidjsonWrapper> root(new RapidjsonWrapper(document.get()));
  document.release();  // the wrapper owns it now
  return VXSharedPtr<VXJson>(root.release());  // deletes the wrapper if the block cannot be made
}

}  // namespace

VXJsonFactory& VXJsonFactory::operator=(const VXJsonFactory&) { return *this; }

VXJsonFactory& VXJsonFactory::operator=(VXJsonFactory&&) { return *this; }

VXSharedPtr<VXJson> VXJsonFactory::ParseJsonString(const char* text, unsigned int length, const ParseConfig*) {
  if (text == nullptr || length == 0 || text[0] == '\0') {  // length first: no byte may be read
    return RootHandle(std::unique_ptr<JsonDocument>(new JsonDocument(rapidjson::kObjectType)));
  }
  std::unique_ptr<JsonDocument> document(new JsonDocument());
  rapidjson::MemoryStream bytes(text, length);
  JsonInput input(bytes);
  GuardedParse parse(input);
  document->Populate(parse);
  if (parse.Result().IsError()) {
    std::printf("Parse json error. code=%d\n", static_cast<int>(parse.Result().Code()));
    return VXSharedPtr<VXJson>(nullptr);
  }
  if (!document->IsArray() && !document->IsObject()) {
    std::printf("Only allow array and object\n");
    return VXSharedPtr<VXJson>(nullptr);
  }
  return RootHandle(std::move(document));
}

CCA_String VXJsonFactory::BuildJsonString(VXSharedPtr<const VXJson> value, const BuildConfig*) {
  if (!value) return CCA_String();
  return value->ToJsonString();
}
