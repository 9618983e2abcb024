#include "DSMoniker.h"
#include "CaptureFeature.h"
#include "CaptureLog.h"
#include "CaptureUtil.h"
#include "CoTaskMemPtr.h"
#include "DeviceIdParser.h"
#include "ErrorHandler.h"
#include "MonikerProperty.h"
#include "ScopedRegistryKey.h"
#include "ScopedVariant.h"

#include <kel/AssertionFailure.h>
#include <atlbase.h>
#include <dshow.h>
#include <tuner.h>

SORVANE_LOG_CATEGORY(SORVANE_CAPTURE_CATEGORY)

#define MONIKER_LOG(number, message) SORVANE_LOG_NUMBERED(kel::LOG_DETAIL, number, message)

namespace sorvane {

namespace {

// The analog standards a tuner reports in its AnalogVideoStandard mask. PAL (G), 0x40, has no
// standard of its own and is left out.
struct StandardBit {
    long bit;
    CaptureStandard &(*standard)();
};

const StandardBit kStandardBits[] = {
    {0x1, &CaptureStandard::NTSC},         {0x2, &CaptureStandard::NTSC_J},      {0x4, &CaptureStandard::NTSC_433},
    {0x10, &CaptureStandard::PAL_B},       {0x20, &CaptureStandard::PAL_D},      {0x80, &CaptureStandard::PAL_H},
    {0x100, &CaptureStandard::PAL_I},      {0x200, &CaptureStandard::PAL_M},     {0x400, &CaptureStandard::PAL_N},
    {0x800, &CaptureStandard::PAL_60},     {0x1000, &CaptureStandard::SECAM_B},  {0x2000, &CaptureStandard::SECAM_D},
    {0x4000, &CaptureStandard::SECAM_G},   {0x8000, &CaptureStandard::SECAM_H},  {0x10000, &CaptureStandard::SECAM_K},
    {0x20000, &CaptureStandard::SECAM_K1}, {0x40000, &CaptureStandard::SECAM_L}, {0x80000, &CaptureStandard::SECAM_L1},
    {0x100000, &CaptureStandard::COMBO},
};

const wchar_t *const kFilterDriverKeyPrefix = L"Software\\Classes\\CLSID\\";
const wchar_t *const kFilterDriverKeySuffix = L"\\InprocServer32";
const wchar_t *const kProbeTuningSpace = L"ATSC";
// Fourteen blanks put a further capability under the first one, after "Capabilities: ".
const wchar_t *const kCapabilityIndent = L"              ";

kel::String hrText(HRESULT hr)
{
    return ErrorHandler::errorMessageFromHr(hr);
}

// Logs a failed call of the digital probe: its name, " failed: " and the message.
bool probeFailed(const char *call, HRESULT hr)
{
    SORVANE_LOG_DETAIL(call << " failed: " << hrText(hr));
    return false;
}

void addStandards(CaptureCapability &capability, long formats)
{
    for (const StandardBit &entry : kStandardBits) {
        if (formats & entry.bit)
            capability.addStandard(entry.standard());
    }
}

// The first pin of `filter` in `direction` that is not connected yet.
CComPtr<IPin> freePin(IBaseFilter *filter, PIN_DIRECTION direction)
{
    CComPtr<IEnumPins> pins;
    if (FAILED(filter->EnumPins(&pins)) || !pins)
        return CComPtr<IPin>();
    for (;;) {
        CComPtr<IPin> pin;
        if (pins->Next(1, &pin, nullptr) != S_OK)
            return CComPtr<IPin>();
        PIN_DIRECTION pinDirection;
        CComPtr<IPin> peer;
        if (SUCCEEDED(pin->QueryDirection(&pinDirection)) && pinDirection == direction &&
            pin->ConnectedTo(&peer) == VFW_E_NOT_CONNECTED)
            return pin;
    }
}

// Connects the network provider's output to the tuner filter's input.
HRESULT connectFilters(IGraphBuilder *graph, IBaseFilter *upstream, IBaseFilter *downstream)
{
    CComPtr<IPin> output = freePin(upstream, PINDIR_OUTPUT);
    CComPtr<IPin> input = freePin(downstream, PINDIR_INPUT);
    if (!output || !input)
        return VFW_E_NOT_FOUND;
    return graph->Connect(output, input);
}

// The network provider class of the "ATSC" tuning space, created as a filter.
bool createNetworkProvider(CComPtr<IBaseFilter> &provider)
{
    CComPtr<ITuningSpaceContainer> container;
    HRESULT hr = container.CoCreateInstance(CLSID_SystemTuningSpaces, nullptr, CLSCTX_INPROC_SERVER);
    if (FAILED(hr))
        return probeFailed("CoCreateInstance(CLSID_SystemTuningSpaces)", hr);
    ScopedVariant name;
    name.get()->vt = VT_BSTR;
    name.get()->bstrVal = SysAllocString(kProbeTuningSpace);
    CComPtr<ITuningSpace> space;
    hr = container->get_Item(name.value(), &space);
    if (FAILED(hr) || !space)
        return probeFailed("ITuningSpaceContainer::get_Item", FAILED(hr) ? hr : E_POINTER);
    // The BSTR is owned by the variant, which frees it.
    ScopedVariant networkType;
    networkType.get()->vt = VT_BSTR;
    hr = space->get_NetworkType(&networkType.get()->bstrVal);
    if (FAILED(hr))
        return probeFailed("ITuningSpace::get_NetworkType", hr);
    CLSID providerClass;
    hr = CLSIDFromString(networkType.value().bstrVal, &providerClass);
    if (FAILED(hr))
        return probeFailed("CLSIDFromString", hr);
    hr = provider.CoCreateInstance(providerClass, nullptr, CLSCTX_INPROC_SERVER);
    if (FAILED(hr))
        return probeFailed("CoCreateInstance(ATSC Network Provider)", hr);
    return true;
}

} // namespace

const int DSMoniker::kMaxMonikersPerCategory;

void DSMoniker::enumerateMonikers(kel::Array<DSMoniker> &out, const CaptureStreamType &streamType)
{
    MONIKER_LOG(94, "Enumerating DirectShow " << streamType.name() << " Monikers");
    CComPtr<ICreateDevEnum> deviceEnumerator;
    const HRESULT hr = deviceEnumerator.CoCreateInstance(CLSID_SystemDeviceEnum, nullptr, CLSCTX_INPROC_SERVER);
    if (FAILED(hr)) {
        SORVANE_LOG_NUMBERED(kel::LOG_ERROR, 105, "CoCreateInstance(CLSID_SystemDeviceEnum) failed: " << hrText(hr));
        return;
    }
    if (!deviceEnumerator) {
        MONIKER_LOG(110, "DeviceEnumerator is null, CoCreateInstance(CLSID_SystemDeviceEnum) failed: " << hrText(hr));
        return;
    }
    if (streamType == CaptureStreamType::ALL()) {
        enumerateMonikersOfType(CaptureStreamType::ANALOG(), deviceEnumerator, out);
        enumerateMonikersOfType(CaptureStreamType::DIGITAL(), deviceEnumerator, out);
    } else {
        enumerateMonikersOfType(streamType, deviceEnumerator, out);
    }
}

void DSMoniker::enumerateMonikersOfType(const CaptureStreamType &streamType, ICreateDevEnum *deviceEnumerator,
                                        kel::Array<DSMoniker> &out)
{
    MONIKER_LOG(127, "Enumerating " << streamType.name() << " Monikers");
    MONIKER_LOG(129, "ICreateDevEnum::CreateClassEnumerator " << streamType.name());
    CComPtr<IEnumMoniker> enumerator;
    // A placeholder names no category: asked for the null one, the enumerator finds nothing,
    // and only create() insists on a real type.
    const GUID category = streamType.isPlaceHolder() ? GUID_NULL : streamType.classId();
    const HRESULT hr = deviceEnumerator->CreateClassEnumerator(category, &enumerator, 0);
    if (FAILED(hr)) {
        SORVANE_LOG_NUMBERED(kel::LOG_ERROR, 133, "Creating video input device iterator failed: " << hrText(hr));
        return;
    }
    // S_FALSE: the category is empty and no enumerator was made.
    if (!enumerator) {
        MONIKER_LOG(136, "DirectShow Device Enumerator is null.  Usually means no devices of this type on the system.");
        return;
    }
    for (int counter = 0;;) {
        MONIKER_LOG(144, "IEnumMoniker::Next");
        CComPtr<IMoniker> moniker;
        if (enumerator->Next(1, &moniker, nullptr) != S_OK) {
            MONIKER_LOG(147, "Finished enum loop");
            return;
        }
        if (!moniker) {
            MONIKER_LOG(151, "Finished enum loop due to null");
            return;
        }
        if (++counter > kMaxMonikersPerCategory) {
            SORVANE_LOG_NUMBERED(kel::LOG_ERROR, 156, "Finished enum loop due to exceeded max devices");
            return;
        }
        MONIKER_LOG(160, "DirectShow " << streamType.name() << " Moniker " << counter << ":");
        DSMoniker record;
        record.create(moniker, streamType, counter);
        out.add(record);
        MONIKER_LOG(165, "");
        MONIKER_LOG(166, "DSMoniker: "
                             << "\n"
                             << record.toFormattedString(kel::String(L"  ")));
        MONIKER_LOG(167, "");
    }
}

DSMoniker::DSMoniker() : m_enumIndex(0), m_busType(CaptureBusType::NOTSET()) {}

void DSMoniker::create(IMoniker *moniker, const CaptureStreamType &type, int enumIndex)
{
    KEL_ASSERT(!type.isPlaceHolder());
    m_captureStreamType = type;
    m_enumIndex = enumIndex;

    CoTaskMemPtr<wchar_t> displayName;
    const HRESULT hr = moniker->GetDisplayName(nullptr, nullptr, displayName.receive());
    if (SUCCEEDED(hr) && displayName) {
        m_monikerName = kel::String(displayName.get());
        SORVANE_LOG_DETAIL("Moniker Name: " << m_monikerName);
    } else {
        SORVANE_LOG_DETAIL("IMoniker::GetDisplayName: " << hrText(hr) << " failed:");
    }
    readProperties(moniker);
    parseMonikerInfo(kel::String(L"KELR\\") + type.name() + L":" + kel::String::fromInt(enumIndex));
    getFilterDriverName();
    // OpenCable receivers are digital tuners whose filters are not probed.
    if (m_filterName.toUpper().contains(kel::String(L"OPENCABLE")))
        appendCapability(CaptureCapability(CaptureStreamType::DIGITAL(), CaptureFeature::TVTUNING()));
    else
        getCapabilities(moniker, type);
    SORVANE_LOG_DETAIL("Moniker:\n" << toFormattedString(kel::String(L"  ")));
}

void DSMoniker::readProperties(IMoniker *moniker)
{
    CComPtr<IPropertyBag> bag;
    const HRESULT hr = moniker->BindToStorage(nullptr, nullptr, IID_PPV_ARGS(&bag));
    if (FAILED(hr) || !bag) {
        SORVANE_LOG_DETAIL("IMoniker::BindToStorage: " << hrText(hr) << " failed: ");
        return;
    }
    getMonikerProperty(bag, kel::String(L"FriendlyName"), kel::String(L"Filter Name"), m_filterName);
    getMonikerProperty(bag, kel::String(L"CLSID"), kel::String(L"Class ID"), m_clsid);
    getMonikerProperty(bag, kel::String(L"DevicePath"), kel::String(L"Device Path"), m_devicePath);
    getMonikerProperty(bag, kel::String(L"Description"), kel::String(L"Description"), m_description);
}

bool DSMoniker::getMonikerProperty(IPropertyBag *propertyBag, const kel::String &key, const kel::String &label,
                                   kel::String &out)
{
    HRESULT hr = S_OK;
    const kel::String value = MonikerProperty::read(propertyBag, key.c_str(), hr);
    if (FAILED(hr)) {
        SORVANE_LOG_DETAIL("IPropertyBag::Read " << key << " failed: " << hrText(hr));
        return false;
    }
    out = value;
    SORVANE_LOG_DETAIL(label << ": " << out);
    return true;
}

void DSMoniker::parseMonikerInfo(const kel::String &fallbackIdentity)
{
    DeviceIdParser::PathIdentity identity;
    identity.busType = m_busType;
    const kel::String candidates[] = {m_monikerName.toUpper(), m_devicePath.toUpper()};
    for (const kel::String &candidate : candidates) {
        if (!identity.guid.isEmpty())
            break;
        DeviceIdParser::readDevicePath(candidate, identity);
    }
    m_guid = identity.guid;
    m_deviceInstanceId = identity.deviceInstanceId;
    m_busType = identity.busType;
    m_vendorIdCode = identity.codes.vendor;
    m_deviceIdCode = identity.codes.device;
    m_subsysIdCode = identity.codes.subsys;
    m_revIdCode = identity.codes.rev;
    if (m_guid.isEmpty()) {
        MONIKER_LOG(899, "set m_guid to " << fallbackIdentity);
        m_guid = fallbackIdentity;
    }
    SORVANE_LOG_DETAIL("Guid: " << m_guid);
    SORVANE_LOG_DETAIL("Vendor ID Code: " << m_vendorIdCode);
    SORVANE_LOG_DETAIL("Device ID Code: " << m_deviceIdCode);
    SORVANE_LOG_DETAIL("Subsys ID Code: " << m_subsysIdCode);
    SORVANE_LOG_DETAIL("Rev ID Code: " << m_revIdCode);
    SORVANE_LOG_DETAIL("Bus Type: " << m_busType.name());
}

void DSMoniker::getFilterDriverName()
{
    if (m_clsid.isEmpty()) {
        SORVANE_LOG_DETAIL("Get FilterDriverName failed due to empty CLSID");
        return;
    }
    ScopedRegistryKey key;
    LONG status = key.open(HKEY_LOCAL_MACHINE, kel::String(kFilterDriverKeyPrefix) + m_clsid + kFilterDriverKeySuffix);
    if (status != ERROR_SUCCESS) {
        SORVANE_LOG_DETAIL("RegOpenKey DevicePath: " << status);
        return;
    }
    const kel::String driver = key.defaultValue(status);
    if (status != ERROR_SUCCESS) {
        SORVANE_LOG_DETAIL("RegQueryValueEx DevicePath failed: " << status);
        return;
    }
    m_filterDriverName = driver;
}

void DSMoniker::getCapabilities(IMoniker *moniker, const CaptureStreamType &streamType)
{
    if (streamType == CaptureStreamType::ANALOG())
        getAnalogCapabilities(moniker);
    else if (streamType == CaptureStreamType::DIGITAL())
        getDigitalCapabilities(moniker);
    else
        SORVANE_LOG_DETAIL("Unknown capture stream type: " << streamType.name());
}

// A throw-away graph around the filter: holding it is analog capture; the camera control and
// the TV tuner it offers add their features.
void DSMoniker::getAnalogCapabilities(IMoniker *moniker)
{
    CComPtr<IGraphBuilder> graph;
    HRESULT hr = graph.CoCreateInstance(CLSID_FilterGraph, nullptr, CLSCTX_INPROC_SERVER);
    if (FAILED(hr)) {
        SORVANE_LOG_DETAIL("CoCreateInstance(IGraphBuilder) failed: " << hrText(hr));
        return;
    }
    if (!graph) {
        SORVANE_LOG_DETAIL("CoCreateInstance(IGraphBuilder) failed: null pointer");
        return;
    }
    CComPtr<IBaseFilter> filter;
    hr = moniker->BindToObject(nullptr, nullptr, IID_PPV_ARGS(&filter));
    if (FAILED(hr) || !filter) {
        SORVANE_LOG_DETAIL("IMoniker::BindToObject failed: " << hrText(hr));
        return;
    }
    hr = graph->AddFilter(filter, L"Video Capture");
    if (FAILED(hr)) {
        SORVANE_LOG_DETAIL("IGraphBuilder::AddFilter failed: " << hrText(hr));
        return;
    }
    SORVANE_LOG_DETAIL("Analog Capture supported");
    appendCapability(CaptureCapability(CaptureStreamType::ANALOG(), CaptureFeature::CAPTURE()));

    CComPtr<ICaptureGraphBuilder2> builder;
    hr = builder.CoCreateInstance(CLSID_CaptureGraphBuilder2, nullptr, CLSCTX_INPROC_SERVER);
    if (FAILED(hr) || FAILED(hr = builder->SetFiltergraph(graph))) {
        SORVANE_LOG_DETAIL("ICaptureGraphBuilder2 failed: " << hrText(hr));
        return;
    }
    CComPtr<IAMCameraControl> cameraControl;
    if (SUCCEEDED(builder->FindInterface(&PIN_CATEGORY_CAPTURE, nullptr, filter, IID_PPV_ARGS(&cameraControl)))) {
        SORVANE_LOG_DETAIL("Web Camera Control supported");
        appendCapability(CaptureCapability(CaptureStreamType::ANALOG(), CaptureFeature::WEBCAMCONTROL()));
    }
    CComPtr<IAMTVTuner> tuner;
    if (FAILED(builder->FindInterface(&PIN_CATEGORY_CAPTURE, nullptr, filter, IID_PPV_ARGS(&tuner))) || !tuner)
        return;
    if (FAILED(tuner->put_Mode(AMTUNER_MODE_TV)))
        return;
    SORVANE_LOG_DETAIL("Analog TV Tuning supported");
    CaptureCapability tvTuning(CaptureStreamType::ANALOG(), CaptureFeature::TVTUNING());
    long formats = 0;
    if (SUCCEEDED(tuner->get_AvailableTVFormats(&formats)))
        addStandards(tvTuning, formats);
    appendCapability(tvTuning);
}

// Connects the filter to the network provider of the "ATSC" tuning space in a throw-away graph:
// a filter that takes the connection is a digital TV tuner.
void DSMoniker::getDigitalCapabilities(IMoniker *moniker)
{
    CComPtr<IGraphBuilder> graph;
    HRESULT hr = graph.CoCreateInstance(CLSID_FilterGraph, nullptr, CLSCTX_INPROC_SERVER);
    if (FAILED(hr)) {
        probeFailed("CoCreateInstance(CLSID_FilterGraph)", hr);
        return;
    }
    CComPtr<IBaseFilter> provider;
    if (!createNetworkProvider(provider))
        return;
    hr = graph->AddFilter(provider, L"Network Provider");
    if (FAILED(hr)) {
        probeFailed("IGraphBuilder::AddFilter(Network Provider)", hr);
        return;
    }
    CComQIPtr<ITuner> tuner(provider);
    if (!tuner) {
        probeFailed("QueryInterface(ITuner)", E_NOINTERFACE);
        return;
    }
    CComPtr<IBaseFilter> tunerFilter;
    hr = moniker->BindToObject(nullptr, nullptr, IID_PPV_ARGS(&tunerFilter));
    if (FAILED(hr) || !tunerFilter || FAILED(hr = graph->AddFilter(tunerFilter, m_filterName.c_str()))) {
        SORVANE_LOG_DETAIL("Failed to load the BDA network tuner filter");
        return;
    }
    hr = connectFilters(graph, provider, tunerFilter);
    if (FAILED(hr)) {
        probeFailed("IGraphBuilder::Connect", hr);
        return;
    }
    const CaptureCapability capability(CaptureStreamType::DIGITAL(), CaptureFeature::TVTUNING());
    SORVANE_LOG_DETAIL(" append capability " << capability.toString());
    appendCapability(capability);
}

void DSMoniker::appendCapability(const CaptureCapability &capability)
{
    m_capabilities.add(capability);
}

kel::String DSMoniker::capabilitiesText(const kel::String &separator) const
{
    if (m_capabilities.isEmpty())
        return kel::String(L"None");
    kel::String text;
    for (int i = 0; i < m_capabilities.size(); ++i) {
        if (i)
            text += separator;
        text += m_capabilities[i].toString();
    }
    return text;
}

kel::String DSMoniker::toString() const
{
    return kel::String(L"Guid: ") + m_guid + L", Device Instance Id: " + m_deviceInstanceId + L", Description: " +
           m_description + L", Class ID: " + m_clsid + L", Device Path: " + m_devicePath + L", Filter Name: " +
           m_filterName + L", Filter Driver Name: " + m_filterDriverName + L", Moniker Name: " + m_monikerName +
           L", Vendor ID Code: " + m_vendorIdCode + L", Device ID Code: " + m_deviceIdCode + L", Subsys ID Code: " +
           m_subsysIdCode + L", Rev ID Code: " + m_revIdCode + L", Bus Type: " + m_busType.name() +
           L", Capture Type: " + m_captureStreamType.name() + L", Capabilities: " +
           capabilitiesText(kel::String(L", "));
}

// The bus type stands twice, after the moniker name and after the codes; readers of these
// records rely on both lines.
kel::String DSMoniker::toFormattedString(const kel::String &indent) const
{
    const kel::String line = kel::String(L"\n") + indent;
    return indent + L"Guid: " + m_guid + line + L"Device Instance Id: " + m_deviceInstanceId + line + L"Description: " +
           m_description + line + L"Class ID: " + m_clsid + line + L"Device Path: " + m_devicePath + line +
           L"Filter Name: " + m_filterName + line + L"Filter Driver Name: " + m_filterDriverName + line +
           L"Moniker Name: " + m_monikerName + line + L"Bus Type: " + m_busType.name() + line + L"Vendor ID Code: " +
           m_vendorIdCode + line + L"Device ID Code: " + m_deviceIdCode + line + L"Subsys ID Code: " + m_subsysIdCode +
           line + L"Rev ID Code: " + m_revIdCode + line + L"Bus Type: " + m_busType.name() + line + L"Capture Type: " +
           m_captureStreamType.name() + line + L"Capabilities: " + capabilitiesText(line + kCapabilityIndent);
}

} // namespace sorvane
