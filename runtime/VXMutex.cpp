// The recursive lock and the scoped holder.

#include <vxutility/VXMutex.h>

#include <ctime>

#include "runtime/VXMutexData.h"

VXMutex::VXMutex() : m_pData(new VXMutexData) {
  m_pData->valid.store(true);
  m_pData->cs = new std::recursive_mutex;
}

VXMutex::~VXMutex() {
  m_pData->valid.store(false);
  delete m_pData->cs;
  delete m_pData;
}

// Only the holder touches a plain lock's flag and time, under the lock
// itself, so no ordering beyond the lock's own is needed.
void VXMutex::Lock() {
  m_pData->cs->lock();
  m_pData->locked.store(true, std::memory_order_relaxed);
  m_pData->startTime.store(static_cast<std::int64_t>(std::time(nullptr)), std::memory_order_relaxed);
}

void VXMutex::Unlock() {
  m_pData->locked.store(false, std::memory_order_relaxed);
  m_pData->cs->unlock();
}

VXMutexLocker::VXMutexLocker(VXMutex* mutex) : m_pMutex(mutex) { m_pMutex->Lock(); }

VXMutexLocker::~VXMutexLocker() { m_pMutex->Unlock(); }
