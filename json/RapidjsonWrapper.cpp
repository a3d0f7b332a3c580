// Construction, reads, child handles, enumeration and copies of a
// RapidJSON-backed value. Writes are in RapidjsonWrapperWrites.cpp, the text
// form in JsonTextWriter.cpp.

#include "json/RapidjsonWrapper.h"

#include <cstring>
#include <memory>

#include "json/JsonScalarKinds.h"
#include "json/JsonWalk.h"

using namespace json_kinds;

namespace {

std::shared_ptr<JsonTree> NewTree(JsonValue* top, JsonPool* pool) {
  std::shared_ptr<JsonTree> tree = std::make_shared<JsonTree>();
  tree->top = top;
  tree->pool = pool;
  return tree;
}

/// What a view whose value is gone reads: a null value nobody writes to.
JsonValue* Detached() {
  static const JsonValue none;
  return const_cast<JsonValue*>(&none);
}

}  // namespace

RapidjsonWrapper::RapidjsonWrapper(JsonDocument* document)
    : m_tree(NewTree(document, &document->GetAllocator())), m_document(document), m_value(document) {}

RapidjsonWrapper::RapidjsonWrapper(JsonValue* node, JsonPool* pool)
    : m_tree(NewTree(node, pool)), m_ownsNode(true), m_value(node) {}

RapidjsonWrapper::RapidjsonWrapper(std::shared_ptr<JsonTree> tree, JsonPlace::Ref place, JsonValue* value)
    : m_tree(std::move(tree)), m_place(std::move(place)), m_value(value), m_seenEdits(m_tree->edits) {}

// The owner leaves the shared record behind, empty, so that its views read
// null from then on instead of freed storage.
RapidjsonWrapper::~RapidjsonWrapper() {
  if (m_place != nullptr) return;
  JsonPool* pool = m_tree->pool;
  m_tree->top = nullptr;
  m_tree->pool = nullptr;
  ++m_tree->edits;
  if (m_document != nullptr) {
    delete m_document;
  } else if (m_ownsNode) {
    delete m_value;
    delete pool;
  }
}

JsonValue* RapidjsonWrapper::Current() const {
  if (m_place == nullptr) return m_value;
  JsonValue* value = m_value;
  if (m_seenEdits != m_tree->edits) {
    value = m_tree->top != nullptr ? JsonPlace::Find(*m_place, *m_tree->top) : nullptr;
  }
  return value != nullptr ? value : Detached();
}

bool RapidjsonWrapper::Attach() {
  if (m_place == nullptr) return true;
  if (m_seenEdits != m_tree->edits) {
    m_value = m_tree->top != nullptr ? JsonPlace::Find(*m_place, *m_tree->top) : nullptr;
    m_seenEdits = m_tree->edits;
  }
  return m_value != nullptr;
}

void RapidjsonWrapper::Edited() { m_seenEdits = ++m_tree->edits; }

const JsonValue* RapidjsonWrapper::ValueOf(const VXJson* handle) {
  const RapidjsonWrapper* wrapper = dynamic_cast<const RapidjsonWrapper*>(handle);
  if (wrapper == nullptr) return nullptr;
  const JsonValue* value = wrapper->Current();
  return value != Detached() ? value : nullptr;
}

VXJsonType RapidjsonWrapper::GetType() const {
  const JsonValue& v = *Current();
  if (v.IsUint()) return VXJsonType_Uint;
  if (v.IsInt()) return VXJsonType_Int;
  if (v.IsUint64()) return VXJsonType_Uint64;
  if (v.IsInt64()) return VXJsonType_Int64;
  if (v.IsDouble()) return VXJsonType_Double;
  if (v.IsString()) return VXJsonType_String;
  if (v.IsBool()) return VXJsonType_Boolean;
  if (v.IsArray()) return VXJsonType_Array;
  if (v.IsObject()) return VXJsonType_Object;
  return VXJsonType_Null;
}

JsonValue* RapidjsonWrapper::ElementAt(int index) const {
  JsonValue& array = *Current();
  if (!array.IsArray() || index < 0 || static_cast<unsigned>(index) >= array.Size()) return nullptr;
  return &array[static_cast<rapidjson::SizeType>(index)];
}

JsonValue::Member* RapidjsonWrapper::FindMember(const char* key) const {
  rapidjson::SizeType length = 0;
  if (key == nullptr || key[0] == '\0' || !Current()->IsObject() || !JsonLength(key, length)) return nullptr;
  return FindMember(key, length);
}

JsonValue::Member* RapidjsonWrapper::FindMember(const char* key, rapidjson::SizeType length) const {
  JsonValue& object = *Current();
  for (auto it = object.MemberBegin(), end = object.MemberEnd(); it != end; ++it) {
    if (it->name.GetStringLength() == length && std::memcmp(it->name.GetString(), key, length) == 0) {
      return &*it;
    }
  }
  return nullptr;
}

JsonValue* RapidjsonWrapper::MemberValue(const char* key) const {
  JsonValue::Member* member = FindMember(key);
  return member != nullptr ? &member->value : nullptr;
}

// `value` is an element or a member value of this value; its place is one
// step down from this handle's.
VXSharedPtr<VXJson> RapidjsonWrapper::ChildHandle(JsonValue* value) const {
  if (value == nullptr) return VXSharedPtr<VXJson>(nullptr);
  const JsonValue& container = *Current();
  JsonPlace::Ref place;
  if (container.IsArray()) {
    place = std::make_shared<JsonPlace>(m_place, static_cast<rapidjson::SizeType>(value - container.Begin()));
  } else {
    const JsonValue::Member* first = &*container.MemberBegin();
    const auto position = static_cast<rapidjson::SizeType>(
        (reinterpret_cast<const char*>(value) - reinterpret_cast<const char*>(&first->value)) /
        static_cast<std::ptrdiff_t>(sizeof(JsonValue::Member)));
    place = std::make_shared<JsonPlace>(m_place, position, first[position].name);
  }
  return VXSharedPtr<VXJson>(new RapidjsonWrapper(m_tree, std::move(place), value));
}

VXSharedPtr<const VXJson> RapidjsonWrapper::ConstChildHandle(JsonValue* value) const {
  if (value == nullptr) return VXSharedPtr<const VXJson>(nullptr);
  return ChildHandle(value);
}

template <typename Kind>
typename Kind::Type RapidjsonWrapper::GetScalar(bool* ok) const {
  typename Kind::Type out = Missing<Kind>();
  const bool accepted = Kind::Read(*Current(), out);
  if (ok != nullptr) *ok = accepted;
  return out;
}

template <typename Kind>
typename Kind::Type RapidjsonWrapper::ReadAt(int index, typename Kind::Type defaultValue) const {
  const JsonValue* element = ElementAt(index);
  if (element != nullptr) Kind::Read(*element, defaultValue);
  return defaultValue;
}

template <typename Kind>
typename Kind::Type RapidjsonWrapper::ReadMember(const char* key, typename Kind::Type defaultValue) const {
  const JsonValue* member = MemberValue(key);
  if (member != nullptr) Kind::Read(*member, defaultValue);
  return defaultValue;
}

#define VX_JSON_READS(Name, Kind)                                                              \
  Kind::Type RapidjsonWrapper::Get##Name(bool* ok) const { return GetScalar<Kind>(ok); }       \
  bool RapidjsonWrapper::TryGet##Name(Kind::Type& out) const { return Kind::Read(*Current(), out); } \
  Kind::Type RapidjsonWrapper::Get##Name##At(int index, Kind::Type defaultValue) const {       \
    return ReadAt<Kind>(index, defaultValue);                                                  \
  }                                                                                            \
  Kind::Type RapidjsonWrapper::Get##Name##Member(const char* key, Kind::Type defaultValue) const { \
    return ReadMember<Kind>(key, defaultValue);                                                \
  }

VX_JSON_READS(Int, IntKind)
VX_JSON_READS(Uint, UintKind)
VX_JSON_READS(Int64, Int64Kind)
VX_JSON_READS(Uint64, Uint64Kind)
VX_JSON_READS(String, StringKind)
VX_JSON_READS(Boolean, BooleanKind)
VX_JSON_READS(Float, FloatKind)
VX_JSON_READS(Double, DoubleKind)

#undef VX_JSON_READS

bool RapidjsonWrapper::HasMember(const char* key) const { return MemberValue(key) != nullptr; }

VXSharedPtr<const VXJson> RapidjsonWrapper::GetAt(int index) const { return ConstChildHandle(ElementAt(index)); }

VXSharedPtr<VXJson> RapidjsonWrapper::GetMutableAt(int index) { return ChildHandle(ElementAt(index)); }

VXSharedPtr<const VXJson> RapidjsonWrapper::GetMember(const char* key) const {
  return ConstChildHandle(MemberValue(key));
}

VXSharedPtr<VXJson> RapidjsonWrapper::GetMutableMember(const char* key) { return ChildHandle(MemberValue(key)); }

CCA_ObjArrayTemplate<CCA_String> RapidjsonWrapper::GetMemberNames() const {
  CCA_ObjArrayTemplate<CCA_String> names;
  const JsonValue& object = *Current();
  if (!object.IsObject()) return names;
  for (auto it = object.MemberBegin(); it != object.MemberEnd(); ++it) {
    names.Add(CCA_String(it->name.GetString(), static_cast<int>(it->name.GetStringLength())));
  }
  return names;
}

// `value` may be the very handle this runs on (a walk down the tree), so
// assigning it may destroy this object: it is the last step.
bool RapidjsonWrapper::DeliverMember(CCA_String& name, VXSharedPtr<VXJson>& value) {
  JsonValue::Member& member = m_value->MemberBegin()[m_memberCursor];
  VXSharedPtr<VXJson> child = ChildHandle(&member.value);
  // The whole name, NUL bytes included, as GetMemberNames gives it.
  name = CCA_String(member.name.GetString(), static_cast<int>(member.name.GetStringLength()));
  ++m_memberCursor;
  const bool more = m_memberCursor < m_value->MemberCount();
  value = child;
  return more;
}

bool RapidjsonWrapper::FirstMember(CCA_String& name, VXSharedPtr<VXJson>& value) {
  if (!Attach() || !m_value->IsObject()) return false;
  m_memberCursor = 0;
  if (m_value->MemberCount() == 0) return false;
  return DeliverMember(name, value);
}

bool RapidjsonWrapper::NextMember(CCA_String& name, VXSharedPtr<VXJson>& value) {
  if (!Attach() || !m_value->IsObject() || m_memberCursor >= m_value->MemberCount()) return false;
  return DeliverMember(name, value);
}

int RapidjsonWrapper::GetSize() const {
  const JsonValue& value = *Current();
  if (value.IsArray()) return static_cast<int>(value.Size());
  if (value.IsObject()) return static_cast<int>(value.MemberCount());
  return -1;
}

// Each new object is held by an owner until the next one takes it, so a
// failed allocation leaves nothing behind.
VXSharedPtr<VXJson> RapidjsonWrapper::Clone() const {
  std::unique_ptr<JsonPool> pool(new JsonPool());
  std::unique_ptr<JsonValue> node(new JsonValue(json_walk::Copy(*Current(), *pool)));
  std::unique_ptr<RapidjsonWrapper> clone(new RapidjsonWrapper(node.get(), pool.get()));
  node.release();
  pool.release();
  return VXSharedPtr<VXJson>(clone.release());
}

// A handle that owns its pool (a clone) moves to a fresh one, so the content
// it replaces is freed; the copy is made before the old pool goes, since
// `other` may live in it. Any other handle copies into its tree's pool, which
// the tree's owner releases: no pool without an owner, none freed early.
bool RapidjsonWrapper::CopyFrom(VXSharedPtr<const VXJson> other) {
  const JsonValue* source = ValueOf(other.get());
  if (source == nullptr || !Attach()) return false;
  std::unique_ptr<JsonPool> fresh(m_ownsNode ? new JsonPool() : nullptr);
  JsonValue copy = json_walk::Copy(*source, fresh ? *fresh : Pool());
  *m_value = copy;
  if (fresh) {
    delete m_tree->pool;
    m_tree->pool = fresh.release();
  }
  Edited();
  return true;
}
