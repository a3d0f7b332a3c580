// Finding a view's value again from its place in the tree.

#include "json/JsonTree.h"

#include <cstring>
#include <vector>

JsonPlace::~JsonPlace() {
  // Each place the chain alone holds is unlinked before it goes, so a view
  // a hundred thousand levels down does not release its parents recursively.
  Ref next = std::move(m_parent);
  while (next && next.use_count() == 1) {
    Ref after = std::move(const_cast<JsonPlace&>(*next).m_parent);
    next = std::move(after);
  }
}

JsonValue* JsonPlace::Step(JsonValue& container) const {
  if (!m_member) {
    if (!container.IsArray() || m_index >= container.Size()) return nullptr;
    return &container[m_index];
  }
  if (!container.IsObject()) return nullptr;
  auto named = [this](const JsonValue::Member& member) {
    return member.name.GetStringLength() == m_name.size() &&
           std::memcmp(member.name.GetString(), m_name.data(), m_name.size()) == 0;
  };
  const auto begin = container.MemberBegin();
  if (m_index < container.MemberCount() && named(begin[m_index])) return &begin[m_index].value;
  for (auto it = begin, end = container.MemberEnd(); it != end; ++it) {
    if (named(*it)) return &it->value;
  }
  return nullptr;
}

JsonValue* JsonPlace::Find(const JsonPlace& place, JsonValue& top) {
  std::vector<const JsonPlace*> path;
  for (const JsonPlace* at = &place; at != nullptr; at = at->m_parent.get()) path.push_back(at);
  JsonValue* value = &top;
  for (auto step = path.rbegin(); step != path.rend() && value != nullptr; ++step) value = (*step)->Step(*value);
  return value;
}
