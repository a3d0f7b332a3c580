// JSON text into a tree, and a tree back into text.

#include <vxutility/VXJsonFactory.h>

#include <cstdio>

#include <rapidjson/encodedstream.h>
#include <rapidjson/memorystream.h>
#include <rapidjson/reader.h>

#include "json/JsonDepthGuard.h"
#include "json/RapidjsonWrapper.h"

namespace {

using JsonInput = rapidjson::EncodedInputStream<rapidjson::UTF8<>, rapidjson::MemoryStream>;

/// Feeds the reader's events, depth-guarded, into a document (see
/// GenericDocument::Populate); keeps the reader's result.
class GuardedParse {
 public:
  explicit GuardedParse(JsonInput& input) : m_input(input) {}

  template <typename Document>
  bool operator()(Document& document) {
    JsonDepthGuard<Document> guard(document);
    rapidjson::GenericReader<rapidjson::UTF8<>, rapidjson::UTF8<>, rapidjson::CrtAllocator> reader;
    m_result = reader.Parse<rapidjson::kParseDefaultFlags>(m_input, guard);
    return !m_result.IsError();
  }

  const rapidjson::ParseResult& Result() const { return m_result; }

 private:
  JsonInput& m_input;
  rapidjson::ParseResult m_result;
};

VXSharedPtr<VXJson> RootHandle(JsonDocument* document) {
  return VXSharedPtr<VXJson>(new RapidjsonWrapper(document));
}

}  // namespace

VXJsonFactory& VXJsonFactory::operator=(const VXJsonFactory&) { return *this; }

VXJsonFactory& VXJsonFactory::operator=(VXJsonFactory&&) { return *this; }

VXSharedPtr<VXJson> VXJsonFactory::ParseJsonString(const char* text, unsigned int length, const ParseConfig*) {
  if (text == nullptr || length == 0 || text[0] == '\0') {  // length first: no byte may be read
    JsonDocument* document = new JsonDocument(rapidjson::kObjectType);
    return RootHandle(document);
  }
  JsonDocument* document = new JsonDocument();
  rapidjson::MemoryStream bytes(text, length);
  JsonInput input(bytes);
  GuardedParse parse(input);
  document->Populate(parse);
  if (parse.Result().IsError()) {
    std::printf("Parse json error. code=%d\n", static_cast<int>(parse.Result().Code()));
    delete document;
    return VXSharedPtr<VXJson>(nullptr);
  }
  if (!document->IsArray() && !document->IsObject()) {
    std::printf("Only allow array and object\n");
    delete document;
    return VXSharedPtr<VXJson>(nullptr);
  }
  return RootHandle(document);
}

CCA_String VXJsonFactory::BuildJsonString(VXSharedPtr<const VXJson> value, const BuildConfig*) {
  if (!value) return CCA_String();
  return value->ToJsonString();
}
