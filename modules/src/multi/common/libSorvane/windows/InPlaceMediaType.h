// An AM_MEDIA_TYPE that a COM call fills in place (IPin::ConnectionMediaType,
// ISampleGrabber::GetConnectedMediaType). Frees the format block and owner reference the
// call handed over when it goes out of scope or is filled again.
#pragma once

#include "SorvaneExport.h"
#include <strmif.h>

namespace sorvane {

class SORVANE_API InPlaceMediaType {
public:
    InPlaceMediaType();
    ~InPlaceMediaType();
    InPlaceMediaType(const InPlaceMediaType &) = delete;
    InPlaceMediaType &operator=(const InPlaceMediaType &) = delete;

    // For the call to fill: frees what is held and hands out a zeroed structure.
    AM_MEDIA_TYPE *receive();
    const AM_MEDIA_TYPE &get() const { return m_mediaType; }
    const AM_MEDIA_TYPE *operator->() const { return &m_mediaType; }

private:
    void clear();

    AM_MEDIA_TYPE m_mediaType;
};

} // namespace sorvane
