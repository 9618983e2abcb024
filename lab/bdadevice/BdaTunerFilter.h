// A simulated BDA tuner filter (device kind "bda-tuner", KSCATEGORY_BDA_NETWORK_TUNER): an
// antenna input that the network provider connects to, a transport output towards the receiver,
// and the interfaces a network provider tunes through: IBDA_DeviceControl (StartChanges,
// CheckChanges, CommitChanges) and IBDA_Topology, whose control nodes (BdaControlNode) take the
// frequency, bandwidth and modulation. The committed tune picks the multiplex of the broadcast
// description (see BdaTuning).
//
// Device keys:
//   networks = atsc, cable, dvb-t, dtmb   network types the tuner receives (default all)
//   statistics = filter | nodes | none    where IBDA_SignalStatistics lives (default filter)
//   emits-stream = yes                    a tuner without receiver: its output pin carries the
//                                         transport stream itself (keys of TransportStreamPin)
//   broadcast = PATH                      the broadcast description (see BroadcastSource)
//   fault.tune = HRESULT                  CommitChanges fails with it
//   fault.run = HRESULT                   Run fails with it
//   fault.IBDA_Topology = outside-changes IBDA_Topology is answered only between StartChanges and
//                                         CommitChanges: the network provider still tunes, any
//                                         other caller gets E_NOINTERFACE
// Journal: the tune and statistics entries of BdaTuning, "Pause", "Run", "Stop".
#pragma once

#include <bdaiface.h>

#include <atomic>

#include "bdadevice/BdaTuning.h"
#include "bdadevice/LinkInputPin.h"
#include "bdadevice/TunedSignalStatistics.h"
#include "bdadevice/TransportFeed.h"
#include "bdadevice/TransportStreamPin.h"
#include "common/DeviceFilter.h"

namespace lab {

class BdaTunerFilter : public DeviceFilter,
                       public IBDA_DeviceControl,
                       public IBDA_Topology,
                       public TunedSignalStatistics,
                       public ITunedSignalSource,
                       private TransportFeed {
public:
    BdaTunerFilter();
    ~BdaTunerFilter();

    STDMETHODIMP QueryInterface(REFIID iid, void **out) override { return BaseFilter::QueryInterface(iid, out); }
    STDMETHODIMP_(ULONG) AddRef() override { return BaseFilter::AddRef(); }
    STDMETHODIMP_(ULONG) Release() override { return BaseFilter::Release(); }
    STDMETHODIMP GetClassID(CLSID *clsid) override { return BaseFilter::GetClassID(clsid); }

    int pinCount() override { return 2; }
    BasePin *pin(int index) override;

    // IBDA_DeviceControl
    STDMETHODIMP StartChanges() override;
    STDMETHODIMP CheckChanges() override;
    STDMETHODIMP CommitChanges() override;
    STDMETHODIMP GetChangeState(ULONG *state) override;

    // IBDA_Topology
    STDMETHODIMP GetNodeTypes(ULONG *count, ULONG max, ULONG types[]) override;
    STDMETHODIMP GetNodeDescriptors(ULONG *count, ULONG max, BDANODE_DESCRIPTOR descriptors[]) override;
    STDMETHODIMP GetNodeInterfaces(ULONG nodeType, ULONG *count, ULONG max, GUID interfaces[]) override;
    STDMETHODIMP GetPinTypes(ULONG *count, ULONG max, ULONG types[]) override;
    STDMETHODIMP GetTemplateConnections(ULONG *count, ULONG max, BDA_TEMPLATE_CONNECTION connections[]) override;
    STDMETHODIMP CreatePin(ULONG pinType, ULONG *pinId) override;
    STDMETHODIMP DeletePin(ULONG pinId) override;
    STDMETHODIMP SetMediaType(ULONG pinId, AM_MEDIA_TYPE *type) override;
    STDMETHODIMP SetMedium(ULONG pinId, REGPINMEDIUM *medium) override;
    STDMETHODIMP CreateTopology(ULONG inputPinId, ULONG outputPinId) override;
    STDMETHODIMP GetControlNode(ULONG inputPinId, ULONG outputPinId, ULONG nodeType, IUnknown **node) override;

    // ITunedSignalSource
    void STDMETHODCALLTYPE currentSignal(TunedSignal &signal, StreamFaults &faults) override;

protected:
    void *queryExtra(REFIID iid) override;
    HRESULT configure(const std::shared_ptr<DeviceState> &device) override;
    std::vector<StreamingPin *> streamingPins() override;
    bool isLiveSource() const override { return true; }

    const BdaTuning &statisticsTuning() override { return m_tuning; }
    DeviceState &statisticsDevice() override { return *device(); }

private:
    // TransportFeed
    CComPtr<ITunedSignalSource> signalSource() override;
    std::shared_ptr<DeviceState> streamDevice() override { return device(); }
    bool streams() override;

    enum class StatisticsPlace { Filter, Nodes, None };
    StatisticsPlace statisticsPlace() const;
    // False under fault.IBDA_Topology while no change set is open.
    bool topologyAnswered() const;

    BdaTuning m_tuning;
    LinkInputPin m_antenna;
    TransportStreamPin m_transport;
    std::atomic<bool> m_changeSetOpen{false};
};

} // namespace lab
