#pragma once

#include <vxutility/vxutility_export.h>

/// The library's version text, "5.0.23.1024.1305"; never null.
VXUTILITY_EXPORT const char* GetUtilityVersion();
