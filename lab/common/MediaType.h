// Owns one AM_MEDIA_TYPE with its format block and its reference-counted pUnk, so no lab code
// frees a media type by hand.
#pragma once

#include <windows.h>
#include <dshow.h>

namespace lab {

class MediaType {
public:
    MediaType();
    explicit MediaType(const AM_MEDIA_TYPE &type);
    MediaType(const MediaType &other);
    MediaType(MediaType &&other) noexcept;
    MediaType &operator=(const MediaType &other);
    MediaType &operator=(MediaType &&other) noexcept;
    ~MediaType();

    // A video type with a VIDEOINFOHEADER; a negative height means top-down rows.
    static MediaType video(const GUID &subType, LONG width, LONG height, WORD bitCount, DWORD compression,
                           REFERENCE_TIME frameTime);

    // The type of a pin that links two filters rather than carrying samples: fixed one-byte
    // samples, no format block.
    static MediaType link(const GUID &majorType, const GUID &subType = GUID_NULL);

    const AM_MEDIA_TYPE &get() const { return m_type; }
    const AM_MEDIA_TYPE *operator->() const { return &m_type; }
    bool empty() const { return IsEqualGUID(m_type.majortype, GUID_NULL) != FALSE; }
    void clear();

    // The VIDEOINFOHEADER, or null for another format type.
    const VIDEOINFOHEADER *videoInfo() const;
    VIDEOINFOHEADER *videoInfo();

    bool sameAs(const AM_MEDIA_TYPE &other) const;

    // Deep copy into caller-owned storage (the out-parameter of ConnectionMediaType, GetFormat).
    HRESULT copyTo(AM_MEDIA_TYPE &out) const;
    // A CoTaskMem-allocated copy, as IEnumMediaTypes and IAMStreamConfig hand out.
    AM_MEDIA_TYPE *newCopy() const;

    // Frees what copyTo or newCopy handed out; these are what callers use on types they receive.
    static void freeContents(AM_MEDIA_TYPE &type);
    static void deleteType(AM_MEDIA_TYPE *type);

private:
    static HRESULT copy(const AM_MEDIA_TYPE &from, AM_MEDIA_TYPE &to);
    AM_MEDIA_TYPE m_type;
};

} // namespace lab
