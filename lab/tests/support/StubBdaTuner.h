// A stand-in for a BDA tuner filter, for testing what a network provider tells one: an input pin
// that takes the antenna link (StubBdaPin), IBDA_Topology with two control nodes (node type 0
// tunes the frequency, node type 1 demodulates; StubBdaNode) and IBDA_DeviceControl. Every call
// it expects is recorded in order ("StartChanges", "GetNodeTypes", "GetControlNode 0 1 <type>",
// "FrequencyMultiplier <n>", "Frequency <n>", "Bandwidth <n>", "ModulationType <n>",
// "CheckChanges", "CommitChanges"); a call it does not expect fails the test.
#pragma once

#include <windows.h>
#include <dshow.h>
#include <bdaiface.h>

#include <mutex>
#include <string>
#include <vector>

#include "StubBdaNode.h"
#include "StubBdaPin.h"

namespace labtest {

class StubBdaTuner : public IBaseFilter, public IBDA_Topology, public IBDA_DeviceControl {
public:
    StubBdaTuner();
    virtual ~StubBdaTuner() = default;
    StubBdaTuner(const StubBdaTuner &) = delete;
    StubBdaTuner &operator=(const StubBdaTuner &) = delete;

    // The named call ("CommitChanges", "Frequency" ...) fails with hr from now on.
    void failOn(const std::wstring &call, HRESULT hr);
    HRESULT failure(const std::wstring &call);
    void record(const std::wstring &call);
    std::vector<std::wstring> calls();
    void clearCalls();
    IPin *input() { return &m_pin; }

    STDMETHODIMP QueryInterface(REFIID iid, void **out) override;
    STDMETHODIMP_(ULONG) AddRef() override;
    STDMETHODIMP_(ULONG) Release() override;

    // IBaseFilter
    STDMETHODIMP GetClassID(CLSID *clsid) override;
    STDMETHODIMP Stop() override;
    STDMETHODIMP Pause() override;
    STDMETHODIMP Run(REFERENCE_TIME start) override;
    STDMETHODIMP GetState(DWORD timeout, FILTER_STATE *state) override;
    STDMETHODIMP SetSyncSource(IReferenceClock *clock) override;
    STDMETHODIMP GetSyncSource(IReferenceClock **clock) override;
    STDMETHODIMP EnumPins(IEnumPins **pins) override;
    STDMETHODIMP FindPin(LPCWSTR id, IPin **pin) override;
    STDMETHODIMP QueryFilterInfo(FILTER_INFO *info) override;
    STDMETHODIMP JoinFilterGraph(IFilterGraph *graph, LPCWSTR name) override;
    STDMETHODIMP QueryVendorInfo(LPWSTR *info) override;

    // IBDA_Topology
    STDMETHODIMP GetNodeTypes(ULONG *count, ULONG maximum, ULONG types[]) override;
    STDMETHODIMP GetNodeDescriptors(ULONG *count, ULONG maximum, BDANODE_DESCRIPTOR descriptors[]) override;
    STDMETHODIMP GetNodeInterfaces(ULONG type, ULONG *count, ULONG maximum, GUID interfaces[]) override;
    STDMETHODIMP GetPinTypes(ULONG *count, ULONG maximum, ULONG types[]) override;
    STDMETHODIMP GetTemplateConnections(ULONG *count, ULONG maximum, BDA_TEMPLATE_CONNECTION connections[]) override;
    STDMETHODIMP CreatePin(ULONG type, ULONG *id) override;
    STDMETHODIMP DeletePin(ULONG id) override;
    STDMETHODIMP SetMediaType(ULONG id, AM_MEDIA_TYPE *type) override;
    STDMETHODIMP SetMedium(ULONG id, REGPINMEDIUM *medium) override;
    STDMETHODIMP CreateTopology(ULONG input, ULONG output) override;
    STDMETHODIMP GetControlNode(ULONG input, ULONG output, ULONG type, IUnknown **node) override;

    // IBDA_DeviceControl
    STDMETHODIMP StartChanges() override;
    STDMETHODIMP CheckChanges() override;
    STDMETHODIMP CommitChanges() override;
    STDMETHODIMP GetChangeState(ULONG *state) override;

private:
    HRESULT expected(const std::wstring &call);

    volatile LONG m_refs = 0;
    std::mutex m_lock;
    std::vector<std::wstring> m_calls;
    std::vector<std::pair<std::wstring, HRESULT>> m_failures;
    StubBdaPin m_pin;
    StubBdaNode m_tunerNode;
    StubBdaNode m_demodulatorNode;
};

} // namespace labtest
