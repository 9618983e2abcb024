#include "bda/NetworkProvider.h"

#include <new>

#include <uuids.h>

#include "common/ClassRegistry.h"
#include "common/DeviceRegistry.h"
#include "common/DeviceState.h"
#include "lab/BdaGuids.h"

namespace lab {

namespace {

const ClassRegistration generic(ClassInfo::plain(kClsidNetworkProvider, L"Sorvane Lab Network Provider",
                                                 &NetworkProvider::createGeneric));
const ClassRegistration atsc(ClassInfo::plain(CLSID_ATSCNetworkProvider, L"Sorvane Lab ATSC Network Provider",
                                              &NetworkProvider::createAtsc));
const ClassRegistration dvbt(ClassInfo::plain(CLSID_DVBTNetworkProvider, L"Sorvane Lab DVB-T Network Provider",
                                              &NetworkProvider::createDvbt));

} // namespace

const wchar_t NetworkProvider::kDeviceName[] = L"Network Provider";

NetworkProvider::NetworkProvider(const CLSID &clsid, ProviderKind kind)
    : BaseFilter(clsid), m_kind(kind), m_antenna(*this), m_tuner(*this, m_antenna, kind), m_frequencyMap(*this)
{
}

HRESULT NetworkProvider::create(const CLSID &clsid, ProviderKind kind, REFIID iid, void **out)
{
    if (!out)
        return E_POINTER;
    *out = nullptr;
    NetworkProvider *provider = new (std::nothrow) NetworkProvider(clsid, kind);
    if (!provider)
        return E_OUTOFMEMORY;
    CComPtr<IBaseFilter> hold(provider);
    return hold->QueryInterface(iid, out);
}

HRESULT NetworkProvider::createGeneric(REFIID iid, void **out)
{
    return create(kClsidNetworkProvider, ProviderKind::Generic, iid, out);
}

HRESULT NetworkProvider::createAtsc(REFIID iid, void **out)
{
    return create(CLSID_ATSCNetworkProvider, ProviderKind::Atsc, iid, out);
}

HRESULT NetworkProvider::createDvbt(REFIID iid, void **out)
{
    return create(CLSID_DVBTNetworkProvider, ProviderKind::Dvbt, iid, out);
}

BasePin *NetworkProvider::pin(int index)
{
    return index == 0 ? &m_antenna : nullptr;
}

STDMETHODIMP NetworkProvider::JoinFilterGraph(IFilterGraph *graph, LPCWSTR name)
{
    if (graph) {
        const auto device = DeviceRegistry::device(kDeviceName);
        const HRESULT refused = device->hresult(L"fault.join");
        if (FAILED(refused)) {
            device->record(L"Join failed", refused);
            return refused;
        }
    }
    return BaseFilter::JoinFilterGraph(graph, name);
}

void *NetworkProvider::queryExtra(REFIID iid)
{
    if (IsEqualIID(iid, __uuidof(ITuner)) && !DeviceRegistry::device(kDeviceName)->flag(L"fault.ITuner"))
        return static_cast<ITuner *>(&m_tuner);
    // Only the DVB-T provider keeps frequency tables, and a provider without them can be asked for.
    if (IsEqualIID(iid, __uuidof(IFrequencyMap)) && m_kind == ProviderKind::Dvbt &&
        !DeviceRegistry::device(kDeviceName)->flag(L"fault.IFrequencyMap"))
        return static_cast<IFrequencyMap *>(&m_frequencyMap);
    return nullptr;
}

HRESULT NetworkProvider::onPause(bool fromStopped)
{
    if (fromStopped)
        m_tuner.deliverPending();
    return S_OK;
}

} // namespace lab
