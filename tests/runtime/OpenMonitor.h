#pragma once
// A monitor that opens its protected operations to the tests, as a derived
// class would.

#include <deque>

#include <vxutility/ProcMonitor.h>

class OpenMonitor : public ProcMonitor {
 public:
  using ProcMonitor::GetAllPidData;
  using ProcMonitor::GetStatusByPid;
  using ProcMonitor::KillProcess;
  using ProcMonitor::ProcMonitorFun;
  using ProcMonitor::SetProcMonitorDataByPid;
  using ProcMonitor::SetProcMonitorDataByPName;
  using ProcMonitor::UpdateProcData;

  const PROC_INFO_DATA* Find(long pid) {
    list_ = GetQueprocData();
    for (const PROC_INFO_DATA& record : list_) {
      if (record.pId == pid) return &record;
    }
    return nullptr;
  }

 private:
  std::deque<PROC_INFO_DATA> list_;
};
