#pragma once
// The RapidJSON types a tree is stored in: UTF-8 values whose strings,
// elements and members live in a pool of 64 KiB blocks.

#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <new>

#include <rapidjson/document.h>

/// The C runtime's allocator, except that running out of memory throws
/// std::bad_alloc: RapidJSON stores into whatever it is given, so a null
/// block must never reach it.
class ThrowingAllocator {
 public:
  static const bool kNeedFree = true;
  void* Malloc(std::size_t size) {
    if (size == 0) return nullptr;
    return Checked(std::malloc(size));
  }
  void* Realloc(void* original, std::size_t, std::size_t newSize) {
    if (newSize == 0) {
      std::free(original);
      return nullptr;
    }
    return Checked(std::realloc(original, newSize));
  }
  static void Free(void* p) { std::free(p); }

 private:
  static void* Checked(void* p) {
    if (p == nullptr) throw std::bad_alloc();
    return p;
  }
};

using JsonPool = rapidjson::MemoryPoolAllocator<ThrowingAllocator>;
using JsonValue = rapidjson::GenericValue<rapidjson::UTF8<>, JsonPool>;
using JsonDocument = rapidjson::GenericDocument<rapidjson::UTF8<>, JsonPool, ThrowingAllocator>;

/// Containers nested deeper than this are refused by the parser, so its
/// recursive reader stays within a bounded stack. Nothing else recurses.
constexpr unsigned kJsonMaxDepth = 512;

/// The longest string or key a value can hold (its length is 32 bits).
constexpr std::size_t kJsonMaxLength = 0xFFFFFFFFu;

/// The length of the NUL-terminated `text`, or false when it is longer than
/// a value can hold.
inline bool JsonLength(const char* text, rapidjson::SizeType& length) {
  const std::size_t measured = std::strlen(text);
  if (measured > kJsonMaxLength) return false;
  length = static_cast<rapidjson::SizeType>(measured);
  return true;
}
