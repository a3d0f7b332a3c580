#pragma once
// What the handles onto one tree share. Containers move their children when
// they grow or shrink, and an owner may go before its views; so a view keeps
// its place in the tree rather than trusting an address, and finds its value
// again whenever the tree has been edited since it last looked.

#include <cstdint>
#include <memory>
#include <string>

#include "json/JsonStorage.h"

/// The tree's top value and pool (both null once the owner is gone) and the
/// number of edits made so far, any of which may have moved a value.
struct JsonTree {
  JsonValue* top = nullptr;
  JsonPool* pool = nullptr;
  std::uint64_t edits = 0;
};

/// One step down from the parent place (from the top value when there is no
/// parent): an element by index, or a member by position and name. A member
/// that has left its position is looked for by name.
class JsonPlace {
 public:
  using Ref = std::shared_ptr<const JsonPlace>;

  JsonPlace(Ref parent, rapidjson::SizeType index) : m_parent(std::move(parent)), m_index(index) {}
  JsonPlace(Ref parent, rapidjson::SizeType position, const JsonValue& name)
      : m_parent(std::move(parent)), m_index(position), m_member(true),
        m_name(name.GetString(), name.GetStringLength()) {}
  /// Releases a long chain of parents without recursing.
  ~JsonPlace();
  JsonPlace(const JsonPlace&) = delete;
  JsonPlace& operator=(const JsonPlace&) = delete;

  /// The value at `place` under `top`, or nullptr when no value is there now.
  static JsonValue* Find(const JsonPlace& place, JsonValue& top);

 private:
  JsonValue* Step(JsonValue& container) const;

  Ref m_parent;
  rapidjson::SizeType m_index;
  bool m_member = false;
  std::string m_name;
};
