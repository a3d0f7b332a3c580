#pragma once
/// VXSharedPtr<T>: the reference-counted handle every JSON value travels in.
///
/// Header-only: the layout of the handle (object pointer, then control-block
/// pointer) and of its polymorphic control blocks is part of the interface.
/// Counting is a plain 32-bit integer, neither atomic nor locked: all copies
/// of one handle belong to one thread at a time. There are no weak
/// references and no custom deleters.

#include <type_traits>

/// The control block shared by every copy of one handle.
class sp_counted_base {
 public:
  sp_counted_base() = default;
  sp_counted_base(const sp_counted_base&) = delete;
  sp_counted_base& operator=(const sp_counted_base&) = delete;
  virtual ~sp_counted_base() {}
  /// Destroys the owned object; never throws.
  virtual void dispose() = 0;

  /// Number of handles that share this block; starts at 1.
  int useCount = 1;
};

/// The control block of a handle first made from a `T*`.
template <typename T>
class sp_counted_impl : public sp_counted_base {
 public:
  explicit sp_counted_impl(T* owned) : ownedPtr(owned) {}
  /// Leaves the object alone: deleting it is dispose()'s job.
  ~sp_counted_impl() override { ownedPtr = nullptr; }
  /// Deletes the object through its own (virtual) destructor; a null object
  /// is left alone.
  void dispose() override {
    if (ownedPtr != nullptr) delete ownedPtr;
  }

  T* ownedPtr;
};

template <typename T>
class VXSharedPtr {
 public:
  /// A handle without object and without control block.
  VXSharedPtr() : ptr(nullptr), counter(nullptr) {}
  /// Takes ownership of `p`; a block is allocated also when `p` is null, so
  /// the null handles the library returns carry a block. When the block
  /// cannot be allocated, `p` is deleted and std::bad_alloc passes through.
  explicit VXSharedPtr(T* p) : ptr(p), counter(nullptr) {
    try {
      counter = new sp_counted_impl<T>(p);
    } catch (...) {
      delete p;
      throw;
    }
  }
  VXSharedPtr(const VXSharedPtr& other) : ptr(other.ptr), counter(other.counter) { Retain(); }
  /// Shares `other`'s block, viewing its object as a `T`; only where a `U*`
  /// converts to a `T*` (adding const, or from a derived class).
  template <typename U, typename = std::enable_if_t<std::is_convertible<U*, T*>::value>>
  VXSharedPtr(const VXSharedPtr<U>& other) : ptr(other.ptr), counter(other.counter) {
    Retain();
  }
  ~VXSharedPtr() { Release(); }

  /// Counts the source first, so assigning a handle to itself is harmless.
  VXSharedPtr& operator=(const VXSharedPtr& other) {
    sp_counted_base* previous = counter;
    if (other.counter != nullptr) ++other.counter->useCount;
    ptr = other.ptr;
    counter = other.counter;
    ReleaseBlock(previous);
    return *this;
  }
  template <typename U, typename = std::enable_if_t<std::is_convertible<U*, T*>::value>>
  VXSharedPtr& operator=(const VXSharedPtr<U>& other) {
    return *this = VXSharedPtr(other);
  }

  /// The object; test the handle first.
  T* operator->() const { return ptr; }
  T& operator*() const { return *ptr; }
  /// True when the handle holds an object.
  explicit operator bool() const { return ptr != nullptr; }
  /// The object, or nullptr.
  T* get() const { return ptr; }
  /// Handles sharing this one's block; 0 without a block.
  int use_count() const { return counter != nullptr ? counter->useCount : 0; }

 private:
  template <typename U>
  friend class VXSharedPtr;

  void Retain() {
    if (counter != nullptr) ++counter->useCount;
  }
  void Release() { ReleaseBlock(counter); }
  static void ReleaseBlock(sp_counted_base* block) noexcept {
    if (block == nullptr) return;
    if (--block->useCount == 0) {
      block->dispose();
      delete block;
    }
  }

  T* ptr;
  sp_counted_base* counter;
};
