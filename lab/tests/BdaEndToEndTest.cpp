// A BDA graph built by hand as an application builds it: network provider -> the lab card's
// tuner -> its receiver -> sample grabber. Tune requests go through ITuner only; the described
// channel's transport stream arrives, an empty frequency gives nothing.
#include <windows.h>
#include <dshow.h>
#include <bdaiface.h>
#include <tuner.h>
#include <uuids.h>

#include <algorithm>
#include <string>
#include <vector>

#include <atlbase.h>
#include <gtest/gtest.h>

#include "BdaGraph.h"
#include "BdaTestHelpers.h"
#include "LabGraph.h"
#include "LeakCheckedTest.h"
#include "TransportStreamCheck.h"
#include "lab/BdaGuids.h"
#include "lab/LabControl.h"

namespace {

const wchar_t kAtscTuner[] = L"Lab ATSC QAM Tuner";
const wchar_t kAtscReceiver[] = L"Lab ATSC QAM Receiver";
const wchar_t kDvbTuner[] = L"Lab DVB-T Tuner";
const wchar_t kDvbReceiver[] = L"Lab DVB-T Receiver";
const wchar_t kProvider[] = L"Network Provider";

// Enough bytes for a few pictures and program tables at the lab cards' 4 Mbit/s.
const size_t kStreamBytes = 400 * 188 * 4;
// How long "nothing comes" is watched.
const DWORD kSilenceMs = 400;

// Every packet in sync, and the pictures name the channel tuned.
void expectChannel(const std::vector<std::uint8_t> &bytes, int channel)
{
    const labtest::TransportStreamCheck stream(bytes);
    ASSERT_GE(stream.packets(), 100u);
    EXPECT_EQ(0x47, bytes.front());
    EXPECT_EQ(0u, stream.outOfSync());
    EXPECT_GE(stream.patSections(), 1u);
    ASSERT_FALSE(stream.pictures().empty());
    for (const labtest::TsPicture &picture : stream.pictures())
        EXPECT_EQ(channel, picture.channel);
}

class BdaEndToEndTest : public labtest::LeakCheckedTest {
protected:
    void SetUp() override
    {
        LeakCheckedTest::SetUp();
        for (const wchar_t *device : {kAtscTuner, kAtscReceiver, kDvbTuner, kDvbReceiver, kProvider})
            lab::clearJournal(device);
    }
    void TearDown() override
    {
        m_tuner.Release();
        m_provider.Release();
        m_graph.tearDown();
        LeakCheckedTest::TearDown();
    }

    // The card's graph with the provider of that class added as "Network Provider"; connected
    // to the tuner's input at once or, with connect false, left for connectProvider.
    HRESULT build(const wchar_t *tuner, const wchar_t *receiver, const CLSID &providerClass, bool connect = true)
    {
        HRESULT hr = m_graph.build(tuner, receiver);
        if (SUCCEEDED(hr))
            hr = m_provider.CoCreateInstance(providerClass, nullptr, CLSCTX_INPROC_SERVER);
        if (SUCCEEDED(hr))
            hr = m_graph.graph->AddFilter(m_provider, L"Network Provider");
        if (SUCCEEDED(hr))
            hr = m_provider.QueryInterface(&m_tuner);
        if (SUCCEEDED(hr) && connect)
            hr = connectProvider();
        return hr;
    }

    HRESULT connectProvider()
    {
        CComPtr<IPin> antenna;
        CComPtr<IPin> tunerInput;
        HRESULT hr = m_provider->FindPin(L"Antenna Out", &antenna);
        tunerInput.Attach(labtest::firstPin(m_graph.tuner, PINDIR_INPUT));
        if (SUCCEEDED(hr))
            hr = tunerInput ? m_graph.graph->ConnectDirect(antenna, tunerInput, nullptr) : E_FAIL;
        return hr;
    }

    labtest::BdaGraph m_graph;
    CComPtr<IBaseFilter> m_provider;
    CComPtr<ITuner> m_tuner;
};

TEST_F(BdaEndToEndTest, ClearQamChannelArrivesAndAnEmptyOneStaysSilent)
{
    ASSERT_HRESULT_SUCCEEDED(build(kAtscTuner, kAtscReceiver, lab::kClsidNetworkProvider));
    ASSERT_HRESULT_SUCCEEDED(
        m_tuner->put_TuneRequest(labtest::atscRequest(L"ATSCCable", 2, 55250, -1, BDA_MOD_256QAM, 1)));
    EXPECT_TRUE(lab::journalHas(kAtscTuner, L"Tune 55250 kHz 256QAM 6 MHz"));
    expectChannel(m_graph.receive(kStreamBytes), 2);

    ASSERT_HRESULT_SUCCEEDED(
        m_tuner->put_TuneRequest(labtest::atscRequest(L"ATSCCable", 10, 193250, -1, BDA_MOD_256QAM, 1)));
    EXPECT_TRUE(lab::journalHas(kAtscTuner, L"Tune 193250 kHz 256QAM 6 MHz"));
    EXPECT_TRUE(m_graph.receive(0, kSilenceMs).empty());
    EXPECT_EQ((std::vector<std::wstring>{
                  L"TuneRequest ATSC ATSCCable 55250 kHz 256QAM 6 MHz channel 2 minor -1 program 1",
                  L"TuneRequest ATSC ATSCCable 193250 kHz 256QAM 6 MHz channel 10 minor -1 program 1"}),
              lab::journal(kProvider));
}

// A request put before the provider meets the tuner reaches it when the graph starts.
TEST_F(BdaEndToEndTest, AtscPhysicalChannelPutBeforeConnectingArrivesWhenTheGraphRuns)
{
    ASSERT_HRESULT_SUCCEEDED(build(kAtscTuner, kAtscReceiver, CLSID_ATSCNetworkProvider, false));
    ASSERT_HRESULT_SUCCEEDED(m_tuner->put_TuneRequest(labtest::atscRequest(L"ATSC", 8, -1, 8, BDA_MOD_NOT_SET, -1)));
    ASSERT_HRESULT_SUCCEEDED(connectProvider());
    expectChannel(m_graph.receive(kStreamBytes), 8);
    EXPECT_TRUE(lab::journalHas(kAtscTuner, L"Tune 183000 kHz 8VSB 6 MHz"));
    EXPECT_TRUE(lab::journalHas(kProvider, L"Deliver ATSC ATSC 183000 kHz 8VSB 6 MHz channel 8 minor -1 program -1"));
}

TEST_F(BdaEndToEndTest, DvbtChannelFromTheCountrysFrequencyTable)
{
    ASSERT_HRESULT_SUCCEEDED(build(kDvbTuner, kDvbReceiver, CLSID_DVBTNetworkProvider));
    CComQIPtr<IFrequencyMap> map(m_provider);
    ASSERT_TRUE(map);
    ASSERT_HRESULT_SUCCEEDED(map->put_CountryCode(49));
    ULONG count = 0;
    ULONG *list = nullptr;
    ASSERT_HRESULT_SUCCEEDED(map->get_DefaultFrequencyMapping(49, &count, &list));
    const std::vector<unsigned long> germany(list, list + count);
    CoTaskMemFree(list);
    ASSERT_EQ(57u, germany.size());
    // UHF channel 21 follows the eight VHF channels 5-12.
    const long channel21 = static_cast<long>(germany[8]);
    ASSERT_HRESULT_SUCCEEDED(m_tuner->put_TuneRequest(labtest::dvbtRequest(channel21, 8)));
    EXPECT_TRUE(lab::journalHas(kDvbTuner, L"Tune 474000 kHz NOT_SET 8 MHz"));
    expectChannel(m_graph.receive(kStreamBytes), 21);

    ASSERT_HRESULT_SUCCEEDED(m_tuner->put_TuneRequest(labtest::dvbtRequest(static_cast<long>(germany[0]), 7)));
    EXPECT_TRUE(m_graph.receive(0, kSilenceMs).empty());
}

} // namespace
