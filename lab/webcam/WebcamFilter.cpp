#include "webcam/WebcamFilter.h"

#include "common/ClassRegistry.h"
#include "common/DeviceRegistry.h"
#include "lab/LabClassIds.h"

namespace lab {

namespace {

const ClassRegistration registration(ClassInfo::device(CLSID_LabWebcam, L"Sorvane Lab Webcam",
                                                       &createObject<WebcamFilter, IBaseFilter>, L"webcam",
                                                       CLSID_VideoInputDeviceCategory));

// KSPROPERTY_CAMERACONTROL_PRIVACY of ksmedia.h, whose other baggage the lab does not need.
const long kPrivacyProperty = 8;

} // namespace

WebcamFilter::WebcamFilter() : DeviceFilter(CLSID_LabWebcam), m_pin(*this, L"Capture", *this)
{
    // Without a property bag (created directly) the camera has one plain format.
    const std::shared_ptr<DeviceState> unnamed = DeviceRegistry::device(L"");
    if (unnamed->text(L"format").empty())
        unnamed->setOverride(L"format", L"RGB24 320x240 30");
    useDevice(unnamed);
}

WebcamFilter::~WebcamFilter()
{
    m_pin.stopStreaming();
}

void *WebcamFilter::queryExtra(REFIID iid)
{
    if (IsEqualIID(iid, IID_IAMCameraControl) && m_privacy != Privacy::None)
        return static_cast<IAMCameraControl *>(this);
    return DeviceFilter::queryExtra(iid);
}

BasePin *WebcamFilter::pin(int index)
{
    return index == 0 ? &m_pin : nullptr;
}

HRESULT WebcamFilter::configure(const std::shared_ptr<DeviceState> &device)
{
    std::vector<VideoFormat> formats;
    for (const std::wstring &line : device->lines(L"format")) {
        VideoFormat format;
        if (!VideoFormat::parse(line, format))
            return E_INVALIDARG;
        formats.push_back(format);
    }
    const std::wstring privacy = DeviceConfig::lower(device->text(L"privacy", L"0"));
    m_privacy =
        privacy == L"none" ? Privacy::None : (privacy == L"unsupported" ? Privacy::Unsupported : Privacy::Supported);
    m_privacyValue = privacy == L"1" ? 1 : 0;
    m_privacyFlags = CameraControl_Flags_Manual;
    m_pin.setDevice(device, formats);
    return S_OK;
}

STDMETHODIMP WebcamFilter::GetRange(long property, long *min, long *max, long *step, long *defaultValue, long *flags)
{
    if (!min || !max || !step || !defaultValue || !flags)
        return E_POINTER;
    if (property != kPrivacyProperty || m_privacy != Privacy::Supported)
        return E_PROP_ID_UNSUPPORTED;
    *min = 0;
    *max = 1;
    *step = 1;
    *defaultValue = 0;
    *flags = CameraControl_Flags_Manual;
    return S_OK;
}

STDMETHODIMP WebcamFilter::Set(long property, long value, long flags)
{
    if (property != kPrivacyProperty || m_privacy != Privacy::Supported)
        return E_PROP_ID_UNSUPPORTED;
    if (value < 0 || value > 1)
        return E_INVALIDARG;
    std::lock_guard<std::recursive_mutex> guard(lock());
    m_privacyValue = value;
    m_privacyFlags = flags;
    device()->record(L"Privacy " + std::to_wstring(value) + L" " + std::to_wstring(flags));
    return S_OK;
}

STDMETHODIMP WebcamFilter::Get(long property, long *value, long *flags)
{
    if (!value || !flags)
        return E_POINTER;
    if (property != kPrivacyProperty || m_privacy != Privacy::Supported)
        return E_PROP_ID_UNSUPPORTED;
    std::lock_guard<std::recursive_mutex> guard(lock());
    *value = m_privacyValue;
    *flags = m_privacyFlags;
    return S_OK;
}

long WebcamFilter::paintFrame(const VideoFormat &format, unsigned long frame, BYTE *buffer, long capacity)
{
    return m_painter.paint(format, frame, buffer, capacity, device() && device()->flag(L"fault.flat"));
}

std::vector<StreamingPin *> WebcamFilter::streamingPins()
{
    return {&m_pin};
}

// A driver that hangs when stopped keeps the graph's Stop waiting (in real time: it is the
// device, not the test, that is slow). A test that has seen what it waited for ends the hang
// early by setting the delay to 0.
void WebcamFilter::onStop()
{
    const ULONGLONG since = GetTickCount64();
    for (;;) {
        const long long delay = device()->integer(L"fault.stopdelay", 0);
        if (delay <= 0 || GetTickCount64() - since >= static_cast<ULONGLONG>(delay))
            break;
        Sleep(10);
    }
    DeviceFilter::onStop();
}

} // namespace lab
