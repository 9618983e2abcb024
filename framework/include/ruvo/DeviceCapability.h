#pragma once

#include <ruvo/RuvoString.h>
#include <cstdint>

namespace ruvo {

// A set of device capabilities; the named members each hold one.
class RUVO_API DeviceCapability {
public:
    static DeviceCapability VideoCapture();
    static DeviceCapability AudioCapture();
    static DeviceCapability AnalogTVTuner();
    static DeviceCapability FMRadioTuner();
    static DeviceCapability DigitalTVTuner();
    static DeviceCapability Webcam();
    static DeviceCapability DepthCamera();

    DeviceCapability();
    DeviceCapability operator|(const DeviceCapability &other) const;
    // True when every capability of `other` is in this set.
    bool isCapable(const DeviceCapability &other) const;
    // True when this set and `other` share a capability.
    bool intersects(const DeviceCapability &other) const;
    bool isEmpty() const;
    RuvoString toString() const;
    bool operator==(const DeviceCapability &other) const;

private:
    explicit DeviceCapability(uint32_t bits);
    uint32_t m_bits;
};

} // namespace ruvo
