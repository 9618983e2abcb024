// The base of the digital (BDA) tuners: builds the network provider -> tuner -> receiver ->
// (sample grabber) -> MPEG-2 demultiplexer graph for the framework's device, renders the
// demultiplexer's video, and decides on a signal from the device's BDA signal statistics.
#pragma once

#include "ChannelStream.h"
#include "SorvaneExport.h"
#include "StreamHealth.h"
#include "TVTuner.h"

#include <bdaiface.h>
#include <tuner.h>

namespace sorvane {

class SampleCallback;

class SORVANE_API DigitalTuner : public TVTuner {
public:
    DigitalTuner(const ruvo::DiagDevice &device, const kel::String &name);

    // The transport stream of the channel found, as the last scan measured it: its health
    // after TR 101 290 priority 1 and its quality percentage (signalQuality); not measured
    // by tuners without a sample grabber.
    StreamHealth streamHealth() const { return m_streamHealth; }
    int streamQuality() const { return m_streamQuality; }
    // The transport stream the last scan ended on (empty for tuners without a sample grabber).
    const ChannelStream &channelStream() const { return m_channelStream; }

protected:
    // The virtual operations below follow those of TVTuner, in this order.
    virtual void doSetupDevice(bool tolerateNoReceiver, bool matchReceiverToDevice, bool considerFriendlyName);
    virtual void setupNetworkProvider();
    virtual bool loadFilter(const GUID &category, CComPtr<IBaseFilter> &out, CComPtr<IBaseFilter> connectTo,
                            bool isUpstream, bool matchDevice, bool considerFriendlyName);
    virtual bool connectFilters(CComPtr<IBaseFilter> upstream, CComPtr<IBaseFilter> downstream);
    virtual void renderFromFilter(CComPtr<IBaseFilter> filter);

    virtual bool renderFromPin(CComPtr<IPin> pin, long &hr);
    CComPtr<IBaseFilter> findVideoRenderer();
    CComPtr<IBaseFilter> addVideoRenderer();
    CComPtr<ITuningSpace> getTuningSpace(const kel::String &name);

    bool isSignalPresent() override;
    void renderToScreen() override;
    void cleanUpCOMInterfaces() override;

    // Pin kinds of the demultiplexer's outputs, by their media type.
    static bool isVideoPin(IPin *pin);
    static bool isSectionsPin(IPin *pin);
    // Measures the stream of the channel found for streamHealth() and streamQuality().
    void measureStream(unsigned char *data, int length, double durationMs);
    // After the graph stopped: keeps the stream the scan ended on and measures the found channel's.
    void keepChannelStream(SampleCallback *buffer);

    CComPtr<IBaseFilter> m_networkProvider;
    CComPtr<ITuner> m_tuner;
    CComPtr<IBaseFilter> m_receiverFilter;
    CComPtr<IBaseFilter> m_demuxFilter;
    StreamHealth m_streamHealth;
    int m_streamQuality;
    ChannelStream m_channelStream;

private:
    // The steps of doSetupDevice, in its order; each throws when the graph cannot be built.
    void takeProviderTuner();
    void loadTunerFilter(bool considerFriendlyName);
    void loadReceiverFilter(bool tolerateNoReceiver, bool matchReceiverToDevice, bool considerFriendlyName);
    void addDemultiplexer();
    void connectToDemultiplexer();
    // The system's monikers of a device category; null (logged) when there are none to walk.
    static CComPtr<IEnumMoniker> categoryMonikers(const GUID &category);
    // One moniker of the category: its filter when it is the framework's device.
    bool monikerMatches(IMoniker *moniker, bool matchDevice, bool considerFriendlyName, const kel::String &wantedName,
                        kel::String &friendlyName, bool &failed);
    // `failed` ends the moniker search: the graph refused the filter or would not give it back.
    bool addAndConnect(CComPtr<IBaseFilter> filter, const kel::String &name, CComPtr<IBaseFilter> connectTo,
                       bool isUpstream, bool &failed);
    // What a node's statistics say. UNREADABLE ends the topology search: a node's quality,
    // lock or presence could not be read.
    enum class NodeSignal { FOUND, NONE, UNREADABLE };
    bool topologySignal(IBDA_Topology *topology);
    NodeSignal nodeSignal(IBDA_Topology *topology, ULONG nodeType);
    static CComPtr<IBDA_SignalStatistics> nodeStatistics(IBDA_Topology *topology, ULONG nodeType);
    // Quality, lock and presence decide.
    static NodeSignal statisticsSignal(IBDA_SignalStatistics *statistics);
    static void logStrengthAndSampleTime(IBDA_SignalStatistics *statistics);
    bool connectPins(IPin *upstreamPin, IBaseFilter *downstream);
    kel::String graphText() const;
};

} // namespace sorvane
