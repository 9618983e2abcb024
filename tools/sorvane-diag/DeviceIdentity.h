// What `list --json` tells about a capture device: the identity and driver facts the library
// found for it, which stay the same from run to run, and what it can do.
#pragma once

#include <CaptureDevice.h>

#include <string>
#include <vector>

namespace sorvane {
namespace diag {

class JsonWriter;

struct DeviceIdentity {
    struct Capability {
        std::wstring type;
        std::wstring feature;
        std::vector<std::wstring> standards;
    };

    static DeviceIdentity of(const CaptureDevice &device);
    // Whether one of the device's capabilities is of this stream type and feature.
    static bool has(const CaptureDevice &device, const CaptureStreamType &type, const CaptureFeature &feature);
    // "webcam", "analog tuner", "digital tuner", "analog and digital tuner" or "video capture".
    static std::wstring kindOf(const CaptureDevice &device);
    // The bus of the device's first moniker: "USB", "PCI", or "" when its path names none.
    static std::wstring busOf(const CaptureDevice &device);

    void write(JsonWriter &json) const;

    std::wstring kind;
    std::wstring instanceId;
    std::wstring vendorId;
    std::wstring deviceId;
    std::wstring subsysId;
    std::wstring revisionId;
    std::wstring bus;
    std::wstring location;
    std::wstring manufacturer;
    std::wstring driverProvider;
    std::wstring driverVersion;
    std::wstring driverDate;
    std::wstring driverInf;
    std::wstring driverFile;
    std::wstring analogFilter;
    std::wstring digitalFilter;
    std::vector<Capability> capabilities;
};

} // namespace diag
} // namespace sorvane
