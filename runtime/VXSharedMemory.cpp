// Named shared memory: create, attach, detach, destroy, each keeping the
// message of its last failure.

#include <vxutility/VXSharedMemory.h>

#include <cstdio>
#include <string>

#include "runtime/VXSharedMemoryDetail.h"

struct VXSharedMemory::Impl {
  detail::SharedBlock createdMapping{detail::kNoSharedBlock, false};
  detail::SharedBlock attachedMapping{detail::kNoSharedBlock, false};
  std::string name;
  void* view = nullptr;
  unsigned long long viewLength = 0;
  std::string errorMessage;
};

namespace {

constexpr std::size_t kMessageSize = 1024;

/// Read-write when bit 2 is set, else read-only with bit 1; false for neither.
bool ReadAccess(unsigned flags, bool& writable) {
  writable = (flags & VXSharedMemory::PermissionWrite) != 0;
  return writable || (flags & VXSharedMemory::PermissionRead) != 0;
}

template <typename Value>
bool Fail(std::string& message, const char* format, Value value) {
  char text[kMessageSize];
  std::snprintf(text, sizeof text, format, value);
  message = text;
  return false;
}

bool Fail(std::string& message, const char* text) {
  message = text;
  return false;
}

/// The checks Create and Attach share: empties the message, refuses a state
/// already reached and unknown flags; true with the access to use.
bool CheckRequest(std::string& message, const detail::SharedBlock& block, const char* busyMessage, unsigned flags,
                  bool& writable) {
  message.clear();
  if (block.handle != detail::kNoSharedBlock) return Fail(message, busyMessage);
  if (!ReadAccess(flags, writable)) return Fail(message, "Invalid permission flag(%d)", static_cast<int>(flags));
  return true;
}

}  // namespace

VXSharedMemory::VXSharedMemory(const char* name) : m_impl(new Impl) { m_impl->name = name ? name : ""; }

VXSharedMemory::~VXSharedMemory() {
  Detach(false);
  Destroy();
  delete m_impl;
}

bool VXSharedMemory::Create(unsigned int size, unsigned int flags) {
  Impl& d = *m_impl;
  bool writable = false;
  if (!CheckRequest(d.errorMessage, d.createdMapping, "Already exists", flags, writable)) return false;
  unsigned error = 0;
  if (!detail::CreateSharedBlock(d.name, size, writable, d.createdMapping, error)) {
    return Fail(d.errorMessage, "Create shared memory error, errorcode=%u", error);
  }
  return true;
}

bool VXSharedMemory::Attach(unsigned int flags) {
  Impl& d = *m_impl;
  bool writable = false;
  if (!CheckRequest(d.errorMessage, d.attachedMapping, "Already attached", flags, writable)) return false;
  unsigned error = 0;
  long long handle = detail::kNoSharedBlock;
  if (!detail::OpenSharedBlock(d.name, writable, handle, error)) {
    return Fail(d.errorMessage, "OpenFileMapping error, errorcode=%u", error);
  }
  if (!detail::MapSharedBlock(handle, writable, d.view, d.viewLength, error)) {
    detail::CloseSharedBlock(d.name, detail::SharedBlock{handle, false});
    d.view = nullptr;
    return Fail(d.errorMessage, "MapViewOfFile error, errorcode=%u", error);
  }
  d.attachedMapping = detail::SharedBlock{handle, false};
  return true;
}

bool VXSharedMemory::Detach(bool) {
  Impl& d = *m_impl;
  d.errorMessage.clear();
  if (d.view == nullptr) return true;
  detail::UnmapSharedBlock(d.view, d.viewLength);
  detail::CloseSharedBlock(d.name, d.attachedMapping);
  d.view = nullptr;
  d.viewLength = 0;
  d.attachedMapping = detail::SharedBlock{detail::kNoSharedBlock, false};
  return true;
}

bool VXSharedMemory::Destroy() {
  Impl& d = *m_impl;
  d.errorMessage.clear();
  if (d.createdMapping.handle == detail::kNoSharedBlock) return true;
  detail::CloseSharedBlock(d.name, d.createdMapping);
  d.createdMapping = detail::SharedBlock{detail::kNoSharedBlock, false};
  return true;
}

void* VXSharedMemory::GetData() { return m_impl->view; }

const void* VXSharedMemory::GetData() const { return m_impl->view; }

const char* VXSharedMemory::GetErrorMessage() const { return m_impl->errorMessage.c_str(); }

#if defined(_WIN32)
#include "windows/VXSharedMemory.inc"
#else
#include "unix/VXSharedMemory.inc"
#endif
