// Replacing writes, inserting writes, container creation and removal of a
// RapidJSON-backed value. New content is stored in the handle's pool; the
// content it replaces stays there until the pool goes.

#include "json/RapidjsonWrapper.h"

#include <cstring>
#include <new>

#include "json/JsonScalarKinds.h"
#include "json/JsonWalk.h"

using namespace json_kinds;

namespace {

/// A deep copy of the value viewed by `source` in `pool`; false when the
/// handle is null (or not one of ours).
bool DeepCopy(const VXSharedPtr<const VXJson>& source, JsonPool& pool, JsonValue& copy) {
  const JsonValue* value = RapidjsonWrapper::ValueOf(source.get());
  if (value == nullptr) return false;
  copy = json_walk::Copy(*value, pool);
  return true;
}

}  // namespace

// Every edit goes through these five, which attach first and record the
// edit after.
bool RapidjsonWrapper::ReplaceAt(int index, JsonValue& value) {
  JsonValue* element = Attach() ? ElementAt(index) : nullptr;
  if (element == nullptr) return false;
  *element = value;
  Edited();
  return true;
}

JsonValue* RapidjsonWrapper::WriteMember(const char* key, JsonValue& value) {
  rapidjson::SizeType length = 0;
  if (key == nullptr || key[0] == '\0' || !Attach() || !m_value->IsObject() || !JsonLength(key, length)) {
    return nullptr;
  }
  Edited();
  if (JsonValue::Member* existing = FindMember(key, length)) {
    existing->value = value;
    return &existing->value;
  }
  JsonValue name(key, length, Pool());
  m_value->AddMember(name, value, Pool());
  return &(m_value->MemberEnd() - 1)->value;
}

JsonValue* RapidjsonWrapper::InsertAt(int index, JsonValue& value) {
  if (!Attach() || !m_value->IsArray()) return nullptr;
  Edited();
  const rapidjson::SizeType size = m_value->Size();
  if (index < 0 || static_cast<unsigned>(index) >= size) {
    m_value->PushBack(value, Pool());
    return &(*m_value)[size];
  }
  JsonValue placeholder(0);
  m_value->PushBack(placeholder, Pool());
  JsonValue* slot = m_value->Begin() + index;
  // Values hold no pointers to themselves, so shifting their bytes is a move.
  std::memmove(static_cast<void*>(slot + 1), static_cast<const void*>(slot),
               sizeof(JsonValue) * (size - static_cast<rapidjson::SizeType>(index)));
  new (slot) JsonValue();
  *slot = value;
  return slot;
}

#define VX_JSON_WRITES(Name, Kind)                                      \
  bool RapidjsonWrapper::Set##Name##At(int index, Kind::Type value) {   \
    if (ElementAt(index) == nullptr || !Kind::Storable(value)) return false; \
    JsonValue made = Kind::Make(value, Pool());                   \
    return ReplaceAt(index, made);                                      \
  }                                                                     \
  void RapidjsonWrapper::Set##Name##Member(const char* key, Kind::Type value) { \
    if (key == nullptr || key[0] == '\0' || !Attach() || !m_value->IsObject()) return; \
    if (!Kind::Storable(value)) return;                                 \
    JsonValue made = Kind::Make(value, Pool());                   \
    WriteMember(key, made);                                             \
  }                                                                     \
  bool RapidjsonWrapper::Insert##Name##At(int index, Kind::Type value) { \
    if (!Attach() || !m_value->IsArray() || !Kind::Storable(value)) return false; \
    JsonValue made = Kind::Make(value, Pool());                   \
    return InsertAt(index, made) != nullptr;                            \
  }

VX_JSON_WRITES(Int, IntKind)
VX_JSON_WRITES(Uint, UintKind)
VX_JSON_WRITES(Int64, Int64Kind)
VX_JSON_WRITES(Uint64, Uint64Kind)
VX_JSON_WRITES(String, StringKind)
VX_JSON_WRITES(Boolean, BooleanKind)
VX_JSON_WRITES(Float, FloatKind)
VX_JSON_WRITES(Double, DoubleKind)

#undef VX_JSON_WRITES

bool RapidjsonWrapper::SetValueAt(int index, VXSharedPtr<const VXJson> value) {
  JsonValue copy;
  if (ElementAt(index) == nullptr || !DeepCopy(value, Pool(), copy)) return false;
  return ReplaceAt(index, copy);
}

void RapidjsonWrapper::SetValueMember(const char* key, VXSharedPtr<const VXJson> value) {
  JsonValue copy;
  if (key == nullptr || key[0] == '\0' || !Attach() || !m_value->IsObject()) return;
  if (!DeepCopy(value, Pool(), copy)) return;
  WriteMember(key, copy);
}

// The copy is taken before the array grows, so a value viewing an element of
// this very array inserts that element as it was before the call.
bool RapidjsonWrapper::InsertValueAt(int index, VXSharedPtr<const VXJson> value) {
  JsonValue copy;
  if (!Attach() || !m_value->IsArray() || !DeepCopy(value, Pool(), copy)) return false;
  return InsertAt(index, copy) != nullptr;
}

VXSharedPtr<VXJson> RapidjsonWrapper::InsertArrayAt(int index) {
  JsonValue empty(rapidjson::kArrayType);
  return ChildHandle(InsertAt(index, empty));
}

VXSharedPtr<VXJson> RapidjsonWrapper::SetArrayMember(const char* key) {
  JsonValue empty(rapidjson::kArrayType);
  return ChildHandle(WriteMember(key, empty));
}

VXSharedPtr<VXJson> RapidjsonWrapper::InsertObjectAt(int index) {
  JsonValue empty(rapidjson::kObjectType);
  return ChildHandle(InsertAt(index, empty));
}

VXSharedPtr<VXJson> RapidjsonWrapper::SetObjectMember(const char* key) {
  JsonValue empty(rapidjson::kObjectType);
  return ChildHandle(WriteMember(key, empty));
}

bool RapidjsonWrapper::RemoveAt(int index) {
  JsonValue* element = Attach() ? ElementAt(index) : nullptr;
  if (element == nullptr) return false;
  m_value->Erase(element);
  Edited();
  return true;
}

void RapidjsonWrapper::RemoveMember(const char* key) {
  JsonValue::Member* member = Attach() ? FindMember(key) : nullptr;
  if (member == nullptr) return;
  m_value->RemoveMember(m_value->MemberBegin() + (member - &*m_value->MemberBegin()));
  Edited();
}
