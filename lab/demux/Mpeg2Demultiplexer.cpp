#include "demux/Mpeg2Demultiplexer.h"

#include <dvdmedia.h>
#include <mmreg.h>
#include <uuids.h>

#include "common/ClassRegistry.h"
#include "bda/TuningSpaceCatalog.h"
#include "common/DeviceRegistry.h"

namespace lab {

namespace {

const ClassRegistration registration(ClassInfo::plain(CLSID_MPEG2Demultiplexer, L"MPEG-2 Demultiplexer",
                                                      &createObject<Mpeg2Demultiplexer, IBaseFilter>));

const REFERENCE_TIME kFrameTime = 333667; // 1001/30000 s
const long kVideoBufferBytes = 256 * 1024;
const long kAudioBufferBytes = 16 * 1024;
const long kSectionBufferBytes = 4096 + 188;
// AM_MPEG2Profile_Main and AM_MPEG2Level_Main of Windows' dvdmedia.h (mingw-w64 lacks them).
const DWORD kProfileMain = 2;
const DWORD kLevelMain = 2;
// A video subtype of the lab's own that nothing in a graph accepts.
const GUID kUnknownVideoSubtype = {0x5d1b7c2e, 0x4a36, 0x4f0e, {0x9c, 0x21, 0x7e, 0x0b, 0x52, 0xd4, 0x8a, 0x13}};

} // namespace

const wchar_t Mpeg2Demultiplexer::kDeviceName[] = L"MPEG-2 Demultiplexer";

Mpeg2Demultiplexer::Mpeg2Demultiplexer()
    : BaseFilter(CLSID_MPEG2Demultiplexer), m_input(*this),
      m_video(*this, L"Video", videoType(DeviceRegistry::device(kDeviceName)->flag(L"fault.video")), kVideoBufferBytes),
      m_audio(*this, L"Audio", audioType(), kAudioBufferBytes),
      m_sections(*this, L"Sections", sectionsType(), kSectionBufferBytes), m_device(DeviceRegistry::device(kDeviceName))
{
}

STDMETHODIMP Mpeg2Demultiplexer::EnumPins(IEnumPins **pins)
{
    HRESULT fault = m_device->hresult(L"fault.EnumPins");
    if (SUCCEEDED(fault) && dvbSystemTypePut())
        fault = m_device->hresult(L"fault.EnumPins.afterSystemType");
    if (FAILED(fault)) {
        if (pins)
            *pins = nullptr;
        m_device->record(L"EnumPins failed", fault);
        return fault;
    }
    return BaseFilter::EnumPins(pins);
}

bool Mpeg2Demultiplexer::dvbSystemTypePut()
{
    for (const std::wstring &entry : DeviceRegistry::device(TuningSpaceCatalog::kDeviceName)->journal()) {
        if (entry.compare(0, 11, L"SystemType ") == 0)
            return true;
    }
    return false;
}

MediaType Mpeg2Demultiplexer::videoType(bool unrenderable)
{
    MPEG2VIDEOINFO info = {};
    info.hdr.rcSource = {0, 0, kVideoWidth, kVideoHeight};
    info.hdr.rcTarget = info.hdr.rcSource;
    info.hdr.AvgTimePerFrame = kFrameTime;
    info.hdr.dwPictAspectRatioX = 4;
    info.hdr.dwPictAspectRatioY = 3;
    info.hdr.bmiHeader.biSize = sizeof(BITMAPINFOHEADER);
    info.hdr.bmiHeader.biWidth = kVideoWidth;
    info.hdr.bmiHeader.biHeight = kVideoHeight;
    info.dwProfile = kProfileMain;
    info.dwLevel = kLevelMain;
    AM_MEDIA_TYPE type = {};
    type.majortype = MEDIATYPE_Video;
    type.subtype = unrenderable ? kUnknownVideoSubtype : MEDIASUBTYPE_MPEG2_VIDEO;
    type.formattype = FORMAT_MPEG2Video;
    type.bTemporalCompression = TRUE;
    type.cbFormat = sizeof(info);
    type.pbFormat = reinterpret_cast<BYTE *>(&info);
    return MediaType(type);
}

MediaType Mpeg2Demultiplexer::audioType()
{
    WAVEFORMATEX format = {};
    format.wFormatTag = WAVE_FORMAT_MPEG;
    format.nChannels = 2;
    format.nSamplesPerSec = 48000;
    format.nAvgBytesPerSec = 24000;
    format.nBlockAlign = 1;
    AM_MEDIA_TYPE type = {};
    type.majortype = MEDIATYPE_Audio;
    type.subtype = MEDIASUBTYPE_MPEG2_AUDIO;
    type.formattype = FORMAT_WaveFormatEx;
    type.cbFormat = sizeof(format);
    type.pbFormat = reinterpret_cast<BYTE *>(&format);
    return MediaType(type);
}

MediaType Mpeg2Demultiplexer::sectionsType()
{
    AM_MEDIA_TYPE type = {};
    type.majortype = MEDIATYPE_MPEG2_SECTIONS;
    type.subtype = MEDIASUBTYPE_None;
    type.formattype = FORMAT_None;
    return MediaType(type);
}

int Mpeg2Demultiplexer::pinCount()
{
    std::lock_guard<std::recursive_mutex> guard(lock());
    return m_outputsShown ? 4 : 1;
}

BasePin *Mpeg2Demultiplexer::pin(int index)
{
    switch (index) {
    case 0:
        return &m_input;
    case 1:
        return m_outputsShown ? &m_video : nullptr;
    case 2:
        return m_outputsShown ? &m_audio : nullptr;
    case 3:
        return m_outputsShown ? &m_sections : nullptr;
    default:
        return nullptr;
    }
}

// The outputs come with the first transport stream connected and stay, as pins a network
// provider configured on a demultiplexer stay.
void Mpeg2Demultiplexer::inputConnected()
{
    std::lock_guard<std::recursive_mutex> guard(lock());
    m_outputsShown = true;
}

HRESULT Mpeg2Demultiplexer::onPause(bool fromStopped)
{
    if (fromStopped) {
        std::lock_guard<std::mutex> guard(m_streamLock);
        m_demux.reset();
        m_discontinuity = true;
    }
    return S_OK;
}

HRESULT Mpeg2Demultiplexer::receive(IMediaSample *sample)
{
    BYTE *data = nullptr;
    if (FAILED(sample->GetPointer(&data)) || !data)
        return S_OK;
    std::vector<DemuxUnit> units;
    bool discontinuity = false;
    {
        std::lock_guard<std::mutex> guard(m_streamLock);
        if (sample->IsDiscontinuity() == S_OK)
            m_demux.reset();
        m_demux.feed(data, static_cast<size_t>(sample->GetActualDataLength()), units);
        discontinuity = m_discontinuity && !units.empty();
        if (!units.empty())
            m_discontinuity = false;
    }
    for (const DemuxUnit &unit : units) {
        switch (unit.kind) {
        case DemuxUnit::Kind::Video:
            m_video.deliverUnit(unit.data, discontinuity);
            break;
        case DemuxUnit::Kind::Audio:
            m_audio.deliverUnit(unit.data, discontinuity);
            break;
        case DemuxUnit::Kind::Section:
            m_sections.deliverUnit(unit.data, discontinuity);
            break;
        }
    }
    return S_OK;
}

void Mpeg2Demultiplexer::endOfStream()
{
    for (DemuxOutputPin *output : {&m_video, &m_audio, &m_sections}) {
        if (output->isConnected())
            output->deliverEndOfStream();
    }
}

} // namespace lab
