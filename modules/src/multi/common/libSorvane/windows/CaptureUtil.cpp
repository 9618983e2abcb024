#include "CaptureUtil.h"
#include "DeviceIdParser.h"
#include "CaptureLog.h"
#include "CoTaskMemPtr.h"
#include "ErrorHandler.h"
#include "GuidNameTable.h"
#include "InPlaceMediaType.h"
#include "ScopedHandle.h"
#include <kel/AssertionFailure.h>
#include <kel/KELLocale.h>
#include <amvideo.h>
#include <dvdmedia.h>
#include <mmreg.h>
#include <tlhelp32.h>
#include <cstring>

SORVANE_LOG_CATEGORY(SORVANE_UTIL_CATEGORY)

namespace sorvane {

namespace {

// ERROR_GEN_FAILURE: the low byte of the code Run fails with while FastAccess holds the camera.
const long kGeneralFailureLowByte = 0x1F;

struct LanguageCountry {
    const wchar_t *language;
    int countryCode;
};

// First match wins. "zh-tw" maps to 852 on purpose: the tuners have always been given it.
const LanguageCountry kLanguageCountries[] = {
    {L"en", 1},  {L"zh-cn", 86}, {L"zh-tw", 852}, {L"cs", 420}, {L"da", 45}, {L"nl", 31}, {L"fi", 358}, {L"fr", 33},
    {L"de", 49}, {L"el", 30},    {L"hu", 36},     {L"is", 354}, {L"it", 39}, {L"ja", 81}, {L"ko", 82},  {L"no", 47},
    {L"pl", 48}, {L"pt", 351},   {L"ru", 7},      {L"sk", 421}, {L"es", 34}, {L"sv", 46}, {L"tr", 90},
};
const int kFallbackCountryCode = 1;

// Subtypes made from a FOURCC share this GUID apart from the first field.
const GUID kFourccBase = {0x00000000, 0x0000, 0x0010, {0x80, 0x00, 0x00, 0xAA, 0x00, 0x38, 0x9B, 0x71}};

// The pin's name, direction and filter; the filter reference is owned by `filter`.
HRESULT queryPin(IPin *pin, kel::String &name, PIN_DIRECTION &direction, CComPtr<IBaseFilter> &filter)
{
    PIN_INFO info = {};
    const HRESULT hr = pin->QueryPinInfo(&info);
    if (FAILED(hr))
        return hr;
    filter.Attach(info.pFilter);
    name = kel::String(info.achName);
    direction = info.dir;
    return hr;
}

kel::String quoted(const kel::String &text)
{
    return kel::String(L"\"") + text + L"\"";
}

kel::String fourccName(const GUID &id)
{
    GUID base = id;
    base.Data1 = 0;
    if (!IsEqualGUID(base, kFourccBase))
        return kel::String();
    kel::String code;
    for (int shift = 0; shift < 32; shift += 8) {
        const wchar_t c = static_cast<wchar_t>((id.Data1 >> shift) & 0xFF);
        if (c < 0x20 || c > 0x7E)
            return kel::String();
        code += c;
    }
    return kel::String(L"FOURCC ") + code;
}

kel::String frameRate(REFERENCE_TIME averageTimePerFrame)
{
    if (averageTimePerFrame <= 0)
        return kel::String();
    return kel::String(L", ") + kel::String::fromDouble(10000000.0 / averageTimePerFrame, 2) + L" fps";
}

kel::String videoDetails(const BITMAPINFOHEADER &header, REFERENCE_TIME averageTimePerFrame)
{
    return kel::String(L", ") + kel::String::fromInt(header.biWidth) + L"x" + kel::String::fromInt(header.biHeight) +
           L", " + kel::String::fromInt(header.biBitCount) + L" bit" + frameRate(averageTimePerFrame);
}

kel::String audioDetails(const WAVEFORMATEX &format)
{
    return kel::String(L", ") + kel::String::fromInt(format.nChannels) + L" ch, " +
           kel::String::fromUInt(format.nSamplesPerSec) + L" Hz, " + kel::String::fromInt(format.wBitsPerSample) +
           L" bit";
}

// Width, height, depth and rate of the format blocks the library meets; empty otherwise.
kel::String formatDetails(const AM_MEDIA_TYPE &mediaType)
{
    if (!mediaType.pbFormat)
        return kel::String();
    if (IsEqualGUID(mediaType.formattype, FORMAT_VideoInfo) && mediaType.cbFormat >= sizeof(VIDEOINFOHEADER)) {
        const VIDEOINFOHEADER *video = reinterpret_cast<const VIDEOINFOHEADER *>(mediaType.pbFormat);
        return videoDetails(video->bmiHeader, video->AvgTimePerFrame);
    }
    if (IsEqualGUID(mediaType.formattype, FORMAT_VideoInfo2) && mediaType.cbFormat >= sizeof(VIDEOINFOHEADER2)) {
        const VIDEOINFOHEADER2 *video = reinterpret_cast<const VIDEOINFOHEADER2 *>(mediaType.pbFormat);
        return videoDetails(video->bmiHeader, video->AvgTimePerFrame);
    }
    if (IsEqualGUID(mediaType.formattype, FORMAT_WaveFormatEx) && mediaType.cbFormat >= sizeof(WAVEFORMATEX)) {
        return audioDetails(*reinterpret_cast<const WAVEFORMATEX *>(mediaType.pbFormat));
    }
    return kel::String();
}

// Where an output pin leads, as "-> "filter"."pin"", with the media type of the connection.
kel::String connectionToString(IPin *pin)
{
    CComPtr<IPin> peer;
    if (pin->ConnectedTo(&peer) != S_OK || !peer)
        return kel::String(L"(not connected)");
    kel::String peerName;
    PIN_DIRECTION peerDirection = PINDIR_INPUT;
    CComPtr<IBaseFilter> peerFilter;
    if (FAILED(queryPin(peer, peerName, peerDirection, peerFilter)))
        return kel::String(L"-> (unknown pin)");
    kel::String text = kel::String(L"-> ") + quoted(CaptureUtil::filterName(peerFilter)) + L"." + quoted(peerName);
    InPlaceMediaType mediaType;
    if (SUCCEEDED(pin->ConnectionMediaType(mediaType.receive()))) {
        text += kel::String(L" [") + CaptureUtil::mediaTypeToString(&mediaType.get()) + L"]";
    }
    return text;
}

GUID filterClass(IBaseFilter *filter)
{
    CLSID id = {};
    if (FAILED(filter->GetClassID(&id)))
        return GUID();
    return id;
}

} // namespace

bool CaptureUtil::processIsRunning(const kel::String &exeName)
{
    // Null, not INVALID_HANDLE_VALUE, is the failure checked here; an invalid handle fails
    // the first-entry query instead.
    ScopedHandle snapshot(CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 0));
    KEL_ASSERT(snapshot);
    if (!snapshot)
        return false;

    PROCESSENTRY32W entry = {};
    entry.dwSize = sizeof(entry);
    BOOL b = Process32FirstW(snapshot.get(), &entry);
    KEL_ASSERT(b);
    for (; b; b = Process32NextW(snapshot.get(), &entry)) {
        if (kel::String(entry.szExeFile).toLower() == exeName)
            return true;
    }
    return false;
}

bool CaptureUtil::mediaCenterIsRunning()
{
    return processIsRunning(kel::String(L"ehshell.exe")) || processIsRunning(kel::String(L"ehrec.exe"));
}

bool CaptureUtil::fastAccessCheck(long code)
{
    // Only the low byte counts: any code ending in it may come from the tray program.
    if ((code & 0xFF) != kGeneralFailureLowByte)
        return false;
    return processIsRunning(kel::String(L"fatraymon.exe"));
}

long CaptureUtil::addGraphToRot(IUnknown *, unsigned long *)
{
    return 0;
}

void CaptureUtil::removeGraphFromRot(unsigned long) {}

AM_MEDIA_TYPE *CaptureUtil::createMediaType(const AM_MEDIA_TYPE *source)
{
    if (!source)
        return nullptr;
    if (source->cbFormat != 0 && !source->pbFormat) {
        SORVANE_LOG_ERROR("createMediaType: format size " << static_cast<unsigned long>(source->cbFormat)
                                                          << " without a format block");
        return nullptr;
    }
    CoTaskMemPtr<AM_MEDIA_TYPE> copy = CoTaskMemPtr<AM_MEDIA_TYPE>::allocate(sizeof(AM_MEDIA_TYPE));
    if (!copy)
        return nullptr;
    *copy.get() = *source;
    // The copy never shares the source's format block, not even an empty one.
    copy->pbFormat = nullptr;
    if (source->cbFormat != 0) {
        CoTaskMemPtr<BYTE> format = CoTaskMemPtr<BYTE>::allocate(source->cbFormat);
        if (!format)
            return nullptr;
        std::memcpy(format.get(), source->pbFormat, source->cbFormat);
        copy->pbFormat = format.detach();
    }
    if (copy->pUnk)
        copy->pUnk->AddRef();
    return copy.detach();
}

void CaptureUtil::deleteMediaType(AM_MEDIA_TYPE *mediaType)
{
    if (!mediaType)
        return;
    freeMediaType(*mediaType);
    CoTaskMemFree(mediaType);
}

void CaptureUtil::freeMediaType(AM_MEDIA_TYPE &mediaType)
{
    if (mediaType.cbFormat != 0) {
        CoTaskMemFree(mediaType.pbFormat);
        mediaType.cbFormat = 0;
        mediaType.pbFormat = nullptr;
    }
    if (mediaType.pUnk) {
        mediaType.pUnk->Release();
        mediaType.pUnk = nullptr;
    }
}

bool CaptureUtil::isUnconnectedOutputPin(CComPtr<IPin> &pin)
{
    kel::String name;
    PIN_DIRECTION direction = PINDIR_INPUT;
    CComPtr<IBaseFilter> filter;
    const HRESULT hr = queryPin(pin, name, direction, filter);
    if (FAILED(hr)) {
        SORVANE_LOG_ERROR("IPin::QueryPinInfo failed: " << ErrorHandler::errorMessageFromHr(hr));
        return false;
    }
    if (direction != PINDIR_OUTPUT)
        return false;
    CComPtr<IPin> peer;
    return pin->ConnectedTo(&peer) == VFW_E_NOT_CONNECTED;
}

bool CaptureUtil::isAlphaNum(kel::Char16 c)
{
    return DeviceIdParser::isAlphaNum(c);
}

bool CaptureUtil::getCodeAfter(const kel::String &marker, const kel::String &text, kel::String &code)
{
    return DeviceIdParser::codeAfter(marker, text, code);
}

int CaptureUtil::getDefaultCountryCode()
{
    const kel::String language = kel::KELLocale::getGlobalLocale().getLanguage().toString();
    for (const LanguageCountry &entry : kLanguageCountries) {
        if (language == entry.language)
            return entry.countryCode;
    }
    return kFallbackCountryCode;
}

kel::String CaptureUtil::CLSIDToString(GUID id)
{
    CoTaskMemPtr<OLECHAR> text;
    if (FAILED(StringFromCLSID(id, text.receive())) || !text)
        return kel::String(L"UNKNOWN");
    return kel::String(text.get());
}

kel::String CaptureUtil::filterName(IBaseFilter *filter)
{
    if (!filter)
        return kel::String();
    FILTER_INFO info = {};
    if (FAILED(filter->QueryFilterInfo(&info)))
        return kel::String();
    CComPtr<IFilterGraph> graph;
    graph.Attach(info.pGraph);
    return kel::String(info.achName);
}

kel::String CaptureUtil::guidName(const GUID &id)
{
    const wchar_t *name = GuidNameTable::find(id);
    return name ? kel::String(name) : CLSIDToString(id);
}

kel::String CaptureUtil::subTypeToString(const GUID &subType)
{
    const wchar_t *name = GuidNameTable::find(subType);
    if (name)
        return kel::String(name);
    const kel::String fourcc = fourccName(subType);
    return fourcc.isEmpty() ? CLSIDToString(subType) : fourcc;
}

kel::String CaptureUtil::formatTypeToString(const GUID &formatType)
{
    return guidName(formatType);
}

kel::String CaptureUtil::mediaTypeToString(const AM_MEDIA_TYPE *mediaType)
{
    if (!mediaType)
        return kel::String(L"(no media type)");
    return guidName(mediaType->majortype) + L", " + subTypeToString(mediaType->subtype) + L", " +
           formatTypeToString(mediaType->formattype) + formatDetails(*mediaType);
}

kel::String CaptureUtil::tunerTypeToString(long inputType)
{
    switch (inputType) {
    case TunerInputCable:
        return kel::String(L"Cable");
    case TunerInputAntenna:
        return kel::String(L"Antenna");
    case -1:
        return kel::String(L"Current input");
    default:
        return kel::String(L"Input type ") + kel::String::fromInt(inputType);
    }
}

kel::String CaptureUtil::pinToString(IPin *pin)
{
    if (!pin)
        return kel::String(L"(no pin)");
    kel::String name;
    PIN_DIRECTION direction = PINDIR_INPUT;
    CComPtr<IBaseFilter> filter;
    if (FAILED(queryPin(pin, name, direction, filter)))
        return kel::String(L"(unknown pin)");
    const kel::String text = kel::String(direction == PINDIR_OUTPUT ? L"out " : L"in  ") + quoted(name);
    if (direction == PINDIR_INPUT) {
        CComPtr<IPin> peer;
        return text + (pin->ConnectedTo(&peer) == S_OK ? L" (connected)" : L" (not connected)");
    }
    return text + L" " + connectionToString(pin);
}

kel::String CaptureUtil::filterToString(IBaseFilter *filter)
{
    if (!filter)
        return kel::String(L"(no filter)\n");
    kel::String text = quoted(filterName(filter)) + L" " + guidName(filterClass(filter)) + L"\n";
    CComPtr<IEnumPins> pins;
    if (FAILED(filter->EnumPins(&pins)) || !pins)
        return text;
    CComPtr<IPin> pin;
    while (pins->Next(1, &pin, nullptr) == S_OK) {
        text += kel::String(L"    ") + pinToString(pin) + L"\n";
        pin.Release();
    }
    return text;
}

kel::String CaptureUtil::graphToString(IFilterGraph *graph)
{
    if (!graph)
        return kel::String(L"(no graph)\n");
    CComPtr<IEnumFilters> filters;
    if (FAILED(graph->EnumFilters(&filters)) || !filters)
        return kel::String(L"(filters not listed)\n");
    kel::String text;
    CComPtr<IBaseFilter> filter;
    while (filters->Next(1, &filter, nullptr) == S_OK) {
        text += filterToString(filter);
        filter.Release();
    }
    return text.isEmpty() ? kel::String(L"(empty graph)\n") : text;
}

} // namespace sorvane
