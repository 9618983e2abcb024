// The simulated BDA cards as an application meets them: monikers in the two BDA categories, a
// graph built by hand, tuned through IBDA_DeviceControl / IBDA_Topology as a network provider
// tunes, the transport stream read through a sample grabber and checked (PAT/PMT with CRC,
// continuity, pictures naming channel and program), the signal statistics, and every fault.
#include <windows.h>
#include <dshow.h>
#include <bdaiface.h>

#include <algorithm>
#include <string>
#include <vector>

#include <atlbase.h>
#include <gtest/gtest.h>

#include "BdaGraph.h"
#include "LabGraph.h"
#include "LeakCheckedTest.h"
#include "TransportStreamCheck.h"
#include "lab/BdaGuids.h"
#include "lab/LabClassIds.h"
#include "lab/LabControl.h"

namespace {

const wchar_t kAtscTuner[] = L"Lab ATSC QAM Tuner";
const wchar_t kAtscReceiver[] = L"Lab ATSC QAM Receiver";
const wchar_t kDvbTuner[] = L"Lab DVB-T Tuner";
const wchar_t kDvbReceiver[] = L"Lab DVB-T Receiver";
const wchar_t kDvbStick[] = L"Lab DVB-T Stick";

// Enough bytes for several PAT repetitions at the lab cards' 4 Mbit/s.
const size_t kStreamBytes = 400 * 188 * 4;
// How long "nothing comes" is watched.
const DWORD kSilenceMs = 400;

std::wstring monikerValue(const labtest::MonikerInfo &info, const wchar_t *key)
{
    const auto found = info.values.find(key);
    return found == info.values.end() ? std::wstring() : found->second;
}

long statistic(IBDA_SignalStatistics *statistics, HRESULT (STDMETHODCALLTYPE IBDA_SignalStatistics::*get)(LONG *))
{
    LONG value = -12345;
    EXPECT_HRESULT_SUCCEEDED((statistics->*get)(&value));
    return value;
}

int flag(IBDA_SignalStatistics *statistics, HRESULT (STDMETHODCALLTYPE IBDA_SignalStatistics::*get)(BOOLEAN *))
{
    BOOLEAN value = 7;
    EXPECT_HRESULT_SUCCEEDED((statistics->*get)(&value));
    return value;
}

class BdaDeviceTest : public labtest::LeakCheckedTest {
protected:
    void SetUp() override
    {
        LeakCheckedTest::SetUp();
        for (const wchar_t *device : {kAtscTuner, kAtscReceiver, kDvbTuner, kDvbReceiver, kDvbStick})
            lab::clearJournal(device);
    }
    void TearDown() override
    {
        m_graph.tearDown();
        LeakCheckedTest::TearDown();
    }

    labtest::BdaGraph m_graph;
};

TEST_F(BdaDeviceTest, CardsArePublishedInBothBdaCategories)
{
    const std::vector<labtest::MonikerInfo> tuners = labtest::listDevices(lab::kCategoryBdaNetworkTuner);
    const std::vector<labtest::MonikerInfo> receivers = labtest::listDevices(lab::kCategoryBdaReceiverComponent);
    for (const wchar_t *name : {kAtscTuner, kDvbTuner, L"Lab DTMB Tuner", L"Lab OpenCable Tuner", kDvbStick}) {
        const labtest::MonikerInfo *tuner = labtest::findDevice(tuners, name);
        ASSERT_TRUE(tuner) << name;
        EXPECT_EQ(L"{6A3C1E52-0F5B-4C0B-9D34-2E7B81F4A6C1}", monikerValue(*tuner, L"CLSID"));
        EXPECT_NE(std::wstring::npos,
                  monikerValue(*tuner, L"DevicePath").find(L"#{71985f48-1ca1-11d3-9cc8-00c04f7971e0}"));
    }
    for (const wchar_t *name : {kAtscReceiver, kDvbReceiver, L"Lab DTMB Receiver", L"Lab OpenCable Receiver"}) {
        const labtest::MonikerInfo *receiver = labtest::findDevice(receivers, name);
        ASSERT_TRUE(receiver) << name;
        EXPECT_EQ(L"{C4D2B7A9-51E3-4F86-A0C7-93D15E2B8F04}", monikerValue(*receiver, L"CLSID"));
    }
    // A card's two filters share its device path up to the interface class.
    const std::wstring tunerPath = monikerValue(*labtest::findDevice(tuners, kAtscTuner), L"DevicePath");
    const std::wstring receiverPath = monikerValue(*labtest::findDevice(receivers, kAtscReceiver), L"DevicePath");
    EXPECT_EQ(tunerPath.substr(0, tunerPath.find(L"#{")), receiverPath.substr(0, receiverPath.find(L"#{")));
    EXPECT_EQ(nullptr, labtest::findDevice(receivers, kDvbStick));
}

TEST_F(BdaDeviceTest, TunedClearQamChannelStreamsItsPrograms)
{
    ASSERT_HRESULT_SUCCEEDED(m_graph.build(kAtscTuner, kAtscReceiver));
    ASSERT_HRESULT_SUCCEEDED(m_graph.tune(55250, BDA_MOD_256QAM));
    EXPECT_TRUE(lab::journalHas(kAtscTuner, L"Tune 55250 kHz 256QAM"));

    const labtest::TransportStreamCheck stream(m_graph.receive(kStreamBytes));
    ASSERT_GE(stream.packets(), 400u);
    EXPECT_EQ(0u, stream.outOfSync());
    EXPECT_EQ(0u, stream.errorPackets());
    EXPECT_EQ(0u, stream.continuityErrors());
    EXPECT_EQ(0u, stream.badCrcs());
    EXPECT_EQ(0u, stream.scrambledPackets());
    EXPECT_GE(stream.patSections(), 2u);
    EXPECT_EQ(2, stream.transportStreamId());
    ASSERT_EQ(1u, stream.programs().size());
    const labtest::TsProgram &program = stream.programs().at(1);
    EXPECT_EQ(0x30, program.pmtPid);
    EXPECT_TRUE(program.mapSeen);
    EXPECT_FALSE(program.caDescriptor);
    EXPECT_EQ(0x31, program.pcrPid);
    EXPECT_EQ(0x02, program.streams.at(0x31));
    EXPECT_EQ(0x81, program.streams.at(0x34));

    ASSERT_GE(stream.pictures().size(), 3u);
    for (size_t i = 0; i < stream.pictures().size(); ++i) {
        EXPECT_EQ(2, stream.pictures()[i].channel);
        EXPECT_EQ(1, stream.pictures()[i].program);
        if (i > 0) {
            EXPECT_EQ(stream.pictures()[i - 1].frame + 1, stream.pictures()[i].frame);
        }
    }
    EXPECT_TRUE(lab::journalHas(kAtscReceiver, L"Run"));
    EXPECT_TRUE(lab::journalHas(kAtscReceiver, L"Stop"));
    EXPECT_GT(lab::samplesDelivered(kAtscReceiver), 0);
}

TEST_F(BdaDeviceTest, NothingOnTheFrequencyMeansNoPacketsAndNoSignal)
{
    ASSERT_HRESULT_SUCCEEDED(m_graph.build(kAtscTuner, kAtscReceiver));
    ASSERT_HRESULT_SUCCEEDED(m_graph.tune(57000, BDA_MOD_256QAM));
    EXPECT_TRUE(m_graph.receive(0, kSilenceMs).empty());

    CComQIPtr<IBDA_SignalStatistics> statistics(m_graph.tuner.p);
    ASSERT_TRUE(statistics);
    EXPECT_EQ(0, flag(statistics, &IBDA_SignalStatistics::get_SignalPresent));
    EXPECT_EQ(0, flag(statistics, &IBDA_SignalStatistics::get_SignalLocked));
    EXPECT_EQ(0, statistic(statistics, &IBDA_SignalStatistics::get_SignalQuality));
    EXPECT_TRUE(lab::journalHas(kAtscTuner, L"SignalPresent 0"));
    EXPECT_TRUE(lab::journalHas(kAtscReceiver, L"Delivered 0"));
}

TEST_F(BdaDeviceTest, AtscChannelIsFoundAnywhereInItsBandAndOnlyWith8Vsb)
{
    ASSERT_HRESULT_SUCCEEDED(m_graph.build(kAtscTuner, kAtscReceiver));
    CComQIPtr<IBDA_SignalStatistics> statistics(m_graph.tuner.p);
    ASSERT_TRUE(statistics);

    // Channel 8 (180-186 MHz) by its centre frequency: two programs with their minor channels.
    ASSERT_HRESULT_SUCCEEDED(m_graph.tune(183000, BDA_MOD_8VSB));
    EXPECT_EQ(1, flag(statistics, &IBDA_SignalStatistics::get_SignalLocked));
    const labtest::TransportStreamCheck stream(m_graph.receive(kStreamBytes));
    EXPECT_EQ(0u, stream.badCrcs());
    ASSERT_EQ(2u, stream.programs().size());
    EXPECT_EQ(0x40, stream.programs().at(4).pmtPid);
    bool sawProgram4 = false;
    for (const labtest::TsPicture &picture : stream.pictures()) {
        EXPECT_EQ(8, picture.channel);
        sawProgram4 = sawProgram4 || (picture.program == 4 && picture.pid == 0x41);
    }
    EXPECT_TRUE(sawProgram4);

    // The wrong demodulation: the signal is there but never locks, and nothing comes.
    ASSERT_HRESULT_SUCCEEDED(m_graph.tune(181250, BDA_MOD_256QAM));
    EXPECT_EQ(1, flag(statistics, &IBDA_SignalStatistics::get_SignalPresent));
    EXPECT_EQ(0, flag(statistics, &IBDA_SignalStatistics::get_SignalLocked));
    EXPECT_TRUE(m_graph.receive(0, kSilenceMs).empty());

    // A weak channel reports its described statistics.
    ASSERT_HRESULT_SUCCEEDED(m_graph.tune(521000, BDA_MOD_8VSB));
    EXPECT_EQ(30, statistic(statistics, &IBDA_SignalStatistics::get_SignalStrength));
    EXPECT_EQ(40, statistic(statistics, &IBDA_SignalStatistics::get_SignalQuality));
    EXPECT_EQ(100, statistic(statistics, &IBDA_SignalStatistics::get_SampleTime));
}

TEST_F(BdaDeviceTest, DescribedStreamFaults)
{
    ASSERT_HRESULT_SUCCEEDED(m_graph.build(kAtscTuner, kAtscReceiver));

    // Channel 3: every program scrambled, announced by a CA descriptor.
    ASSERT_HRESULT_SUCCEEDED(m_graph.tune(61250, BDA_MOD_256QAM));
    const labtest::TransportStreamCheck scrambled(m_graph.receive(kStreamBytes));
    ASSERT_EQ(2u, scrambled.programs().size());
    for (const auto &program : scrambled.programs())
        EXPECT_TRUE(program.second.caDescriptor);
    EXPECT_GT(scrambled.scrambledPackets(), 0u);
    EXPECT_TRUE(scrambled.pictures().empty());

    // Channel 4: the first program scrambled, the second clear.
    ASSERT_HRESULT_SUCCEEDED(m_graph.tune(67250, BDA_MOD_256QAM));
    const labtest::TransportStreamCheck mixed(m_graph.receive(kStreamBytes));
    EXPECT_TRUE(mixed.programs().at(1).caDescriptor);
    EXPECT_FALSE(mixed.programs().at(2).caDescriptor);
    ASSERT_FALSE(mixed.pictures().empty());
    EXPECT_EQ(2, mixed.pictures().front().program);

    // Channel 5: silent although the statistics report a signal.
    ASSERT_HRESULT_SUCCEEDED(m_graph.tune(77250, BDA_MOD_256QAM));
    EXPECT_TRUE(m_graph.receive(0, kSilenceMs).empty());

    // Channel 6: bytes without sync.
    ASSERT_HRESULT_SUCCEEDED(m_graph.tune(83250, BDA_MOD_256QAM));
    const labtest::TransportStreamCheck unsynced(m_graph.receive(188 * 200));
    ASSERT_GT(unsynced.packets(), 0u);
    EXPECT_EQ(unsynced.packets(), unsynced.outOfSync());

    // Channel 95: 30 % of the packets carry the transport error indicator.
    ASSERT_HRESULT_SUCCEEDED(m_graph.tune(91250, BDA_MOD_256QAM));
    const labtest::TransportStreamCheck damaged(m_graph.receive(kStreamBytes));
    ASSERT_GE(damaged.packets(), 400u);
    EXPECT_NEAR(30.0, 100.0 * damaged.errorPackets() / damaged.packets(), 1.0);

    // ATSC channel 33: programs without a program association table.
    ASSERT_HRESULT_SUCCEEDED(m_graph.tune(587000, BDA_MOD_8VSB));
    const labtest::TransportStreamCheck headless(m_graph.receive(kStreamBytes));
    EXPECT_GT(headless.packets(), 0u);
    EXPECT_EQ(0u, headless.patSections());
}

TEST_F(BdaDeviceTest, RefusedTuneKeepsTheTuneBefore)
{
    ASSERT_HRESULT_SUCCEEDED(m_graph.build(kAtscTuner, kAtscReceiver));
    ASSERT_HRESULT_SUCCEEDED(m_graph.tune(55250, BDA_MOD_256QAM));
    // Channel 7 refuses the tune as its description says.
    EXPECT_EQ(static_cast<HRESULT>(0x8007001F), m_graph.tune(175250, BDA_MOD_256QAM));
    EXPECT_TRUE(lab::journalHas(kAtscTuner, L"Tune 175250 kHz 256QAM failed 0x8007001F"));
    {
        lab::DeviceOverride refuse(kAtscTuner, L"fault.tune", L"0x80004005");
        EXPECT_EQ(E_FAIL, m_graph.tune(769250, BDA_MOD_256QAM));
    }
    EXPECT_TRUE(lab::journalHas(kAtscTuner, L"Tune 769250 kHz 256QAM failed 0x80004005"));
    const labtest::TransportStreamCheck stream(m_graph.receive(kStreamBytes));
    ASSERT_FALSE(stream.pictures().empty());
    EXPECT_EQ(2, stream.pictures().front().channel);
}

TEST_F(BdaDeviceTest, DeviceFaultsByOverride)
{
    ASSERT_HRESULT_SUCCEEDED(m_graph.build(kAtscTuner, kAtscReceiver));
    ASSERT_HRESULT_SUCCEEDED(m_graph.tune(769250, BDA_MOD_256QAM));
    {
        lab::DeviceOverride faults(kAtscTuner);
        faults.set(L"fault.nopat", L"yes").set(L"fault.errors", L"10");
        const labtest::TransportStreamCheck stream(m_graph.receive(kStreamBytes));
        EXPECT_EQ(0u, stream.patSections());
        EXPECT_NEAR(10.0, 100.0 * stream.errorPackets() / stream.packets(), 1.0);
    }
    {
        lab::DeviceOverride scrambled(kAtscReceiver, L"fault.scrambled", L"yes");
        const labtest::TransportStreamCheck stream(m_graph.receive(kStreamBytes));
        ASSERT_EQ(1u, stream.programs().count(7));
        EXPECT_TRUE(stream.programs().at(7).caDescriptor);
        EXPECT_TRUE(stream.pictures().empty());
    }
    {
        lab::DeviceOverride silence(kAtscReceiver, L"fault.silence", L"yes");
        EXPECT_TRUE(m_graph.receive(0, kSilenceMs).empty());
    }
    {
        lab::DeviceOverride syncLoss(kAtscTuner, L"fault.syncloss", L"yes");
        const labtest::TransportStreamCheck stream(m_graph.receive(188 * 200));
        EXPECT_EQ(stream.packets(), stream.outOfSync());
    }
    const labtest::TransportStreamCheck healthy(m_graph.receive(kStreamBytes));
    EXPECT_EQ(0u, healthy.errorPackets());
    EXPECT_EQ(7, healthy.pictures().empty() ? -1 : healthy.pictures().front().program);
}

TEST_F(BdaDeviceTest, StatisticsOnTheFilterWithOverridesAndFailures)
{
    ASSERT_HRESULT_SUCCEEDED(m_graph.addDevices(kAtscTuner, L""));
    ASSERT_HRESULT_SUCCEEDED(m_graph.tune(55250, BDA_MOD_256QAM));
    CComQIPtr<IBDA_SignalStatistics> statistics(m_graph.tuner.p);
    ASSERT_TRUE(statistics);
    EXPECT_EQ(1, flag(statistics, &IBDA_SignalStatistics::get_SignalPresent));
    EXPECT_EQ(1, flag(statistics, &IBDA_SignalStatistics::get_SignalLocked));
    EXPECT_EQ(100, statistic(statistics, &IBDA_SignalStatistics::get_SignalQuality));
    EXPECT_EQ(E_NOTIMPL, statistics->put_SignalQuality(10));
    {
        lab::DeviceOverride values(kAtscTuner);
        values.set(L"signal.quality", L"50").set(L"signal.present", L"0").set(L"fault.get_SignalLocked", L"0x80070015");
        EXPECT_EQ(50, statistic(statistics, &IBDA_SignalStatistics::get_SignalQuality));
        EXPECT_EQ(0, flag(statistics, &IBDA_SignalStatistics::get_SignalPresent));
        BOOLEAN locked = 0;
        EXPECT_EQ(static_cast<HRESULT>(0x80070015), statistics->get_SignalLocked(&locked));
    }
    EXPECT_TRUE(lab::journalHas(kAtscTuner, L"SignalQuality 50"));
    EXPECT_TRUE(lab::journalHas(kAtscTuner, L"SignalLocked failed 0x80070015"));

    // Statistics on the filter: the topology's nodes do not list them.
    CComQIPtr<IBDA_Topology> topology(m_graph.tuner.p);
    ASSERT_TRUE(topology);
    GUID interfaces[32] = {};
    ULONG count = 0;
    ASSERT_HRESULT_SUCCEEDED(topology->GetNodeInterfaces(1, &count, 32, interfaces));
    ASSERT_EQ(1u, count);
    EXPECT_TRUE(IsEqualGUID(IID_IBDA_DigitalDemodulator, interfaces[0]));
}

TEST_F(BdaDeviceTest, StatisticsOnTheTopologyNodes)
{
    ASSERT_HRESULT_SUCCEEDED(m_graph.build(kDvbTuner, kDvbReceiver));
    CComQIPtr<IBDA_SignalStatistics> onFilter(m_graph.tuner.p);
    EXPECT_FALSE(onFilter);
    ASSERT_HRESULT_SUCCEEDED(m_graph.tune(482000, BDA_MOD_NOT_SET, 8));
    EXPECT_TRUE(lab::journalHas(kDvbTuner, L"Tune 482000 kHz NOT_SET 8 MHz"));

    CComQIPtr<IBDA_Topology> topology(m_graph.tuner.p);
    ASSERT_TRUE(topology);
    ULONG types[32] = {};
    ULONG typeCount = 0;
    ASSERT_HRESULT_SUCCEEDED(topology->GetNodeTypes(&typeCount, 32, types));
    ASSERT_EQ(2u, typeCount);
    for (ULONG i = 0; i < typeCount; ++i) {
        GUID interfaces[32] = {};
        ULONG count = 0;
        ASSERT_HRESULT_SUCCEEDED(topology->GetNodeInterfaces(types[i], &count, 32, interfaces));
        EXPECT_TRUE(std::any_of(interfaces, interfaces + count,
                                [](const GUID &iid) { return IsEqualGUID(iid, IID_IBDA_SignalStatistics) != FALSE; }));
        CComPtr<IUnknown> node;
        ASSERT_HRESULT_SUCCEEDED(topology->GetControlNode(0, 1, types[i], &node));
        CComQIPtr<IBDA_SignalStatistics> statistics(node.p);
        ASSERT_TRUE(statistics);
        EXPECT_EQ(50, statistic(statistics, &IBDA_SignalStatistics::get_SignalQuality));
        EXPECT_EQ(1, flag(statistics, &IBDA_SignalStatistics::get_SignalLocked));
    }
    CComPtr<IUnknown> none;
    EXPECT_EQ(E_INVALIDARG, topology->GetControlNode(0, 1, 5, &none));

    // Channel 22: half of its packets in error.
    const labtest::TransportStreamCheck stream(m_graph.receive(kStreamBytes));
    EXPECT_NEAR(50.0, 100.0 * stream.errorPackets() / stream.packets(), 1.0);
    EXPECT_EQ(0x03, stream.programs().at(0x2001).streams.at(0x102));
}

TEST_F(BdaDeviceTest, TunerWithoutReceiverStreamsItself)
{
    ASSERT_HRESULT_SUCCEEDED(m_graph.build(kDvbStick, L""));
    ASSERT_HRESULT_SUCCEEDED(m_graph.tune(474000, BDA_MOD_NOT_SET, 8));
    const labtest::TransportStreamCheck stream(m_graph.receive(kStreamBytes));
    EXPECT_EQ(0u, stream.badCrcs());
    EXPECT_EQ(0u, stream.continuityErrors());
    ASSERT_EQ(2u, stream.programs().size());
    EXPECT_EQ(0x200, stream.programs().at(0x1002).pmtPid);
    EXPECT_FALSE(stream.pictures().empty());
    EXPECT_TRUE(lab::journalHas(kDvbStick, L"Tune 474000 kHz NOT_SET 8 MHz"));
    EXPECT_GT(lab::samplesDelivered(kDvbStick), 0);
}

TEST_F(BdaDeviceTest, EachCardReceivesItsOwnNetworkOnly)
{
    struct Case {
        const wchar_t *tuner;
        const wchar_t *receiver;
        ULONG kHz;
        ModulationType modulation;
        int channel; // -1: nothing for this card there
    };
    const Case cases[] = {{L"Lab DTMB Tuner", L"Lab DTMB Receiver", 610000, BDA_MOD_NOT_SET, 25},
                          {L"Lab DTMB Tuner", L"Lab DTMB Receiver", 506000, BDA_MOD_NOT_SET, -1},
                          {L"Lab OpenCable Tuner", L"Lab OpenCable Receiver", 55250, BDA_MOD_256QAM, 2},
                          {L"Lab OpenCable Tuner", L"Lab OpenCable Receiver", 183000, BDA_MOD_8VSB, -1}};
    for (const Case &c : cases) {
        labtest::BdaGraph graph;
        ASSERT_HRESULT_SUCCEEDED(graph.build(c.tuner, c.receiver)) << c.tuner;
        ASSERT_HRESULT_SUCCEEDED(graph.tune(c.kHz, c.modulation));
        if (c.channel < 0) {
            EXPECT_TRUE(graph.receive(0, kSilenceMs).empty()) << c.tuner << " " << c.kHz;
            continue;
        }
        const labtest::TransportStreamCheck stream(graph.receive(kStreamBytes));
        ASSERT_FALSE(stream.pictures().empty()) << c.tuner;
        EXPECT_EQ(c.channel, stream.pictures().front().channel);
    }
}

TEST_F(BdaDeviceTest, TestDescribesItsOwnBroadcast)
{
    wchar_t folder[MAX_PATH] = {};
    GetTempPathW(MAX_PATH, folder);
    const std::wstring path = std::wstring(folder) + L"sorvane-lab-own-broadcast.conf";
    {
        const char text[] = "# one cable multiplex\n[cable]\nchannel = 77\nfrequency = 99000\n"
                            "program = 9 pmt=0x90 video=0x91 audio=0x94\n";
        HANDLE file =
            CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
        ASSERT_NE(INVALID_HANDLE_VALUE, file);
        DWORD written = 0;
        WriteFile(file, text, sizeof(text) - 1, &written, nullptr);
        CloseHandle(file);
    }
    ASSERT_HRESULT_SUCCEEDED(m_graph.build(kAtscTuner, kAtscReceiver));
    {
        lab::DeviceOverride own(kAtscTuner, L"broadcast", path);
        ASSERT_HRESULT_SUCCEEDED(m_graph.tune(99000, BDA_MOD_256QAM));
        const labtest::TransportStreamCheck stream(m_graph.receive(kStreamBytes));
        ASSERT_FALSE(stream.pictures().empty());
        EXPECT_EQ(77, stream.pictures().front().channel);
        EXPECT_EQ(9, stream.pictures().front().program);
    }
    DeleteFileW(path.c_str());
    {
        lab::DeviceOverride missing(kAtscTuner, L"broadcast", path);
        ASSERT_HRESULT_SUCCEEDED(m_graph.tune(99000, BDA_MOD_256QAM));
        EXPECT_TRUE(lab::journalHas(kAtscTuner, L"Broadcast unreadable: no broadcast description at " + path));
        EXPECT_TRUE(m_graph.receive(0, kSilenceMs).empty());
    }
}

TEST_F(BdaDeviceTest, InputPinsAcceptTheirLinksOnly)
{
    CComPtr<IBaseFilter> receiver;
    ASSERT_HRESULT_SUCCEEDED(labtest::bindDeviceIn(lab::kCategoryBdaReceiverComponent, kAtscReceiver, receiver));
    CComPtr<IPin> input;
    input.Attach(labtest::firstPin(receiver, PINDIR_INPUT));
    AM_MEDIA_TYPE antenna = {};
    antenna.majortype = lab::kMediaTypeBdaAntenna;
    EXPECT_EQ(S_FALSE, input->QueryAccept(&antenna));
    CComPtr<IBaseFilter> tuner;
    ASSERT_HRESULT_SUCCEEDED(labtest::bindDeviceIn(lab::kCategoryBdaNetworkTuner, kAtscTuner, tuner));
    CComPtr<IPin> tunerInput;
    tunerInput.Attach(labtest::firstPin(tuner, PINDIR_INPUT));
    EXPECT_EQ(S_OK, tunerInput->QueryAccept(&antenna));
}

} // namespace
