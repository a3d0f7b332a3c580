// Reads its input as a program of VXJson operations on four handle slots:
// parse, child access, scalar and value writes, inserts, removal, container
// creation, enumeration with the out-parameter aliasing the handle it runs
// on, copies, clones and writing. Handles are used in any order: views go on
// being used after edits that move their values, after their value is
// removed, after CopyFrom overwrites their clone and after their owner is
// released; anything AddressSanitizer or UndefinedBehaviorSanitizer reports
// is a fault. Whatever text is written must parse back to the same kind and
// size when it is whole.

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

#include <fuzzer/FuzzedDataProvider.h>

#include <vxutility/VXJsonFactory.h>

extern "C" const char* __ubsan_default_options() {
  return "halt_on_error=1:print_stacktrace=1:suppressions=" VX_UBSAN_SUPPRESSIONS;
}

namespace {

using JsonPtr = VXSharedPtr<VXJson>;

constexpr int kSlots = 4;
constexpr int kMaxOperations = 24;
constexpr int kMaxCopies = 4;  // each copy may double a tree that holds itself

class Program {
 public:
  explicit Program(FuzzedDataProvider& data) : m_data(data) {}

  void Run() {
    for (int step = 0; step < kMaxOperations && m_data.remaining_bytes() > 0; ++step) Step();
    Check(m_slots[0]);
  }

 private:
  int SlotIndex() { return m_data.ConsumeIntegralInRange(0, kSlots - 1); }
  int Index() { return m_data.ConsumeIntegralInRange(-2, 9); }
  std::string Key() {
    static const char* const kKeys[] = {"a", "b", "c", "", "Font", "a\x01"};
    const int pick = m_data.ConsumeIntegralInRange(0, 6);
    return pick < 6 ? kKeys[pick] : m_data.ConsumeRandomLengthString(8);
  }

  bool CopyAllowed() { return m_copies++ < kMaxCopies; }

  void Step() {
    const int op = m_data.ConsumeIntegralInRange(0, 15);
    JsonPtr& a = m_slots[SlotIndex()];
    JsonPtr& b = m_slots[SlotIndex()];
    if (op == 0) {
      const std::string text = m_data.ConsumeRandomLengthString(256);
      a = VXJsonFactory::ParseJsonString(text.data(), static_cast<unsigned int>(text.size()), nullptr);
      return;
    }
    if (!a) {
      a = VXJsonFactory::ParseJsonString(m_data.ConsumeBool() ? "[1,\"s\",[2]]" : "{\"a\":{\"b\":[]}}", 0xFFFFFFFFu,
                                         nullptr);
      return;
    }
    VXJson& v = *a;
    switch (op) {
      case 1: b = v.GetMutableAt(Index()); break;
      case 2: b = v.GetMutableMember(Key().c_str()); break;
      case 3: Reads(v); break;
      case 4: ScalarWrite(v); break;
      case 5: ValueWrite(v, b); break;
      case 6: Containers(v, b); break;
      case 7: m_data.ConsumeBool() ? (void)v.RemoveAt(Index()) : v.RemoveMember(Key().c_str()); break;
      case 8: Enumerate(a, b); break;
      case 9:
        if (CopyAllowed()) b = v.Clone();
        break;
      case 10: CopyFrom(a, b); break;
      case 11: Check(a); break;
      case 12: a = JsonPtr(); break;
      case 13: b = a; break;
      case 14: v.GetMemberNames(); break;
      default: b = m_data.ConsumeBool() ? v.GetMutableAt(0) : v.GetMutableMember("a"); break;
    }
  }

  void Reads(const VXJson& v) {
    bool ok = false;
    v.GetType();
    v.GetInt(&ok);
    v.GetUint64(&ok);
    v.GetFloat(&ok);
    v.GetDouble(&ok);
    const char* text = v.GetString(&ok);
    if (text == nullptr) std::abort();
    v.GetSize();
    const int index = Index();
    const std::string key = Key();
    v.GetStringAt(index, nullptr);
    v.GetFloatAt(index, 0.0f);
    v.GetInt64Member(key.c_str(), 0);
    v.HasMember(key.c_str());
    VXSharedPtr<const VXJson> child = m_data.ConsumeBool() ? v.GetAt(index) : v.GetMember(key.c_str());
    if (child) child->GetUint(&ok);
  }

  void ScalarWrite(VXJson& v) {
    const int kind = m_data.ConsumeIntegralInRange(0, 7);
    const int where = m_data.ConsumeIntegralInRange(0, 2);  // replace an element, a member, or insert
    const int index = Index();
    const std::string key = Key();
    const std::string text = m_data.ConsumeRandomLengthString(16);
    const uint64_t bits = m_data.ConsumeIntegral<uint64_t>();
    double number = 0;
    static_assert(sizeof number == sizeof bits, "64-bit double");
    std::memcpy(&number, &bits, sizeof number);  // any double, NaN and infinities included
    const char* k = key.c_str();
    switch (kind) {
      case 0: where == 0 ? (void)v.SetIntAt(index, int(bits)) : where == 1 ? v.SetIntMember(k, int(bits)) : (void)v.InsertIntAt(index, int(bits)); break;
      case 1: where == 0 ? (void)v.SetUintAt(index, unsigned(bits)) : where == 1 ? v.SetUintMember(k, unsigned(bits)) : (void)v.InsertUintAt(index, unsigned(bits)); break;
      case 2: where == 0 ? (void)v.SetInt64At(index, int64(bits)) : where == 1 ? v.SetInt64Member(k, int64(bits)) : (void)v.InsertInt64At(index, int64(bits)); break;
      case 3: where == 0 ? (void)v.SetUint64At(index, bits) : where == 1 ? v.SetUint64Member(k, bits) : (void)v.InsertUint64At(index, bits); break;
      case 4: where == 0 ? (void)v.SetStringAt(index, text.c_str()) : where == 1 ? v.SetStringMember(k, text.c_str()) : (void)v.InsertStringAt(index, text.c_str()); break;
      case 5: where == 0 ? (void)v.SetBooleanAt(index, bits & 1) : where == 1 ? v.SetBooleanMember(k, bits & 1) : (void)v.InsertBooleanAt(index, bits & 1); break;
      case 6: where == 0 ? (void)v.SetFloatAt(index, float(bits % 1000) / 7) : where == 1 ? v.SetFloatMember(k, float(bits % 1000) / 7) : (void)v.InsertFloatAt(index, float(bits % 1000) / 7); break;
      default: where == 0 ? (void)v.SetDoubleAt(index, number) : where == 1 ? v.SetDoubleMember(k, number) : (void)v.InsertDoubleAt(index, number); break;
    }
  }

  /// Value writes take `b`'s value, which may view the same tree, even the
  /// very element being written.
  void ValueWrite(VXJson& v, const JsonPtr& b) {
    if (!CopyAllowed()) return;
    const VXSharedPtr<const VXJson> value = b;
    switch (m_data.ConsumeIntegralInRange(0, 2)) {
      case 0: v.SetValueAt(Index(), value); break;
      case 1: v.SetValueMember(Key().c_str(), value); break;
      default: v.InsertValueAt(Index(), value); break;
    }
  }

  /// The new container's view goes into `b`, which may be `a`.
  void Containers(VXJson& v, JsonPtr& b) {
    switch (m_data.ConsumeIntegralInRange(0, 3)) {
      case 0: b = v.InsertArrayAt(Index()); break;
      case 1: b = v.InsertObjectAt(Index()); break;
      case 2: b = v.SetArrayMember(Key().c_str()); break;
      default: b = v.SetObjectMember(Key().c_str()); break;
    }
  }

  /// The delivered member goes into `b`, which may be `a` itself: the
  /// assignment may then release the handle the call runs on.
  void Enumerate(const JsonPtr& a, JsonPtr& b) {
    CCA_String name;
    const VXJson* before = b.get();  // the new view is made before the old goes
    const bool more = m_data.ConsumeBool() ? a->FirstMember(name, b) : a->NextMember(name, b);
    if (more && b.get() == before) std::abort();  // "more follow" without a delivered member
  }

  /// The source may be the target itself, a view into it, or a view of a
  /// clone about to be overwritten.
  void CopyFrom(const JsonPtr& a, const JsonPtr& b) {
    if (CopyAllowed()) a->CopyFrom(b);
  }

  /// Writes the value; a text that parses back comes back as the same kind
  /// of container with as many children.
  static void Check(const JsonPtr& handle) {
    if (!handle) return;
    const CCA_String text = handle->ToJsonString();
    const VXJsonType type = handle->GetType();
    if (type != VXJsonType_Array && type != VXJsonType_Object) return;
    VXSharedPtr<VXJson> again = VXJsonFactory::ParseJsonString(text.c_str(), 0xFFFFFFFFu, nullptr);
    if (again && (again->GetType() != type || again->GetSize() != handle->GetSize())) std::abort();
  }

  FuzzedDataProvider& m_data;
  JsonPtr m_slots[kSlots];
  int m_copies = 0;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  FuzzedDataProvider provider(data, size);
  Program(provider).Run();
  return 0;
}
