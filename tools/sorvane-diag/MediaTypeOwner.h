// An AM_MEDIA_TYPE that IAMStreamConfig allocated, freed with its format block when it goes
// out of scope.
#pragma once

#include <windows.h>
#include <strmif.h>

namespace sorvane {
namespace diag {

class MediaTypeOwner {
public:
    MediaTypeOwner() : m_type(nullptr) {}
    ~MediaTypeOwner() { reset(); }
    MediaTypeOwner(const MediaTypeOwner &) = delete;
    MediaTypeOwner &operator=(const MediaTypeOwner &) = delete;

    AM_MEDIA_TYPE **receive()
    {
        reset();
        return &m_type;
    }
    const AM_MEDIA_TYPE *get() const { return m_type; }

private:
    void reset()
    {
        if (!m_type)
            return;
        if (m_type->cbFormat)
            CoTaskMemFree(m_type->pbFormat);
        if (m_type->pUnk)
            m_type->pUnk->Release();
        CoTaskMemFree(m_type);
        m_type = nullptr;
    }

    AM_MEDIA_TYPE *m_type;
};

} // namespace diag
} // namespace sorvane
