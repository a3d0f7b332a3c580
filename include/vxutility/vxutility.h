#pragma once
/// Every exported header of the utility library, and the base library's.

#include <vxbase/vxbase.h>

#include <vxutility/Base64.h>
#include <vxutility/ColorString.h>
#include <vxutility/Encoding.h>
#include <vxutility/FileUtils.h>
#include <vxutility/HitTest.h>
#include <vxutility/PageRange.h>
#include <vxutility/ProcMonitor.h>
#include <vxutility/TempFile.h>
#include <vxutility/ThreadPool.h>
#include <vxutility/Version.h>
#include <vxutility/VXFileInfo.h>
#include <vxutility/VXJson.h>
#include <vxutility/VXJsonFactory.h>
#include <vxutility/VXJsonHelper.h>
#include <vxutility/VXLibrary.h>
#include <vxutility/VXMutex.h>
#include <vxutility/VXProcess.h>
#include <vxutility/VXSharedMemory.h>
#include <vxutility/VXSharedPtr.h>
#include <vxutility/VXThread.h>

