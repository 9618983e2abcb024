#include "recording/AviMux.h"

#include <cstddef>

#include "common/ClassRegistry.h"

namespace lab {

namespace {

const ClassRegistration registration(ClassInfo::plain(CLSID_AviDest, L"AVI Mux", &createObject<AviMux, IBaseFilter>));

} // namespace

AviMux::AviMux() : BaseFilter(CLSID_AviDest), m_output(*this)
{
    m_inputs.push_back(std::unique_ptr<AviMuxInputPin>(new AviMuxInputPin(*this, 1)));
}

int AviMux::pinCount()
{
    return static_cast<int>(m_inputs.size()) + 1;
}

BasePin *AviMux::pin(int index)
{
    if (index == 0)
        return &m_output;
    return index > 0 && index <= static_cast<int>(m_inputs.size()) ? m_inputs[index - 1].get() : nullptr;
}

void AviMux::inputConnected()
{
    std::lock_guard<std::recursive_mutex> guard(lock());
    for (const std::unique_ptr<AviMuxInputPin> &input : m_inputs) {
        if (!input->isConnected())
            return;
    }
    const int number = static_cast<int>(m_inputs.size()) + 1;
    m_inputs.push_back(std::unique_ptr<AviMuxInputPin>(new AviMuxInputPin(*this, number)));
}

HRESULT AviMux::onPause(bool fromStopped)
{
    return fromStopped ? beginFile() : S_OK;
}

HRESULT AviMux::beginFile()
{
    CComPtr<IStream> stream = m_output.stream();
    if (!stream)
        return VFW_E_NOT_CONNECTED;
    std::unique_ptr<AviRiffWriter> riff(new AviRiffWriter(stream));
    int streams = 0;
    for (const std::unique_ptr<AviMuxInputPin> &input : m_inputs) {
        input->setStream(input->isConnected() ? addStream(*riff, input->connectionType()) : -1);
        if (input->stream() >= 0)
            ++streams;
    }
    if (streams == 0)
        return VFW_E_NOT_CONNECTED;
    HRESULT hr = riff->begin();
    if (FAILED(hr))
        return hr;
    std::lock_guard<std::mutex> guard(m_fileLock);
    m_riff = std::move(riff);
    m_streams = streams;
    m_ended = 0;
    return S_OK;
}

int AviMux::addStream(AviRiffWriter &riff, const MediaType &type)
{
    if (const VIDEOINFOHEADER *video = type.videoInfo()) {
        const ULONG formatSize = type->cbFormat - static_cast<ULONG>(offsetof(VIDEOINFOHEADER, bmiHeader));
        return riff.addVideoStream(video->bmiHeader, formatSize, video->AvgTimePerFrame);
    }
    return riff.addAudioStream(*reinterpret_cast<const WAVEFORMATEX *>(type->pbFormat), type->cbFormat);
}

HRESULT AviMux::write(AviMuxInputPin &input, IMediaSample *sample)
{
    BYTE *data = nullptr;
    HRESULT hr = sample->GetPointer(&data);
    if (FAILED(hr))
        return hr;
    // Only temporally compressed streams have frames that depend on others.
    const bool keyFrame = !input.connectionType()->bTemporalCompression || sample->IsSyncPoint() == S_OK;
    std::lock_guard<std::mutex> guard(m_fileLock);
    if (!m_riff || !m_riff->isOpen() || input.stream() < 0)
        return VFW_E_WRONG_STATE;
    hr = m_riff->writeChunk(input.stream(), data, static_cast<ULONG>(sample->GetActualDataLength()), keyFrame);
    // A full file drops what comes after; the recording so far stays valid.
    return hr == STG_E_MEDIUMFULL ? S_OK : hr;
}

void AviMux::inputEnded()
{
    bool all = false;
    {
        std::lock_guard<std::mutex> guard(m_fileLock);
        all = ++m_ended == m_streams;
    }
    if (all)
        m_output.deliverEndOfStream();
}

void AviMux::onStop()
{
    std::lock_guard<std::mutex> guard(m_fileLock);
    if (m_riff && m_riff->isOpen())
        m_riff->finish();
    m_riff.reset();
}

} // namespace lab
