#pragma once
/// The process-wide services of the base library.

#include <vxbase/ImageCodec.h>
#include <vxbase/vxbase_export.h>

class VXBASE_EXPORT CCA_Context {
 public:
  /// The one context of the process, made on first use (safe from any
  /// thread) and never null.
  static CCA_Context* Get();

  /// The codec factory; never null. Its operations may be called from
  /// several threads at once.
  CCA_CodecFactory* GetCodecFactory() { return &m_CodecFactory; }

  CCA_Context(const CCA_Context&) = delete;
  CCA_Context& operator=(const CCA_Context&) = delete;

 private:
  CCA_Context() = default;
  CCA_CodecFactory m_CodecFactory;
};
