#include "common/CapturePin.h"

#include <algorithm>
#include <cstring>

#include "common/BaseFilter.h"
#include "common/DeviceRegistry.h"

namespace lab {

namespace {

// Noise in place of the picture: no mark band, and no JPEG a decoder would take.
void scramble(BYTE *buffer, long length, unsigned long frame)
{
    unsigned state = 2166136261u ^ frame;
    for (long i = 0; i < length; ++i) {
        state = state * 1664525u + 1013904223u;
        buffer[i] = static_cast<BYTE>(state >> 24);
    }
}

} // namespace

CapturePin::CapturePin(BaseFilter &filter, const std::wstring &name, FrameSource &source)
    : StreamingPin(filter, name, PIN_CATEGORY_CAPTURE), m_source(source), m_device(DeviceRegistry::device(L""))
{
}

CapturePin::~CapturePin()
{
    stopStreaming();
}

void *CapturePin::queryExtra(REFIID iid)
{
    if (IsEqualIID(iid, IID_IAMStreamConfig))
        return static_cast<IAMStreamConfig *>(this);
    return OutputPin::queryExtra(iid);
}

void CapturePin::setDevice(const std::shared_ptr<DeviceState> &device, const std::vector<VideoFormat> &formats)
{
    std::lock_guard<std::recursive_mutex> guard(m_filter.lock());
    m_device = device;
    m_formats = formats;
    m_setFormat.clear();
}

int CapturePin::formatIndex(const AM_MEDIA_TYPE &type) const
{
    for (size_t i = 0; i < m_formats.size(); ++i) {
        if (m_formats[i].matches(type))
            return static_cast<int>(i);
    }
    return -1;
}

STDMETHODIMP CapturePin::SetFormat(AM_MEDIA_TYPE *type)
{
    if (!type)
        return E_POINTER;
    std::lock_guard<std::recursive_mutex> guard(m_filter.lock());
    const int index = formatIndex(*type);
    if (index < 0)
        return VFW_E_INVALIDMEDIATYPE;
    const VideoFormat &format = m_formats[static_cast<size_t>(index)];
    const REFERENCE_TIME frameTime = reinterpret_cast<const VIDEOINFOHEADER *>(type->pbFormat)->AvgTimePerFrame;
    if (frameTime != 0 && (frameTime < format.frameTime() - 1 || frameTime > format.frameTime() * 10))
        return VFW_E_INVALIDMEDIATYPE;
    const std::vector<long long> refused = m_device->integers(L"fault.setformat");
    if (std::find(refused.begin(), refused.end(), index) != refused.end()) {
        m_device->record(L"SetFormat refused " + VideoFormat::describe(*type));
        return E_FAIL;
    }
    if (!filterStopped())
        return VFW_E_NOT_STOPPED;
    const bool reconnect = m_connected && !m_type.sameAs(*type);
    if (reconnect && m_connected->QueryAccept(type) != S_OK)
        return VFW_E_TYPE_NOT_ACCEPTED;
    m_setFormat = MediaType(*type);
    if (frameTime == 0)
        m_setFormat.videoInfo()->AvgTimePerFrame = format.frameTime();
    m_device->record(L"SetFormat " + VideoFormat::describe(m_setFormat.get()));
    return reconnect ? reconnectWith(m_setFormat) : S_OK;
}

// A connected pin given a new format reconnects through the graph, as a driver's pin does.
HRESULT CapturePin::reconnectWith(const MediaType &type)
{
    FILTER_INFO info = {};
    m_filter.QueryFilterInfo(&info);
    CComPtr<IFilterGraph> graph;
    graph.Attach(info.pGraph);
    CComQIPtr<IFilterGraph2> graph2(graph.p);
    return graph2 ? graph2->ReconnectEx(this, &type.get()) : VFW_E_NOT_IN_GRAPH;
}

STDMETHODIMP CapturePin::GetFormat(AM_MEDIA_TYPE **type)
{
    if (!type)
        return E_POINTER;
    std::lock_guard<std::recursive_mutex> guard(m_filter.lock());
    *type = nullptr;
    if (!m_setFormat.empty())
        *type = m_setFormat.newCopy();
    else if (m_connected)
        *type = m_type.newCopy();
    else if (!m_formats.empty())
        *type = m_formats.front().mediaType().newCopy();
    else
        return VFW_E_NO_TYPES;
    return *type ? S_OK : E_OUTOFMEMORY;
}

STDMETHODIMP CapturePin::GetNumberOfCapabilities(int *count, int *size)
{
    if (!count || !size)
        return E_POINTER;
    std::lock_guard<std::recursive_mutex> guard(m_filter.lock());
    *count = static_cast<int>(m_formats.size());
    *size = static_cast<int>(m_device->integer(L"fault.capssize", sizeof(VIDEO_STREAM_CONFIG_CAPS)));
    return S_OK;
}

STDMETHODIMP CapturePin::GetStreamCaps(int index, AM_MEDIA_TYPE **type, BYTE *caps)
{
    if (!type || !caps)
        return E_POINTER;
    std::lock_guard<std::recursive_mutex> guard(m_filter.lock());
    *type = nullptr;
    if (index < 0 || static_cast<size_t>(index) >= m_formats.size())
        return S_FALSE;
    if (m_device->integer(L"fault.getstreamcaps", -1) == index)
        return E_FAIL;
    const VideoFormat &format = m_formats[static_cast<size_t>(index)];
    *type = format.mediaType().newCopy();
    if (!*type)
        return E_OUTOFMEMORY;
    const VIDEO_STREAM_CONFIG_CAPS videoCaps = format.caps();
    std::memcpy(caps, &videoCaps, sizeof(videoCaps));
    return S_OK;
}

std::vector<MediaType> CapturePin::mediaTypes()
{
    std::lock_guard<std::recursive_mutex> guard(m_filter.lock());
    if (!m_setFormat.empty())
        return {m_setFormat};
    std::vector<MediaType> types;
    for (const VideoFormat &format : m_formats)
        types.push_back(format.mediaType());
    return types;
}

HRESULT CapturePin::checkMediaType(const AM_MEDIA_TYPE &type)
{
    std::lock_guard<std::recursive_mutex> guard(m_filter.lock());
    if (m_device && m_device->flag(L"fault.connect"))
        return S_FALSE;
    return formatIndex(type) >= 0 ? S_OK : S_FALSE;
}

long CapturePin::bufferSize()
{
    return streamFormat().frameBytes();
}

VideoFormat CapturePin::streamFormat() const
{
    const MediaType &type = m_connected ? m_type : m_setFormat;
    const int index = type.empty() ? -1 : formatIndex(type.get());
    if (index < 0)
        return m_formats.empty() ? VideoFormat() : m_formats.front();
    VideoFormat format = m_formats[static_cast<size_t>(index)];
    const REFERENCE_TIME frameTime = type.videoInfo()->AvgTimePerFrame;
    if (frameTime > 0)
        format.fps = 10000000.0 / static_cast<double>(frameTime);
    return format;
}

void CapturePin::stream(HANDLE stopEvent)
{
    const VideoFormat format = streamFormat();
    const std::shared_ptr<DeviceState> device = m_device;
    const Pace pace(1000.0 / format.fps);
    const long long stopAfter = device->integer(L"fault.stopafter", -1);
    long long delivered = 0;
    REFERENCE_TIME nextStart = 0;
    for (unsigned long frame = 0; pace.waitFor(frame, stopEvent); ++frame) {
        if (!delivering() || device->flag(L"fault.nosamples") || (stopAfter >= 0 && delivered >= stopAfter))
            continue;
        if (deliverFrame(format, frame, nextStart) != S_OK) {
            idleUntilStopped(stopEvent);
            break;
        }
        ++delivered;
        device->addDelivered(1);
    }
    device->record(L"Delivered " + std::to_wstring(delivered));
}

HRESULT CapturePin::deliverFrame(const VideoFormat &format, unsigned long frame, REFERENCE_TIME &nextStart)
{
    CComPtr<IMediaSample> sample;
    BYTE *buffer = nullptr;
    HRESULT hr = getBuffer(sample, buffer);
    if (FAILED(hr))
        return hr;
    // A frozen camera repeats one picture while its samples keep their times.
    const unsigned long painted = m_device->flag(L"fault.frozen") ? 0 : frame;
    const long length = m_source.paintFrame(format, painted, buffer, sample->GetSize());
    if (length <= 0)
        return E_FAIL;
    if (m_device->flag(L"fault.garbage"))
        scramble(buffer, length, frame);
    sample->SetActualDataLength(m_device->flag(L"fault.zerolength") ? 0 : length);

    REFERENCE_TIME start = 0;
    if (!m_filter.streamTime(start))
        start = nextStart;
    REFERENCE_TIME end = start + format.frameTime();
    nextStart = end;
    sample->SetTime(&start, &end);
    LONGLONG mediaStart = frame;
    LONGLONG mediaEnd = frame + 1;
    sample->SetMediaTime(&mediaStart, &mediaEnd);
    sample->SetSyncPoint(TRUE);
    sample->SetDiscontinuity(frame == 0 ? TRUE : FALSE);
    return deliver(sample);
}

} // namespace lab
