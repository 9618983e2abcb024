#include "bdadevice/TransportStreamPin.h"

#include <atomic>
#include <cstring>
#include <uuids.h>

#include "bdadevice/TransportStreamType.h"
#include "bdadevice/StreamFaultKeys.h"
#include "broadcast/TransportStreamGenerator.h"
#include "common/DeviceState.h"

namespace lab {

namespace {

const long kDefaultBitRate = 19392658;
const long kDefaultPacketsPerSample = 312;
const long kMaxPacketsPerSample = 4096;

std::atomic<long long> s_periodsBegun{0};
std::atomic<long> s_streamsRunning{0};

MediaType transportType(const GUID &subType)
{
    AM_MEDIA_TYPE type = {};
    type.majortype = MEDIATYPE_Stream;
    type.subtype = subType;
    type.formattype = FORMAT_None;
    type.bFixedSizeSamples = TRUE;
    type.lSampleSize = static_cast<ULONG>(TsPacketizer::kPacketSize);
    return MediaType(type);
}

} // namespace

TransportStreamPin::TransportStreamPin(BaseFilter &filter, const std::wstring &name, TransportFeed &feed,
                                       bool bdaSubtypeFirst)
    : StreamingPin(filter, name, GUID_NULL), m_feed(feed), m_bdaSubtypeFirst(bdaSubtypeFirst)
{
}

TransportStreamPin::~TransportStreamPin()
{
    stopStreaming();
}

std::vector<MediaType> TransportStreamPin::mediaTypes()
{
    const MediaType bda = transportType(kSubtypeBdaTransport);
    const MediaType plain = transportType(MEDIASUBTYPE_MPEG2_TRANSPORT);
    if (m_bdaSubtypeFirst)
        return {bda, plain};
    return {plain, bda};
}

HRESULT TransportStreamPin::checkMediaType(const AM_MEDIA_TYPE &type)
{
    if (m_feed.streamDevice()->flag(L"fault.output"))
        return S_FALSE;
    return bda::acceptsTransportStream(type);
}

TransportStreamPin::Rate TransportStreamPin::rateOf(const DeviceState &device)
{
    Rate rate;
    rate.bitsPerSecond = static_cast<long>(device.integer(L"bitrate", kDefaultBitRate));
    if (rate.bitsPerSecond < 1000000)
        rate.bitsPerSecond = 1000000;
    rate.packetsPerSample = static_cast<long>(device.integer(L"packets-per-sample", kDefaultPacketsPerSample));
    if (rate.packetsPerSample < 1 || rate.packetsPerSample > kMaxPacketsPerSample)
        rate.packetsPerSample = kDefaultPacketsPerSample;
    return rate;
}

long long TransportStreamPin::periodsBegun()
{
    return s_periodsBegun.load();
}

long TransportStreamPin::streamsRunning()
{
    return s_streamsRunning.load();
}

void TransportStreamPin::streamStarting()
{
    ++s_streamsRunning;
}

void TransportStreamPin::streamEnded()
{
    --s_streamsRunning;
}

long TransportStreamPin::bufferSize()
{
    const std::shared_ptr<DeviceState> device = m_feed.streamDevice();
    return rateOf(*device).packetsPerSample * static_cast<long>(TsPacketizer::kPacketSize);
}

void TransportStreamPin::stream(HANDLE stopEvent)
{
    const CComPtr<ITunedSignalSource> source = m_feed.signalSource();
    const std::shared_ptr<DeviceState> device = m_feed.streamDevice();
    const Rate rate = rateOf(*device);
    const double sampleMs = rate.packetsPerSample * TsPacketizer::kPacketSize * 8.0 * 1000.0 / rate.bitsPerSecond;
    const Pace pace(sampleMs);

    std::unique_ptr<TransportStreamGenerator> generator;
    unsigned long generation = 0;
    bool discontinuity = true;
    long long delivered = 0;
    std::vector<unsigned char> bytes;
    for (unsigned long sample = 0; pace.waitFor(sample, stopEvent); ++sample) {
        // A period begins when the one before has delivered all it had.
        ++s_periodsBegun;
        if (!delivering() || !source)
            continue;
        TunedSignal signal;
        StreamFaults faults;
        source->currentSignal(signal, faults);
        if (!generator || signal.generation != generation) {
            generation = signal.generation;
            generator.reset(signal.multiplex && signal.locked
                                ? new TransportStreamGenerator(*signal.multiplex, rate.bitsPerSecond)
                                : nullptr);
            discontinuity = true;
        }
        if (!generator)
            continue;
        faults.add(StreamFaultKeys::read(*device));
        generator->setFaults(faults);
        bytes.clear();
        generator->generate(static_cast<size_t>(rate.packetsPerSample), bytes);
        if (bytes.empty())
            continue;
        if (deliverBytes(bytes, discontinuity) != S_OK) {
            idleUntilStopped(stopEvent);
            break;
        }
        discontinuity = false;
        ++delivered;
        device->addDelivered(1);
    }
    device->record(L"Delivered " + std::to_wstring(delivered));
}

HRESULT TransportStreamPin::deliverBytes(const std::vector<unsigned char> &bytes, bool discontinuity)
{
    CComPtr<IMediaSample> sample;
    BYTE *buffer = nullptr;
    HRESULT hr = getBuffer(sample, buffer);
    if (FAILED(hr))
        return hr;
    const long length =
        static_cast<long>(bytes.size()) < sample->GetSize() ? static_cast<long>(bytes.size()) : sample->GetSize();
    std::memcpy(buffer, bytes.data(), static_cast<size_t>(length));
    sample->SetActualDataLength(length);
    sample->SetTime(nullptr, nullptr);
    sample->SetSyncPoint(FALSE);
    sample->SetDiscontinuity(discontinuity ? TRUE : FALSE);
    return deliver(sample);
}

} // namespace lab
