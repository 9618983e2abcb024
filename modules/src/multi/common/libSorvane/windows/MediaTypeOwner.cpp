#include "MediaTypeOwner.h"
#include "CaptureUtil.h"

namespace sorvane {

MediaTypeOwner::MediaTypeOwner() : m_mediaType(nullptr) {}

MediaTypeOwner::MediaTypeOwner(AM_MEDIA_TYPE *mediaType) : m_mediaType(mediaType) {}

MediaTypeOwner::~MediaTypeOwner()
{
    reset();
}

MediaTypeOwner::MediaTypeOwner(MediaTypeOwner &&other) noexcept : m_mediaType(other.release()) {}

MediaTypeOwner &MediaTypeOwner::operator=(MediaTypeOwner &&other) noexcept
{
    if (this != &other)
        reset(other.release());
    return *this;
}

AM_MEDIA_TYPE **MediaTypeOwner::receive()
{
    reset();
    return &m_mediaType;
}

void MediaTypeOwner::reset(AM_MEDIA_TYPE *mediaType)
{
    AM_MEDIA_TYPE *old = m_mediaType;
    m_mediaType = mediaType;
    CaptureUtil::deleteMediaType(old);
}

AM_MEDIA_TYPE *MediaTypeOwner::release()
{
    AM_MEDIA_TYPE *mediaType = m_mediaType;
    m_mediaType = nullptr;
    return mediaType;
}

} // namespace sorvane
