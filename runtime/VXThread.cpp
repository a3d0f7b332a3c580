// A thread of its own for a subclass's run().

#include <vxutility/VXThread.h>

#include <chrono>
#include <cstdio>
#include <thread>

#include "runtime/SleepMilliseconds.h"
#include "runtime/ThreadPlatform.h"

VXThread::VXThread() : m_tid(0), m_bRunning(false), m_hThread(nullptr) {}

VXThread::~VXThread() {
  if (m_hThread != nullptr) detail::DetachThread(m_hThread);
}

void VXThread::start() {
  if (m_bRunning.load()) return;
  // A finished thread that nobody waited for is let go before the next.
  if (m_hThread != nullptr) {
    detail::DetachThread(m_hThread);
    m_hThread = nullptr;
  }
  // Set before the thread exists, so a body that ends at once leaves it false.
  m_bRunning.store(true);
  unsigned error = 0;
  VXThreadHandle* thread = detail::StartThread(&VXThread::threadFunc, this, &error);
  if (thread == nullptr) {
    m_bRunning.store(false);
    m_tid = 0;
    return;
  }
  m_hThread = thread;
  m_tid = static_cast<unsigned int>(detail::ThreadId(thread));
}

bool VXThread::wait(unsigned int milliseconds) {
  if (!m_bRunning.load() || m_hThread == nullptr) return true;
  unsigned code = 0;
  switch (detail::WaitThread(m_hThread, milliseconds, &code)) {
    case detail::ThreadWait::kEnded:
      m_hThread = nullptr;
      return true;
    case detail::ThreadWait::kInvalidHandle:
      m_hThread = nullptr;  // freed by the wait
      std::printf("Wait thread finish fail, errorcode=%u\n", code);
      return false;
    case detail::ThreadWait::kFailed:
      std::printf("Wait thread finish fail, errorcode=%u\n", code);
      return false;
    case detail::ThreadWait::kTimedOut:
    case detail::ThreadWait::kOther:
      break;
  }
  return false;
}

bool VXThread::isRunning() const { return m_bRunning.load(); }

unsigned long VXThread::tid() const { return m_tid; }

void VXThread::sleep(float seconds) {
  milliSleep(detail::SleepMilliseconds(seconds));
}

void VXThread::milliSleep(unsigned int milliseconds) {
  std::this_thread::sleep_for(std::chrono::milliseconds(milliseconds));
}

unsigned int VXThread::threadFunc(void* self) {
  VXThread* thread = static_cast<VXThread*>(self);
  thread->run();
  thread->m_bRunning.store(false);
  return 0;
}

#if defined(_WIN32)
#include "windows/VXThread.inc"
#else
#include "unix/VXThread.inc"
#endif
