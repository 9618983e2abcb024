// The digital tuners end to end against the lab's BDA cards and broadcast: the BDA graph, the
// tune requests the network provider passes on (the lab's journals), the signal decisions on
// the transport stream, and the failures of the DVB-T set-up through lab faults.
#include "CountryDialogDriver.h"
#include "LabTest.h"
#include "LabLocator.h"
#include "ManualClock.h"
#include "Outcome.h"
#include "TunerLab.h"

#include <ATSCTuner.h>
#include <ClearQAMTuner.h>
#include <DVBTuner.h>
#include <ModuleRegistration.h>
#include <OcurTuner.h>
#include <SdkGuids.h>
#include <gtest/gtest.h>
#include <lab/LabControl.h>

#include <algorithm>
#include <string>
#include <vector>

namespace {

using ruvo::TestResult;
using sorvane::CaptureException;
using sorvane::test::journalOf;
using sorvane::test::outcomeOf;

const wchar_t kQamTuner[] = L"Lab ATSC QAM Tuner";
const wchar_t kDvbtTuner[] = L"Lab DVB-T Tuner";
const wchar_t kDtmbTuner[] = L"Lab DTMB Tuner";
const wchar_t kOcurTuner[] = L"Lab OpenCable Tuner";
const wchar_t kProvider[] = L"Network Provider";
const wchar_t kSpaces[] = L"System Tuning Spaces";
const wchar_t kDemux[] = L"MPEG-2 Demultiplexer";

// The framework's record of a lab BDA tuner, as the host's digital catalogue builds it.
ruvo::DiagDevice bdaDevice(const wchar_t *friendlyName)
{
    const HRESULT init = CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
    ruvo::DiagDevice found;
    {
        CComPtr<ICreateDevEnum> devices;
        CComPtr<IEnumMoniker> monikers;
        if (SUCCEEDED(devices.CoCreateInstance(CLSID_SystemDeviceEnum, nullptr, CLSCTX_INPROC_SERVER)) &&
            devices->CreateClassEnumerator(KSCATEGORY_BDA_NETWORK_TUNER, &monikers, 0) == S_OK) {
            CComPtr<IMoniker> moniker;
            while (monikers->Next(1, &moniker, nullptr) == S_OK) {
                CComPtr<IPropertyBag> bag;
                moniker->BindToStorage(nullptr, nullptr, IID_PPV_ARGS(&bag));
                moniker.Release();
                if (!bag || sorvane::test::monikerText(bag, L"FriendlyName") != kel::String(friendlyName))
                    continue;
                const kel::String locator = sorvane::test::locatorOf(sorvane::test::monikerText(bag, L"DevicePath"));
                found = ruvo::DiagDevice(
                    kel::String(friendlyName), sorvane::test::monikerText(bag, L"Description"), locator,
                    ruvo::DeviceCapability::VideoCapture() | ruvo::DeviceCapability::DigitalTVTuner());
                found.setProperty("DigitalFriendlyName", ruvo::Value(kel::String(friendlyName)));
                break;
            }
        }
    }
    if (SUCCEEDED(init))
        CoUninitialize();
    return found;
}

bool contains(const std::vector<std::wstring> &entries, const std::wstring &text)
{
    return std::any_of(entries.begin(), entries.end(),
                       [&](const std::wstring &entry) { return entry.find(text) != std::wstring::npos; });
}

class DigitalTunerLabTest : public sorvane::test::LabTest {
protected:
    void SetUp() override
    {
        LabTest::SetUp();
        for (const wchar_t *device : {kQamTuner, kDvbtTuner, kDtmbTuner, kOcurTuner, kProvider, kSpaces}) {
            lab::clearJournal(device);
        }
        // The lab's cards stream in real time: a quarter of every sleep really passes.
        clock.realShare(25);
        setParameter("CheckTVCable", ruvo::Value::fromBool(false));
    }

    void setRange(uint32_t start, uint32_t end)
    {
        setParameter("DigitalStartChannel", ruvo::Value(start));
        setParameter("DigitalEndChannel", ruvo::Value(end));
    }

    template <class Tuner>
    CaptureException scan(const wchar_t *device)
    {
        const ruvo::DiagDevice record = bdaDevice(device);
        EXPECT_FALSE(record.name().isEmpty()) << "no lab device";
        return outcomeOf([&] { Tuner(record, kel::String(L"Digital lab test")).checkTVSignal(); });
    }

    sorvane::test::ManualClock clock;
    lab::DeviceOverride spaces{kSpaces};
    lab::DeviceOverride provider{kProvider};
};

TEST_F(DigitalTunerLabTest, ClearQAMTunesTheCablePlanAt256QAM)
{
    setRange(2, 2);
    EXPECT_EQ(scan<sorvane::ClearQAMTuner>(kQamTuner).getResult(), TestResult::PASS());
    const std::vector<std::wstring> tunes = journalOf(kQamTuner, L"Tune ");
    ASSERT_FALSE(tunes.empty());
    EXPECT_EQ(tunes.front().find(L"Tune 55250 kHz 256QAM"), 0u) << tunes.front();
    EXPECT_TRUE(log().contains(L"processTransportStream returns 1"));

    for (uint32_t channel : {95u, 120u}) {
        lab::clearJournal(kQamTuner);
        setRange(channel, channel);
        scan<sorvane::ClearQAMTuner>(kQamTuner);
        const std::wstring wanted = channel == 95 ? L"Tune 91250 kHz 256QAM" : L"Tune 769250 kHz 256QAM";
        EXPECT_TRUE(contains(journalOf(kQamTuner, L"Tune "), wanted)) << channel;
    }
}

TEST_F(DigitalTunerLabTest, ClearQAMRejectsSilentAndScrambledChannels)
{
    setRange(5, 5);
    EXPECT_EQ(scan<sorvane::ClearQAMTuner>(kQamTuner).getResult(), TestResult::NOSIGNAL());
    EXPECT_TRUE(log().contains(L"No packets, no transport stream on this channel"));
    EXPECT_FALSE(log().contains(L"processTransportStream returns"));

    setRange(3, 3);
    EXPECT_EQ(scan<sorvane::ClearQAMTuner>(kQamTuner).getResult(), TestResult::NOSIGNAL());
    EXPECT_TRUE(log().contains(L"Return of -1 --> no clear programs found"));
}

TEST_F(DigitalTunerLabTest, ClearQAMScanFindsTheFirstChannelWithAClearProgram)
{
    // 3 has only scrambled programs; 4 has program 2 in the clear.
    setRange(3, 6);
    EXPECT_EQ(scan<sorvane::ClearQAMTuner>(kQamTuner).getResult(), TestResult::PASS());
    EXPECT_TRUE(log().contains(L"found signal on channel 4"));
    EXPECT_TRUE(log().contains(L"processTransportStream returns 2"));
    EXPECT_TRUE(
        contains(journalOf(kProvider, L"TuneRequest "), L"67250 kHz 256QAM 6 MHz channel 4 minor -1 program 2"));
    EXPECT_FALSE(contains(journalOf(kQamTuner, L"Tune "), L"77250"));
}

TEST_F(DigitalTunerLabTest, ClearQAMWithoutACableTuningSpaceCannotRun)
{
    spaces.set(L"spaces", L"ATSC, DVB-T");
    setRange(2, 2);
    const CaptureException e = scan<sorvane::ClearQAMTuner>(kQamTuner);
    EXPECT_EQ(e.getResult(), TestResult::CANNOTRUN());
    EXPECT_TRUE(log().contains(L"Cannot get either ATSCCable, ClearQAM, or Digital Cable tuning space"));
}

TEST_F(DigitalTunerLabTest, DTMBDeviceScansItsOwnPlanWithoutACountry)
{
    setRange(24, 24);
    EXPECT_EQ(scan<sorvane::DVBTuner>(kDtmbTuner).getResult(), TestResult::PASS());
    EXPECT_TRUE(log().contains(L"DTMB tuner detected.  Setting channel range: 13-56"));
    EXPECT_TRUE(contains(journalOf(kDtmbTuner, L"Tune "), L"Tune 562000 kHz"));
    EXPECT_TRUE(journalOf(kProvider, L"CountryCode").empty());

    lab::clearJournal(kDtmbTuner);
    setRange(25, 25);
    EXPECT_EQ(scan<sorvane::DVBTuner>(kDtmbTuner).getResult(), TestResult::PASS());
    EXPECT_TRUE(contains(journalOf(kDtmbTuner, L"Tune "), L"Tune 610000 kHz"));

    // Outside 13 to 56 the parameters are refused.
    setRange(12, 56);
    EXPECT_EQ(scan<sorvane::DVBTuner>(kDtmbTuner).getResult(), TestResult::BADPARAMS());
}

TEST_F(DigitalTunerLabTest, DVBTCountryGermanyGivesItsChannels)
{
    setParameter("Country", ruvo::Value(kel::String(L"DE")));
    EXPECT_EQ(scan<sorvane::DVBTuner>(kDvbtTuner).getResult(), TestResult::PASS());
    EXPECT_EQ(journalOf(kProvider, L"CountryCode "), (std::vector<std::wstring>{L"CountryCode 49"}));
    EXPECT_TRUE(contains(journalOf(kDvbtTuner, L"Tune "), L"Tune 474000 kHz"));
    EXPECT_TRUE(log().contains(L"Set DVB-T Channel Range: 1-"));
}

TEST_F(DigitalTunerLabTest, DVBTCountryFromTheUserOrNone)
{
    setParameter("Country", ruvo::Value(kel::String(L"UserDefined")));
    recorder().setPromptEnabled(false);
    CaptureException e = scan<sorvane::DVBTuner>(kDvbtTuner);
    EXPECT_EQ(e.getResult(), TestResult::MISCONFIGURED());
    EXPECT_EQ(e.getWarningEvent(), sorvane::g_setCountryName);

    recorder().setPromptEnabled(true);
    {
        sorvane::test::CountryDialogDriver driver(L"");
        e = scan<sorvane::DVBTuner>(kDvbtTuner);
        EXPECT_TRUE(driver.shown());
    }
    EXPECT_EQ(e.getResult(), TestResult::USERABORTED());
    EXPECT_TRUE(log().contains(L"***Exiting due to user abort on country dialog"));
}

TEST_F(DigitalTunerLabTest, DVBTSetUpFailuresThroughLabFaults)
{
    setParameter("Country", ruvo::Value(kel::String(L"de")));
    struct Row {
        const wchar_t *device;
        const wchar_t *key;
        const wchar_t *value;
        const wchar_t *logged;
    };
    const Row rows[] = {
        {kSpaces, L"spaces", L"ATSC, ATSCCable", L"Cannot get DVB-T tuning space"},
        {kSpaces, L"fault.put_SystemType", L"0x80004005", L"DVBTuningSpace2::put_SystemType(DVB_Terrestrial) failed: "},
        {kProvider, L"fault.IFrequencyMap", L"yes", L"IBaseFilter::QueryInterface(IFrequencyMap) failed: "},
        {kProvider, L"fault.get_CountryCodeList", L"0x80004005", L"IFrequencyMap:get_CountryCodeList failed: "},
        {kProvider, L"fault.put_CountryCode", L"0x80070057", L"***ERROR: IFrequencyMap::put_CountryCode failed: "},
        {kProvider, L"fault.get_DefaultFrequencyMapping", L"0x8007000E",
         L"IFrequencyMap:get_DefaultFrequencyMapping failed: "},
    };
    for (const Row &row : rows) {
        lab::DeviceOverride fault(row.device, row.key, row.value);
        const CaptureException e = scan<sorvane::DVBTuner>(kDvbtTuner);
        EXPECT_EQ(e.getResult(), TestResult::FAIL()) << row.key;
        EXPECT_EQ(e.getErrorEvent(), sorvane::g_errorCreatingFilterGraph) << row.key;
        EXPECT_TRUE(log().contains(row.logged)) << row.key;
    }
}

TEST_F(DigitalTunerLabTest, DVBTDemultiplexerFailures)
{
    setParameter("Country", ruvo::Value(kel::String(L"de")));
    // Connecting and the graph's own rendering enumerate the pins first; the DVB-T tuner's
    // enumeration comes after the tuning space, a few enumerations later.
    {
        lab::clearJournal(kDemux);
        lab::DeviceOverride demux(kDemux, L"fault.EnumPins", L"0x8000FFFF");
        demux.set(L"fault.EnumPins.skip", L"4");
        const CaptureException e = scan<sorvane::DVBTuner>(kDvbtTuner);
        EXPECT_EQ(e.getResult(), TestResult::FAIL());
        EXPECT_EQ(e.getErrorEvent(), sorvane::g_errorCreatingFilterGraph);
        EXPECT_TRUE(log().contains(L"ERROR: Demux::EnumPins failed: "));
        EXPECT_FALSE(journalOf(kDemux, L"EnumPins failed").empty());
    }
    {
        lab::DeviceOverride demux(kDemux, L"fault.video", L"yes");
        const CaptureException e = scan<sorvane::DVBTuner>(kDvbtTuner);
        EXPECT_EQ(e.getResult(), TestResult::FAIL());
        EXPECT_EQ(e.getErrorEvent(), sorvane::g_errorCannotRunDVBTest);
        EXPECT_TRUE(log().contains(L"renderFromPin failed"));
    }
}

TEST_F(DigitalTunerLabTest, ATSCTunesThePhysicalChannelAt8VSB)
{
    setRange(8, 8);
    EXPECT_EQ(scan<sorvane::ATSCTuner>(kQamTuner).getResult(), TestResult::PASS());
    EXPECT_TRUE(contains(journalOf(kProvider, L"TuneRequest "), L"ATSC ATSC 183000 kHz 8VSB"));
    EXPECT_TRUE(contains(journalOf(kProvider, L"TuneRequest "), L"channel 8 minor 1"));
    // No sample grabber: the receiver feeds the demultiplexer.
    EXPECT_FALSE(log().contains(L"add filter SampleGrabber"));
}

// An OpenCable receiver is asked for the channel by number alone: its channel map, not the
// terrestrial ATSC plan (57000 kHz for channel 2, 8-VSB), places cable channel 2 at its
// standard-plan carrier with QAM, where the device's own statistics find the signal.
TEST_F(DigitalTunerLabTest, OcurIsTunedByChannelNumberAndFindsCableChannelTwo)
{
    setRange(2, 2);
    EXPECT_EQ(scan<sorvane::OcurTuner>(kOcurTuner).getResult(), TestResult::PASS());
    const std::vector<std::wstring> tunes = journalOf(kOcurTuner, L"Tune ");
    ASSERT_FALSE(tunes.empty());
    EXPECT_EQ(tunes.front().find(L"Tune 55250 kHz 256QAM"), 0u) << tunes.front();
    EXPECT_TRUE(contains(journalOf(kProvider, L"TuneRequest "), L"channel 2 minor 1"));
    EXPECT_FALSE(log().contains(L"Trying minor channel method"));
}

TEST_F(DigitalTunerLabTest, OcurMinorChannelTechnique)
{
    setParameter("UseMinorChannelTechnique", ruvo::Value::fromBool(true));
    setRange(2, 2);
    EXPECT_EQ(scan<sorvane::OcurTuner>(kOcurTuner).getResult(), TestResult::PASS());
    EXPECT_TRUE(log().contains(L"Trying minor channel method"));
}

} // namespace

namespace {

const wchar_t kDvbtStick[] = L"Lab DVB-T Stick";

TEST_F(DigitalTunerLabTest, TopologyStatisticsNeedQualityAbove50LockAndPresence)
{
    // Every packet in error: the stream's quality is 0 and the topology nodes decide.
    lab::DeviceOverride tuner(kDvbtTuner);
    tuner.set(L"fault.errors", L"100").set(L"signal.locked", L"1").set(L"signal.present", L"1");
    setParameter("Country", ruvo::Value(kel::String(L"de")));
    setRange(1, 1);

    tuner.set(L"signal.quality", L"51");
    EXPECT_EQ(scan<sorvane::DVBTuner>(kDvbtTuner).getResult(), TestResult::PASS());
    EXPECT_TRUE(log().contains(L"Found a valid signal"));

    tuner.set(L"signal.quality", L"50");
    EXPECT_EQ(scan<sorvane::DVBTuner>(kDvbtTuner).getResult(), TestResult::NOSIGNAL());

    tuner.set(L"signal.quality", L"80").set(L"signal.locked", L"0");
    EXPECT_EQ(scan<sorvane::DVBTuner>(kDvbtTuner).getResult(), TestResult::NOSIGNAL());
}

TEST_F(DigitalTunerLabTest, FilterStatisticsAcceptPresenceAlone)
{
    lab::DeviceOverride tuner(kQamTuner);
    tuner.set(L"signal.present", L"1").set(L"signal.locked", L"0").set(L"signal.quality", L"0");
    setRange(50, 50);
    EXPECT_EQ(scan<sorvane::ATSCTuner>(kQamTuner).getResult(), TestResult::PASS());
    EXPECT_TRUE(log().contains(L"Checking SigStats for signal present"));
}

TEST_F(DigitalTunerLabTest, ReceiverlessDeviceOnlyWhereTolerated)
{
    // DVB-T tolerates a tuner that streams itself.
    setParameter("Country", ruvo::Value(kel::String(L"de")));
    scan<sorvane::DVBTuner>(kDvbtStick);
    EXPECT_TRUE(log().contains(L"loadFilter(RECEIVER) failed. Continuing as it is not always required."));
    EXPECT_TRUE(log().contains(L"set m_receiverFilter (Lab DVB-T Stick)"));

    // Clear QAM does not.
    setRange(2, 2);
    const CaptureException e = scan<sorvane::ClearQAMTuner>(kDvbtStick);
    EXPECT_EQ(e.getResult(), TestResult::FAIL());
    EXPECT_EQ(e.getErrorEvent(), sorvane::g_errorCreatingFilterGraph);
}

} // namespace

namespace {

TEST_F(DigitalTunerLabTest, DVBTStreamQualityOf51IsASignalAnd50DefersToTheStatistics)
{
    // Samples of 100 packets with errors spread evenly: the quality is exactly 100 - errors.
    lab::DeviceOverride receiver(L"Lab DVB-T Receiver", L"packets-per-sample", L"100");
    lab::DeviceOverride tuner(kDvbtTuner);
    tuner.set(L"signal.present", L"0").set(L"signal.locked", L"0").set(L"signal.quality", L"0");
    setParameter("Country", ruvo::Value(kel::String(L"de")));
    setRange(9, 9);

    tuner.set(L"fault.errors", L"49");
    EXPECT_EQ(scan<sorvane::DVBTuner>(kDvbtTuner).getResult(), TestResult::PASS());
    EXPECT_TRUE(log().contains(L"Signal Quality: 51"));

    tuner.set(L"fault.errors", L"50");
    EXPECT_EQ(scan<sorvane::DVBTuner>(kDvbtTuner).getResult(), TestResult::NOSIGNAL());
    EXPECT_TRUE(log().contains(L"Signal Quality: 50"));
}

} // namespace
