// One thing a capture device can do: a stream type and feature with the standards it
// supports, e.g. "Analog TVTuning (NTSC (M) 7.5 IRE black, PAL (B))".
#pragma once

#include "CaptureFeature.h"
#include "CaptureStandard.h"
#include "CaptureStreamType.h"
#include "SorvaneExport.h"

namespace sorvane {

class SORVANE_API CaptureCapability {
public:
    CaptureCapability();
    CaptureCapability(const CaptureStreamType &type, const CaptureFeature &feature);

    const CaptureStreamType &type() const { return m_type; }
    const CaptureFeature &feature() const { return m_feature; }
    const CaptureStandard &standards() const { return m_standards; }

    void addStandard(const CaptureStandard &standard);
    kel::String toString() const;

private:
    CaptureStreamType m_type;
    CaptureFeature m_feature;
    CaptureStandard m_standards;
};

} // namespace sorvane
