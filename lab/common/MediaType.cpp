#include "common/MediaType.h"

#include <cstring>
#include <utility>

namespace lab {

MediaType::MediaType()
{
    ZeroMemory(&m_type, sizeof(m_type));
}

MediaType::MediaType(const AM_MEDIA_TYPE &type) : MediaType()
{
    copy(type, m_type);
}

MediaType::MediaType(const MediaType &other) : MediaType()
{
    copy(other.m_type, m_type);
}

MediaType::MediaType(MediaType &&other) noexcept : m_type(other.m_type)
{
    ZeroMemory(&other.m_type, sizeof(other.m_type));
}

MediaType &MediaType::operator=(const MediaType &other)
{
    if (this != &other) {
        clear();
        copy(other.m_type, m_type);
    }
    return *this;
}

MediaType &MediaType::operator=(MediaType &&other) noexcept
{
    if (this != &other) {
        clear();
        m_type = other.m_type;
        ZeroMemory(&other.m_type, sizeof(other.m_type));
    }
    return *this;
}

MediaType::~MediaType()
{
    freeContents(m_type);
}

void MediaType::clear()
{
    freeContents(m_type);
    ZeroMemory(&m_type, sizeof(m_type));
}

MediaType MediaType::link(const GUID &majorType, const GUID &subType)
{
    AM_MEDIA_TYPE type = {};
    type.majortype = majorType;
    type.subtype = subType;
    type.formattype = FORMAT_None;
    type.bFixedSizeSamples = TRUE;
    type.lSampleSize = 1;
    return MediaType(type);
}

MediaType MediaType::video(const GUID &subType, LONG width, LONG height, WORD bitCount, DWORD compression,
                           REFERENCE_TIME frameTime)
{
    VIDEOINFOHEADER info = {};
    info.AvgTimePerFrame = frameTime;
    info.bmiHeader.biSize = sizeof(BITMAPINFOHEADER);
    info.bmiHeader.biWidth = width;
    info.bmiHeader.biHeight = height;
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = bitCount;
    info.bmiHeader.biCompression = compression;
    const LONG rows = height < 0 ? -height : height;
    // Uncompressed rows are DWORD aligned; a compressed frame gets room for a full RGB24 picture.
    const DWORD stride = ((static_cast<DWORD>(width) * (bitCount ? bitCount : 24) + 31) / 32) * 4;
    info.bmiHeader.biSizeImage = stride * static_cast<DWORD>(rows);
    if (frameTime > 0)
        info.dwBitRate = static_cast<DWORD>(static_cast<double>(info.bmiHeader.biSizeImage) * 8.0 * 10000000.0 /
                                            static_cast<double>(frameTime));

    AM_MEDIA_TYPE type = {};
    type.majortype = MEDIATYPE_Video;
    type.subtype = subType;
    const bool compressed = compression == MAKEFOURCC('M', 'J', 'P', 'G');
    type.bFixedSizeSamples = compressed ? FALSE : TRUE;
    type.bTemporalCompression = FALSE;
    type.lSampleSize = type.bFixedSizeSamples ? info.bmiHeader.biSizeImage : 0;
    type.formattype = FORMAT_VideoInfo;
    type.cbFormat = sizeof(info);
    type.pbFormat = reinterpret_cast<BYTE *>(&info);
    return MediaType(type);
}

const VIDEOINFOHEADER *MediaType::videoInfo() const
{
    if (!IsEqualGUID(m_type.formattype, FORMAT_VideoInfo) || m_type.cbFormat < sizeof(VIDEOINFOHEADER) ||
        !m_type.pbFormat)
        return nullptr;
    return reinterpret_cast<const VIDEOINFOHEADER *>(m_type.pbFormat);
}

VIDEOINFOHEADER *MediaType::videoInfo()
{
    return const_cast<VIDEOINFOHEADER *>(static_cast<const MediaType *>(this)->videoInfo());
}

bool MediaType::sameAs(const AM_MEDIA_TYPE &other) const
{
    return IsEqualGUID(m_type.majortype, other.majortype) && IsEqualGUID(m_type.subtype, other.subtype) &&
           IsEqualGUID(m_type.formattype, other.formattype) && m_type.cbFormat == other.cbFormat &&
           (m_type.cbFormat == 0 || std::memcmp(m_type.pbFormat, other.pbFormat, m_type.cbFormat) == 0);
}

HRESULT MediaType::copyTo(AM_MEDIA_TYPE &out) const
{
    return copy(m_type, out);
}

AM_MEDIA_TYPE *MediaType::newCopy() const
{
    AM_MEDIA_TYPE *type = static_cast<AM_MEDIA_TYPE *>(CoTaskMemAlloc(sizeof(AM_MEDIA_TYPE)));
    if (!type)
        return nullptr;
    if (FAILED(copy(m_type, *type))) {
        CoTaskMemFree(type);
        return nullptr;
    }
    return type;
}

void MediaType::freeContents(AM_MEDIA_TYPE &type)
{
    if (type.pbFormat)
        CoTaskMemFree(type.pbFormat);
    if (type.pUnk)
        type.pUnk->Release();
    type.pbFormat = nullptr;
    type.cbFormat = 0;
    type.pUnk = nullptr;
}

void MediaType::deleteType(AM_MEDIA_TYPE *type)
{
    if (!type)
        return;
    freeContents(*type);
    CoTaskMemFree(type);
}

HRESULT MediaType::copy(const AM_MEDIA_TYPE &from, AM_MEDIA_TYPE &to)
{
    to = from;
    to.pbFormat = nullptr;
    to.cbFormat = 0;
    if (from.cbFormat && from.pbFormat) {
        to.pbFormat = static_cast<BYTE *>(CoTaskMemAlloc(from.cbFormat));
        if (!to.pbFormat) {
            to.pUnk = nullptr;
            return E_OUTOFMEMORY;
        }
        std::memcpy(to.pbFormat, from.pbFormat, from.cbFormat);
        to.cbFormat = from.cbFormat;
    }
    if (to.pUnk)
        to.pUnk->AddRef();
    return S_OK;
}

} // namespace lab
