#pragma once
/// A recursive lock and its scoped holder.

#include <mutex>

#include <vxbase/vxbase_export.h>

/// A recursive mutex: the thread that holds it may lock it again.
class VXBASE_EXPORT CCA_MutexObject {
 public:
  CCA_MutexObject() = default;
  CCA_MutexObject(const CCA_MutexObject&) = delete;
  CCA_MutexObject& operator=(const CCA_MutexObject&) = delete;

  /// Blocks until the lock is held.
  void Lock();
  /// Takes the lock if it is free or already ours; false otherwise.
  bool TryLock();
  /// Releases one level of the lock; the caller must hold it.
  void Unlock();

 private:
  std::recursive_mutex m_mutex;
};

/// Holds a CCA_MutexObject for the lifetime of the holder; a null mutex is
/// accepted and nothing is locked.
class VXBASE_EXPORT CCA_MutexLock {
 public:
  explicit CCA_MutexLock(CCA_MutexObject* mutex);
  explicit CCA_MutexLock(CCA_MutexObject& mutex) : CCA_MutexLock(&mutex) {}
  ~CCA_MutexLock();
  CCA_MutexLock(const CCA_MutexLock&) = delete;
  CCA_MutexLock& operator=(const CCA_MutexLock&) = delete;

 private:
  CCA_MutexObject* m_pMutex;
};
