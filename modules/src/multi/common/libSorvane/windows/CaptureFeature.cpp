#include "CaptureFeature.h"
#include "FixedMember.h"

namespace sorvane {

SORVANE_FIXED_MEMBER(CaptureFeature, CAPTURE, L"Capture")
SORVANE_FIXED_MEMBER(CaptureFeature, TVTUNING, L"TVTuning")
SORVANE_FIXED_MEMBER(CaptureFeature, RADIOTUNING, L"RadioTuning")
SORVANE_FIXED_MEMBER(CaptureFeature, WEBCAMCONTROL, L"WebCamControl")

CaptureFeature::CaptureFeature() {}

CaptureFeature::CaptureFeature(const kel::String &name) : m_name(name) {}

} // namespace sorvane
