#include "common/VideoFormat.h"

#include <cmath>
#include <cwchar>
#include <sstream>

#include <uuids.h>

#include "common/DeviceConfig.h"

namespace lab {

namespace {

struct SubTypeEntry {
    const wchar_t *name;
    const GUID *subType;
    WORD bitCount;
    DWORD compression;
};

const SubTypeEntry kSubTypes[] = {
    {L"RGB24", &MEDIASUBTYPE_RGB24, 24, BI_RGB},
    {L"RGB32", &MEDIASUBTYPE_RGB32, 32, BI_RGB},
    {L"YUY2", &MEDIASUBTYPE_YUY2, 16, MAKEFOURCC('Y', 'U', 'Y', '2')},
    {L"UYVY", &MEDIASUBTYPE_UYVY, 16, MAKEFOURCC('U', 'Y', 'V', 'Y')},
    {L"MJPG", &MEDIASUBTYPE_MJPG, 24, MAKEFOURCC('M', 'J', 'P', 'G')},
};

const SubTypeEntry *entryFor(const GUID &subType)
{
    for (const SubTypeEntry &entry : kSubTypes) {
        if (IsEqualGUID(*entry.subType, subType))
            return &entry;
    }
    return nullptr;
}

} // namespace

bool VideoFormat::parse(const std::wstring &text, VideoFormat &format)
{
    std::wistringstream in(text);
    std::wstring name;
    std::wstring size;
    double fps = 0;
    if (!(in >> name >> size >> fps) || fps <= 0)
        return false;
    const SubTypeEntry *entry = nullptr;
    for (const SubTypeEntry &candidate : kSubTypes) {
        if (_wcsicmp(candidate.name, name.c_str()) == 0)
            entry = &candidate;
    }
    const size_t x = size.find(L'x');
    if (!entry || x == std::wstring::npos)
        return false;
    long long width = 0;
    long long height = 0;
    if (!DeviceConfig::parseInteger(size.substr(0, x), width) ||
        !DeviceConfig::parseInteger(size.substr(x + 1), height) || width <= 0 || height <= 0 || width % 2 != 0)
        return false;
    std::wstring option;
    bool topDown = false;
    while (in >> option) {
        if (_wcsicmp(option.c_str(), L"top-down") != 0)
            return false;
        topDown = true;
    }
    format.subType = *entry->subType;
    format.width = static_cast<LONG>(width);
    format.height = static_cast<LONG>(height);
    format.topDown = topDown;
    format.fps = fps;
    return true;
}

const wchar_t *VideoFormat::subTypeName(const GUID &subType)
{
    const SubTypeEntry *entry = entryFor(subType);
    return entry ? entry->name : L"unknown";
}

std::wstring VideoFormat::describe(const AM_MEDIA_TYPE &type)
{
    if (!IsEqualGUID(type.formattype, FORMAT_VideoInfo) || type.cbFormat < sizeof(VIDEOINFOHEADER) || !type.pbFormat)
        return std::wstring(subTypeName(type.subtype)) + L" (no video info)";
    const VIDEOINFOHEADER &info = *reinterpret_cast<const VIDEOINFOHEADER *>(type.pbFormat);
    VideoFormat format;
    format.subType = type.subtype;
    format.width = info.bmiHeader.biWidth;
    format.height = std::labs(info.bmiHeader.biHeight);
    format.topDown = info.bmiHeader.biHeight < 0 && !IsEqualGUID(type.subtype, MEDIASUBTYPE_MJPG);
    format.fps = info.AvgTimePerFrame > 0 ? 10000000.0 / static_cast<double>(info.AvgTimePerFrame) : 0.0;
    return format.text();
}

REFERENCE_TIME VideoFormat::frameTime() const
{
    return static_cast<REFERENCE_TIME>(std::llround(10000000.0 / fps));
}

WORD VideoFormat::bitCount() const
{
    const SubTypeEntry *entry = entryFor(subType);
    return entry ? entry->bitCount : 0;
}

DWORD VideoFormat::compression() const
{
    const SubTypeEntry *entry = entryFor(subType);
    return entry ? entry->compression : BI_RGB;
}

bool VideoFormat::compressed() const
{
    return IsEqualGUID(subType, MEDIASUBTYPE_MJPG) != FALSE;
}

long VideoFormat::frameBytes() const
{
    const long stride = ((width * bitCount() + 31) / 32) * 4;
    return stride * height;
}

MediaType VideoFormat::mediaType() const
{
    const bool rgb = IsEqualGUID(subType, MEDIASUBTYPE_RGB24) || IsEqualGUID(subType, MEDIASUBTYPE_RGB32);
    const LONG signedHeight = rgb && topDown ? -height : height;
    return MediaType::video(subType, width, signedHeight, bitCount(), compression(), frameTime());
}

VIDEO_STREAM_CONFIG_CAPS VideoFormat::caps() const
{
    VIDEO_STREAM_CONFIG_CAPS caps = {};
    caps.guid = FORMAT_VideoInfo;
    caps.InputSize = SIZE{width, height};
    caps.MinCroppingSize = caps.InputSize;
    caps.MaxCroppingSize = caps.InputSize;
    caps.CropGranularityX = 1;
    caps.CropGranularityY = 1;
    caps.CropAlignX = 1;
    caps.CropAlignY = 1;
    caps.MinOutputSize = caps.InputSize;
    caps.MaxOutputSize = caps.InputSize;
    caps.OutputGranularityX = 1;
    caps.OutputGranularityY = 1;
    caps.MinFrameInterval = frameTime();
    caps.MaxFrameInterval = frameTime() * 10;
    const LONG bitsPerFrame = frameBytes() * 8;
    caps.MinBitsPerSecond = static_cast<LONG>(bitsPerFrame * fps / 10.0);
    caps.MaxBitsPerSecond = static_cast<LONG>(bitsPerFrame * fps);
    return caps;
}

bool VideoFormat::matches(const AM_MEDIA_TYPE &type) const
{
    if (!IsEqualGUID(type.majortype, MEDIATYPE_Video) || !IsEqualGUID(type.subtype, subType) ||
        !IsEqualGUID(type.formattype, FORMAT_VideoInfo) || type.cbFormat < sizeof(VIDEOINFOHEADER) || !type.pbFormat)
        return false;
    const VIDEOINFOHEADER &info = *reinterpret_cast<const VIDEOINFOHEADER *>(type.pbFormat);
    const MediaType own = mediaType();
    const BITMAPINFOHEADER &mine = own.videoInfo()->bmiHeader;
    return info.bmiHeader.biWidth == mine.biWidth && info.bmiHeader.biHeight == mine.biHeight;
}

std::wstring VideoFormat::text() const
{
    wchar_t rate[32] = {};
    swprintf(rate, 32, L"%gfps", std::round(fps * 100.0) / 100.0);
    std::wstring result = std::wstring(subTypeName(subType)) + L" " + std::to_wstring(width) + L"x" +
                          std::to_wstring(height) + L" " + rate;
    return topDown ? result + L" top-down" : result;
}

} // namespace lab
