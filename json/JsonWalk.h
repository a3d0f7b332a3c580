#pragma once
// Sends the SAX events of a value to a handler without recursion, so copying
// and writing a tree take the same stack at any depth. The events are those
// of RapidJSON's own Accept, in the same order; strings and keys are passed
// for copying.

#include <vector>

#include "json/JsonStorage.h"

namespace json_walk {

/// A container being walked and the child the walk is at.
struct Frame {
  const JsonValue* container;
  rapidjson::SizeType next;
};

inline bool IsContainer(const JsonValue& value) { return value.IsArray() || value.IsObject(); }

/// Sends the event of a value that is not a container.
template <typename Handler>
bool Scalar(const JsonValue& value, Handler& handler) {
  switch (value.GetType()) {
    case rapidjson::kNullType: return handler.Null();
    case rapidjson::kFalseType: return handler.Bool(false);
    case rapidjson::kTrueType: return handler.Bool(true);
    case rapidjson::kStringType: return handler.String(value.GetString(), value.GetStringLength(), true);
    default:
      if (value.IsDouble()) return handler.Double(value.GetDouble());
      if (value.IsInt()) return handler.Int(value.GetInt());
      if (value.IsUint()) return handler.Uint(value.GetUint());
      if (value.IsInt64()) return handler.Int64(value.GetInt64());
      return handler.Uint64(value.GetUint64());
  }
}

/// Opens a container and remembers it in `open`.
template <typename Handler>
bool Open(const JsonValue& container, Handler& handler, std::vector<Frame>& open) {
  if (!(container.IsArray() ? handler.StartArray() : handler.StartObject())) return false;
  open.push_back(Frame{&container, 0});
  return true;
}

/// Sends the events of `root` to `handler`; false as soon as the handler
/// refuses one (the events sent until then stay sent). Scalars in a row are
/// sent in an inner loop; only containers go through the stack.
template <typename Handler>
bool Walk(const JsonValue& root, Handler& handler) {
  if (!IsContainer(root)) return Scalar(root, handler);
  std::vector<Frame> open;  // containers entered, innermost last
  if (!Open(root, handler, open)) return false;
  while (!open.empty()) {
    Frame& frame = open.back();
    const JsonValue& container = *frame.container;
    rapidjson::SizeType at = frame.next;
    const JsonValue* child = nullptr;
    if (container.IsArray()) {
      const rapidjson::SizeType size = container.Size();
      for (; at < size && !IsContainer(container[at]); ++at) {
        if (!Scalar(container[at], handler)) return false;
      }
      if (at < size) child = &container[at];
    } else {
      const rapidjson::SizeType size = container.MemberCount();
      for (; at < size; ++at) {
        const JsonValue::Member& member = container.MemberBegin()[at];
        if (!handler.Key(member.name.GetString(), member.name.GetStringLength(), true)) return false;
        if (IsContainer(member.value)) {
          child = &member.value;
          break;
        }
        if (!Scalar(member.value, handler)) return false;
      }
    }
    if (child == nullptr) {
      const bool isArray = container.IsArray();
      open.pop_back();
      if (!(isArray ? handler.EndArray(at) : handler.EndObject(at))) return false;
      continue;
    }
    frame.next = at + 1;  // before Open: the push may move `frame`
    if (!Open(*child, handler, open)) return false;
  }
  return true;
}

/// A deep copy of `source` whose strings, elements and members are stored in
/// `pool`; it shares nothing with the source tree.
JsonValue Copy(const JsonValue& source, JsonPool& pool);

}  // namespace json_walk
