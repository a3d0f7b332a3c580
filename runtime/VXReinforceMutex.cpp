// The named lock that the watchdog releases by force after its time-out.

#include <vxutility/VXMutex.h>

#include <cstdio>
#include <cstring>

#include "runtime/MutexWatchdog.h"
#include "runtime/ReleasableLock.h"
#include "runtime/VXMutexData.h"

namespace {

constexpr std::size_t kLongestName = sizeof(VXMutexData::name) - 1;

void SetName(VXMutexData& record, const char* name) {
  if (name == nullptr) name = "VXMutex";
  std::strncpy(record.name, name, kLongestName);
  record.name[kLongestName] = '\0';
}

/// Times print as their low 32 bits, as a signed 32-bit number.
long Low32(std::int64_t seconds) { return static_cast<long>(static_cast<std::int32_t>(seconds)); }

void ReportForcedRelease(const VXMutexData& record, std::int64_t start, std::int64_t now) {
  std::printf("timeout %d Mutex %s start is %ld \n", record.timeout, record.name, Low32(start));
  std::printf("now is %ld compel release1\n", Low32(now));
}

}  // namespace

VXReinforceMutex::VXReinforceMutex(const char* name, int timeout) : m_pReinforce(new VXMutexData) {
  m_pReinforce->timeout = timeout;
  SetName(*m_pReinforce, name);
  m_pReinforce->valid.store(true);
  m_pReinforce->releasable = new ReleasableLock;
  if (timeout >= 1) MutexWatchdog::Watch(this);
}

VXReinforceMutex::~VXReinforceMutex() {
  MutexWatchdog::Forget(this);  // out of the watchdog's reach before the lock goes
  delete m_pReinforce->releasable;
  delete m_pReinforce;
}

void VXReinforceMutex::Lock() { m_pReinforce->releasable->Lock(*m_pReinforce); }

void VXReinforceMutex::Unlock() {
  const std::int64_t* forcedAt = MutexWatchdog::ForcedReleaseTime();
  if (forcedAt != nullptr) {
    m_pReinforce->releasable->ReleaseExpired(*m_pReinforce, *forcedAt, ReportForcedRelease);
  } else {
    m_pReinforce->releasable->Unlock(*m_pReinforce);
  }
}
