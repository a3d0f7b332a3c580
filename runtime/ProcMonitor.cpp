// The process list with memory per process, the watching settings carried
// across refreshes, and the watching loop.

#include <vxutility/ProcMonitor.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>

#include "runtime/ProcMonitorDetail.h"

namespace {

constexpr int kSelectMonitor = 1;
constexpr int kSelectInterval = 2;
constexpr int kSelectMaxMem = 4;
constexpr auto kPassPause = std::chrono::milliseconds(1000);

bool IsContinuationByte(char c) { return (static_cast<unsigned char>(c) & 0xC0) == 0x80; }

/// The first record for which `matches` holds; end() when none.
template <typename Match>
std::deque<PROC_INFO_DATA>::iterator FindRecord(std::deque<PROC_INFO_DATA>& list, Match matches) {
  for (auto it = list.begin(); it != list.end(); ++it) {
    if (matches(*it)) return it;
  }
  return list.end();
}

/// Sets the field `what` selects: bit 1, else 2, else 4. False for none.
bool SetSelectedField(PROC_INFO_DATA& record, const PROC_INFO_DATA& data, int what) {
  if (what & kSelectMonitor) {
    record.monitor = data.monitor;
  } else if (what & kSelectInterval) {
    record.interval = data.interval;
  } else if (what & kSelectMaxMem) {
    record.max_mem = data.max_mem;
  } else {
    return false;
  }
  return true;
}

bool HasSelector(int what) { return (what & (kSelectMonitor | kSelectInterval | kSelectMaxMem)) != 0; }

}  // namespace

namespace detail {

void CopyCut(char* field, std::size_t capacity, const char* text, std::size_t length) {
  if (length >= capacity) {
    length = capacity - 1;
    while (length > 0 && IsContinuationByte(text[length])) --length;
  }
  std::memcpy(field, text, length);
  field[length] = '\0';
}

}  // namespace detail

ProcMonitor::ProcMonitor() : m_stopRequested(false) {
  SetMemeryString(const_cast<char*>("VmRSS"));
  GetAllPidData(m_queProc);
}

ProcMonitor::ProcMonitor(const ProcMonitor& other) : m_stopRequested(false) {
  std::lock_guard<std::mutex> hold(other.m_lock);
  std::memcpy(m_szMemString, other.m_szMemString, sizeof m_szMemString);
  m_queProc = other.m_queProc;
}

ProcMonitor& ProcMonitor::operator=(const ProcMonitor& other) {
  if (this == &other) return *this;
  char name[sizeof m_szMemString];
  std::deque<PROC_INFO_DATA> list;
  {
    std::lock_guard<std::mutex> hold(other.m_lock);
    std::memcpy(name, other.m_szMemString, sizeof name);
    list = other.m_queProc;
  }
  std::lock_guard<std::mutex> hold(m_lock);
  std::memcpy(m_szMemString, name, sizeof name);
  m_queProc.swap(list);
  return *this;
}

ProcMonitor::~ProcMonitor() = default;

int ProcMonitor::GetMemeryDataByPid(long pid, PROC_INFO_DATA& data) {
  UpdateProcData();
  std::lock_guard<std::mutex> hold(m_lock);
  const auto found = FindRecord(m_queProc, [pid](const PROC_INFO_DATA& r) { return r.pId == pid; });
  if (found == m_queProc.end()) return -1;
  data = *found;
  return 1;
}

long ProcMonitor::GetMemeryDataByPid(long pid) {
  UpdateProcData();
  std::lock_guard<std::mutex> hold(m_lock);
  const auto found = FindRecord(m_queProc, [pid](const PROC_INFO_DATA& r) { return r.pId == pid; });
  return found == m_queProc.end() ? -1 : found->mem;
}

std::deque<PROC_INFO_DATA> ProcMonitor::GetQueprocData() {
  std::lock_guard<std::mutex> hold(m_lock);
  return m_queProc;
}

void ProcMonitor::SetMemeryString(char* name) {
  if (name == nullptr) return;
  std::lock_guard<std::mutex> hold(m_lock);
  detail::CopyCut(m_szMemString, sizeof m_szMemString, name, std::strlen(name));
}

void ProcMonitor::StopProcMonitorFun() {
  {
    std::lock_guard<std::mutex> hold(m_stopLock);
    m_stopRequested = true;
  }
  m_stopWake.notify_all();
}

int ProcMonitor::GetAllPidData(std::deque<PROC_INFO_DATA>& list) {
  list.clear();
  if (detail::ListProcesses(list)) return 0;
  list.clear();
  std::printf("Create Toolhelp32Snapshot Error!");
  return -1;
}

int ProcMonitor::UpdateProcData() {
  std::deque<PROC_INFO_DATA> fresh;
  if (GetAllPidData(fresh) != 0) return -1;
  std::lock_guard<std::mutex> hold(m_lock);
  for (PROC_INFO_DATA& record : fresh) {
    const auto old = FindRecord(m_queProc, [&record](const PROC_INFO_DATA& r) {
      return r.pId == record.pId && std::strcmp(r.proc, record.proc) == 0;
    });
    if (old == m_queProc.end()) continue;
    record.monitor = old->monitor;
    record.last_time = old->last_time;
    record.interval = old->interval;
    record.max_mem = old->max_mem;
  }
  m_queProc.swap(fresh);
  return 1;
}

int ProcMonitor::SetProcMonitorDataByPid(PROC_INFO_DATA data, int what) {
  if (!HasSelector(what)) return -1;
  std::lock_guard<std::mutex> hold(m_lock);
  const auto found = FindRecord(m_queProc, [&data](const PROC_INFO_DATA& r) { return r.pId == data.pId; });
  if (found != m_queProc.end()) SetSelectedField(*found, data, what);
  return 1;
}

int ProcMonitor::SetProcMonitorDataByPName(PROC_INFO_DATA data, int what) {
  if (!HasSelector(what)) return -1;
  data.proc[sizeof data.proc - 1] = '\0';
  std::lock_guard<std::mutex> hold(m_lock);
  const auto found =
      FindRecord(m_queProc, [&data](const PROC_INFO_DATA& r) { return std::strcmp(r.proc, data.proc) == 0; });
  if (found != m_queProc.end()) SetSelectedField(*found, data, what);
  return 1;
}

int ProcMonitor::GetStatusByPid(long pid, char* key, char* value) {
  if (value == nullptr) return -1;
  value[0] = '\0';
  if (key == nullptr || *key == '\0') return -1;
  return detail::ReadStatusField(pid, key, value) ? 1 : -1;
}

int ProcMonitor::KillProcess(long pid) {
  unsigned error = 0;
  bool ended = detail::ProbeProcess(pid, error);
  if (!ended) detail::PrintWideDiagnostic(stdout, L"\nOpen Process fAiled:%d\n", static_cast<int>(error));
  if (!detail::EndProcess(pid, error)) {
    detail::PrintWideDiagnostic(stdout, L"%d", static_cast<int>(error));
    ended = false;
  }
  return ended ? 1 : -1;
}

int ProcMonitor::ProcMonitorFun() {
  for (;;) {
    WatchOnePass();
    if (SleepUnlessStopped()) return 0;
  }
}

void ProcMonitor::WatchOnePass() {
  std::lock_guard<std::mutex> hold(m_lock);
  for (PROC_INFO_DATA& record : m_queProc) {
    if (!record.monitor) continue;
    char value[256];
    GetStatusByPid(record.pId, m_szMemString, value);
    const long reading = std::atol(value);
    if (record.max_mem > 0 && reading > record.max_mem) {
      std::printf("proc:%s,pId:%ld,mem:%ld greater than max_mem:%ld\n", record.proc, record.pId, reading,
                  record.max_mem);
    }
    const long long now = static_cast<long long>(std::time(nullptr));
    if (record.interval > 0 && now - record.last_time >= record.interval) {
      record.add_mem = reading - record.mem;
      std::printf("proc:%s,pId:%ld,mem:%ld,%d second memery add %ldkb\n", record.proc, record.pId, reading,
                  record.interval, record.add_mem);
      // The baseline moves only with a report, so each report covers a
      // whole interval.
      record.last_time = now;
      record.mem = reading;
    }
  }
  std::fflush(stdout);
}

bool ProcMonitor::SleepUnlessStopped() {
  std::unique_lock<std::mutex> hold(m_stopLock);
  if (!m_stopWake.wait_for(hold, kPassPause, [this] { return m_stopRequested; })) return false;
  m_stopRequested = false;
  return true;
}

#if defined(_WIN32)
#include "windows/ProcMonitor.inc"
#else
#include "unix/ProcMonitor.inc"
#endif
