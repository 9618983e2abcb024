#include "StreamCapsReader.h"
#include "HostError.h"

#include <DeviceIdParser.h>
#include <MediaTypeOwner.h>
#include <MonikerProperty.h>

#include <dvdmedia.h>
#include <uuids.h>

#include <cwchar>

namespace sorvane {
namespace diag {

namespace {

double rateOf(REFERENCE_TIME frameTime)
{
    return frameTime > 0 ? 10000000.0 / static_cast<double>(frameTime) : 0.0;
}

} // namespace

std::wstring StreamCapsReader::subtypeName(const GUID &subtype)
{
    static const struct {
        const GUID *guid;
        const wchar_t *name;
    } kKnown[] = {
        {&MEDIASUBTYPE_RGB24, L"RGB24"},   {&MEDIASUBTYPE_RGB32, L"RGB32"}, {&MEDIASUBTYPE_RGB565, L"RGB565"},
        {&MEDIASUBTYPE_RGB555, L"RGB555"}, {&MEDIASUBTYPE_YUY2, L"YUY2"},   {&MEDIASUBTYPE_UYVY, L"UYVY"},
        {&MEDIASUBTYPE_MJPG, L"MJPG"},
    };
    for (const auto &known : kKnown) {
        if (IsEqualGUID(subtype, *known.guid))
            return known.name;
    }
    // Other FOURCC subtypes carry their code in the first field.
    std::wstring fourcc;
    for (int i = 0; i < 4; ++i) {
        const wchar_t c = static_cast<wchar_t>((subtype.Data1 >> (8 * i)) & 0xFF);
        if (c < 0x20 || c > 0x7E) {
            fourcc.clear();
            break;
        }
        fourcc += c;
    }
    if (!fourcc.empty() && subtype.Data2 == 0x0000 && subtype.Data3 == 0x0010)
        return fourcc;
    wchar_t text[40] = {};
    StringFromGUID2(subtype, text, 40);
    return text;
}

CComPtr<IMoniker> StreamCapsReader::findMoniker(const MonikerTest &wanted)
{
    CComPtr<ICreateDevEnum> devices;
    CComPtr<IEnumMoniker> monikers;
    if (FAILED(devices.CoCreateInstance(CLSID_SystemDeviceEnum, nullptr, CLSCTX_INPROC_SERVER)) ||
        devices->CreateClassEnumerator(CLSID_VideoInputDeviceCategory, &monikers, 0) != S_OK)
        return CComPtr<IMoniker>(); // S_FALSE: the category is empty.
    CComPtr<IMoniker> moniker;
    while (monikers->Next(1, &moniker, nullptr) == S_OK) {
        if (wanted(moniker))
            return moniker;
        moniker.Release();
    }
    return CComPtr<IMoniker>();
}

bool StreamCapsReader::isCapturePin(IPin *pin)
{
    PIN_DIRECTION direction = PINDIR_INPUT;
    if (FAILED(pin->QueryDirection(&direction)) || direction != PINDIR_OUTPUT)
        return false;
    CComQIPtr<IKsPropertySet> properties(pin);
    if (!properties)
        return false;
    GUID category = GUID_NULL;
    DWORD returned = 0;
    return SUCCEEDED(properties->Get(AMPROPSETID_Pin, AMPROPERTY_PIN_CATEGORY, nullptr, 0, &category, sizeof category,
                                     &returned)) &&
           IsEqualGUID(category, PIN_CATEGORY_CAPTURE);
}

CComPtr<IAMStreamConfig> StreamCapsReader::captureConfig(IBaseFilter *filter)
{
    CComPtr<IEnumPins> pins;
    if (FAILED(filter->EnumPins(&pins)))
        return CComPtr<IAMStreamConfig>();
    CComPtr<IPin> pin;
    while (pins->Next(1, &pin, nullptr) == S_OK) {
        if (isCapturePin(pin)) {
            CComQIPtr<IAMStreamConfig> config(pin);
            if (config)
                return CComPtr<IAMStreamConfig>(config.p);
        }
        pin.Release();
    }
    return CComPtr<IAMStreamConfig>();
}

bool StreamCapsReader::describe(const AM_MEDIA_TYPE &type, const VIDEO_STREAM_CONFIG_CAPS &caps,
                                StreamCapability &capability)
{
    const BITMAPINFOHEADER *header = nullptr;
    REFERENCE_TIME frameTime = 0;
    if (IsEqualGUID(type.formattype, FORMAT_VideoInfo) && type.cbFormat >= sizeof(VIDEOINFOHEADER) && type.pbFormat) {
        const VIDEOINFOHEADER *info = reinterpret_cast<const VIDEOINFOHEADER *>(type.pbFormat);
        header = &info->bmiHeader;
        frameTime = info->AvgTimePerFrame;
    } else if (IsEqualGUID(type.formattype, FORMAT_VideoInfo2) && type.cbFormat >= sizeof(VIDEOINFOHEADER2) &&
               type.pbFormat) {
        const VIDEOINFOHEADER2 *info = reinterpret_cast<const VIDEOINFOHEADER2 *>(type.pbFormat);
        header = &info->bmiHeader;
        frameTime = info->AvgTimePerFrame;
    }
    if (!header)
        return false;
    capability.subtype = subtypeName(type.subtype);
    capability.width = header->biWidth;
    capability.height = header->biHeight < 0 ? -header->biHeight : header->biHeight;
    capability.fps = rateOf(frameTime);
    capability.maxFps = rateOf(caps.MinFrameInterval);
    capability.minFps = rateOf(caps.MaxFrameInterval);
    return true;
}

bool StreamCapsReader::read(const std::wstring &name, const std::wstring &devicePath,
                            std::vector<StreamCapability> &capabilities, std::wstring &problem)
{
    const CComPtr<IMoniker> moniker = findMoniker([&](IMoniker *candidate) {
        return MonikerProperty::read(candidate, L"FriendlyName").wstr() == name &&
               MonikerProperty::read(candidate, L"DevicePath").wstr() == devicePath;
    });
    return readFrom(moniker, capabilities, problem);
}

bool StreamCapsReader::read(const ruvo::DiagDevice &device, std::vector<StreamCapability> &capabilities,
                            std::wstring &problem)
{
    const CComPtr<IMoniker> moniker = findMoniker([&](IMoniker *candidate) {
        return MonikerProperty::read(candidate, L"FriendlyName") == device.name() &&
               DeviceIdParser::pathIdentifier(MonikerProperty::read(candidate, L"DevicePath")) == device.osLocator();
    });
    return readFrom(moniker, capabilities, problem);
}

bool StreamCapsReader::readFrom(IMoniker *moniker, std::vector<StreamCapability> &capabilities, std::wstring &problem)
{
    if (!moniker) {
        problem = L"no video input device of that name";
        return false;
    }
    CComPtr<IBaseFilter> filter;
    const HRESULT bound = moniker->BindToObject(nullptr, nullptr, IID_PPV_ARGS(&filter));
    if (FAILED(bound)) {
        problem = L"the device could not be opened: " + HostError::describe(bound);
        return false;
    }
    const CComPtr<IAMStreamConfig> config = captureConfig(filter);
    int count = 0;
    int size = 0;
    if (!config || FAILED(config->GetNumberOfCapabilities(&count, &size)) ||
        size != static_cast<int>(sizeof(VIDEO_STREAM_CONFIG_CAPS))) {
        problem = L"the capture pin lists no video capabilities";
        return false;
    }
    for (int i = 0; i < count; ++i) {
        MediaTypeOwner type;
        VIDEO_STREAM_CONFIG_CAPS caps = {};
        StreamCapability capability;
        if (SUCCEEDED(config->GetStreamCaps(i, type.receive(), reinterpret_cast<BYTE *>(&caps))) && type.get() &&
            describe(*type.get(), caps, capability))
            capabilities.push_back(capability);
    }
    return true;
}

} // namespace diag
} // namespace sorvane
