// The JSON model used carelessly or with hostile input: handles that alias
// the object they are called on, trees deeper than any stack, allocations
// that fail at every step, keys and strings longer than 2^32 bytes, and the
// handle type's own conversions.

#include <sys/mman.h>
#include <sys/resource.h>
#include <unistd.h>

#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <new>
#include <string>
#include <type_traits>
#include <typeinfo>

#include <vxutility/VXJsonHelper.h>

#include "json/JsonTestUtil.h"

// Every operator new of this program (the library's included) counts the
// objects it hands out and can be told to fail at the N-th call.
namespace {
std::atomic<long> g_liveObjects{0};
long g_failAfter = 0;  // 0: never fail; N: the N-th call from now throws
}  // namespace

void* operator new(std::size_t size) {
  if (g_failAfter > 0 && --g_failAfter == 0) throw std::bad_alloc();
  void* p = std::malloc(size != 0 ? size : 1);
  if (p == nullptr) throw std::bad_alloc();
  ++g_liveObjects;
  return p;
}
void* operator new[](std::size_t size) { return operator new(size); }
void operator delete(void* p) noexcept {
  if (p == nullptr) return;
  --g_liveObjects;
  std::free(p);
}
void operator delete[](void* p) noexcept { operator delete(p); }
void operator delete(void* p, std::size_t) noexcept { operator delete(p); }
void operator delete[](void* p, std::size_t) noexcept { operator delete(p); }

namespace {

#if defined(__SANITIZE_ADDRESS__)
constexpr bool kAddressSanitizer = true;
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
constexpr bool kAddressSanitizer = true;
#else
constexpr bool kAddressSanitizer = false;
#endif
#else
constexpr bool kAddressSanitizer = false;
#endif

TEST(JsonRobustness, EnumerationIntoTheHandleItRunsOn) {
  // Walking down with the handle itself as the out-parameter releases the
  // object the call runs on; AddressSanitizer sees any later touch of it.
  JsonPtr root = Parse("{\"a\":{\"b\":{\"c\":[1]},\"z\":0}}");
  JsonPtr node = root->GetMutableMember("a");
  CCA_String name;
  EXPECT_TRUE(node->FirstMember(name, node));  // "z" follows
  EXPECT_EQ(Str(name) + Text(node), "b{\"c\":[1]}");
  EXPECT_FALSE(node->FirstMember(name, node));  // the only member, delivered
  EXPECT_EQ(Str(name) + Text(node), "c[1]");
  JsonPtr walker = root->GetMutableMember("a");
  JsonPtr first;
  ASSERT_TRUE(walker->FirstMember(name, first));
  EXPECT_FALSE(walker->NextMember(name, walker));
  EXPECT_EQ(Str(name) + Text(walker), "z0");
}

TEST(JsonRobustness, MemberNamesHoldingNulComeBackWhole) {
  JsonPtr object = Parse("{\"a\\u0000b\":1}");
  CCA_String name;
  JsonPtr value;
  object->FirstMember(name, value);
  CCA_ObjArrayTemplate<CCA_String> names = object->GetMemberNames();
  ASSERT_EQ(names.GetSize(), 1);
  EXPECT_EQ(std::string(name.c_str(), name.GetLength()), std::string("a\0b", 3));
  EXPECT_EQ(std::string(names[0].c_str(), names[0].GetLength()), std::string("a\0b", 3));
  EXPECT_FALSE(object->HasMember("a"));  // keys end at their NUL
}

/// Depth of the array nesting of `text` when it is "[[...]]" all through.
size_t NestingOf(const std::string& text) {
  const size_t open = text.find_first_not_of('[');
  return open != std::string::npos && text.size() == 2 * open && text.find_first_not_of(']', open) == std::string::npos
             ? open
             : 0;
}

TEST(JsonRobustness, DeepTreesCopyAndWriteWithoutRecursion) {
  const std::string limit = std::string(512, '[') + std::string(512, ']');
  JsonPtr root = Parse(limit.c_str());
  size_t depth = 512;
  while (depth < 100000) {  // insert the tree into its own innermost array
    JsonPtr inner = root;
    for (size_t level = 1; level < depth; ++level) inner = inner->GetMutableAt(0);
    ASSERT_TRUE(inner->InsertValueAt(0, root));
    depth *= 2;
  }
  JsonPtr clone = root->Clone();
  JsonPtr holder = Parse("[0,{},0]");
  ASSERT_TRUE(holder->SetValueAt(0, clone) && holder->GetMutableAt(2)->CopyFrom(root));
  holder->GetMutableAt(1)->SetValueMember("k", root);
  EXPECT_EQ(NestingOf(Str(clone->ToJsonString())), depth);
  const std::string text = Str(holder->ToJsonString());
  EXPECT_EQ(text.size(), 6 * depth + 10) << text.substr(0, 40);
  // The parser keeps its own limit: such a text is refused, not recursed into.
  EXPECT_EQ(CapturedStdout([&] { EXPECT_TRUE(!Parse(text.c_str())); }), "Parse json error. code=16\n");
}

/// Runs `operation` with the N-th allocation failing, for N = 1, 2, ... until
/// it completes; every object it made must be gone afterwards.
template <typename Operation>
void ExpectNothingLeftAtAnyFailure(const char* what, Operation operation) {
  for (long n = 1; n < 1000; ++n) {
    const long before = g_liveObjects;
    bool failed = false;
    g_failAfter = n;
    try {
      operation();
    } catch (const std::bad_alloc&) {
      failed = true;
    }
    g_failAfter = 0;
    EXPECT_EQ(g_liveObjects - before, 0) << what << ", allocation " << n << " failing";
    if (!failed) return;
  }
  ADD_FAILURE() << what << " never completed";
}

TEST(JsonRobustness, FailedAllocationsLeaveNothingBehind) {
  const char* const text = "{\"a\":[1,{\"b\":\"a string too long to sit inline\"}],\"c\":2}";
  JsonPtr source = Parse(text);
  JsonPtr target = Parse(text)->Clone();  // its pool already holds a block, as after every copy
  JsonPtr member = Parse(text);
  CCA_Path path;
  path.MoveTo(1, 2);
  path.LineTo(3, 4);
  ExpectNothingLeftAtAnyFailure("ParseJsonString", [&] { JsonPtr r = Parse(text); });
  ExpectNothingLeftAtAnyFailure("Clone", [&] { JsonPtr r = source->Clone(); });
  ExpectNothingLeftAtAnyFailure("CopyFrom", [&] { target->CopyFrom(source); });
  ExpectNothingLeftAtAnyFailure("FromPath", [&] { JsonPtr r = VXJsonHelper::FromPath(path); });
  ExpectNothingLeftAtAnyFailure("GetMember", [&] { ConstJsonPtr r = source->GetMember("a"); });
  ExpectNothingLeftAtAnyFailure("FirstMember", [&] {
    CCA_String name;
    JsonPtr value;
    member->FirstMember(name, value);
  });
  ExpectNothingLeftAtAnyFailure("SetObjectMember", [&] { JsonPtr r = member->SetObjectMember("o"); });
  ExpectNothingLeftAtAnyFailure("ToJsonString", [&] { source->ToJsonString(); });
  EXPECT_EQ(Text(target), Text(source));
}

/// The bytes the process maps, from /proc/self/statm.
rlim_t MappedBytes() {
  unsigned long pages = 0;
  FILE* statm = std::fopen("/proc/self/statm", "r");
  if (statm != nullptr) {
    if (std::fscanf(statm, "%lu", &pages) != 1) pages = 0;
    std::fclose(statm);
  }
  return static_cast<rlim_t>(pages) * static_cast<rlim_t>(sysconf(_SC_PAGESIZE));
}

TEST(JsonRobustness, OperationsWithoutMemoryThrowBadAlloc) {
  if (kAddressSanitizer) GTEST_SKIP() << "an address-space limit cannot apply under AddressSanitizer";
  const std::string big(64 << 20, 'x');
  const std::string bigText = "[\"" + big + "\"]";
  JsonPtr object = Parse("{}");
  JsonPtr holding = Parse("[]");
  holding->InsertStringAt(0, std::string(16 << 20, '\x01').c_str());  // writes as 96 MiB of escapes
  using Operation = void (*)(const std::string&, const std::string&, JsonPtr&, JsonPtr&);
  const Operation operations[] = {
      [](const std::string& s, const std::string&, JsonPtr& o, JsonPtr&) { o->SetStringMember("k", s.c_str()); },
      [](const std::string& s, const std::string&, JsonPtr&, JsonPtr& h) { h->InsertStringAt(0, s.c_str()); },
      [](const std::string&, const std::string& t, JsonPtr&, JsonPtr&) { Parse(t.c_str()); },
      [](const std::string&, const std::string&, JsonPtr&, JsonPtr& h) { h->ToJsonString(); },
  };
  auto starved = [&](Operation operation) {
    const rlimit limit{MappedBytes() + (32 << 20), RLIM_INFINITY};
    setrlimit(RLIMIT_AS, &limit);
    try {
      operation(big, bigText, object, holding);
    } catch (const std::bad_alloc&) {
      std::_Exit(0);
    }
    std::_Exit(3);
  };
  for (const Operation operation : operations) EXPECT_EXIT(starved(operation), testing::ExitedWithCode(0), "");
}

/// A NUL-terminated text of 2^32 + 3 'x' bytes that costs one MiB of memory:
/// the same MiB of 'x' mapped 4096 times end to end, then "xxx".
class HugeText {
 public:
  HugeText() {
    const std::size_t chunk = std::size_t(1) << 20, span = std::size_t(1) << 32, page = sysconf(_SC_PAGESIZE);
    m_size = span + page;
    void* base = mmap(nullptr, m_size, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
    const int fd = memfd_create("x", 0);
    if (base == MAP_FAILED || fd < 0 || ftruncate(fd, static_cast<off_t>(chunk)) != 0) return;
    const std::string fill(chunk, 'x');
    if (write(fd, fill.data(), chunk) != static_cast<ssize_t>(chunk)) return;
    char* at = static_cast<char*>(base);
    for (std::size_t offset = 0; offset < span; offset += chunk) {
      if (mmap(at + offset, chunk, PROT_READ, MAP_SHARED | MAP_FIXED, fd, 0) == MAP_FAILED) return;
    }
    close(fd);
    if (mmap(at + span, page, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS | MAP_FIXED, -1, 0) == MAP_FAILED) return;
    std::memcpy(at + span, "xxx", 4);
    m_text = at;
  }
  ~HugeText() {
    if (m_text != nullptr) munmap(m_text, m_size);
  }
  const char* get() const { return m_text; }

 private:
  char* m_text = nullptr;
  std::size_t m_size = 0;
};

TEST(JsonRobustness, KeysAndStringsPastFourGigabytesAreRefused) {
  HugeText huge;
  const char* key = huge.get();
  ASSERT_NE(key, nullptr) << "could not map the text";
  JsonPtr object = Parse("{\"xxx\":1,\"s\":\"v\"}");
  JsonPtr array = Parse("[\"v\"]");
  EXPECT_FALSE(object->HasMember(key) || object->GetMember(key) || object->SetArrayMember(key));
  EXPECT_EQ(object->GetIntMember(key, 7), 7);
  object->SetIntMember(key, 2);
  object->SetStringMember("s", key);
  object->SetStringMember(key, "v");
  object->RemoveMember(key);
  EXPECT_FALSE(array->SetStringAt(0, key) || array->InsertStringAt(0, key));
  EXPECT_EQ(Text(object) + Text(array), "{\"xxx\":1,\"s\":\"v\"}[\"v\"]");
}

TEST(JsonRobustness, HandleConversionsAndNullResultBlocks) {
  static_assert(std::is_same<std::underlying_type_t<VXJsonType>, int>::value, "a fixed signed 32-bit type");
  static_assert(std::is_convertible<VXSharedPtr<VXJson>, VXSharedPtr<const VXJson>>::value, "adds const");
  static_assert(!std::is_constructible<VXSharedPtr<VXJson>, VXSharedPtr<const VXJson>>::value, "drops const");
  static_assert(!std::is_assignable<VXSharedPtr<VXJson>&, VXSharedPtr<const VXJson>>::value, "drops const");
  static_assert(!std::is_constructible<VXSharedPtr<int>, VXSharedPtr<long>>::value, "unrelated types");
  EXPECT_STREQ(GetJsonTypeString(static_cast<VXJsonType>(-1)), "unknown");
  JsonPtr root = Parse("{\"a\":[1]}");
  const JsonPtr& constRoot = root;
  const ConstJsonPtr nulls[] = {constRoot->GetMember("b"), constRoot->GetAt(0), root->GetMember("a")->GetAt(5),
                                root->GetMember(nullptr)};
  for (const ConstJsonPtr& none : nulls) {
    auto* block = reinterpret_cast<sp_counted_base* const*>(&none)[1];
    ASSERT_TRUE(!none && block != nullptr);
    EXPECT_EQ(typeid(*block), typeid(sp_counted_impl<const VXJson>));
  }
  EXPECT_EQ(typeid(*reinterpret_cast<sp_counted_base* const*>(&root)[1]), typeid(sp_counted_impl<VXJson>));
}

}  // namespace
