#pragma once
// Sends the SAX events of a value to a handler without recursion, so copying
// and writing a tree take the same stack at any depth. The events are those
// of RapidJSON's own Accept, in the same order; strings and keys are passed
// for copying.

#include <vector>

#include "json/JsonStorage.h"

namespace json_walk {

/// Sends the event of a scalar, or opens a container and remembers it in
/// `open`. False when the handler refuses the event.
template <typename Handler>
bool Enter(const JsonValue& value, Handler& handler, std::vector<const JsonValue*>& open,
           std::vector<rapidjson::SizeType>& next) {
  switch (value.GetType()) {
    case rapidjson::kNullType: return handler.Null();
    case rapidjson::kFalseType: return handler.Bool(false);
    case rapidjson::kTrueType: return handler.Bool(true);
    case rapidjson::kStringType: return handler.String(value.GetString(), value.GetStringLength(), true);
    case rapidjson::kArrayType:
      if (!handler.StartArray()) return false;
      break;
    case rapidjson::kObjectType:
      if (!handler.StartObject()) return false;
      break;
    default:
      if (value.IsDouble()) return handler.Double(value.GetDouble());
      if (value.IsInt()) return handler.Int(value.GetInt());
      if (value.IsUint()) return handler.Uint(value.GetUint());
      if (value.IsInt64()) return handler.Int64(value.GetInt64());
      return handler.Uint64(value.GetUint64());
  }
  open.push_back(&value);
  next.push_back(0);
  return true;
}

/// Sends the events of `root` to `handler`; false as soon as the handler
/// refuses one (the events sent until then stay sent).
template <typename Handler>
bool Walk(const JsonValue& root, Handler& handler) {
  std::vector<const JsonValue*> open;       // containers entered, innermost last
  std::vector<rapidjson::SizeType> next;    // the child each of them is at
  if (!Enter(root, handler, open, next)) return false;
  while (!open.empty()) {
    const JsonValue& container = *open.back();
    const rapidjson::SizeType at = next.back();
    const bool isArray = container.IsArray();
    if (at == (isArray ? container.Size() : container.MemberCount())) {
      open.pop_back();
      next.pop_back();
      if (!(isArray ? handler.EndArray(at) : handler.EndObject(at))) return false;
      continue;
    }
    ++next.back();
    if (isArray) {
      if (!Enter(container[at], handler, open, next)) return false;
      continue;
    }
    const JsonValue::Member& member = container.MemberBegin()[at];
    if (!handler.Key(member.name.GetString(), member.name.GetStringLength(), true)) return false;
    if (!Enter(member.value, handler, open, next)) return false;
  }
  return true;
}

/// A deep copy of `source` whose strings, elements and members are stored in
/// `pool`; it shares nothing with the source tree.
JsonValue Copy(const JsonValue& source, JsonPool& pool);

}  // namespace json_walk
