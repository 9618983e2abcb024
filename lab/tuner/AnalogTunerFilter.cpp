#include "tuner/AnalogTunerFilter.h"

#include <new>

#include "common/ClassRegistry.h"
#include "common/DeviceRegistry.h"
#include "tuner/TunerClassIds.h"

namespace lab {

namespace {

const ClassRegistration tunerCard(ClassInfo::device(CLSID_LabAnalogTuner, L"Sorvane Lab Analog TV Card",
                                                    &AnalogTunerFilter::createTunerCard, L"analog-tuner",
                                                    CLSID_VideoInputDeviceCategory));
const ClassRegistration captureCard(ClassInfo::device(CLSID_LabAnalogCapture, L"Sorvane Lab Analog Capture Card",
                                                      &AnalogTunerFilter::createCaptureCard, L"analog-capture",
                                                      CLSID_VideoInputDeviceCategory));

} // namespace

HRESULT AnalogTunerFilter::createTunerCard(REFIID iid, void **out)
{
    return create(CLSID_LabAnalogTuner, true, iid, out);
}

HRESULT AnalogTunerFilter::createCaptureCard(REFIID iid, void **out)
{
    return create(CLSID_LabAnalogCapture, false, iid, out);
}

HRESULT AnalogTunerFilter::create(const CLSID &clsid, bool hasTuner, REFIID iid, void **out)
{
    if (!out)
        return E_POINTER;
    *out = nullptr;
    AnalogTunerFilter *filter = new (std::nothrow) AnalogTunerFilter(clsid, hasTuner);
    if (!filter)
        return E_OUTOFMEMORY;
    CComPtr<IBaseFilter> hold(filter);
    return hold->QueryInterface(iid, out);
}

AnalogTunerFilter::AnalogTunerFilter(const CLSID &clsid, bool hasTuner)
    : DeviceFilter(clsid), m_hasTuner(hasTuner), m_tuner(*static_cast<IBaseFilter *>(this)),
      m_crossbar(*static_cast<IBaseFilter *>(this)), m_picture(hasTuner ? &m_tuner : nullptr, m_crossbar),
      m_video(*this, L"Capture", m_picture), m_audio(*this, L"Audio Capture"),
      m_tunerInput(*this, L"Analog Video In", MEDIATYPE_AnalogVideo)
{
    // Without a property bag (created directly) the card has one plain format and an empty sky.
    const std::shared_ptr<DeviceState> unnamed = DeviceRegistry::device(L"");
    if (unnamed->text(L"format").empty())
        unnamed->setOverride(L"format", L"YUY2 320x240 30");
    useDevice(unnamed);
}

AnalogTunerFilter::~AnalogTunerFilter()
{
    stopStreaming();
}

void *AnalogTunerFilter::queryExtra(REFIID iid)
{
    if (IsEqualIID(iid, IID_IAMCrossbar))
        return static_cast<IAMCrossbar *>(&m_crossbar);
    if ((IsEqualIID(iid, IID_IAMTVTuner) || IsEqualIID(iid, IID_IAMTuner)) && m_hasTuner)
        return static_cast<IAMTVTuner *>(&m_tuner);
    return DeviceFilter::queryExtra(iid);
}

BasePin *AnalogTunerFilter::pin(int index)
{
    if (index == 0)
        return &m_video;
    if (index == 1)
        return &m_audio;
    return index == 2 && m_tunerUpstream ? &m_tunerInput : nullptr;
}

HRESULT AnalogTunerFilter::configure(const std::shared_ptr<DeviceState> &device)
{
    std::vector<VideoFormat> formats;
    for (const std::wstring &line : device->lines(L"format")) {
        VideoFormat format;
        if (!VideoFormat::parse(line, format) || format.compressed())
            return E_INVALIDARG;
        formats.push_back(format);
    }
    m_tuner.attach(device);
    m_crossbar.attach(device);
    const PinMedium tunerMedium = PinMedium::parse(device->text(L"tuner.medium"));
    m_tunerInput.setMedium(tunerMedium);
    m_tunerUpstream = tunerMedium.present();
    m_video.setDevice(device, formats);
    return S_OK;
}

std::vector<StreamingPin *> AnalogTunerFilter::streamingPins()
{
    return {&m_video, &m_audio};
}

void AnalogTunerFilter::stopStreaming()
{
    m_video.stopStreaming();
    m_audio.stopStreaming();
}

} // namespace lab
