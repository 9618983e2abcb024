// Owns an AM_MEDIA_TYPE allocated in task memory (IEnumMediaTypes::Next,
// IAMStreamConfig::GetFormat and GetStreamCaps, CaptureUtil::createMediaType) and frees it,
// format block and owner reference included.
#pragma once

#include "SorvaneExport.h"
#include <strmif.h>

namespace sorvane {

class SORVANE_API MediaTypeOwner {
public:
    MediaTypeOwner();
    explicit MediaTypeOwner(AM_MEDIA_TYPE *mediaType);
    ~MediaTypeOwner();
    MediaTypeOwner(MediaTypeOwner &&other) noexcept;
    MediaTypeOwner &operator=(MediaTypeOwner &&other) noexcept;
    MediaTypeOwner(const MediaTypeOwner &) = delete;
    MediaTypeOwner &operator=(const MediaTypeOwner &) = delete;

    AM_MEDIA_TYPE *get() const { return m_mediaType; }
    AM_MEDIA_TYPE *operator->() const { return m_mediaType; }
    explicit operator bool() const { return m_mediaType != nullptr; }

    // For out-parameters: frees what is held and hands out the slot.
    AM_MEDIA_TYPE **receive();
    void reset(AM_MEDIA_TYPE *mediaType = nullptr);
    // Gives up ownership without freeing.
    AM_MEDIA_TYPE *release();

private:
    AM_MEDIA_TYPE *m_mediaType;
};

} // namespace sorvane
