// Deep copies built from the events of a walk: the document collects the
// values on its own heap stack, so no depth costs call stack.

#include "json/JsonWalk.h"

namespace json_walk {

namespace {

/// Feeds the walk of one value into a document (see Populate).
class CopyOf {
 public:
  explicit CopyOf(const JsonValue& source) : m_source(source) {}
  bool operator()(JsonDocument& document) { return Walk(m_source, document); }

 private:
  const JsonValue& m_source;
};

}  // namespace

JsonValue Copy(const JsonValue& source, JsonPool& pool) {
  if (source.IsString()) return JsonValue(source.GetString(), source.GetStringLength(), pool);
  if (!source.IsArray() && !source.IsObject()) return JsonValue(source, pool);  // a number, boolean or null
  JsonDocument document(&pool);
  CopyOf copy(source);
  document.Populate(copy);
  JsonValue result;
  result = static_cast<JsonValue&>(document);  // moves the root out; the content stays in `pool`
  return result;
}

}  // namespace json_walk
