#pragma once
/// VXJson: the interface through which a JSON value is read, edited, walked,
/// copied and written. Values live in trees the library builds
/// (VXJsonFactory::ParseJsonString, Clone); callers hold them through
/// VXSharedPtr handles.
///
/// The declaration order of the operations is part of the binary interface.
/// Failures are reported only through results: a false flag, the caller's
/// default, a null handle (which still carries a control block), -1 from
/// GetSize, or nothing done. Nothing is printed, and nothing is thrown except
/// std::bad_alloc when memory runs out (the edit is then not made and
/// nothing leaks). A tree and every handle into it belong to one thread at a
/// time.
///
/// Lifetimes:
/// - A child handle (GetAt, GetMember, their mutable forms, Insert/Set of
///   containers, FirstMember/NextMember) is a view: it does not keep its tree
///   alive. Only the root handle from ParseJsonString, or a handle from
///   Clone, owns a tree. So
///     VXSharedPtr<const VXJson> font =
///         VXJsonFactory::ParseJsonString(text, len, nullptr)->GetMember("Font");
///   reads null at once, although font.use_count() is 1: keep the root.
/// - A view keeps its place in the tree (an element's index, so an insert or
///   removal before it shifts what it sees; a member's name) and finds its
///   value there again after any edit: growth or removal
///   that moves its container's children, a replacing write or CopyFrom above
///   it, CopyFrom on its clone. Once nothing is at its place (the element or
///   member was removed, an ancestor no longer holds it, the owner was
///   released) it reads as null, copies nothing and refuses every edit
///   (false, a null handle, or nothing done).
/// - An edit on an object may reorder its members, so restart an
///   enumeration running on it with FirstMember.
/// - A GetString/GetStringAt/GetStringMember pointer stays valid until that
///   value is replaced or removed (or CopyFrom on its clone) and while the
///   tree lives.
/// - Strings and keys longer than 2^32 - 1 bytes cannot be stored: such a
///   write changes nothing (false), such a key matches nothing.

#include <vxbase/Array.h>
#include <vxbase/String.h>
#include <vxbase/Types.h>

#include <vxutility/VXSharedPtr.h>
#include <vxutility/vxutility_export.h>

/// Classification of a JSON value. Integers are classified by value only.
/// The type is a signed 32-bit integer, so any int (-1 included) may be
/// passed where a VXJsonType is taken.
enum VXJsonType : int {
  VXJsonType_Null = 0,     ///< null, and anything not listed below
  VXJsonType_Int = 1,      ///< integer in [-2^31, -1]
  VXJsonType_Uint = 2,     ///< integer in [0, 2^32 - 1]
  VXJsonType_Int64 = 3,    ///< integer in [-2^63, -2^31 - 1]
  VXJsonType_Uint64 = 4,   ///< integer in [2^32, 2^64 - 1]
  VXJsonType_Float = 5,    ///< reserved; GetType never yields it
  VXJsonType_Double = 6,   ///< number stored in floating point
  VXJsonType_String = 7,
  VXJsonType_Boolean = 8,
  VXJsonType_Array = 9,
  VXJsonType_Object = 10,
};

/// Acceptance of the scalar kinds, shared by every read:
/// Int: integer in the signed 32-bit range. Uint: integer in the signed or
/// unsigned 32-bit range, low 32 bits. Int64: signed 64-bit integer. Uint64:
/// signed or unsigned 64-bit integer, its two's-complement pattern. Float:
/// floating-point number within +-3.4028234e38 or signed 32-bit integer.
/// Double: any floating-point number or signed 32-bit integer.
/// Keys are NUL-terminated and compared byte for byte; a null or empty key
/// never matches; keyed operations use the first member of that name.
class VXUTILITY_EXPORT VXJson {
 public:
  virtual ~VXJson();

  /// The classification of this value.
  virtual VXJsonType GetType() const = 0;
  /// The value; 0 (and *ok false) when not accepted.
  virtual int GetInt(bool* ok = nullptr) const = 0;
  /// False, `out` untouched, when not accepted.
  virtual bool TryGetInt(int& out) const = 0;
  /// The value; 0 (and *ok false) when not accepted.
  virtual unsigned int GetUint(bool* ok = nullptr) const = 0;
  /// False, `out` untouched, when not accepted.
  virtual bool TryGetUint(unsigned int& out) const = 0;
  /// The value; 0 (and *ok false) when not accepted.
  virtual int64 GetInt64(bool* ok = nullptr) const = 0;
  /// False, `out` untouched, when not accepted.
  virtual bool TryGetInt64(int64& out) const = 0;
  /// The value; 0 (and *ok false) when not accepted.
  virtual uint64 GetUint64(bool* ok = nullptr) const = 0;
  /// False, `out` untouched, when not accepted.
  virtual bool TryGetUint64(uint64& out) const = 0;
  /// The stored bytes; "" (never null, *ok false) when not a string.
  virtual const char* GetString(bool* ok = nullptr) const = 0;
  /// False, `out` untouched, when not a string.
  virtual bool TryGetString(const char*& out) const = 0;
  /// The value; false (and *ok false) when not a boolean.
  virtual bool GetBoolean(bool* ok = nullptr) const = 0;
  /// False, `out` untouched, when not a boolean.
  virtual bool TryGetBoolean(bool& out) const = 0;
  /// The value; 0.0f (and *ok false) when not accepted.
  virtual float GetFloat(bool* ok = nullptr) const = 0;
  /// False, `out` untouched, when not accepted.
  virtual bool TryGetFloat(float& out) const = 0;
  /// The value; 0.0 (and *ok false) when not accepted.
  virtual double GetDouble(bool* ok = nullptr) const = 0;
  /// False, `out` untouched, when not accepted.
  virtual bool TryGetDouble(double& out) const = 0;

  /// False when this is not an object or has no member `key`.
  virtual bool HasMember(const char* key) const = 0;
  /// A view of element `index`; a null handle when this is not an array or
  /// the index is out of range.
  virtual VXSharedPtr<const VXJson> GetAt(int index) const = 0;
  /// Writable form of GetAt; a null handle on the same failures.
  virtual VXSharedPtr<VXJson> GetMutableAt(int index) = 0;
  /// A view of the first member named `key`; a null handle when this is not
  /// an object, the key is null or empty, or no member matches.
  virtual VXSharedPtr<const VXJson> GetMember(const char* key) const = 0;
  /// Writable form of GetMember; a null handle on the same failures.
  virtual VXSharedPtr<VXJson> GetMutableMember(const char* key) = 0;

  /// Element `index` or member `key` read as the kind; `defaultValue` when
  /// this is no array/object, the element or member is missing, or it is
  /// not accepted.
  virtual int GetIntAt(int index, int defaultValue) const = 0;
  virtual int GetIntMember(const char* key, int defaultValue) const = 0;  ///< defaultValue on failure
  virtual unsigned int GetUintAt(int index, unsigned int defaultValue) const = 0;  ///< defaultValue on failure
  virtual unsigned int GetUintMember(const char* key, unsigned int defaultValue) const = 0;  ///< defaultValue on failure
  virtual int64 GetInt64At(int index, int64 defaultValue) const = 0;  ///< defaultValue on failure
  virtual int64 GetInt64Member(const char* key, int64 defaultValue) const = 0;  ///< defaultValue on failure
  virtual uint64 GetUint64At(int index, uint64 defaultValue) const = 0;  ///< defaultValue on failure
  virtual uint64 GetUint64Member(const char* key, uint64 defaultValue) const = 0;  ///< defaultValue on failure
  /// The stored bytes, or `defaultValue` unchanged (it may be null).
  virtual const char* GetStringAt(int index, const char* defaultValue) const = 0;
  virtual const char* GetStringMember(const char* key, const char* defaultValue) const = 0;  ///< defaultValue on failure
  virtual bool GetBooleanAt(int index, bool defaultValue) const = 0;  ///< defaultValue on failure
  virtual bool GetBooleanMember(const char* key, bool defaultValue) const = 0;  ///< defaultValue on failure
  virtual float GetFloatAt(int index, float defaultValue) const = 0;  ///< defaultValue on failure
  virtual float GetFloatMember(const char* key, float defaultValue) const = 0;  ///< defaultValue on failure
  virtual double GetDoubleAt(int index, double defaultValue) const = 0;  ///< defaultValue on failure
  virtual double GetDoubleMember(const char* key, double defaultValue) const = 0;  ///< defaultValue on failure

  /// SetXAt replaces element `index`; false, nothing changed, when this is
  /// not an array or the index is out of range (it never appends).
  /// SetXMember replaces the first member `key` in place or appends one;
  /// nothing when this is not an object or the key is null or empty.
  /// Strings are copied (null stores ""); floats are stored as doubles.
  virtual bool SetIntAt(int index, int value) = 0;
  virtual void SetIntMember(const char* key, int value) = 0;  ///< nothing on failure
  virtual bool SetUintAt(int index, unsigned int value) = 0;  ///< false on failure
  virtual void SetUintMember(const char* key, unsigned int value) = 0;  ///< nothing on failure
  virtual bool SetInt64At(int index, int64 value) = 0;  ///< false on failure
  virtual void SetInt64Member(const char* key, int64 value) = 0;  ///< nothing on failure
  virtual bool SetUint64At(int index, uint64 value) = 0;  ///< false on failure
  virtual void SetUint64Member(const char* key, uint64 value) = 0;  ///< nothing on failure
  virtual bool SetStringAt(int index, const char* value) = 0;  ///< false on failure
  virtual void SetStringMember(const char* key, const char* value) = 0;  ///< nothing on failure
  virtual bool SetBooleanAt(int index, bool value) = 0;  ///< false on failure
  virtual void SetBooleanMember(const char* key, bool value) = 0;  ///< nothing on failure
  virtual bool SetFloatAt(int index, float value) = 0;  ///< false on failure
  virtual void SetFloatMember(const char* key, float value) = 0;  ///< nothing on failure
  virtual bool SetDoubleAt(int index, double value) = 0;  ///< false on failure
  virtual void SetDoubleMember(const char* key, double value) = 0;  ///< nothing on failure
  /// Stores a deep copy of `value`; a null handle changes nothing (false).
  virtual bool SetValueAt(int index, VXSharedPtr<const VXJson> value) = 0;
  /// Stores a deep copy of `value`; a null handle changes nothing.
  virtual void SetValueMember(const char* key, VXSharedPtr<const VXJson> value) = 0;

  /// Inserts an empty array before `index` (appends when the index is
  /// negative or not below the size) and returns a view of it; a null
  /// handle when this is not an array.
  virtual VXSharedPtr<VXJson> InsertArrayAt(int index) = 0;
  /// Makes member `key` an empty array (replacing or appending) and returns
  /// a view of it; a null handle when this is not an object or the key is
  /// null or empty.
  virtual VXSharedPtr<VXJson> SetArrayMember(const char* key) = 0;
  /// As InsertArrayAt, with an empty object.
  virtual VXSharedPtr<VXJson> InsertObjectAt(int index) = 0;
  /// As SetArrayMember, with an empty object.
  virtual VXSharedPtr<VXJson> SetObjectMember(const char* key) = 0;
  /// Removes element `index`; false when this is not an array or the index
  /// is out of range.
  virtual bool RemoveAt(int index) = 0;
  /// Removes the first member `key`, moving the last member into its place;
  /// nothing when there is no such member.
  virtual void RemoveMember(const char* key) = 0;
  /// The member names in member order; empty when this is not an object.
  virtual CCA_ObjArrayTemplate<CCA_String> GetMemberNames() const = 0;
  /// Restarts this handle's member cursor and delivers the first member;
  /// false, nothing written, when this is not an object or it is empty.
  /// Otherwise true exactly when more members follow. `name` gets the whole
  /// name (NUL bytes included); `value` may be this very handle.
  virtual bool FirstMember(CCA_String& name, VXSharedPtr<VXJson>& value) = 0;
  /// Delivers the member at the cursor and advances; false, nothing
  /// written, at the end. Otherwise true exactly when more members follow.
  virtual bool NextMember(CCA_String& name, VXSharedPtr<VXJson>& value) = 0;

  /// InsertXAt inserts before `index` (appends when the index is negative or
  /// not below the size); false when this is not an array.
  virtual bool InsertIntAt(int index, int value) = 0;
  virtual bool InsertUintAt(int index, unsigned int value) = 0;  ///< false when not an array
  virtual bool InsertInt64At(int index, int64 value) = 0;  ///< false when not an array
  virtual bool InsertUint64At(int index, uint64 value) = 0;  ///< false when not an array
  virtual bool InsertStringAt(int index, const char* value) = 0;  ///< false when not an array
  virtual bool InsertBooleanAt(int index, bool value) = 0;  ///< false when not an array
  virtual bool InsertFloatAt(int index, float value) = 0;  ///< false when not an array
  virtual bool InsertDoubleAt(int index, double value) = 0;  ///< false when not an array
  /// Inserts a deep copy of `value`; false, nothing changed, for a null
  /// handle.
  virtual bool InsertValueAt(int index, VXSharedPtr<const VXJson> value) = 0;

  /// Elements of an array or members of an object; -1 for other values.
  virtual int GetSize() const = 0;
  /// A new independent tree holding a deep copy of this value (any depth).
  virtual VXSharedPtr<VXJson> Clone() const = 0;
  /// Replaces this value by a deep copy of `other`; false, nothing changed,
  /// for a null handle.
  virtual bool CopyFrom(VXSharedPtr<const VXJson> other) = 0;
  /// Compact JSON text of this value, however deep; the text stops at a NaN
  /// or infinite number, or where it would pass 2^31 - 1 bytes (see
  /// docs/json.md).
  virtual CCA_String ToJsonString() const = 0;
};

/// The name of a classification: "null", "int", "uint", "int64", "uint64",
/// "float", "double", "string", "boolean", "array", "object"; "unknown" for
/// any other value. Never null.
VXUTILITY_EXPORT const char* GetJsonTypeString(VXJsonType type);
