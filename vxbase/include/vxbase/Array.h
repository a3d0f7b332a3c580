#pragma once
/// Growable arrays with their own lock. CCA_ArrayTemplate holds plain values
/// (new elements are zero bytes); CCA_ObjArrayTemplate holds objects (new
/// elements are zero-filled, then default-constructed, and destroyed when
/// they leave). Storage comes from CA_AllocMemory and friends.

#include <cstddef>
#include <cstring>
#include <new>
#include <utility>

#include <vxbase/Memory.h>
#include <vxbase/Mutex.h>

namespace vxbase_detail {

/// The number of elements to allocate when `newCount` does not fit: the
/// grow-by, or count / 8 clamped to 4 ... 1024 when it is 0, but at least
/// `newCount`.
inline int GrownCapacity(int allocated, int count, int growBy, int newCount) {
  int step = growBy;
  if (step <= 0) {
    step = count / 8;
    if (step < 4) step = 4;
    if (step > 1024) step = 1024;
  }
  long long grown = static_cast<long long>(allocated) + step;
  if (grown < newCount) grown = newCount;
  if (grown > 0x7fffffff) grown = newCount;
  return static_cast<int>(grown);
}

/// Element handling of the two array kinds.
template <typename T, bool kObjects>
struct ElementPolicy;

template <typename T>
struct ElementPolicy<T, false> {
  static void Construct(T* at, int count) { std::memset(static_cast<void*>(at), 0, sizeof(T) * count); }
  static void Destroy(T*, int) {}
  static void CopyConstruct(T* to, const T* from, int count) {
    if (count > 0) std::memcpy(static_cast<void*>(to), from, sizeof(T) * count);
  }
  /// Grows the block in place where the allocator can.
  static T* Relocate(T* data, int, int capacity) {
    return static_cast<T*>(CA_ReallocMemory(data, sizeof(T) * static_cast<std::size_t>(capacity)));
  }
};

template <typename T>
struct ElementPolicy<T, true> {
  static void Construct(T* at, int count) {
    std::memset(static_cast<void*>(at), 0, sizeof(T) * count);
    for (int i = 0; i < count; ++i) new (at + i) T();
  }
  static void Destroy(T* at, int count) {
    for (int i = 0; i < count; ++i) at[i].~T();
  }
  static void CopyConstruct(T* to, const T* from, int count) {
    for (int i = 0; i < count; ++i) new (to + i) T(from[i]);
  }
  /// Objects move into a new block: they may point into themselves.
  static T* Relocate(T* data, int count, int capacity) {
    T* block = static_cast<T*>(CA_AllocMemory(sizeof(T) * static_cast<std::size_t>(capacity)));
    if (block == nullptr) return nullptr;
    for (int i = 0; i < count; ++i) {
      new (block + i) T(std::move(data[i]));
      data[i].~T();
    }
    CA_FreeMemory(data);
    return block;
  }
};

/// The shared body of both array kinds. Every operation runs under the
/// array's own recursive lock.
template <typename T, bool kObjects>
class ArrayBase {
  using Policy = ElementPolicy<T, kObjects>;

 public:
  explicit ArrayBase(int growBy = 0) : m_nGrowBy(growBy < 0 ? 0 : growBy) {}
  ArrayBase(const ArrayBase& other) : m_nGrowBy(other.m_nGrowBy) { CopyFrom(other); }
  ArrayBase(ArrayBase&& other) noexcept : m_nGrowBy(other.m_nGrowBy) { TakeFrom(other); }
  ~ArrayBase() { Release(); }

  ArrayBase& operator=(const ArrayBase& other) {
    if (this != &other) {
      CCA_MutexLock lock(m_lock);
      Release();
      m_nGrowBy = other.m_nGrowBy;
      CopyFrom(other);
    }
    return *this;
  }
  ArrayBase& operator=(ArrayBase&& other) noexcept {
    if (this != &other) {
      CCA_MutexLock lock(m_lock);
      Release();
      m_nGrowBy = other.m_nGrowBy;
      TakeFrom(other);
    }
    return *this;
  }

  int GetSize() const { return m_nSize; }
  int GetCount() const { return m_nSize; }
  bool IsEmpty() const { return m_nSize == 0; }
  /// The number of elements the current storage holds.
  int GetAllocatedCount() const { return m_nMaxSize; }
  int GetGrowBy() const { return m_nGrowBy; }
  int GetUnitSize() const { return m_nUnitSize; }

  /// Resizes to `newCount` elements; `growBy` -1 keeps the stored grow-by.
  /// New elements are zero-filled (objects then default-constructed).
  /// Returns false, with the array unchanged, when `newCount` is negative or
  /// memory cannot be obtained.
  bool SetSize(int newCount, int growBy = -1) {
    CCA_MutexLock lock(m_lock);
    return Resize(newCount, growBy);
  }

  /// Appends a copy of `value`; returns its index, or -1 when memory cannot
  /// be obtained.
  int Add(const T& value) {
    CCA_MutexLock lock(m_lock);
    if (IsInside(&value)) {
      T copy(value);  // growing may move the element we were given
      return Add(copy);
    }
    const int index = m_nSize;
    if (!Resize(index + 1, -1)) return -1;
    m_pData[index] = value;
    return index;
  }

  /// Stores `value` at `index`; false when `index` is out of range.
  bool SetAt(int index, const T& value) {
    CCA_MutexLock lock(m_lock);
    if (index < 0 || index >= m_nSize) return false;
    m_pData[index] = value;
    return true;
  }

  /// Removes `count` elements from `index` (clamped); false when `index` is
  /// out of range.
  bool RemoveAt(int index, int count = 1) {
    CCA_MutexLock lock(m_lock);
    if (index < 0 || index >= m_nSize || count <= 0) return false;
    if (count > m_nSize - index) count = m_nSize - index;
    for (int i = index; i + count < m_nSize; ++i) m_pData[i] = std::move(m_pData[i + count]);
    return Resize(m_nSize - count, -1);
  }

  /// Frees every element and the storage; the grow-by is kept.
  void RemoveAll() {
    CCA_MutexLock lock(m_lock);
    Release();
  }

  /// The element at `index` by value; the caller keeps `index` in range.
  T GetAt(int index) const { return m_pData[index]; }
  T& operator[](int index) { return m_pData[index]; }
  const T& operator[](int index) const { return m_pData[index]; }
  T& ElementAt(int index) { return m_pData[index]; }
  /// The elements, or nullptr when the array holds no storage.
  T* GetData() { return m_pData; }
  const T* GetData() const { return m_pData; }

  /// The array's lock, for callers that read several elements as one step.
  CCA_MutexObject& GetLock() const { return m_lock; }

 private:
  // SetSize with the lock already held: appends take the lock once.
  bool Resize(int newCount, int growBy) {
    if (newCount < 0) return false;
    if (growBy >= 0) m_nGrowBy = growBy;
    if (newCount == 0) {
      Release();
      return true;
    }
    if (newCount > m_nMaxSize) {
      int capacity = GrownCapacity(m_nMaxSize, m_nSize, m_nGrowBy, newCount);
      if (static_cast<std::size_t>(capacity) > static_cast<std::size_t>(-1) / sizeof(T)) return false;
      T* block = Policy::Relocate(m_pData, m_nSize, capacity);
      if (block == nullptr) return false;
      m_pData = block;
      m_nMaxSize = capacity;
    }
    if (newCount > m_nSize) {
      Policy::Construct(m_pData + m_nSize, newCount - m_nSize);
    } else {
      Policy::Destroy(m_pData + newCount, m_nSize - newCount);
    }
    m_nSize = newCount;
    return true;
  }

  bool IsInside(const T* p) const { return m_pData != nullptr && p >= m_pData && p < m_pData + m_nSize; }

  void Release() {
    Policy::Destroy(m_pData, m_nSize);
    CA_FreeMemory(m_pData);
    m_pData = nullptr;
    m_nSize = 0;
    m_nMaxSize = 0;
  }

  void CopyFrom(const ArrayBase& other) {
    CCA_MutexLock lock(other.m_lock);
    if (other.m_nSize == 0) return;
    T* block = static_cast<T*>(CA_AllocMemory(sizeof(T) * static_cast<std::size_t>(other.m_nSize)));
    if (block == nullptr) return;
    Policy::CopyConstruct(block, other.m_pData, other.m_nSize);
    m_pData = block;
    m_nSize = other.m_nSize;
    m_nMaxSize = other.m_nSize;
  }

  void TakeFrom(ArrayBase& other) {
    CCA_MutexLock lock(other.m_lock);
    m_pData = other.m_pData;
    m_nSize = other.m_nSize;
    m_nMaxSize = other.m_nMaxSize;
    other.m_pData = nullptr;
    other.m_nSize = 0;
    other.m_nMaxSize = 0;
  }

  mutable CCA_MutexObject m_lock;
  T* m_pData = nullptr;
  int m_nSize = 0;
  int m_nUnitSize = static_cast<int>(sizeof(T));
  int m_nMaxSize = 0;
  int m_nGrowBy = 0;
};

}  // namespace vxbase_detail

/// Growable array of plain values (copied byte for byte, zero-filled).
template <typename T>
class CCA_ArrayTemplate : public vxbase_detail::ArrayBase<T, false> {
 public:
  using vxbase_detail::ArrayBase<T, false>::ArrayBase;
  CCA_ArrayTemplate() = default;
};

/// Growable array of objects, constructed and destroyed one by one.
template <typename T>
class CCA_ObjArrayTemplate : public vxbase_detail::ArrayBase<T, true> {
 public:
  using vxbase_detail::ArrayBase<T, true>::ArrayBase;
  CCA_ObjArrayTemplate() = default;
};
