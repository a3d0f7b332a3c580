#pragma once
// RapidjsonWrapper: the VXJson handle onto one value of a RapidJSON tree.
// A root handle owns its parsed document, a clone handle owns its value node
// and pool; a view owns nothing and finds its value through its place in the
// tree, which it shares with the owner (json/JsonTree.h).

#include <vxutility/VXJson.h>

#include "json/JsonStorage.h"
#include "json/JsonTree.h"

class RapidjsonWrapper final : public VXJson {
 public:
  /// A root handle that owns `document`.
  explicit RapidjsonWrapper(JsonDocument* document);
  /// A clone handle that owns `node` and the `pool` its content lives in.
  RapidjsonWrapper(JsonValue* node, JsonPool* pool);
  ~RapidjsonWrapper() override;
  RapidjsonWrapper(const RapidjsonWrapper&) = delete;
  RapidjsonWrapper& operator=(const RapidjsonWrapper&) = delete;

  /// The value viewed by `handle` when it is one of ours; nullptr otherwise,
  /// and for a view whose value is gone, so that nothing copies from it.
  static const JsonValue* ValueOf(const VXJson* handle);

  VXJsonType GetType() const override;
  int GetInt(bool* ok = nullptr) const override;
  bool TryGetInt(int& out) const override;
  unsigned int GetUint(bool* ok = nullptr) const override;
  bool TryGetUint(unsigned int& out) const override;
  int64 GetInt64(bool* ok = nullptr) const override;
  bool TryGetInt64(int64& out) const override;
  uint64 GetUint64(bool* ok = nullptr) const override;
  bool TryGetUint64(uint64& out) const override;
  const char* GetString(bool* ok = nullptr) const override;
  bool TryGetString(const char*& out) const override;
  bool GetBoolean(bool* ok = nullptr) const override;
  bool TryGetBoolean(bool& out) const override;
  float GetFloat(bool* ok = nullptr) const override;
  bool TryGetFloat(float& out) const override;
  double GetDouble(bool* ok = nullptr) const override;
  bool TryGetDouble(double& out) const override;

  bool HasMember(const char* key) const override;
  VXSharedPtr<const VXJson> GetAt(int index) const override;
  VXSharedPtr<VXJson> GetMutableAt(int index) override;
  VXSharedPtr<const VXJson> GetMember(const char* key) const override;
  VXSharedPtr<VXJson> GetMutableMember(const char* key) override;

  int GetIntAt(int index, int defaultValue) const override;
  int GetIntMember(const char* key, int defaultValue) const override;
  unsigned int GetUintAt(int index, unsigned int defaultValue) const override;
  unsigned int GetUintMember(const char* key, unsigned int defaultValue) const override;
  int64 GetInt64At(int index, int64 defaultValue) const override;
  int64 GetInt64Member(const char* key, int64 defaultValue) const override;
  uint64 GetUint64At(int index, uint64 defaultValue) const override;
  uint64 GetUint64Member(const char* key, uint64 defaultValue) const override;
  const char* GetStringAt(int index, const char* defaultValue) const override;
  const char* GetStringMember(const char* key, const char* defaultValue) const override;
  bool GetBooleanAt(int index, bool defaultValue) const override;
  bool GetBooleanMember(const char* key, bool defaultValue) const override;
  float GetFloatAt(int index, float defaultValue) const override;
  float GetFloatMember(const char* key, float defaultValue) const override;
  double GetDoubleAt(int index, double defaultValue) const override;
  double GetDoubleMember(const char* key, double defaultValue) const override;

  bool SetIntAt(int index, int value) override;
  void SetIntMember(const char* key, int value) override;
  bool SetUintAt(int index, unsigned int value) override;
  void SetUintMember(const char* key, unsigned int value) override;
  bool SetInt64At(int index, int64 value) override;
  void SetInt64Member(const char* key, int64 value) override;
  bool SetUint64At(int index, uint64 value) override;
  void SetUint64Member(const char* key, uint64 value) override;
  bool SetStringAt(int index, const char* value) override;
  void SetStringMember(const char* key, const char* value) override;
  bool SetBooleanAt(int index, bool value) override;
  void SetBooleanMember(const char* key, bool value) override;
  bool SetFloatAt(int index, float value) override;
  void SetFloatMember(const char* key, float value) override;
  bool SetDoubleAt(int index, double value) override;
  void SetDoubleMember(const char* key, double value) override;
  bool SetValueAt(int index, VXSharedPtr<const VXJson> value) override;
  void SetValueMember(const char* key, VXSharedPtr<const VXJson> value) override;

  VXSharedPtr<VXJson> InsertArrayAt(int index) override;
  VXSharedPtr<VXJson> SetArrayMember(const char* key) override;
  VXSharedPtr<VXJson> InsertObjectAt(int index) override;
  VXSharedPtr<VXJson> SetObjectMember(const char* key) override;
  bool RemoveAt(int index) override;
  void RemoveMember(const char* key) override;
  CCA_ObjArrayTemplate<CCA_String> GetMemberNames() const override;
  bool FirstMember(CCA_String& name, VXSharedPtr<VXJson>& value) override;
  bool NextMember(CCA_String& name, VXSharedPtr<VXJson>& value) override;

  bool InsertIntAt(int index, int value) override;
  bool InsertUintAt(int index, unsigned int value) override;
  bool InsertInt64At(int index, int64 value) override;
  bool InsertUint64At(int index, uint64 value) override;
  bool InsertStringAt(int index, const char* value) override;
  bool InsertBooleanAt(int index, bool value) override;
  bool InsertFloatAt(int index, float value) override;
  bool InsertDoubleAt(int index, double value) override;
  bool InsertValueAt(int index, VXSharedPtr<const VXJson> value) override;

  int GetSize() const override;
  VXSharedPtr<VXJson> Clone() const override;
  bool CopyFrom(VXSharedPtr<const VXJson> other) override;
  CCA_String ToJsonString() const override;

 private:
  /// The cursor of a handle that has not started an enumeration.
  static constexpr rapidjson::SizeType kCursorAtEnd = ~rapidjson::SizeType(0);

  /// A view of `value` at `place` in `tree`.
  RapidjsonWrapper(std::shared_ptr<JsonTree> tree, JsonPlace::Ref place, JsonValue* value);

  /// The value this handle sees now: found again after edits, and a null
  /// value (never written to) when it is gone.
  JsonValue* Current() const;
  /// Brings the value up to date before an edit; false when it is gone, or
  /// the tree is, and nothing may be edited.
  bool Attach();
  /// Records an edit made through this handle, which may have moved or
  /// replaced values under it (never its own value).
  void Edited();
  JsonPool& Pool() const { return *m_tree->pool; }

  JsonValue* ElementAt(int index) const;
  /// The first member named `key`; nullptr when this is no object or the
  /// key is null, empty, longer than a name can be, or absent.
  JsonValue::Member* FindMember(const char* key) const;
  JsonValue::Member* FindMember(const char* key, rapidjson::SizeType length) const;
  JsonValue* MemberValue(const char* key) const;
  VXSharedPtr<VXJson> ChildHandle(JsonValue* value) const;
  /// As ChildHandle; a null result carries a block of the const type.
  VXSharedPtr<const VXJson> ConstChildHandle(JsonValue* value) const;

  template <typename Kind>
  typename Kind::Type GetScalar(bool* ok) const;
  template <typename Kind>
  typename Kind::Type ReadAt(int index, typename Kind::Type defaultValue) const;
  template <typename Kind>
  typename Kind::Type ReadMember(const char* key, typename Kind::Type defaultValue) const;

  bool ReplaceAt(int index, JsonValue& value);
  JsonValue* WriteMember(const char* key, JsonValue& value);
  JsonValue* InsertAt(int index, JsonValue& value);
  bool DeliverMember(CCA_String& name, VXSharedPtr<VXJson>& value);

  std::shared_ptr<JsonTree> m_tree;
  JsonPlace::Ref m_place;  // null for the owner
  JsonDocument* m_document = nullptr;  // the root's, to delete with it
  bool m_ownsNode = false;             // a clone's node and pool, to delete with it
  // The value as last found, and the tree's edit count then; an owner's
  // value never moves.
  JsonValue* m_value;
  std::uint64_t m_seenEdits = 0;
  // An index rather than an iterator: a cursor left behind by an edit then
  // ends the walk instead of reading freed storage.
  rapidjson::SizeType m_memberCursor = kCursorAtEnd;
};
