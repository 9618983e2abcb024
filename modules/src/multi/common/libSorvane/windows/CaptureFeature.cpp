#include "CaptureFeature.h"

namespace sorvane {

const CaptureFeature& CaptureFeature::CAPTURE()
{
    static const CaptureFeature value(L"Capture");
    return value;
}

const CaptureFeature& CaptureFeature::TVTUNING()
{
    static const CaptureFeature value(L"TVTuning");
    return value;
}

const CaptureFeature& CaptureFeature::RADIOTUNING()
{
    static const CaptureFeature value(L"RadioTuning");
    return value;
}

const CaptureFeature& CaptureFeature::WEBCAMCONTROL()
{
    static const CaptureFeature value(L"WebCamControl");
    return value;
}

CaptureFeature::CaptureFeature() {}

CaptureFeature::CaptureFeature(const kel::String& name) : m_name(name) {}

} // namespace sorvane
