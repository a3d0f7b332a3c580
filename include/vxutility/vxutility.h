#pragma once
/// Every exported header of the utility library, and the base library's.

#include <vxbase/vxbase.h>

#include <vxutility/Base64.h>
#include <vxutility/ColorString.h>
#include <vxutility/PageRange.h>
#include <vxutility/Encoding.h>
#include <vxutility/Version.h>
