// The framework's device records of the system's digital (BDA) tuners, one per tuner filter
// of the BDA network tuner category, for the digital scans: VideoCapture and DigitalTVTuner,
// the locator of the tuner's device path, and the "DeviceLocator" and "DigitalFriendlyName"
// the library matches the device's BDA filters by.
#pragma once

#include <ruvo/DiagDevice.h>

#include <vector>

namespace sorvane {
namespace diag {

class DigitalDeviceCatalog {
public:
    // In the enumerator's order; empty when the system has none. COM must be initialised.
    static std::vector<ruvo::DiagDevice> enumerate();
};

} // namespace diag
} // namespace sorvane
