#include "tuner/TunerAudioPin.h"

#include <cstring>
#include <mmreg.h>

#include "common/BaseFilter.h"

namespace lab {

namespace {

WAVEFORMATEX pcmFormat()
{
    WAVEFORMATEX format = {};
    format.wFormatTag = WAVE_FORMAT_PCM;
    format.nChannels = TunerAudioPin::kChannels;
    format.nSamplesPerSec = TunerAudioPin::kSampleRate;
    format.wBitsPerSample = 16;
    format.nBlockAlign = static_cast<WORD>(format.nChannels * format.wBitsPerSample / 8);
    format.nAvgBytesPerSec = format.nSamplesPerSec * format.nBlockAlign;
    return format;
}

const REFERENCE_TIME kBufferTime = TunerAudioPin::kBufferMs * 10000LL;

} // namespace

TunerAudioPin::TunerAudioPin(BaseFilter &filter, const std::wstring &name)
    : StreamingPin(filter, name, PIN_CATEGORY_CAPTURE)
{
}

TunerAudioPin::~TunerAudioPin()
{
    stopStreaming();
}

std::vector<MediaType> TunerAudioPin::mediaTypes()
{
    WAVEFORMATEX format = pcmFormat();
    AM_MEDIA_TYPE type = {};
    type.majortype = MEDIATYPE_Audio;
    type.subtype = MEDIASUBTYPE_PCM;
    type.bFixedSizeSamples = TRUE;
    type.lSampleSize = format.nBlockAlign;
    type.formattype = FORMAT_WaveFormatEx;
    type.cbFormat = sizeof(format);
    type.pbFormat = reinterpret_cast<BYTE *>(&format);
    return {MediaType(type)};
}

HRESULT TunerAudioPin::checkMediaType(const AM_MEDIA_TYPE &type)
{
    const WAVEFORMATEX wanted = pcmFormat();
    if (!IsEqualGUID(type.majortype, MEDIATYPE_Audio) || !IsEqualGUID(type.subtype, MEDIASUBTYPE_PCM) ||
        !IsEqualGUID(type.formattype, FORMAT_WaveFormatEx) || !type.pbFormat || type.cbFormat < sizeof(PCMWAVEFORMAT))
        return S_FALSE;
    const WAVEFORMATEX *offered = reinterpret_cast<const WAVEFORMATEX *>(type.pbFormat);
    return offered->wFormatTag == wanted.wFormatTag && offered->nChannels == wanted.nChannels &&
                   offered->nSamplesPerSec == wanted.nSamplesPerSec && offered->wBitsPerSample == wanted.wBitsPerSample
               ? S_OK
               : S_FALSE;
}

long TunerAudioPin::bufferSize()
{
    return static_cast<long>(pcmFormat().nAvgBytesPerSec) * kBufferMs / 1000;
}

void TunerAudioPin::stream(HANDLE stopEvent)
{
    const Pace pace(kBufferMs);
    REFERENCE_TIME nextStart = 0;
    for (unsigned long buffer = 0; pace.waitFor(buffer, stopEvent); ++buffer) {
        if (!delivering())
            continue;
        if (deliverBuffer(nextStart) != S_OK) {
            idleUntilStopped(stopEvent);
            return;
        }
    }
}

HRESULT TunerAudioPin::deliverBuffer(REFERENCE_TIME &nextStart)
{
    CComPtr<IMediaSample> sample;
    BYTE *data = nullptr;
    HRESULT hr = getBuffer(sample, data);
    if (FAILED(hr))
        return hr;
    const long length = bufferSize();
    std::memset(data, 0, static_cast<size_t>(length));
    sample->SetActualDataLength(length);
    REFERENCE_TIME start = 0;
    if (!m_filter.streamTime(start))
        start = nextStart;
    REFERENCE_TIME end = start + kBufferTime;
    nextStart = end;
    sample->SetTime(&start, &end);
    sample->SetSyncPoint(TRUE);
    return deliver(sample);
}

} // namespace lab
