#include "StubBdaNode.h"

#include <string>

#include "StubBdaTuner.h"

namespace labtest {

namespace {
HRESULT unexpected(const char *call)
{
    return StubBdaTuner::unexpectedCall("a BDA control node", call);
}
} // namespace

STDMETHODIMP StubBdaNode::QueryInterface(REFIID iid, void **out)
{
    if (!out)
        return E_POINTER;
    *out = nullptr;
    if (IsEqualIID(iid, IID_IUnknown))
        *out = static_cast<IBDA_FrequencyFilter *>(this);
    else if (IsEqualIID(iid, __uuidof(IBDA_FrequencyFilter)) && !m_demodulator)
        *out = static_cast<IBDA_FrequencyFilter *>(this);
    else if (IsEqualIID(iid, __uuidof(IBDA_DigitalDemodulator)) && m_demodulator)
        *out = static_cast<IBDA_DigitalDemodulator *>(this);
    if (!*out)
        return E_NOINTERFACE;
    AddRef();
    return S_OK;
}

STDMETHODIMP_(ULONG) StubBdaNode::AddRef()
{
    return m_filter.AddRef();
}
STDMETHODIMP_(ULONG) StubBdaNode::Release()
{
    return m_filter.Release();
}

HRESULT StubBdaNode::set(const wchar_t *call, long value)
{
    const HRESULT hr = m_filter.failure(call);
    m_filter.record(std::wstring(call) + L" " + std::to_wstring(value));
    return hr;
}

STDMETHODIMP StubBdaNode::put_Frequency(ULONG frequency)
{
    return set(L"Frequency", static_cast<long>(frequency));
}
STDMETHODIMP StubBdaNode::put_Bandwidth(ULONG bandwidth)
{
    return set(L"Bandwidth", static_cast<long>(bandwidth));
}
STDMETHODIMP StubBdaNode::put_FrequencyMultiplier(ULONG multiplier)
{
    return set(L"FrequencyMultiplier", static_cast<long>(multiplier));
}
STDMETHODIMP StubBdaNode::put_ModulationType(ModulationType *modulation)
{
    if (!modulation)
        return unexpected("put_ModulationType(null)");
    return set(L"ModulationType", static_cast<long>(*modulation));
}

STDMETHODIMP StubBdaNode::put_Autotune(ULONG)
{
    return unexpected("put_Autotune");
}
STDMETHODIMP StubBdaNode::get_Autotune(ULONG *)
{
    return unexpected("get_Autotune");
}
STDMETHODIMP StubBdaNode::get_Frequency(ULONG *)
{
    return unexpected("get_Frequency");
}
STDMETHODIMP StubBdaNode::put_Polarity(Polarisation)
{
    return unexpected("put_Polarity");
}
STDMETHODIMP StubBdaNode::get_Polarity(Polarisation *)
{
    return unexpected("get_Polarity");
}
STDMETHODIMP StubBdaNode::put_Range(ULONG)
{
    return unexpected("put_Range");
}
STDMETHODIMP StubBdaNode::get_Range(ULONG *)
{
    return unexpected("get_Range");
}
STDMETHODIMP StubBdaNode::get_Bandwidth(ULONG *)
{
    return unexpected("get_Bandwidth");
}
STDMETHODIMP StubBdaNode::get_FrequencyMultiplier(ULONG *)
{
    return unexpected("get_FrequencyMultiplier");
}
STDMETHODIMP StubBdaNode::get_ModulationType(ModulationType *)
{
    return unexpected("get_ModulationType");
}
STDMETHODIMP StubBdaNode::put_InnerFECMethod(FECMethod *)
{
    return unexpected("put_InnerFECMethod");
}
STDMETHODIMP StubBdaNode::get_InnerFECMethod(FECMethod *)
{
    return unexpected("get_InnerFECMethod");
}
STDMETHODIMP StubBdaNode::put_InnerFECRate(BinaryConvolutionCodeRate *)
{
    return unexpected("put_InnerFECRate");
}
STDMETHODIMP StubBdaNode::get_InnerFECRate(BinaryConvolutionCodeRate *)
{
    return unexpected("get_InnerFECRate");
}
STDMETHODIMP StubBdaNode::put_OuterFECMethod(FECMethod *)
{
    return unexpected("put_OuterFECMethod");
}
STDMETHODIMP StubBdaNode::get_OuterFECMethod(FECMethod *)
{
    return unexpected("get_OuterFECMethod");
}
STDMETHODIMP StubBdaNode::put_OuterFECRate(BinaryConvolutionCodeRate *)
{
    return unexpected("put_OuterFECRate");
}
STDMETHODIMP StubBdaNode::get_OuterFECRate(BinaryConvolutionCodeRate *)
{
    return unexpected("get_OuterFECRate");
}
STDMETHODIMP StubBdaNode::put_SymbolRate(ULONG *)
{
    return unexpected("put_SymbolRate");
}
STDMETHODIMP StubBdaNode::get_SymbolRate(ULONG *)
{
    return unexpected("get_SymbolRate");
}
STDMETHODIMP StubBdaNode::put_SpectralInversion(SpectralInversion *)
{
    return unexpected("put_SpectralInversion");
}
STDMETHODIMP StubBdaNode::get_SpectralInversion(SpectralInversion *)
{
    return unexpected("get_SpectralInversion");
}

} // namespace labtest
