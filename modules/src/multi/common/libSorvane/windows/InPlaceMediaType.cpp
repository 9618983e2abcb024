#include "InPlaceMediaType.h"
#include "CaptureUtil.h"

namespace sorvane {

InPlaceMediaType::InPlaceMediaType() : m_mediaType() {}

InPlaceMediaType::~InPlaceMediaType()
{
    clear();
}

AM_MEDIA_TYPE *InPlaceMediaType::receive()
{
    clear();
    return &m_mediaType;
}

void InPlaceMediaType::clear()
{
    CaptureUtil::freeMediaType(m_mediaType);
    m_mediaType = AM_MEDIA_TYPE();
}

} // namespace sorvane
