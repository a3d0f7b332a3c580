#pragma once
/// A named block of memory that processes share. One process creates it
/// with a size; any process attaches to it by name. Every operation reports
/// success and keeps the message of its last failure.

#include <vxutility/vxutility_export.h>

class VXUTILITY_EXPORT VXSharedMemory {
 public:
  /// Access flags of Create() and Attach(): bit 2 read-write, else bit 1
  /// read-only, neither fails.
  enum Permission { PermissionRead = 1, PermissionWrite = 2 };

  /// Keeps a copy of `name` (which must not be null); creates nothing yet.
  explicit VXSharedMemory(const char* name);
  /// Detaches and destroys.
  ~VXSharedMemory();
  /// A block and a view are not shared between objects.
  VXSharedMemory(const VXSharedMemory&) = delete;
  VXSharedMemory& operator=(const VXSharedMemory&) = delete;

  /// Creates the block with `size` bytes, or opens the one that already
  /// exists under the name. False with "Already exists", "Invalid permission
  /// flag(%d)" or "Create shared memory error, errorcode=%u".
  bool Create(unsigned int size, unsigned int flags);
  /// Maps the whole block of the name. False with "Already attached",
  /// "Invalid permission flag(%d)", "OpenFileMapping error, errorcode=%u" or
  /// "MapViewOfFile error, errorcode=%u".
  bool Attach(unsigned int flags);
  /// Unmaps what Attach() mapped; true (also when nothing is attached). The
  /// argument has no effect.
  bool Detach(bool unused = false);
  /// Lets go of the block Create() made; true (also when none).
  bool Destroy();
  /// The mapped contents; null when not attached.
  void* GetData();
  const void* GetData() const;
  /// The message of the last failure; empty after a success.
  const char* GetErrorMessage() const;

 private:
  struct Impl;
  Impl* m_impl;
};
