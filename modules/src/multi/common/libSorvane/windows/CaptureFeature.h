// What a capture device can be used for: plain capture, TV or radio tuning, camera control.
#pragma once

#include "SorvaneExport.h"
#include <kel/String.h>

namespace sorvane {

class SORVANE_API CaptureFeature {
public:
    static const CaptureFeature &CAPTURE();
    static const CaptureFeature &TVTUNING();
    static const CaptureFeature &RADIOTUNING();
    static const CaptureFeature &WEBCAMCONTROL();

    CaptureFeature();
    explicit CaptureFeature(const kel::String &name);

    const kel::String &name() const { return m_name; }
    kel::String toString() const { return m_name; }

    bool operator==(const CaptureFeature &other) const { return m_name == other.m_name; }
    bool operator!=(const CaptureFeature &other) const { return !(*this == other); }

private:
    kel::String m_name;
};

} // namespace sorvane
