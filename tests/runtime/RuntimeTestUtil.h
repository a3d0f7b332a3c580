#pragma once
// Helpers shared by the thread, pool and mutex tests.

#include <chrono>
#include <condition_variable>
#include <mutex>

/// A door that threads wait at until it is opened once.
class Gate {
 public:
  void Open() {
    std::lock_guard<std::mutex> hold(m_mutex);
    m_open = true;
    m_changed.notify_all();
  }
  void Wait() {
    std::unique_lock<std::mutex> hold(m_mutex);
    m_changed.wait(hold, [this] { return m_open; });
  }

 private:
  std::mutex m_mutex;
  std::condition_variable m_changed;
  bool m_open = false;
};

/// A count that threads raise and others wait on, with a generous limit so a
/// lost wake-up fails the test instead of hanging it.
class Counter {
 public:
  void Add() {
    std::lock_guard<std::mutex> hold(m_mutex);
    ++m_count;
    m_changed.notify_all();
  }
  bool WaitFor(int count, std::chrono::milliseconds limit = std::chrono::seconds(20)) {
    std::unique_lock<std::mutex> hold(m_mutex);
    return m_changed.wait_for(hold, limit, [&] { return m_count >= count; });
  }
  int Value() {
    std::lock_guard<std::mutex> hold(m_mutex);
    return m_count;
  }

 private:
  std::mutex m_mutex;
  std::condition_variable m_changed;
  int m_count = 0;
};

inline long long MillisecondsSince(std::chrono::steady_clock::time_point start) {
  return std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::steady_clock::now() - start).count();
}
