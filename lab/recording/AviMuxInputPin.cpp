#include "recording/AviMuxInputPin.h"

#include <cstdio>

#include "recording/AviMux.h"

namespace lab {

namespace {

std::wstring inputName(int number)
{
    wchar_t name[16];
    std::swprintf(name, 16, L"Input %02d", number);
    return name;
}

} // namespace

AviMuxInputPin::AviMuxInputPin(AviMux &mux, int number) : InputPin(mux, inputName(number)), m_mux(mux) {}

HRESULT AviMuxInputPin::checkMediaType(const AM_MEDIA_TYPE &type)
{
    if (!type.pbFormat)
        return S_FALSE;
    if (IsEqualGUID(type.majortype, MEDIATYPE_Video))
        return IsEqualGUID(type.formattype, FORMAT_VideoInfo) && type.cbFormat >= sizeof(VIDEOINFOHEADER) ? S_OK
                                                                                                          : S_FALSE;
    if (IsEqualGUID(type.majortype, MEDIATYPE_Audio))
        return IsEqualGUID(type.formattype, FORMAT_WaveFormatEx) && type.cbFormat >= sizeof(PCMWAVEFORMAT) ? S_OK
                                                                                                           : S_FALSE;
    return S_FALSE;
}

STDMETHODIMP AviMuxInputPin::EndOfStream()
{
    m_mux.inputEnded();
    return S_OK;
}

HRESULT AviMuxInputPin::receive(IMediaSample *sample)
{
    return m_mux.write(*this, sample);
}

HRESULT AviMuxInputPin::onConnected()
{
    m_mux.inputConnected();
    return S_OK;
}

} // namespace lab
