#include "CaptureCapability.h"

namespace sorvane {

CaptureCapability::CaptureCapability() {}

CaptureCapability::CaptureCapability(const CaptureStreamType &type, const CaptureFeature &feature)
    : m_type(type), m_feature(feature)
{
}

void CaptureCapability::addStandard(const CaptureStandard &standard)
{
    m_standards += standard;
}

kel::String CaptureCapability::toString() const
{
    return m_type.name() + L" " + m_feature.name() + L" (" + m_standards.toString() + L")";
}

} // namespace sorvane
