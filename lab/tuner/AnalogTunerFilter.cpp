#include "tuner/AnalogTunerFilter.h"

#include <new>

#include "common/ClassRegistry.h"
#include "common/DeviceRegistry.h"
#include "tuner/HresultText.h"
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
    : BaseFilter(clsid), m_hasTuner(hasTuner), m_tuner(*static_cast<IBaseFilter *>(this)),
      m_crossbar(*static_cast<IBaseFilter *>(this)), m_picture(hasTuner ? &m_tuner : nullptr, m_crossbar),
      m_video(*this, L"Capture", m_picture), m_audio(*this, L"Audio Capture")
{
    // Without a property bag (created directly) the card has one plain format and an empty sky.
    const std::shared_ptr<DeviceState> device = DeviceRegistry::device(L"");
    if (device->text(L"format").empty())
        device->setOverride(L"format", L"YUY2 320x240 30");
    configure(device);
}

AnalogTunerFilter::~AnalogTunerFilter() { stopStreaming(); }

void *AnalogTunerFilter::queryExtra(REFIID iid)
{
    if (IsEqualIID(iid, IID_IPersistPropertyBag))
        return static_cast<IPersistPropertyBag *>(this);
    if (IsEqualIID(iid, IID_IAMCrossbar))
        return static_cast<IAMCrossbar *>(&m_crossbar);
    if ((IsEqualIID(iid, IID_IAMTVTuner) || IsEqualIID(iid, IID_IAMTuner)) && m_hasTuner)
        return static_cast<IAMTVTuner *>(&m_tuner);
    return nullptr;
}

BasePin *AnalogTunerFilter::pin(int index)
{
    if (index == 0)
        return &m_video;
    return index == 1 ? &m_audio : nullptr;
}

STDMETHODIMP AnalogTunerFilter::InitNew() { return S_OK; }

STDMETHODIMP AnalogTunerFilter::Load(IPropertyBag *bag, IErrorLog *)
{
    if (!bag)
        return E_POINTER;
    const DeviceConfig config = DeviceConfig::fromPropertyBag(bag);
    std::wstring name;
    config.find(L"FriendlyName", name);
    const std::shared_ptr<DeviceState> device = DeviceRegistry::device(name);
    device->setConfig(config);
    const HRESULT refused = device->hresult(L"fault.bind");
    if (FAILED(refused)) {
        device->record(L"Bind failed " + hresultText(refused));
        return refused;
    }
    return configure(device);
}

STDMETHODIMP AnalogTunerFilter::Save(IPropertyBag *, BOOL, BOOL) { return E_NOTIMPL; }

HRESULT AnalogTunerFilter::configure(const std::shared_ptr<DeviceState> &device)
{
    std::vector<VideoFormat> formats;
    for (const std::wstring &line : device->lines(L"format")) {
        VideoFormat format;
        if (!VideoFormat::parse(line, format) || format.compressed())
            return E_INVALIDARG;
        formats.push_back(format);
    }
    std::lock_guard<std::recursive_mutex> guard(lock());
    m_device = device;
    m_tuner.attach(device);
    m_crossbar.attach(device);
    m_video.setDevice(device, formats);
    return S_OK;
}

// Running to Paused leaves the streaming threads alone: the graph pauses the renderers first, and
// a paused renderer holds the sample it was given until it runs or stops, so joining a thread
// here could wait for ever. The threads end in onStop, after the renderers let go.
HRESULT AnalogTunerFilter::onPause(bool fromStopped)
{
    if (fromStopped) {
        const HRESULT refused = m_device->hresult(L"fault.run");
        if (FAILED(refused)) {
            m_device->record(L"Run failed " + hresultText(refused));
            return refused;
        }
    }
    m_device->record(L"Pause");
    return S_OK;
}

HRESULT AnalogTunerFilter::onRun(REFERENCE_TIME)
{
    m_device->record(L"Run");
    m_video.startStreaming();
    m_audio.startStreaming();
    return S_OK;
}

void AnalogTunerFilter::onStop()
{
    stopStreaming();
    m_device->record(L"Stop");
}

void AnalogTunerFilter::stopStreaming()
{
    m_video.stopStreaming();
    m_audio.stopStreaming();
}

} // namespace lab
