#include "DigitalTuner.h"
#include "CaptureLog.h"
#include "CaptureUtil.h"
#include "DeviceIdParser.h"
#include "ErrorHandler.h"
#include "LogTexts.h"
#include "ModuleRegistration.h"
#include "MonikerProperty.h"
#include "Mpeg2StreamAnalyzer.h"
#include "SampleCallback.h"
#include "SdkGuids.h"
#include "StreamHealthMonitor.h"

#include <ruvo/DeviceCapability.h>
#include <bdamedia.h>
#include <amvideo.h>
#include <uuids.h>
#include <vector>

// mingw-w64 declares IQualProp without its interface identifier.
__CRT_UUID_DECL(IQualProp, 0x1bd0ecb0, 0xf8e2, 0x11ce, 0xaa, 0xc6, 0x00, 0x20, 0xaf, 0x0b, 0x99, 0xa3)

SORVANE_LOG_CATEGORY(SORVANE_CAPTURE_CATEGORY)

namespace sorvane {

using ruvo::TestResult;

namespace {

const uint32_t kMinDigitalChannel = 2;
const uint32_t kMaxDigitalChannel = 69;
const ULONG kMaxNodes = 32;
const ULONG kInputPin = 0;
const ULONG kOutputPin = 1;
const long kQualityNeeded = 50;
// The quality of a stream that was not measured: below every value signalQuality gives.
const int kNotMeasured = -3;

kel::String hrText(HRESULT hr)
{
    return ErrorHandler::errorMessageFromHr(hr);
}

bool hasMajorType(IPin *pin, const GUID &majorType, const GUID *subType)
{
    CComPtr<IEnumMediaTypes> types;
    if (FAILED(pin->EnumMediaTypes(&types)) || !types)
        return false;
    AM_MEDIA_TYPE *type = nullptr;
    bool found = false;
    while (!found && types->Next(1, &type, nullptr) == S_OK) {
        found = IsEqualGUID(type->majortype, majorType) && (!subType || IsEqualGUID(type->subtype, *subType));
        CaptureUtil::deleteMediaType(type);
    }
    return found;
}

// One statistic the signal decision needs, logged as read; false, logged, when it cannot be read.
template <typename Value>
bool readStatistic(IBDA_SignalStatistics *statistics, HRESULT (STDMETHODCALLTYPE IBDA_SignalStatistics::*read)(Value *),
                   Value &value, const wchar_t *failedText, const char *readText)
{
    const HRESULT hr = (statistics->*read)(&value);
    if (FAILED(hr)) {
        SORVANE_LOG_ERROR(failedText << hrText(hr));
        return false;
    }
    SORVANE_LOG_DETAIL(readText << static_cast<long>(value));
    return true;
}

PIN_DIRECTION directionOf(IPin *pin)
{
    PIN_DIRECTION direction = PINDIR_INPUT;
    pin->QueryDirection(&direction);
    return direction;
}

bool isConnected(IPin *pin)
{
    CComPtr<IPin> peer;
    return SUCCEEDED(pin->ConnectedTo(&peer)) && peer;
}

} // namespace

DigitalTuner::DigitalTuner(const ruvo::DiagDevice &device, const kel::String &name)
    : TVTuner(device, name), m_streamQuality(kNotMeasured)
{
    m_minChannel = kMinDigitalChannel;
    m_maxChannel = kMaxDigitalChannel;
    m_startChannelParam = g_digitalStartChannel;
    m_endChannelParam = g_digitalEndChannel;
}

kel::String DigitalTuner::graphText() const
{
    return CaptureUtil::graphToString(m_graphManager);
}

void DigitalTuner::setupNetworkProvider()
{
    SORVANE_TRACE();
    m_networkProvider.Release();
    // Only the pointer tells: some providers return success codes without an object.
    m_networkProvider.CoCreateInstance(CLSID_NetworkProvider, nullptr, CLSCTX_INPROC_SERVER);
    if (!m_networkProvider)
        SORVANE_GRAPH_REFUSED("unable to instantiate CLSID_NetworkProvider");
    addFilter(m_networkProvider, CaptureUtil::guidName(CLSID_NetworkProvider));
    SORVANE_LOG_DETAIL("m_networkProvider set to " << CaptureUtil::filterToString(m_networkProvider) << "\ngraph:\n"
                                                   << graphText());
}

void DigitalTuner::doSetupDevice(bool tolerateNoReceiver, bool matchReceiverToDevice, bool considerFriendlyName)
{
    SORVANE_TRACE();
    SORVANE_LOG_DETAIL("DigitalTuner::doSetupDevice() tolerateNoReceiver: "
                       << tolerateNoReceiver << ", matchReceiverToDevice: " << matchReceiverToDevice
                       << ", considerFriendlyName: " << considerFriendlyName << "\ngraph:\n"
                       << graphText());
    if (!m_device.deviceCapabilities().isCapable(ruvo::DeviceCapability::DigitalTVTuner())) {
        THROW_WARNING(TestResult::NOTSUPPORTED(), 0, g_warnHardwareDoesNotSupportDigitalTVInput);
    }

    setupNetworkProvider();
    SORVANE_LOG_DETAIL(CaptureUtil::filterToString(m_networkProvider));
    takeProviderTuner();
    loadTunerFilter(considerFriendlyName);
    loadReceiverFilter(tolerateNoReceiver, matchReceiverToDevice, considerFriendlyName);
    addDemultiplexer();
    setupSampleGrabber();
    connectToDemultiplexer();
    renderFromFilter(m_demuxFilter);
    SORVANE_LOG_DETAIL("graph:" << graphText());
}

void DigitalTuner::takeProviderTuner()
{
    SORVANE_LOG_DETAIL("get m_tuner from network provider ");
    m_tuner.Release();
    m_networkProvider.QueryInterface(&m_tuner);
    if (!m_tuner)
        SORVANE_GRAPH_REFUSED("Cannot get a Tuner interface from the Network Provider filter");
}

void DigitalTuner::loadTunerFilter(bool considerFriendlyName)
{
    SORVANE_LOG_DETAIL("call loadFilter(TUNER)");
    if (!loadFilter(KSCATEGORY_BDA_NETWORK_TUNER, m_srcFilter, m_networkProvider, true, true, considerFriendlyName))
        SORVANE_GRAPH_REFUSED("loadFilter(TUNER) failed");
    SORVANE_LOG_DETAIL("DigitalTuner::doSetupDevice(), set m_srcFilter (" << CaptureUtil::filterName(m_srcFilter)
                                                                          << ")");
}

void DigitalTuner::loadReceiverFilter(bool tolerateNoReceiver, bool matchReceiverToDevice, bool considerFriendlyName)
{
    SORVANE_LOG_DETAIL("call loadFilter(RECEIVER)");
    if (!loadFilter(KSCATEGORY_BDA_RECEIVER_COMPONENT, m_receiverFilter, m_srcFilter, true, matchReceiverToDevice,
                    considerFriendlyName)) {
        if (!tolerateNoReceiver)
            SORVANE_GRAPH_REFUSED("loadFilter(RECEIVER) failed");
        m_receiverFilter = m_srcFilter;
        SORVANE_LOG(kel::LOG_WARNING, "loadFilter(RECEIVER) failed. Continuing as it is not always required.");
    }
    SORVANE_LOG_DETAIL("DigitalTuner::doSetupDevice(), set m_receiverFilter ("
                       << CaptureUtil::filterName(m_receiverFilter) << ")");
}

void DigitalTuner::addDemultiplexer()
{
    m_demuxFilter.Release();
    const HRESULT hr = m_demuxFilter.CoCreateInstance(CLSID_MPEG2Demultiplexer, nullptr, CLSCTX_INPROC_SERVER);
    if (FAILED(hr))
        SORVANE_GRAPH_FAILED("Unable to create an MPEG2 demux: ", hr);
    addFilter(m_demuxFilter, kel::String(L"Demux"));
    SORVANE_LOG_DETAIL("DigitalTuner::doSetupDevice(), set m_demuxFilter (" << CaptureUtil::filterName(m_demuxFilter)
                                                                            << ")");
}

void DigitalTuner::connectToDemultiplexer()
{
    if (m_sampleGrabberFilter) {
        if (!connectFilters(m_receiverFilter, m_sampleGrabberFilter))
            SORVANE_GRAPH_REFUSED("Cannot connect ReceiverFilter to the SampleGrabber");
        if (!connectFilters(m_sampleGrabberFilter, m_demuxFilter))
            SORVANE_GRAPH_REFUSED("Cannot connect SampleGrabber to the mpeg demux");
    } else if (!connectFilters(m_receiverFilter, m_demuxFilter)) {
        SORVANE_GRAPH_REFUSED("Cannot connect ReceiverFilter to the MPEG2 Demux");
    }
}

bool DigitalTuner::loadFilter(const GUID &category, CComPtr<IBaseFilter> &out, CComPtr<IBaseFilter> connectTo,
                              bool isUpstream, bool matchDevice, bool considerFriendlyName)
{
    SORVANE_TRACE();
    SORVANE_LOG_DETAIL("loadFilter"
                       << " isUpstream = " << isUpstream << ", matchDevice = " << matchDevice
                       << ", considerFriendlyName = " << considerFriendlyName);
    kel::String wantedName;
    if (considerFriendlyName) {
        wantedName = m_device.property("DigitalFriendlyName").toKELString();
        if (wantedName.isEmpty())
            SORVANE_LOG_ERROR("The DigitalFriendlyName property is required, but wasn't found");
    }

    const CComPtr<IEnumMoniker> monikers = categoryMonikers(category);
    if (!monikers)
        return false;

    SORVANE_LOG_DETAIL("Starting moniker search loop");
    CComPtr<IMoniker> moniker;
    while (monikers->Next(1, &moniker, nullptr) == S_OK) {
        bool failed = false;
        kel::String friendlyName;
        const bool matches =
            monikerMatches(moniker, matchDevice, considerFriendlyName, wantedName, friendlyName, failed);
        if (failed)
            return false;
        if (matches) {
            CComPtr<IBaseFilter> filter;
            const HRESULT hr = moniker->BindToObject(nullptr, nullptr, IID_PPV_ARGS(&filter));
            if (FAILED(hr)) {
                SORVANE_LOG_ERROR("IMoniker::BindToObject failed: " << hrText(hr));
            } else if (addAndConnect(filter, friendlyName, connectTo, isUpstream, failed)) {
                out = filter;
                SORVANE_LOG_DETAIL("Found filter"
                                   << "\ngraph:\n"
                                   << graphText());
                return true;
            } else if (failed) {
                return false;
            }
        }
        moniker.Release();
    }
    SORVANE_LOG_DETAIL("Didn't find filter");
    return false;
}

CComPtr<IEnumMoniker> DigitalTuner::categoryMonikers(const GUID &category)
{
    CComPtr<IEnumMoniker> monikers;
    CComPtr<ICreateDevEnum> deviceEnumerator;
    HRESULT hr = deviceEnumerator.CoCreateInstance(CLSID_SystemDeviceEnum, nullptr, CLSCTX_INPROC_SERVER);
    if (FAILED(hr)) {
        SORVANE_LOG_ERROR("ICreateDevEnum::CoCreateInstance(CLSID_SystemDeviceEnum) failed: " << hrText(hr));
        return monikers;
    }
    hr = deviceEnumerator->CreateClassEnumerator(category, &monikers, 0);
    // S_FALSE: the category is empty and there is no enumerator.
    if (FAILED(hr) || !monikers) {
        SORVANE_LOG_ERROR("ICreateDevEnum::CreateClassEnumerator failed: " << hrText(hr));
        monikers.Release();
    }
    return monikers;
}

bool DigitalTuner::monikerMatches(IMoniker *moniker, bool matchDevice, bool considerFriendlyName,
                                  const kel::String &wantedName, kel::String &friendlyName, bool &failed)
{
    CComPtr<IPropertyBag> bag;
    HRESULT hr = moniker->BindToStorage(nullptr, nullptr, IID_PPV_ARGS(&bag));
    if (FAILED(hr)) {
        SORVANE_LOG_ERROR("IMoniker::BindToStorage failed: " << hrText(hr));
        failed = true;
        return false;
    }
    friendlyName = MonikerProperty::read(bag, L"FriendlyName", hr);
    if (FAILED(hr)) {
        SORVANE_LOG_ERROR("IPropertyBag::Read(FriendlyName) failed: " << hrText(hr));
        return false;
    }
    const kel::String devicePath = MonikerProperty::read(bag, L"DevicePath", hr);

    if (matchDevice) {
        kel::String locator = m_device.property("DeviceLocator").toKELString();
        if (locator.isEmpty())
            locator = m_device.osLocator();
        const kel::String found = DeviceIdParser::instanceKey(devicePath);
        const kel::String wanted = DeviceIdParser::instanceKey(locator);
        SORVANE_LOG_DETAIL("Guids this:" << found << "\n      device we are looking for:" << wanted);
        if (found.isEmpty() || found != wanted) {
            SORVANE_LOG_DETAIL("Mismatching name while enumerating: looking for \"" << wanted << "\" , but found: \""
                                                                                    << found << "\"");
            return false;
        }
    }
    if (considerFriendlyName && friendlyName != wantedName) {
        SORVANE_LOG_DETAIL("Mismatching name while enumerating: looking for \"" << wantedName << "\" , but found: \""
                                                                                << friendlyName << "\"");
        return false;
    }
    return true;
}

bool DigitalTuner::addAndConnect(CComPtr<IBaseFilter> filter, const kel::String &name, CComPtr<IBaseFilter> connectTo,
                                 bool isUpstream, bool &failed)
{
    HRESULT hr = m_graphManager->AddFilter(filter, name.c_str());
    if (FAILED(hr)) {
        SORVANE_LOG_ERROR("addFilter failed: " << hrText(hr));
        failed = true;
        return false;
    }
    SORVANE_LOG_DETAIL("loadFilter adds " << name << "\ngraph:\n" << graphText());
    if (!connectTo) {
        SORVANE_LOG_DETAIL("Found filter but no connect filter specified");
        return true;
    }
    SORVANE_LOG_DETAIL("Connecting filters");
    // The filter found lies downstream of the one it is connected to.
    const bool connected = isUpstream ? connectFilters(connectTo, filter) : connectFilters(filter, connectTo);
    if (connected)
        return true;
    hr = m_graphManager->RemoveFilter(filter);
    if (FAILED(hr)) {
        SORVANE_LOG_ERROR("IGraphBuilder::RemoveFilter(filter) failed: " << hrText(hr));
        failed = true;
    }
    return false;
}

bool DigitalTuner::connectFilters(CComPtr<IBaseFilter> upstream, CComPtr<IBaseFilter> downstream)
{
    SORVANE_TRACE();
    SORVANE_LOG_DETAIL("connectFilters"
                       << " upstream (" << CaptureUtil::filterName(upstream) << ") to downstream ("
                       << CaptureUtil::filterName(downstream) << ")");
    if (!upstream || !downstream)
        return false;
    CComPtr<IEnumPins> pins;
    HRESULT hr = upstream->EnumPins(&pins);
    if (FAILED(hr) || !pins) {
        SORVANE_LOG_ERROR("IBaseFilter::EnumPins(Upstream) failed: " << hrText(hr));
        return false;
    }
    CComPtr<IPin> pin;
    while (pins->Next(1, &pin, nullptr) == S_OK) {
        if (directionOf(pin) == PINDIR_OUTPUT && !isConnected(pin) && connectPins(pin, downstream))
            return true;
        pin.Release();
    }
    return false;
}

bool DigitalTuner::connectPins(IPin *upstreamPin, IBaseFilter *downstream)
{
    CComPtr<IEnumPins> pins;
    HRESULT hr = downstream->EnumPins(&pins);
    if (FAILED(hr) || !pins) {
        SORVANE_LOG_ERROR("IBaseFilter::EnumPins(Downstream) failed: " << hrText(hr));
        return false;
    }
    CComPtr<IPin> pin;
    while (pins->Next(1, &pin, nullptr) == S_OK) {
        if (directionOf(pin) == PINDIR_INPUT && !isConnected(pin)) {
            SORVANE_LOG_DETAIL("Connecting pins");
            hr = m_graphManager->Connect(upstreamPin, pin);
            if (SUCCEEDED(hr))
                return true;
            SORVANE_LOG_DETAIL("Connecting pins failed: " << hrText(hr));
        }
        pin.Release();
    }
    return false;
}

void DigitalTuner::renderFromFilter(CComPtr<IBaseFilter> filter)
{
    SORVANE_TRACE();
    CComPtr<IEnumPins> pins;
    HRESULT hr = filter->EnumPins(&pins);
    if (FAILED(hr) || !pins)
        SORVANE_GRAPH_FAILED("IBaseFilter::EnumPins failed: ", hr);
    CComPtr<IPin> pin;
    bool videoRendered = false;
    while (pins->Next(1, &pin, nullptr) == S_OK) {
        // Only the video needs a renderer: audio and sections pins stay open.
        if (!videoRendered && directionOf(pin) == PINDIR_OUTPUT && !isConnected(pin) && isVideoPin(pin)) {
            long result = S_OK;
            videoRendered = renderFromPin(pin, result);
        }
        pin.Release();
    }
}

bool DigitalTuner::renderFromPin(CComPtr<IPin> pin, long &hr)
{
    SORVANE_TRACE();
    // The video renderer goes in first, so that intelligent connect ends at it rather than at
    // whichever renderer the system would try (some fail or stop the process without a display).
    addVideoRenderer();
    hr = m_graphManager->Render(pin);
    SORVANE_LOG_DETAIL("renderFromPin: IGraphBuilder::Render returns " << hrText(hr));
    return SUCCEEDED(hr);
}

CComPtr<IBaseFilter> DigitalTuner::findVideoRenderer()
{
    CComPtr<IBaseFilter> renderer;
    if (!m_graphManager)
        return renderer;
    if (SUCCEEDED(m_graphManager->FindFilterByName(L"Video Renderer", &renderer)) && renderer)
        return renderer;
    renderer.Release();
    CComPtr<IEnumFilters> filters;
    if (FAILED(m_graphManager->EnumFilters(&filters)) || !filters)
        return renderer;
    CComPtr<IBaseFilter> filter;
    while (filters->Next(1, &filter, nullptr) == S_OK) {
        CLSID id = GUID_NULL;
        CComPtr<IQualProp> quality;
        filter.QueryInterface(&quality);
        if ((SUCCEEDED(filter->GetClassID(&id)) && IsEqualGUID(id, CLSID_VideoRenderer)) || quality)
            return filter;
        filter.Release();
    }
    return renderer;
}

CComPtr<IBaseFilter> DigitalTuner::addVideoRenderer()
{
    CComPtr<IBaseFilter> renderer = findVideoRenderer();
    if (renderer)
        return renderer;
    const HRESULT hr = renderer.CoCreateInstance(CLSID_VideoRenderer, nullptr, CLSCTX_INPROC_SERVER);
    if (FAILED(hr)) {
        SORVANE_LOG_ERROR("CoCreateInstance(CLSID_VideoRenderer) failed: " << hrText(hr));
        return CComPtr<IBaseFilter>();
    }
    addFilter(renderer, kel::String(L"Video Renderer"));
    return renderer;
}

CComPtr<ITuningSpace> DigitalTuner::getTuningSpace(const kel::String &name)
{
    SORVANE_LOG_DETAIL("getTuningSpace " << name);
    SORVANE_LOG_DETAIL("getTuningSpace uses network provider " << CaptureUtil::filterToString(m_networkProvider));
    CComPtr<IEnumTuningSpaces> spaces;
    const HRESULT hr = m_tuner->EnumTuningSpaces(&spaces);
    if (FAILED(hr))
        SORVANE_GRAPH_FAILED("IEnumTuningSpaces::EnumTuningSpaces failed: ", hr);
    CComPtr<ITuningSpace> result;
    if (!spaces)
        return result;
    CComPtr<ITuningSpace> space;
    while (spaces->Next(1, &space, nullptr) == S_OK) {
        BSTR uniqueName = nullptr;
        if (SUCCEEDED(space->get_UniqueName(&uniqueName)) && uniqueName) {
            const kel::String spaceName(uniqueName);
            SysFreeString(uniqueName);
            SORVANE_LOG_DETAIL("driver supports tuning space name " << spaceName);
            // Every space is visited; a later match replaces an earlier one.
            if (spaceName == name) {
                SORVANE_LOG_DETAIL("matched tuning space " << spaceName);
                result = space;
            }
        }
        space.Release();
    }
    return result;
}

bool DigitalTuner::isSignalPresent()
{
    SORVANE_TRACE();
    SORVANE_LOG_DETAIL("isSignalPresent");
    if (!m_srcFilter)
        return false;

    SORVANE_LOG_DETAIL("Trying signal statistics method");
    CComPtr<IBDA_SignalStatistics> statistics;
    m_srcFilter.QueryInterface(&statistics);
    if (statistics) {
        SORVANE_LOG_DETAIL("Checking SigStats for signal present");
        BOOLEAN present = 0;
        statistics->get_SignalPresent(&present);
        return present == 1;
    }

    SORVANE_LOG_DETAIL("Unable to get IBDA_SignalStatistics from m_srcFilter, trying new topology method");
    CComPtr<IBDA_Topology> topology;
    m_srcFilter.QueryInterface(&topology);
    if (!topology) {
        SORVANE_LOG_DETAIL("getSignalStrength::Cannot Find IID_IBDA_Topology");
        return false;
    }
    return topologySignal(topology);
}

bool DigitalTuner::topologySignal(IBDA_Topology *topology)
{
    SORVANE_LOG_DETAIL("Getting nodes types");
    ULONG nodeTypes[kMaxNodes] = {};
    ULONG count = 0;
    const HRESULT hr = topology->GetNodeTypes(&count, kMaxNodes, nodeTypes);
    if (FAILED(hr)) {
        SORVANE_LOG_ERROR(LogTexts::NODE_TYPES_FAILED << hrText(hr));
        return false;
    }
    for (ULONG i = 0; i < count && i < kMaxNodes; ++i) {
        const NodeSignal signal = nodeSignal(topology, nodeTypes[i]);
        if (signal != NodeSignal::NONE)
            return signal == NodeSignal::FOUND;
    }
    return false;
}

DigitalTuner::NodeSignal DigitalTuner::nodeSignal(IBDA_Topology *topology, ULONG nodeType)
{
    SORVANE_LOG_DETAIL("Getting node ifaces");
    GUID interfaces[kMaxNodes] = {};
    ULONG count = 0;
    if (FAILED(topology->GetNodeInterfaces(nodeType, &count, kMaxNodes, interfaces)))
        return NodeSignal::NONE;
    for (ULONG i = 0; i < count && i < kMaxNodes; ++i) {
        SORVANE_LOG_DETAIL("Checking for IID_IBDA_SignalStatistics");
        if (!IsEqualGUID(interfaces[i], __uuidof(IBDA_SignalStatistics)))
            continue;
        const CComPtr<IBDA_SignalStatistics> statistics = nodeStatistics(topology, nodeType);
        if (!statistics)
            continue;
        const NodeSignal signal = statisticsSignal(statistics);
        if (signal != NodeSignal::NONE)
            return signal;
    }
    return NodeSignal::NONE;
}

CComPtr<IBDA_SignalStatistics> DigitalTuner::nodeStatistics(IBDA_Topology *topology, ULONG nodeType)
{
    SORVANE_LOG_DETAIL("Checking for control node");
    CComPtr<IBDA_SignalStatistics> statistics;
    CComPtr<IUnknown> node;
    if (FAILED(topology->GetControlNode(kInputPin, kOutputPin, nodeType, &node)) || !node)
        return statistics;
    SORVANE_LOG_DETAIL("Querying for the sig stats from the topo node");
    node.QueryInterface(&statistics);
    return statistics;
}

DigitalTuner::NodeSignal DigitalTuner::statisticsSignal(IBDA_SignalStatistics *statistics)
{
    LONG quality = 0;
    BOOLEAN locked = 0;
    BOOLEAN present = 0;
    const bool read = readStatistic(statistics, &IBDA_SignalStatistics::get_SignalQuality, quality,
                                    LogTexts::QUALITY_FAILED, "Topo sig qual: ") &&
                      readStatistic(statistics, &IBDA_SignalStatistics::get_SignalLocked, locked, LogTexts::LOCK_FAILED,
                                    "Topo sig lock: ") &&
                      readStatistic(statistics, &IBDA_SignalStatistics::get_SignalPresent, present,
                                    LogTexts::PRESENT_FAILED, "Topo sig present: ");
    if (!read)
        return NodeSignal::UNREADABLE;
    logStrengthAndSampleTime(statistics);

    if (locked > 0 && present > 0 && quality > kQualityNeeded) {
        SORVANE_LOG_DETAIL("Found a valid signal");
        return NodeSignal::FOUND;
    }
    return NodeSignal::NONE;
}

// Read for the log only: the decision does not depend on them.
void DigitalTuner::logStrengthAndSampleTime(IBDA_SignalStatistics *statistics)
{
    LONG strength = 0;
    LONG sampleTime = 0;
    HRESULT hr = statistics->get_SignalStrength(&strength);
    if (FAILED(hr))
        SORVANE_LOG_ERROR("Topo sig strength failed: " << hrText(hr));
    else
        SORVANE_LOG_DETAIL("Topo sig strength: " << static_cast<long>(strength));
    hr = statistics->get_SampleTime(&sampleTime);
    if (FAILED(hr))
        SORVANE_LOG_ERROR("Topo sample time failed: " << hrText(hr));
    else
        SORVANE_LOG_DETAIL("Topo sample time: " << static_cast<long>(sampleTime));
}

void DigitalTuner::renderToScreen()
{
    SORVANE_TRACE();
    // The demultiplexer's video was rendered with the graph; the window shows it once the
    // graph runs, so only a missing renderer is made up for here.
    if (!findVideoRenderer())
        SORVANE_LOG_DETAIL("no video renderer in the graph");
}

void DigitalTuner::cleanUpCOMInterfaces()
{
    m_tuner.Release();
    m_networkProvider.Release();
    m_receiverFilter.Release();
    m_demuxFilter.Release();
    TVTuner::cleanUpCOMInterfaces();
}

void DigitalTuner::measureStream(unsigned char *data, int length, double durationMs)
{
    m_streamHealth = StreamHealthMonitor::analyze(data, length, durationMs);
    m_streamQuality = Mpeg2StreamAnalyzer::signalQuality(data, length);
    SORVANE_LOG_DETAIL("stream of channel " << static_cast<unsigned>(m_currentChannel) << ": " << length << " bytes, "
                                            << static_cast<long long>(m_streamHealth.packets) << " packets, quality "
                                            << m_streamQuality << ", TR 101 290 priority 1 "
                                            << (m_streamHealth.clean() ? "clean" : "with errors"));
}

void DigitalTuner::keepChannelStream(SampleCallback *buffer)
{
    if (!buffer)
        return;
    m_channelStream.take(*buffer);
    if (!m_channelStream.found() || m_channelStream.bytes().empty())
        return;
    // The quality score takes writable bytes.
    std::vector<unsigned char> bytes = m_channelStream.bytes();
    measureStream(bytes.data(), static_cast<int>(bytes.size()), m_channelStream.durationMs());
}

bool DigitalTuner::isVideoPin(IPin *pin)
{
    return hasMajorType(pin, MEDIATYPE_Video, nullptr);
}

bool DigitalTuner::isSectionsPin(IPin *pin)
{
    return hasMajorType(pin, MEDIATYPE_MPEG2_SECTIONS, nullptr);
}

} // namespace sorvane
