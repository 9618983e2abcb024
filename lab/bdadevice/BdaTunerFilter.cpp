#include "bdadevice/BdaTunerFilter.h"

#include <uuids.h>

#include "bdadevice/BdaControlNode.h"
#include "bdadevice/StreamFaultKeys.h"
#include "common/ClassRegistry.h"
#include "lab/BdaGuids.h"
#include "lab/LabClassIds.h"

namespace lab {

namespace {

const ClassRegistration registration(ClassInfo::device(CLSID_LabBdaTuner, L"Sorvane Lab BDA Tuner",
                                                       &createObject<BdaTunerFilter, IBaseFilter>, L"bda-tuner",
                                                       kCategoryBdaNetworkTuner));

const ULONG kNodeTypes[] = {BdaControlNode::kTunerNode, BdaControlNode::kDemodulatorNode};
const ULONG kAntennaPinType = 0;
const ULONG kTransportPinType = 1;
const ULONG kFilterPin = static_cast<ULONG>(-1);

// Copies what fits and reports the full count; a caller with too small an array learns the size.
template <class T, size_t N>
HRESULT fillArray(ULONG *count, ULONG max, T out[], const T (&values)[N])
{
    if (!count)
        return E_POINTER;
    *count = static_cast<ULONG>(N);
    if (max > 0 && !out)
        return E_POINTER;
    for (ULONG i = 0; i < N && i < max; ++i)
        out[i] = values[i];
    return S_OK;
}

} // namespace

BdaTunerFilter::BdaTunerFilter()
    : DeviceFilter(CLSID_LabBdaTuner), m_antenna(*this, L"Input0", kMediaTypeBdaAntenna, {}),
      m_transport(*this, L"MPEG2 Transport", *this, true)
{
}

BdaTunerFilter::~BdaTunerFilter()
{
    m_transport.stopStreaming();
}

BasePin *BdaTunerFilter::pin(int index)
{
    if (index == 0)
        return &m_antenna;
    return index == 1 ? &m_transport : nullptr;
}

void *BdaTunerFilter::queryExtra(REFIID iid)
{
    if (IsEqualIID(iid, __uuidof(IBDA_DeviceControl)))
        return static_cast<IBDA_DeviceControl *>(this);
    // mingw-w64's strmiids holds a wrong IID_IBDA_Topology; callers built with it ask for that.
    if (IsEqualIID(iid, __uuidof(IBDA_Topology)) || IsEqualIID(iid, IID_IBDA_Topology))
        return topologyAnswered() ? static_cast<IBDA_Topology *>(this) : nullptr;
    if (IsEqualIID(iid, __uuidof(IBDA_SignalStatistics)) && statisticsPlace() == StatisticsPlace::Filter)
        return static_cast<IBDA_SignalStatistics *>(this);
    if (IsEqualIID(iid, __uuidof(ITunedSignalSource)))
        return static_cast<ITunedSignalSource *>(this);
    return DeviceFilter::queryExtra(iid);
}

HRESULT BdaTunerFilter::configure(const std::shared_ptr<DeviceState> &device)
{
    m_antenna.useDevice(device);
    return S_OK;
}

BdaTunerFilter::StatisticsPlace BdaTunerFilter::statisticsPlace() const
{
    const std::wstring place = DeviceConfig::lower(device()->text(L"statistics", L"filter"));
    if (place == L"nodes")
        return StatisticsPlace::Nodes;
    return place == L"none" ? StatisticsPlace::None : StatisticsPlace::Filter;
}

bool BdaTunerFilter::topologyAnswered() const
{
    const std::shared_ptr<DeviceState> state = device();
    if (!state || DeviceConfig::lower(state->text(L"fault.IBDA_Topology")) != L"outside-changes")
        return true;
    return m_changeSetOpen.load();
}

STDMETHODIMP BdaTunerFilter::StartChanges()
{
    m_tuning.startChanges();
    m_changeSetOpen = true;
    return S_OK;
}

STDMETHODIMP BdaTunerFilter::CheckChanges()
{
    return S_OK;
}

STDMETHODIMP BdaTunerFilter::CommitChanges()
{
    m_changeSetOpen = false;
    return m_tuning.commitChanges(*device());
}

STDMETHODIMP BdaTunerFilter::GetChangeState(ULONG *state)
{
    if (!state)
        return E_POINTER;
    *state = m_tuning.changesPending() ? BDA_CHANGES_PENDING : BDA_CHANGES_COMPLETE;
    return S_OK;
}

STDMETHODIMP BdaTunerFilter::GetNodeTypes(ULONG *count, ULONG max, ULONG types[])
{
    return fillArray(count, max, types, kNodeTypes);
}

// The lab's nodes name no KS node categories.
STDMETHODIMP BdaTunerFilter::GetNodeDescriptors(ULONG *, ULONG, BDANODE_DESCRIPTOR[])
{
    return E_NOTIMPL;
}

STDMETHODIMP BdaTunerFilter::GetNodeInterfaces(ULONG nodeType, ULONG *count, ULONG max, GUID interfaces[])
{
    const bool statistics = statisticsPlace() == StatisticsPlace::Nodes;
    if (nodeType == BdaControlNode::kTunerNode) {
        const GUID plain[] = {__uuidof(IBDA_FrequencyFilter)};
        const GUID measured[] = {__uuidof(IBDA_FrequencyFilter), __uuidof(IBDA_SignalStatistics)};
        return statistics ? fillArray(count, max, interfaces, measured) : fillArray(count, max, interfaces, plain);
    }
    if (nodeType == BdaControlNode::kDemodulatorNode) {
        const GUID plain[] = {__uuidof(IBDA_DigitalDemodulator)};
        const GUID measured[] = {__uuidof(IBDA_DigitalDemodulator), __uuidof(IBDA_SignalStatistics)};
        return statistics ? fillArray(count, max, interfaces, measured) : fillArray(count, max, interfaces, plain);
    }
    return E_INVALIDARG;
}

STDMETHODIMP BdaTunerFilter::GetPinTypes(ULONG *count, ULONG max, ULONG types[])
{
    const ULONG pinTypes[] = {kAntennaPinType, kTransportPinType};
    return fillArray(count, max, types, pinTypes);
}

STDMETHODIMP BdaTunerFilter::GetTemplateConnections(ULONG *count, ULONG max, BDA_TEMPLATE_CONNECTION connections[])
{
    // antenna pin -> tuner node -> demodulator node -> transport pin
    const BDA_TEMPLATE_CONNECTION chain[] = {{kFilterPin, kAntennaPinType, BdaControlNode::kTunerNode, 0},
                                             {BdaControlNode::kTunerNode, 1, BdaControlNode::kDemodulatorNode, 0},
                                             {BdaControlNode::kDemodulatorNode, 1, kFilterPin, kTransportPinType}};
    return fillArray(count, max, connections, chain);
}

// The lab's tuner has its two pins for good.
STDMETHODIMP BdaTunerFilter::CreatePin(ULONG, ULONG *)
{
    return E_NOTIMPL;
}

STDMETHODIMP BdaTunerFilter::DeletePin(ULONG)
{
    return E_NOTIMPL;
}

STDMETHODIMP BdaTunerFilter::SetMediaType(ULONG, AM_MEDIA_TYPE *)
{
    return E_NOTIMPL;
}

STDMETHODIMP BdaTunerFilter::SetMedium(ULONG, REGPINMEDIUM *)
{
    return E_NOTIMPL;
}

STDMETHODIMP BdaTunerFilter::CreateTopology(ULONG, ULONG)
{
    return S_OK;
}

STDMETHODIMP BdaTunerFilter::GetControlNode(ULONG, ULONG, ULONG nodeType, IUnknown **node)
{
    if (!node)
        return E_POINTER;
    *node = nullptr;
    if (nodeType != BdaControlNode::kTunerNode && nodeType != BdaControlNode::kDemodulatorNode)
        return E_INVALIDARG;
    return BdaControlNode::create(static_cast<IBDA_Topology *>(this), m_tuning, device(), nodeType,
                                  statisticsPlace() == StatisticsPlace::Nodes, node);
}

void STDMETHODCALLTYPE BdaTunerFilter::currentSignal(TunedSignal &signal, StreamFaults &faults)
{
    signal = m_tuning.tuned();
    faults = StreamFaultKeys::read(*device());
}

CComPtr<ITunedSignalSource> BdaTunerFilter::signalSource()
{
    return CComPtr<ITunedSignalSource>(this);
}

bool BdaTunerFilter::streams()
{
    return device()->flag(L"emits-stream");
}

std::vector<StreamingPin *> BdaTunerFilter::streamingPins()
{
    return {&m_transport};
}

} // namespace lab
