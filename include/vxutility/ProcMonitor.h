#pragma once
/// The processes running on the machine with the memory each one uses, and
/// a watching loop that reports memory limits and growth for the processes a
/// derived class marks. Names are in the local encoding.

#include <condition_variable>
#include <deque>
#include <mutex>

#include <vxutility/vxutility_export.h>

/// One process, copied by value.
struct PROC_INFO_DATA {
  char proc[256];    ///< image name (executable file name), NUL-terminated
  long pId;          ///< process id
  long mem;          ///< resident memory in KB; 0 when unknown
  long max_mem;      ///< watching limit in KB; 0 or less: none
  int interval;      ///< seconds between growth reports; 0 or less: none
  long long last_time;  ///< seconds since 1970 of the last growth report; 0 before
  long add_mem;      ///< memory added in KB at the last growth report
  bool monitor;      ///< the watching loop looks at this process
  bool mem_valid;    ///< `mem` was read from the system
};

class VXUTILITY_EXPORT ProcMonitor {
 public:
  /// Fills the list with a first snapshot (empty when none can be taken).
  ProcMonitor();
  /// Copies the memory-string name and the list; each object has its own lock.
  ProcMonitor(const ProcMonitor& other);
  ProcMonitor& operator=(const ProcMonitor& other);
  virtual ~ProcMonitor();

  /// Refreshes the list, then copies the first record of `pid` into `data`:
  /// 1, or -1 (data untouched) when no such process is listed.
  int GetMemeryDataByPid(long pid, PROC_INFO_DATA& data);
  /// Refreshes the list; the memory in KB of `pid`, -1 when not listed.
  long GetMemeryDataByPid(long pid);
  /// A copy of the list as it stands, without refreshing.
  std::deque<PROC_INFO_DATA> GetQueprocData();
  /// Names the status field the watching loop reads ("VmRSS" by default);
  /// longer names are cut to 255 bytes; null is ignored.
  void SetMemeryString(char* name);
  /// Makes a running ProcMonitorFun() return 0 at the end of its pass, at
  /// once if it sleeps; when no loop runs, the next one stops after one pass.
  void StopProcMonitorFun();

 protected:
  /// Replaces `list` with a fresh snapshot: 0, or -1 (list empty) when the
  /// process table cannot be read.
  int GetAllPidData(std::deque<PROC_INFO_DATA>& list);
  /// Fresh snapshot keeping the watching settings of processes with the same
  /// id and name: 1, or -1 with the list unchanged.
  int UpdateProcData();
  /// Sets one field of the first record with data.pId: `what` bit 1 monitor,
  /// else 2 interval, else 4 max_mem. 1 (also when no record matches), -1
  /// when `what` has none of those bits.
  int SetProcMonitorDataByPid(PROC_INFO_DATA data, int what);
  /// The same, for the first record whose name equals data.proc exactly.
  int SetProcMonitorDataByPName(PROC_INFO_DATA data, int what);
  /// Copies the value of the status field `key` of `pid` (leading blanks
  /// removed, at most 255 bytes) into `value` (256 bytes): 1, or -1 with an
  /// empty value when the process or the field is missing.
  int GetStatusByPid(long pid, char* key, char* value);
  /// Ends the process by force: 1, or -1 after printing why.
  int KillProcess(long pid);
  /// The watching loop: reports, once a second, the marked processes over
  /// their limit and their growth per interval. Returns 0 once stopped.
  int ProcMonitorFun();

 private:
  void WatchOnePass();
  /// Sleeps one second unless a stop is asked for; true when stopping.
  bool SleepUnlessStopped();

  char m_szMemString[256];
  std::deque<PROC_INFO_DATA> m_queProc;
  mutable std::mutex m_lock;
  std::mutex m_stopLock;
  std::condition_variable m_stopWake;
  bool m_stopRequested;
};
