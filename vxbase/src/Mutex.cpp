#include <vxbase/Mutex.h>

void CCA_MutexObject::Lock() { m_mutex.lock(); }
bool CCA_MutexObject::TryLock() { return m_mutex.try_lock(); }
void CCA_MutexObject::Unlock() { m_mutex.unlock(); }

CCA_MutexLock::CCA_MutexLock(CCA_MutexObject* mutex) : m_pMutex(mutex) {
  if (m_pMutex) m_pMutex->Lock();
}

CCA_MutexLock::~CCA_MutexLock() {
  if (m_pMutex) m_pMutex->Unlock();
}
