#pragma once
// Counts every heap allocation of the process (malloc, calloc, realloc and so
// operator new) by standing in front of the C library's allocator. Include
// from exactly one file of a benchmark program. Sanitizer builds keep their
// own allocator and count nothing.

#include <cstddef>

namespace allocation_counter {
inline long g_count = 0;
inline bool g_counting = false;

/// Allocations made while `work` ran.
template <typename Work>
long Count(Work&& work) {
  g_count = 0;
  g_counting = true;
  work();
  g_counting = false;
  return g_count;
}
}  // namespace allocation_counter

#if !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__) && defined(__GLIBC__)
extern "C" {
void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_realloc(void* block, std::size_t size);

void* malloc(std::size_t size) {
  if (allocation_counter::g_counting) ++allocation_counter::g_count;
  return __libc_malloc(size);
}
void* calloc(std::size_t count, std::size_t size) {
  if (allocation_counter::g_counting) ++allocation_counter::g_count;
  return __libc_calloc(count, size);
}
void* realloc(void* block, std::size_t size) {
  if (allocation_counter::g_counting) ++allocation_counter::g_count;
  return __libc_realloc(block, size);
}
}
#endif
