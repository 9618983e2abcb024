// The BDA network providers as an application drives them: the antenna pin connected to the lab's
// tuner filter (whose journal says what it was tuned to), tune requests validated per network type
// and delivered through the tuner filter's BDA interfaces, requests kept until the provider
// pauses, device and injected failures, and the DVB-T provider's frequency tables per country.
#include <windows.h>
#include <dshow.h>
#include <bdaiface.h>
#include <tuner.h>
#include <uuids.h>

#include <algorithm>
#include <string>
#include <thread>
#include <vector>

#include <atlbase.h>
#include <gtest/gtest.h>

#include "BdaTestHelpers.h"
#include "LabGraph.h"
#include "LeakCheckedTest.h"
#include "lab/BdaGuids.h"
#include "lab/LabControl.h"

namespace {

const wchar_t kProvider[] = L"Network Provider";

CComPtr<IBaseFilter> provider(const CLSID &clsid)
{
    CComPtr<IBaseFilter> filter;
    EXPECT_HRESULT_SUCCEEDED(filter.CoCreateInstance(clsid, nullptr, CLSCTX_INPROC_SERVER));
    return filter;
}

CComPtr<IPin> antenna(IBaseFilter *filter)
{
    CComPtr<IPin> pin;
    EXPECT_HRESULT_SUCCEEDED(filter->FindPin(L"Antenna Out", &pin));
    return pin;
}

const wchar_t kAtscTuner[] = L"Lab ATSC QAM Tuner";
const wchar_t kDvbTuner[] = L"Lab DVB-T Tuner";

CComPtr<IBaseFilter> labTuner(const wchar_t *name)
{
    CComPtr<IBaseFilter> filter;
    EXPECT_HRESULT_SUCCEEDED(labtest::bindDeviceIn(lab::kCategoryBdaNetworkTuner, name, filter));
    return filter;
}

CComPtr<IPin> antennaInput(IBaseFilter *tuner)
{
    CComPtr<IPin> pin;
    EXPECT_HRESULT_SUCCEEDED(tuner->FindPin(L"Input0", &pin));
    return pin;
}

// The lab tuner's journal entry for a tune committed through its BDA interfaces.
std::wstring tuned(long kilohertz, const wchar_t *modulation, long megahertz)
{
    return L"Tune " + std::to_wstring(kilohertz) + L" kHz " + modulation + L" " + std::to_wstring(megahertz) + L" MHz";
}

std::vector<unsigned long> take(ULONG count, ULONG *list)
{
    std::vector<unsigned long> values(list, list + count);
    CoTaskMemFree(list);
    return values;
}

// A provider whose antenna pin is connected to a lab tuner filter; disconnected at the end.
class ConnectedProvider {
public:
    ConnectedProvider(const CLSID &clsid, const wchar_t *tunerName)
        : filter(provider(clsid)), tuner(labTuner(tunerName)), m_pin(antenna(filter)), m_input(antennaInput(tuner))
    {
        EXPECT_HRESULT_SUCCEEDED(m_pin->Connect(m_input, nullptr));
        filter.QueryInterface(&control);
    }
    ~ConnectedProvider()
    {
        m_pin->Disconnect();
        m_input->Disconnect();
    }

    CComPtr<IBaseFilter> filter;
    CComPtr<IBaseFilter> tuner;
    CComPtr<ITuner> control;

private:
    CComPtr<IPin> m_pin;
    CComPtr<IPin> m_input;
};

class NetworkProviderTest : public labtest::LeakCheckedTest {
protected:
    void SetUp() override
    {
        LeakCheckedTest::SetUp();
        for (const wchar_t *device : {kProvider, kAtscTuner, kDvbTuner})
            lab::clearJournal(device);
    }
};

TEST_F(NetworkProviderTest, ProvidersAreFiltersWithOneAntennaPin)
{
    for (const CLSID *clsid : {&lab::kClsidNetworkProvider, &CLSID_ATSCNetworkProvider, &CLSID_DVBTNetworkProvider}) {
        CComPtr<IBaseFilter> filter = provider(*clsid);
        ASSERT_TRUE(filter);
        CLSID reported = GUID_NULL;
        EXPECT_HRESULT_SUCCEEDED(filter->GetClassID(&reported));
        EXPECT_TRUE(IsEqualCLSID(*clsid, reported));
        EXPECT_TRUE(CComQIPtr<ITuner>(filter));
        EXPECT_EQ(clsid == &CLSID_DVBTNetworkProvider, CComQIPtr<IFrequencyMap>(filter) != nullptr);
        CComPtr<IEnumPins> pins;
        ASSERT_HRESULT_SUCCEEDED(filter->EnumPins(&pins));
        CComPtr<IPin> pin;
        ULONG count = 0;
        std::vector<PIN_DIRECTION> directions;
        while (pins->Next(1, &pin, &count) == S_OK) {
            PIN_DIRECTION direction = PINDIR_INPUT;
            pin->QueryDirection(&direction);
            directions.push_back(direction);
            pin.Release();
        }
        EXPECT_EQ(std::vector<PIN_DIRECTION>{PINDIR_OUTPUT}, directions);
    }
}

TEST_F(NetworkProviderTest, EachProviderOffersTheSpacesOfItsNetworkType)
{
    struct Case {
        const CLSID *clsid;
        std::vector<std::wstring> spaces;
    };
    const Case cases[] = {
        {&lab::kClsidNetworkProvider, {L"ATSC", L"ATSCCable", L"ClearQAM", L"Digital Cable", L"DVB-T"}},
        {&CLSID_ATSCNetworkProvider, {L"ATSC", L"ATSCCable", L"ClearQAM"}},
        {&CLSID_DVBTNetworkProvider, {L"DVB-T"}},
    };
    for (const Case &item : cases) {
        CComQIPtr<ITuner> tuner(provider(*item.clsid));
        ASSERT_TRUE(tuner);
        CComPtr<IEnumTuningSpaces> spaces;
        ASSERT_HRESULT_SUCCEEDED(tuner->EnumTuningSpaces(&spaces));
        EXPECT_EQ(item.spaces, labtest::names(spaces));
    }
    lab::DeviceOverride scope(L"System Tuning Spaces", L"spaces", L"ATSC");
    CComQIPtr<ITuner> dvbt(provider(CLSID_DVBTNetworkProvider));
    CComPtr<IEnumTuningSpaces> none;
    ASSERT_HRESULT_SUCCEEDED(dvbt->EnumTuningSpaces(&none));
    EXPECT_TRUE(labtest::names(none).empty());
}

TEST_F(NetworkProviderTest, RequestOfAnotherNetworkTypeIsRefused)
{
    CComQIPtr<ITuner> atsc(provider(CLSID_ATSCNetworkProvider));
    CComQIPtr<ITuner> dvbt(provider(CLSID_DVBTNetworkProvider));
    CComPtr<ITuneRequest> dvbtRequest = labtest::dvbtRequest(474000, 8);
    CComPtr<ITuneRequest> atscRequest = labtest::atscRequest(L"ATSC", 7, -1, 7, BDA_MOD_8VSB, 1);
    ASSERT_TRUE(dvbtRequest && atscRequest);
    EXPECT_EQ(E_INVALIDARG, atsc->Validate(dvbtRequest));
    EXPECT_EQ(E_INVALIDARG, atsc->put_TuneRequest(dvbtRequest));
    EXPECT_EQ(E_INVALIDARG, dvbt->put_TuneRequest(atscRequest));
    EXPECT_EQ(E_INVALIDARG, atsc->put_TuningSpace(labtest::systemSpace(L"Digital Cable")));
    EXPECT_HRESULT_SUCCEEDED(atsc->Validate(atscRequest));
    EXPECT_EQ(E_POINTER, atsc->put_TuneRequest(nullptr));
    CComPtr<ITuneRequest> current;
    EXPECT_HRESULT_FAILED(atsc->get_TuneRequest(&current));
    EXPECT_FALSE(current);
    EXPECT_EQ((std::vector<std::wstring>{
                  L"TuneRequest DVB-T DVB-T 474000 kHz NOT_SET 8 MHz channel -1 minor -1 program -1 failed 0x80070057",
                  L"TuneRequest ATSC ATSC 177000 kHz 8VSB 6 MHz channel 7 minor -1 program 1 failed 0x80070057",
                  L"TuningSpace Digital Cable failed 0x80070057"}),
              lab::journal(kProvider));
}

TEST_F(NetworkProviderTest, TuneRequestReachesTheTunerFilter)
{
    ConnectedProvider graph(lab::kClsidNetworkProvider, kAtscTuner);
    ASSERT_TRUE(graph.control);
    CComPtr<ITuneRequest> request = labtest::atscRequest(L"ATSCCable", 2, 55250, -1, BDA_MOD_256QAM, 1);
    ASSERT_HRESULT_SUCCEEDED(graph.control->put_TuneRequest(request));
    EXPECT_EQ(std::vector<std::wstring>{tuned(55250, L"256QAM", 6)}, lab::journal(kAtscTuner));

    CComPtr<ITuneRequest> current;
    ASSERT_HRESULT_SUCCEEDED(graph.control->get_TuneRequest(&current));
    LONG channel = 0;
    ASSERT_HRESULT_SUCCEEDED(CComQIPtr<IATSCChannelTuneRequest>(current)->get_Channel(&channel));
    EXPECT_EQ(2, channel);
    CComPtr<ITuningSpace> space;
    ASSERT_HRESULT_SUCCEEDED(graph.control->get_TuningSpace(&space));
    EXPECT_EQ(L"ATSCCable", labtest::uniqueName(space));

    // Without a frequency the physical channel, else the channel, picks one from the plan of
    // the space: terrestrial centres for "ATSC", cable carriers for the cable spaces.
    ASSERT_HRESULT_SUCCEEDED(
        graph.control->put_TuneRequest(labtest::atscRequest(L"ATSC", 4, -1, 14, BDA_MOD_NOT_SET, 3)));
    ASSERT_HRESULT_SUCCEEDED(
        graph.control->put_TuneRequest(labtest::atscRequest(L"ClearQAM", 95, -1, -1, BDA_MOD_NOT_SET, -1)));
    ASSERT_HRESULT_SUCCEEDED(
        graph.control->put_TuneRequest(labtest::atscRequest(L"Digital Cable", 100, -1, -1, BDA_MOD_NOT_SET, -1)));
    EXPECT_EQ((std::vector<std::wstring>{tuned(55250, L"256QAM", 6), tuned(473000, L"8VSB", 6),
                                         tuned(91250, L"256QAM", 6), tuned(649250, L"256QAM", 6)}),
              lab::journal(kAtscTuner));

    EXPECT_EQ((std::vector<std::wstring>{
                  L"TuneRequest ATSC ATSCCable 55250 kHz 256QAM 6 MHz channel 2 minor -1 program 1",
                  L"TuneRequest ATSC ATSC 473000 kHz 8VSB 6 MHz channel 4 minor -1 program 3",
                  L"TuneRequest ATSC ClearQAM 91250 kHz 256QAM 6 MHz channel 95 minor -1 program -1",
                  L"TuneRequest DigitalCable Digital Cable 649250 kHz 256QAM 6 MHz channel 100 minor -1 program -1"}),
              lab::journal(kProvider));
}

TEST_F(NetworkProviderTest, DvbtRequestCarriesFrequencyAndBandwidth)
{
    ConnectedProvider graph(CLSID_DVBTNetworkProvider, kDvbTuner);
    ASSERT_HRESULT_SUCCEEDED(graph.control->put_TuneRequest(labtest::dvbtRequest(177500, 7)));
    // A locator without bandwidth leaves it to the space's default locator (8 MHz).
    ASSERT_HRESULT_SUCCEEDED(graph.control->put_TuneRequest(labtest::dvbtRequest(562000, -1)));
    EXPECT_EQ((std::vector<std::wstring>{tuned(177500, L"NOT_SET", 7), tuned(562000, L"NOT_SET", 8)}),
              lab::journal(kDvbTuner));
}

TEST_F(NetworkProviderTest, RequestPutBeforeConnectingReachesTheTunerAtPause)
{
    CComPtr<IBaseFilter> filter = provider(lab::kClsidNetworkProvider);
    CComQIPtr<ITuner> control(filter);
    ASSERT_HRESULT_SUCCEEDED(control->put_TuneRequest(labtest::atscRequest(L"ATSC", 36, 605000, -1, BDA_MOD_8VSB, 2)));
    CComPtr<IBaseFilter> tuner = labTuner(kAtscTuner);
    CComPtr<IPin> pin = antenna(filter);
    CComPtr<IPin> input = antennaInput(tuner);
    ASSERT_HRESULT_SUCCEEDED(pin->Connect(input, nullptr));
    EXPECT_TRUE(lab::journal(kAtscTuner).empty());
    ASSERT_HRESULT_SUCCEEDED(filter->Pause());
    const std::vector<std::wstring> once{tuned(605000, L"8VSB", 6)};
    EXPECT_EQ(once, lab::journal(kAtscTuner));
    ASSERT_HRESULT_SUCCEEDED(filter->Stop());
    ASSERT_HRESULT_SUCCEEDED(filter->Pause());
    EXPECT_EQ(once, lab::journal(kAtscTuner));
    ASSERT_HRESULT_SUCCEEDED(filter->Stop());
    pin->Disconnect();
    input->Disconnect();
    EXPECT_EQ((std::vector<std::wstring>{L"TuneRequest ATSC ATSC 605000 kHz 8VSB 6 MHz channel 36 minor -1 program 2",
                                         L"Deliver ATSC ATSC 605000 kHz 8VSB 6 MHz channel 36 minor -1 program 2"}),
              lab::journal(kProvider));
}

TEST_F(NetworkProviderTest, RefusalsOfTheDeviceAndInjectedFaultsReachTheCaller)
{
    ConnectedProvider graph(lab::kClsidNetworkProvider, kAtscTuner);
    CComPtr<ITuneRequest> request = labtest::atscRequest(L"ATSCCable", 10, 193250, -1, BDA_MOD_256QAM, 1);
    {
        lab::DeviceOverride refusal(kAtscTuner, L"fault.tune", L"0x80004005");
        EXPECT_EQ(E_FAIL, graph.control->put_TuneRequest(request));
    }
    CComPtr<ITuneRequest> kept;
    EXPECT_HRESULT_SUCCEEDED(graph.control->get_TuneRequest(&kept));
    EXPECT_TRUE(kept);

    {
        lab::DeviceOverride scope(kProvider, L"fault.put_TuneRequest", L"0x8007001F");
        scope.set(L"fault.EnumTuningSpaces", L"0x80004005");
        EXPECT_EQ(HRESULT_FROM_WIN32(ERROR_GEN_FAILURE), graph.control->put_TuneRequest(request));
        CComPtr<IEnumTuningSpaces> spaces;
        EXPECT_EQ(E_FAIL, graph.control->EnumTuningSpaces(&spaces));
    }
    EXPECT_EQ(std::vector<std::wstring>{tuned(193250, L"256QAM", 6) + L" failed 0x80004005"}, lab::journal(kAtscTuner));
    EXPECT_EQ((std::vector<std::wstring>{
                  L"TuneRequest ATSC ATSCCable 193250 kHz 256QAM 6 MHz channel 10 minor -1 program 1 failed 0x80004005",
                  L"TuneRequest ATSC ATSCCable 193250 kHz 256QAM 6 MHz channel 10 minor -1 program 1 failed 0x8007001F",
                  L"EnumTuningSpaces failed 0x80004005"}),
              lab::journal(kProvider));
}

TEST_F(NetworkProviderTest, FrequencyMapGivesEachCountrysDvbtChannels)
{
    CComQIPtr<IFrequencyMap> map(provider(CLSID_DVBTNetworkProvider));
    ASSERT_TRUE(map);
    ULONG count = 0;
    ULONG *list = nullptr;
    ASSERT_HRESULT_SUCCEEDED(map->get_CountryCodeList(&count, &list));
    const std::vector<unsigned long> countries = take(count, list);
    for (unsigned long code : {44ul, 49ul, 61ul, 33ul})
        EXPECT_NE(countries.end(), std::find(countries.begin(), countries.end(), code)) << code;

    ASSERT_HRESULT_SUCCEEDED(map->get_DefaultFrequencyMapping(44, &count, &list));
    std::vector<unsigned long> uk = take(count, list);
    ASSERT_EQ(49u, uk.size());
    EXPECT_EQ(474000u, uk.front());
    EXPECT_EQ(482000u, uk[1]);
    EXPECT_EQ(858000u, uk.back());

    ASSERT_HRESULT_SUCCEEDED(map->get_DefaultFrequencyMapping(49, &count, &list));
    std::vector<unsigned long> germany = take(count, list);
    ASSERT_EQ(57u, germany.size());
    EXPECT_EQ(177500u, germany[0]);
    EXPECT_EQ(226500u, germany[7]);
    EXPECT_EQ(474000u, germany[8]);

    ASSERT_HRESULT_SUCCEEDED(map->get_DefaultFrequencyMapping(61, &count, &list));
    std::vector<unsigned long> australia = take(count, list);
    ASSERT_EQ(49u, australia.size());
    EXPECT_EQ(177500u, australia[0]);
    EXPECT_EQ(219500u, australia[6]);
    EXPECT_EQ(529500u, australia[7]);
    EXPECT_EQ(816500u, australia.back());

    ASSERT_HRESULT_SUCCEEDED(map->put_CountryCode(49));
    ULONG country = 0;
    ASSERT_HRESULT_SUCCEEDED(map->get_CountryCode(&country));
    EXPECT_EQ(49u, country);
    ASSERT_HRESULT_SUCCEEDED(map->get_FrequencyMapping(&count, &list));
    EXPECT_EQ(germany, take(count, list));

    // A country without a table is refused but kept, with the previous table, for a table of
    // the application's own.
    EXPECT_EQ(E_INVALIDARG, map->put_CountryCode(1));
    ASSERT_HRESULT_SUCCEEDED(map->get_CountryCode(&country));
    EXPECT_EQ(1u, country);
    ASSERT_HRESULT_SUCCEEDED(map->get_FrequencyMapping(&count, &list));
    EXPECT_EQ(germany, take(count, list));
    EXPECT_EQ(E_INVALIDARG, map->get_DefaultFrequencyMapping(1, &count, &list));
    ULONG own[] = {500000, 506000};
    ASSERT_HRESULT_SUCCEEDED(map->put_FrequencyMapping(2, own));
    ASSERT_HRESULT_SUCCEEDED(map->get_FrequencyMapping(&count, &list));
    EXPECT_EQ((std::vector<unsigned long>{500000, 506000}), take(count, list));

    {
        lab::DeviceOverride scope(kProvider, L"fault.get_CountryCodeList", L"0x80004005");
        scope.set(L"fault.put_CountryCode", L"0x80070057");
        scope.set(L"fault.get_DefaultFrequencyMapping", L"0x8007000E");
        EXPECT_EQ(E_FAIL, map->get_CountryCodeList(&count, &list));
        EXPECT_EQ(E_INVALIDARG, map->put_CountryCode(44));
        EXPECT_EQ(E_OUTOFMEMORY, map->get_DefaultFrequencyMapping(44, &count, &list));
    }
    const std::vector<std::wstring> journal = lab::journal(kProvider);
    const std::vector<std::wstring> expected = {L"CountryCodeList " + std::to_wstring(countries.size()),
                                                L"DefaultFrequencyMapping 44 49",
                                                L"DefaultFrequencyMapping 49 57",
                                                L"DefaultFrequencyMapping 61 49",
                                                L"CountryCode 49",
                                                L"CountryCode 1 failed 0x80070057",
                                                L"DefaultFrequencyMapping 1 failed 0x80070057",
                                                L"FrequencyMapping 2",
                                                L"CountryCodeList failed 0x80004005",
                                                L"CountryCode 44 failed 0x80070057",
                                                L"DefaultFrequencyMapping 44 failed 0x8007000E"};
    EXPECT_EQ(expected, journal);
}

} // namespace

namespace {

// What a device probe does: the ATSC space's network type names the provider to create, which
// joins a filter graph, gives its ITuner, and connects directly to the tuner filter.
TEST_F(NetworkProviderTest, AtscSpaceLeadsToItsProviderInAGraph)
{
    CComPtr<IGraphBuilder> graph;
    ASSERT_HRESULT_SUCCEEDED(graph.CoCreateInstance(CLSID_FilterGraph, nullptr, CLSCTX_INPROC_SERVER));
    CComPtr<ITuningSpace> space = labtest::systemSpace(L"ATSC");
    ASSERT_TRUE(space);
    CLSID providerClass = GUID_NULL;
    ASSERT_HRESULT_SUCCEEDED(CLSIDFromString(labtest::networkType(space).c_str(), &providerClass));
    CComPtr<IBaseFilter> filter;
    ASSERT_HRESULT_SUCCEEDED(filter.CoCreateInstance(providerClass, nullptr, CLSCTX_INPROC_SERVER));
    ASSERT_HRESULT_SUCCEEDED(graph->AddFilter(filter, L"Network Provider"));
    CComQIPtr<ITuner> tuner(filter);
    ASSERT_TRUE(tuner);

    CComPtr<IBaseFilter> device = labTuner(kAtscTuner);
    ASSERT_HRESULT_SUCCEEDED(graph->AddFilter(device, kAtscTuner));
    CComPtr<IPin> pin = antenna(filter);
    CComPtr<IPin> input = antennaInput(device);
    ASSERT_HRESULT_SUCCEEDED(graph->ConnectDirect(pin, input, nullptr));
    CComPtr<IPin> peer;
    ASSERT_HRESULT_SUCCEEDED(pin->ConnectedTo(&peer));
    EXPECT_TRUE(peer.p == input.p);
    ASSERT_HRESULT_SUCCEEDED(tuner->put_TuneRequest(labtest::atscRequest(L"ATSC", 9, -1, 9, BDA_MOD_NOT_SET, 1)));
    EXPECT_EQ(std::vector<std::wstring>{tuned(189000, L"8VSB", 6)}, lab::journal(kAtscTuner));

    peer.Release();
    pin.Release();
    tuner.Release();
    EXPECT_HRESULT_SUCCEEDED(graph->RemoveFilter(filter));
    EXPECT_FALSE(input->ConnectedTo(&peer) == S_OK);
}

// Registered "Both": a multithreaded apartment gets the objects directly, without marshalling.
TEST_F(NetworkProviderTest, ObjectsServeAMultithreadedApartment)
{
    HRESULT created = E_FAIL;
    HRESULT tuned = E_FAIL;
    std::thread worker([&] {
        CoInitializeEx(nullptr, COINIT_MULTITHREADED);
        {
            CComPtr<IBaseFilter> filter;
            created = filter.CoCreateInstance(CLSID_DVBTNetworkProvider, nullptr, CLSCTX_INPROC_SERVER);
            CComQIPtr<ITuner> tuner(filter);
            if (tuner)
                tuned = tuner->put_TuneRequest(labtest::dvbtRequest(474000, 8));
        }
        CoUninitialize();
    });
    worker.join();
    EXPECT_HRESULT_SUCCEEDED(created);
    EXPECT_HRESULT_SUCCEEDED(tuned);
}

} // namespace
