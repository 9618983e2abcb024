// Lists the Intel RealSense cameras present through the RealSense runtime, which is found
// through the SDK's registry dispatch keys and loaded at run time.
#pragma once

#include "SorvaneExport.h"

#include <kel/Array.h>
#include <rssdk/RealSenseSdk.h>

namespace sorvane {

// Replaces `devices` with the records of every camera the runtime's video-capture
// implementations report, in their order, and returns how many records there are (a camera that
// two implementations report counts twice). Returns 0 (and an empty array) before Windows 8.1,
// without a runtime, or when it fails; never throws.
SORVANE_API unsigned enumIntelRealSenseDevice(kel::Array<PXCCapture::DeviceInfo> &devices);

} // namespace sorvane
