#include "bda/TuningSpaceCatalog.h"

#include <new>

#include "bda/AtscLocator.h"
#include "bda/AtscTuningSpace.h"
#include "bda/DvbTuningSpace.h"
#include "bda/DvbtLocator.h"
#include "bda/ScopedBstr.h"
#include "common/DeviceConfig.h"
#include "common/DeviceRegistry.h"
#include "lab/BdaGuids.h"

namespace lab {

namespace {

const wchar_t *const kAllSpaces[] = {L"ATSC", L"ATSCCable", L"ClearQAM", L"Digital Cable", L"DVB-T"};

struct AtscSpaceTemplate {
    const wchar_t *name;
    const wchar_t *description;
    const CLSID *spaceClass;
    const GUID *networkType;
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
    {L"ATSC", L"Local ATSC Digital Antenna", &kClsidAtscTuningSpace, &kNetworkTypeAtsc, BDA_MOD_8VSB,
     ranges(1, 99, TunerInputAntenna, 2, 69)},
    {L"ATSCCable", L"Local ATSC Digital Cable", &kClsidAtscTuningSpace, &kNetworkTypeAtsc, BDA_MOD_256QAM,
     ranges(1, 99, TunerInputCable, 1, 158)},
    {L"ClearQAM", L"Local Clear QAM Digital Cable", &kClsidAtscTuningSpace, &kNetworkTypeAtsc, BDA_MOD_256QAM,
     ranges(1, 999, TunerInputCable, 1, 158)},
    {L"Digital Cable", L"Local Digital Cable", &kClsidDigitalCableTuningSpace, &kNetworkTypeDigitalCable,
     BDA_MOD_256QAM, ranges(2, 9999, TunerInputCable, 2, 158)},
};

HRESULT createAtsc(const AtscSpaceTemplate &model, CComPtr<ITuningSpace> &space)
{
    TuningSpaceFields fields;
    fields.uniqueName = model.name;
    fields.friendlyName = model.description;
    fields.spaceClass = *model.spaceClass;
    fields.networkType = *model.networkType;
    const CComPtr<ILocator> locator = AtscLocator::withModulation(model.modulation);
    fields.defaultLocator = locator;
    AtscTuningSpace *created = new (std::nothrow) AtscTuningSpace(fields, model.ranges);
    if (!created || !fields.defaultLocator) {
        delete created;
        return E_OUTOFMEMORY;
    }
    space = created;
    return S_OK;
}

HRESULT createDvbt(CComPtr<ITuningSpace> &space)
{
    TuningSpaceFields fields;
    fields.uniqueName = L"DVB-T";
    fields.friendlyName = L"Local DVB-T Digital Antenna";
    fields.spaceClass = kClsidDvbTuningSpace;
    fields.networkType = kNetworkTypeDvbt;
    const CComPtr<ILocator> locator = DvbtLocator::withBandwidth(8);
    fields.defaultLocator = locator;
    DvbTuningSpace *created = new (std::nothrow) DvbTuningSpace(fields, DVB_Terrestrial);
    if (!created || !fields.defaultLocator) {
        delete created;
        return E_OUTOFMEMORY;
    }
    space = created;
    return S_OK;
}

} // namespace

const wchar_t TuningSpaceCatalog::kDeviceName[] = L"System Tuning Spaces";

std::shared_ptr<DeviceState> TuningSpaceCatalog::device() { return DeviceRegistry::device(kDeviceName); }

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

HRESULT TuningSpaceCatalog::create(const std::wstring &uniqueName, CComPtr<ITuningSpace> &space)
{
    space.Release();
    if (uniqueName == L"DVB-T")
        return createDvbt(space);
    for (const AtscSpaceTemplate &model : kAtscSpaces) {
        if (uniqueName == model.name)
            return createAtsc(model, space);
    }
    return E_INVALIDARG;
}

std::wstring TuningSpaceCatalog::uniqueNameOf(ITuningSpace *space)
{
    ScopedBstr name;
    if (!space || FAILED(space->get_UniqueName(name.out())))
        return std::wstring();
    return name.text();
}

} // namespace lab
