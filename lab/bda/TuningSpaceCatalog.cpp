#include "bda/TuningSpaceCatalog.h"

#include <new>

#include "bda/AtscLocator.h"
#include "bda/AtscTuningSpace.h"
#include "bda/DigitalCableTuningSpace.h"
#include "bda/DvbTuningSpace.h"
#include "bda/DvbtLocator.h"
#include "bda/ScopedBstr.h"
#include "common/DeviceConfig.h"
#include "common/DeviceRegistry.h"
#include "lab/BdaGuids.h"

namespace lab {

namespace {

// "Digital Cable as ATSCCable": a space of the first kind installed under the second's unique name.
const wchar_t kInstalledAs[] = L" as ";
const wchar_t *const kAllSpaces[] = {L"ATSC", L"ATSCCable", L"ClearQAM", L"Digital Cable", L"DVB-T"};

struct AtscSpaceTemplate {
    const wchar_t *name;
    const wchar_t *description;
    ModulationType modulation;
    AtscChannelRanges ranges;
};

AtscChannelRanges ranges(long minChannel, long maxChannel, TunerInputType input, long minPhysical, long maxPhysical)
{
    AtscChannelRanges result;
    result.minChannel = minChannel;
    result.maxChannel = maxChannel;
    result.inputType = input;
    result.countryCode = 0;
    result.minMinorChannel = 0;
    result.maxMinorChannel = 999;
    result.minPhysicalChannel = minPhysical;
    result.maxPhysicalChannel = maxPhysical;
    return result;
}

const AtscSpaceTemplate kAtscSpaces[] = {
    {L"ATSC", L"Local ATSC Digital Antenna", BDA_MOD_8VSB, ranges(1, 99, TunerInputAntenna, 2, 69)},
    {L"ATSCCable", L"Local ATSC Digital Cable", BDA_MOD_256QAM, ranges(1, 99, TunerInputCable, 1, 158)},
    {L"ClearQAM", L"Local Clear QAM Digital Cable", BDA_MOD_256QAM, ranges(1, 999, TunerInputCable, 1, 158)},
};

// The ITuningSpace fields of an installed space; E_OUTOFMEMORY when its default locator could
// not be made.
HRESULT installedFields(const wchar_t *name, const wchar_t *description, const CLSID &spaceClass,
                        const GUID &networkType, const CComPtr<ILocator> &defaultLocator, TuningSpaceFields &fields)
{
    if (!defaultLocator)
        return E_OUTOFMEMORY;
    fields.uniqueName = name;
    fields.friendlyName = description;
    fields.spaceClass = spaceClass;
    fields.networkType = networkType;
    fields.defaultLocator = defaultLocator;
    return S_OK;
}

HRESULT keep(ITuningSpace *created, CComPtr<ITuningSpace> &space)
{
    if (!created)
        return E_OUTOFMEMORY;
    space = created;
    return S_OK;
}

HRESULT createAtsc(const AtscSpaceTemplate &model, CComPtr<ITuningSpace> &space)
{
    TuningSpaceFields fields;
    const HRESULT hr = installedFields(model.name, model.description, kClsidAtscTuningSpace, kNetworkTypeAtsc,
                                       AtscLocator::withModulation(model.modulation), fields);
    if (FAILED(hr))
        return hr;
    return keep(new (std::nothrow) AtscTuningSpace(fields, model.ranges), space);
}

HRESULT createDigitalCable(CComPtr<ITuningSpace> &space)
{
    TuningSpaceFields fields;
    const HRESULT hr = installedFields(L"Digital Cable", L"Local Digital Cable", kClsidDigitalCableTuningSpace,
                                       kNetworkTypeDigitalCable, AtscLocator::withModulation(BDA_MOD_256QAM), fields);
    if (FAILED(hr))
        return hr;
    CableChannelRanges cable;
    cable.minMajorChannel = 1;
    cable.maxMajorChannel = 99;
    cable.minSourceId = 0;
    cable.maxSourceId = 0x7fffffff;
    return keep(new (std::nothrow) DigitalCableTuningSpace(fields, ranges(2, 9999, TunerInputCable, 2, 158), cable),
                space);
}

HRESULT createDvbt(CComPtr<ITuningSpace> &space)
{
    TuningSpaceFields fields;
    const HRESULT hr = installedFields(L"DVB-T", L"Local DVB-T Digital Antenna", kClsidDvbTuningSpace, kNetworkTypeDvbt,
                                       DvbtLocator::withBandwidth(8), fields);
    if (FAILED(hr))
        return hr;
    return keep(new (std::nothrow) DvbTuningSpace(fields, DVB_Terrestrial), space);
}

} // namespace

const wchar_t TuningSpaceCatalog::kDeviceName[] = L"System Tuning Spaces";

std::shared_ptr<DeviceState> TuningSpaceCatalog::device()
{
    return DeviceRegistry::device(kDeviceName);
}

std::vector<std::wstring> TuningSpaceCatalog::installedNames()
{
    std::wstring configured;
    if (!device()->find(L"spaces", configured))
        return std::vector<std::wstring>(std::begin(kAllSpaces), std::end(kAllSpaces));
    std::vector<std::wstring> names;
    for (const std::wstring &part : DeviceConfig::split(configured, L',')) {
        const std::wstring name = DeviceConfig::trim(part);
        if (!name.empty())
            names.push_back(name);
    }
    return names;
}

HRESULT TuningSpaceCatalog::create(const std::wstring &entry, CComPtr<ITuningSpace> &space)
{
    const size_t as = entry.find(kInstalledAs);
    if (as == std::wstring::npos)
        return createInstalled(entry, space);
    const HRESULT hr = createInstalled(DeviceConfig::trim(entry.substr(0, as)), space);
    if (FAILED(hr))
        return hr;
    ScopedBstr name(DeviceConfig::trim(entry.substr(as + wcslen(kInstalledAs))));
    return space->put_UniqueName(name.get());
}

HRESULT TuningSpaceCatalog::createInstalled(const std::wstring &uniqueName, CComPtr<ITuningSpace> &space)
{
    space.Release();
    if (uniqueName == L"DVB-T")
        return createDvbt(space);
    if (uniqueName == L"Digital Cable")
        return createDigitalCable(space);
    for (const AtscSpaceTemplate &model : kAtscSpaces) {
        if (uniqueName == model.name)
            return createAtsc(model, space);
    }
    return E_INVALIDARG;
}

HRESULT TuningSpaceCatalog::admitTuneRequest(const std::wstring &spaceName)
{
    const auto state = device();
    const std::wstring entry = L"CreateTuneRequest " + spaceName;
    const HRESULT fault = state->hresult(L"fault.CreateTuneRequest");
    if (FAILED(fault))
        state->record(entry + L" failed", fault);
    else
        state->record(entry);
    return fault;
}

std::wstring TuningSpaceCatalog::uniqueNameOf(ITuningSpace *space)
{
    ScopedBstr name;
    if (!space || FAILED(space->get_UniqueName(name.out())))
        return std::wstring();
    return name.text();
}

} // namespace lab
