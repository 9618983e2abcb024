#include "bda/TunerControl.h"

#include <vector>

#include "bda/AntennaPin.h"
#include "bda/NetworkProvider.h"
#include "bda/TuneDelivery.h"
#include "bda/TuneParameters.h"
#include "bda/TuningSpaceCatalog.h"
#include "bda/TuningSpaceEnumerator.h"
#include "common/DeviceRegistry.h"
#include "common/DeviceState.h"

namespace lab {

namespace {

GUID networkType(ITuningSpace *space)
{
    GUID type = GUID_NULL;
    if (space)
        space->get__NetworkType(&type);
    return type;
}

} // namespace

TunerControl::TunerControl(IUnknown &owner, AntennaPin &antenna, ProviderKind kind)
    : m_owner(owner), m_antenna(antenna), m_kind(kind), m_device(DeviceRegistry::device(NetworkProvider::kDeviceName))
{
}

STDMETHODIMP TunerControl::QueryInterface(REFIID iid, void **out)
{
    return m_owner.QueryInterface(iid, out);
}
STDMETHODIMP_(ULONG) TunerControl::AddRef()
{
    return m_owner.AddRef();
}
STDMETHODIMP_(ULONG) TunerControl::Release()
{
    return m_owner.Release();
}

bool TunerControl::acceptsSpace(ITuningSpace *space)
{
    return providerAccepts(m_kind, networkType(space));
}

HRESULT TunerControl::check(ITuneRequest *request, TuneParameters &tuning)
{
    if (!request)
        return E_POINTER;
    const HRESULT hr = TuneParameters::read(request, tuning);
    if (FAILED(hr))
        return hr;
    return providerAccepts(m_kind, tuning.networkType) ? S_OK : E_INVALIDARG;
}

STDMETHODIMP TunerControl::get_TuningSpace(ITuningSpace **space)
{
    if (!space)
        return E_POINTER;
    std::lock_guard<std::mutex> guard(m_lock);
    *space = nullptr;
    return m_space ? m_space.CopyTo(space) : E_FAIL;
}

STDMETHODIMP TunerControl::put_TuningSpace(ITuningSpace *space)
{
    if (!space)
        return E_POINTER;
    const std::wstring entry = L"TuningSpace " + TuningSpaceCatalog::uniqueNameOf(space);
    if (!acceptsSpace(space)) {
        m_device->record(entry + L" failed", E_INVALIDARG);
        return E_INVALIDARG;
    }
    {
        std::lock_guard<std::mutex> guard(m_lock);
        m_space = space;
    }
    m_device->record(entry);
    return S_OK;
}

STDMETHODIMP TunerControl::EnumTuningSpaces(IEnumTuningSpaces **spaces)
{
    if (!spaces)
        return E_POINTER;
    *spaces = nullptr;
    const HRESULT fault = m_device->hresult(L"fault.EnumTuningSpaces");
    if (FAILED(fault)) {
        m_device->record(L"EnumTuningSpaces failed", fault);
        return fault;
    }
    std::vector<CComPtr<ITuningSpace>> supported;
    for (const std::wstring &name : TuningSpaceCatalog::installedNames()) {
        CComPtr<ITuningSpace> space;
        if (SUCCEEDED(TuningSpaceCatalog::create(name, space)) && acceptsSpace(space))
            supported.push_back(space);
    }
    m_device->record(L"EnumTuningSpaces " + std::to_wstring(supported.size()));
    return TuningSpaceEnumerator::create(supported, spaces);
}

STDMETHODIMP TunerControl::get_TuneRequest(ITuneRequest **request)
{
    if (!request)
        return E_POINTER;
    *request = nullptr;
    const HRESULT fault = m_device->hresult(L"fault.get_TuneRequest");
    if (FAILED(fault)) {
        m_device->record(L"get_TuneRequest failed", fault);
        return fault;
    }
    std::lock_guard<std::mutex> guard(m_lock);
    return m_request ? m_request->Clone(request) : E_FAIL;
}

STDMETHODIMP TunerControl::put_TuneRequest(ITuneRequest *request)
{
    if (!request)
        return E_POINTER;
    TuneParameters tuning;
    HRESULT hr = check(request, tuning);
    const std::wstring entry = L"TuneRequest " + tuning.describe();
    if (FAILED(hr)) {
        m_device->record(entry + L" failed", hr);
        return hr;
    }
    hr = m_device->hresult(L"fault.put_TuneRequest");
    if (FAILED(hr)) {
        m_device->record(entry + L" failed", hr);
        return hr;
    }
    CComPtr<ITuneRequest> kept;
    hr = request->Clone(&kept);
    if (FAILED(hr))
        return hr;
    CComPtr<ITuningSpace> space;
    kept->get_TuningSpace(&space);
    const CComPtr<IPin> tunerInput = m_antenna.peer();
    {
        std::lock_guard<std::mutex> guard(m_lock);
        m_request = kept;
        m_space = space;
        m_pending = !tunerInput;
    }
    hr = tunerInput ? TuneDelivery::deliver(tunerInput, tuning) : S_OK;
    if (FAILED(hr))
        m_device->record(entry + L" failed", hr);
    else
        m_device->record(entry);
    return hr;
}

void TunerControl::deliverPending()
{
    CComPtr<ITuneRequest> request;
    {
        std::lock_guard<std::mutex> guard(m_lock);
        if (!m_pending)
            return;
        m_pending = false;
        request = m_request;
    }
    const CComPtr<IPin> tunerInput = m_antenna.peer();
    TuneParameters tuning;
    if (!tunerInput || FAILED(TuneParameters::read(request, tuning)))
        return;
    const std::wstring entry = L"Deliver " + tuning.describe();
    const HRESULT hr = TuneDelivery::deliver(tunerInput, tuning);
    if (FAILED(hr))
        m_device->record(entry + L" failed", hr);
    else
        m_device->record(entry);
}

STDMETHODIMP TunerControl::Validate(ITuneRequest *request)
{
    TuneParameters tuning;
    return check(request, tuning);
}

// Component preferences and signal events belong to the Video Control's world, which the lab
// does not serve.
STDMETHODIMP TunerControl::get_PreferredComponentTypes(IComponentTypes **types)
{
    if (types)
        *types = nullptr;
    return E_NOTIMPL;
}

STDMETHODIMP TunerControl::put_PreferredComponentTypes(IComponentTypes *)
{
    return E_NOTIMPL;
}

STDMETHODIMP TunerControl::get_SignalStrength(LONG *strength)
{
    if (!strength)
        return E_POINTER;
    *strength = 0;
    return E_NOTIMPL;
}

STDMETHODIMP TunerControl::TriggerSignalEvents(LONG)
{
    return S_OK;
}

} // namespace lab
