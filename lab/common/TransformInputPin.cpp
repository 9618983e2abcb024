#include "common/TransformInputPin.h"

#include "common/TransformFilter.h"

namespace lab {

TransformInputPin::TransformInputPin(TransformFilter &filter) : InputPin(filter, L"In"), m_transform(filter) {}

STDMETHODIMP TransformInputPin::EndOfStream()
{
    m_transform.output().deliverEndOfStream();
    return S_OK;
}

STDMETHODIMP TransformInputPin::BeginFlush()
{
    InputPin::BeginFlush();
    m_transform.output().deliverBeginFlush();
    return S_OK;
}

STDMETHODIMP TransformInputPin::EndFlush()
{
    InputPin::EndFlush();
    m_transform.output().deliverEndFlush();
    return S_OK;
}

STDMETHODIMP TransformInputPin::NewSegment(REFERENCE_TIME start, REFERENCE_TIME stop, double rate)
{
    CComPtr<IPin> peer;
    if (SUCCEEDED(m_transform.output().ConnectedTo(&peer)))
        peer->NewSegment(start, stop, rate);
    return S_OK;
}

HRESULT TransformInputPin::checkMediaType(const AM_MEDIA_TYPE &type)
{
    return m_transform.checkInput(type);
}

HRESULT TransformInputPin::receive(IMediaSample *sample)
{
    return m_transform.receive(sample);
}

} // namespace lab
