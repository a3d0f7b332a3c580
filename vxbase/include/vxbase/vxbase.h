#pragma once
/// Every header of the base library.

#include <vxbase/Array.h>
#include <vxbase/Context.h>
#include <vxbase/Device.h>
#include <vxbase/Dib.h>
#include <vxbase/Font.h>
#include <vxbase/Geometry.h>
#include <vxbase/ImageCodec.h>
#include <vxbase/ImageFormat.h>
#include <vxbase/Matrix.h>
#include <vxbase/Memory.h>
#include <vxbase/Mutex.h>
#include <vxbase/Path.h>
#include <vxbase/Stream.h>
#include <vxbase/String.h>
#include <vxbase/StringConverter.h>
#include <vxbase/Types.h>
