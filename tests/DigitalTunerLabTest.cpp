// The digital tuners end to end against the lab's BDA cards and broadcast: the BDA graph, the
// tune requests the network provider passes on (the lab's journals), the signal decisions on
// the transport stream, and the failures of the DVB-T set-up through lab faults.
#include "CountryDialogDriver.h"
#include "LabTest.h"
#include "LabDeviceRecord.h"
#include "Outcome.h"
#include "RefusedClass.h"
#include "SampleGrabberFault.h"
#include "StreamPacedClock.h"
#include "TunerLab.h"
#include "WindowCreationRefusal.h"

#include <ATSCTuner.h>
#include <ClearQAMTuner.h>
#include <DVBTuner.h>
#include <ModuleRegistration.h>
#include <OcurTuner.h>
#include <SampleGrabberCallback.h>
#include <SdkGuids.h>
#include <gtest/gtest.h>
#include <lab/LabControl.h>

#include <algorithm>
#include <memory>
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
    return sorvane::test::LabDeviceRecord::find(friendlyName, ruvo::DeviceCapability::VideoCapture() |
                                                                  ruvo::DeviceCapability::DigitalTVTuner());
}

bool contains(const std::vector<std::wstring> &entries, const std::wstring &text)
{
    return std::any_of(entries.begin(), entries.end(),
                       [&](const std::wstring &entry) { return entry.find(text) != std::wstring::npos; });
}

class DigitalTunerLabTest : public sorvane::test::LabTest {
protected:
    // Discovery binds every tuner before the journals are cleared for the first test.
    static void SetUpTestSuite() { sorvane::test::LabDeviceRecord::discover(); }

    void SetUp() override
    {
        LabTest::SetUp();
        for (const wchar_t *device : {kQamTuner, kDvbtTuner, kDtmbTuner, kOcurTuner, kProvider, kSpaces}) {
            lab::clearJournal(device);
        }
        setParameter("CheckTVCable", ruvo::Value::fromBool(false));
    }

    // For scans decided by the statistics or failing before the stream matters: sleeps return
    // at once instead of waiting for the stream.
    void streamNotNeeded() { kel::Clock::setManualSleepObserver(nullptr, nullptr); }

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

    sorvane::test::StreamPacedClock clock;
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
    // Germany: VHF channels 5 to 12 and UHF 21 to 69, channel 1 of the scan being VHF 5.
    EXPECT_TRUE(log().contains(L"Set DVB-T Channel Range: 1-57"));
    EXPECT_EQ(journalOf(kProvider, L"DefaultFrequencyMapping "),
              (std::vector<std::wstring>{L"DefaultFrequencyMapping 49 57"}));
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

    {
        // The dialog class, WC_DIALOG, by its atom: the dialog cannot be made.
        sorvane::test::WindowCreationRefusal refused(MAKEINTRESOURCEW(0x8002));
        ASSERT_TRUE(refused.active());
        lab::clearJournal(kProvider);
        e = scan<sorvane::DVBTuner>(kDvbtTuner);
    }
    EXPECT_EQ(e.getResult(), TestResult::MISCONFIGURED());
    EXPECT_EQ(e.getWarningEvent(), sorvane::g_setCountryName);
    EXPECT_TRUE(log().contains(L"***DialogBox returned: -1"));
    EXPECT_TRUE(log().contains(L"***Skipping put_CountryCode() because of unexpected ::DialogBox() error: "));
    EXPECT_TRUE(journalOf(kProvider, L"CountryCode ").empty());
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
        {kSpaces, L"fault.IDVBTuningSpace2", L"yes", L"ITuningSpace::QueryInterface(IDVBTuningSpace2) failed: "},
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
        if (std::wstring(row.key) == L"fault.get_DefaultFrequencyMapping") {
            EXPECT_EQ(e.getErrorCode(), static_cast<long>(E_OUTOFMEMORY));
        }
    }
}

TEST_F(DigitalTunerLabTest, DVBTDemultiplexerFailures)
{
    setParameter("Country", ruvo::Value(kel::String(L"de")));
    // The DVB-T tuner lists the demultiplexer's pins right after setting the system type.
    {
        lab::clearJournal(kDemux);
        lab::clearJournal(kSpaces);
        lab::DeviceOverride demux(kDemux, L"fault.EnumPins.afterSystemType", L"0x8000FFFF");
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

namespace {

using sorvane::test::FaultySampleGrabber;
using sorvane::test::RefusedClass;
using sorvane::test::SampleGrabberFault;
using sorvane::test::StreamPacedClock;

const wchar_t kQamReceiver[] = L"Lab ATSC QAM Receiver";

// The test thread's apartment, entered before a class is refused on it; the library's own
// initialisation then joins it.
struct Apartment {
    Apartment() { CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED); }
    ~Apartment() { CoUninitialize(); }
};

// One row's fault: a COM class refused on the test's apartment (as when Windows cannot load the
// component), or a lab override, for the life of the row.
class RowFault {
public:
    RowFault(const CLSID *refused, const wchar_t *device, const wchar_t *key, const wchar_t *value)
    {
        if (refused)
            m_refusal.reset(new RefusedClass(*refused, REGDB_E_CLASSNOTREG));
        if (device)
            m_override.reset(new lab::DeviceOverride(device, key, value));
    }

private:
    Apartment m_apartment;
    std::unique_ptr<RefusedClass> m_refusal;
    std::unique_ptr<lab::DeviceOverride> m_override;
};

size_t logged(const sorvane::test::LogCapture &log, const wchar_t *text)
{
    return log.find(kel::String(text)).size();
}

// True when a line containing `later` was logged after the last line containing `first`.
bool loggedAfter(const sorvane::test::LogCapture &log, const wchar_t *first, const wchar_t *later)
{
    const std::vector<sorvane::test::LogCapture::Line> lines = log.lines();
    size_t last = lines.size();
    for (size_t i = 0; i < lines.size(); ++i) {
        if (lines[i].message.contains(kel::String(first)))
            last = i;
    }
    for (size_t i = last + 1; i < lines.size(); ++i) {
        if (lines[i].message.contains(kel::String(later)))
            return true;
    }
    return false;
}

TEST_F(DigitalTunerLabTest, EveryGraphBuildingFailureIsAFailWithItsLine)
{
    streamNotNeeded();
    struct Row {
        const char *what;
        const wchar_t *device;
        const wchar_t *key;
        const wchar_t *value;
        const CLSID *refused;
        const wchar_t *logged;
        long code;
    };
    const Row rows[] = {
        {"no generic network provider", nullptr, nullptr, nullptr, &CLSID_NetworkProvider,
         L"unable to instantiate CLSID_NetworkProvider", 0},
        {"provider without ITuner", kProvider, L"fault.ITuner", L"yes", nullptr,
         L"Cannot get a Tuner interface from the Network Provider filter", 0},
        {"tuner does not bind", kQamTuner, L"fault.bind", L"0x80070005", nullptr, L"loadFilter(TUNER) failed", 0},
        {"no demultiplexer", nullptr, nullptr, nullptr, &CLSID_MPEG2Demultiplexer, L"Unable to create an MPEG2 demux: ",
         static_cast<long>(REGDB_E_CLASSNOTREG)},
        {"receiver output refused", kQamReceiver, L"fault.output", L"yes", nullptr,
         L"Cannot connect ReceiverFilter to the SampleGrabber", 0},
        {"demultiplexer input refused", kDemux, L"fault.connect", L"yes", nullptr,
         L"Cannot connect SampleGrabber to the mpeg demux", 0},
        {"tuning spaces not listed", kProvider, L"fault.EnumTuningSpaces", L"0x80004005", nullptr,
         L"IEnumTuningSpaces::EnumTuningSpaces failed: ", static_cast<long>(E_FAIL)},
    };
    setRange(2, 2);
    for (const Row &row : rows) {
        SCOPED_TRACE(row.what);
        const RowFault fault(row.refused, row.device, row.key, row.value);
        const size_t before = logged(log(), row.logged);
        const CaptureException e = scan<sorvane::ClearQAMTuner>(kQamTuner);
        EXPECT_EQ(e.getResult(), TestResult::FAIL());
        EXPECT_EQ(e.getErrorEvent(), sorvane::g_errorCreatingFilterGraph);
        EXPECT_EQ(e.getErrorCode(), row.code);
        EXPECT_EQ(logged(log(), row.logged), before + 1);
    }

    // Without a sample grabber the receiver feeds the demultiplexer itself.
    lab::DeviceOverride demux(kDemux, L"fault.connect", L"yes");
    setRange(8, 8);
    const CaptureException e = scan<sorvane::ATSCTuner>(kQamTuner);
    EXPECT_EQ(e.getResult(), TestResult::FAIL());
    EXPECT_TRUE(log().contains(L"Cannot connect ReceiverFilter to the MPEG2 Demux"));
}

TEST_F(DigitalTunerLabTest, AFilterTheGraphRefusesOrWillNotGiveBackEndsTheSearch)
{
    streamNotNeeded();
    setRange(2, 2);
    {
        lab::DeviceOverride receiver(kQamReceiver, L"fault.join", L"0x80004005");
        EXPECT_EQ(scan<sorvane::ClearQAMTuner>(kQamTuner).getResult(), TestResult::FAIL());
        EXPECT_TRUE(log().contains(L"addFilter failed: "));
        EXPECT_TRUE(log().contains(L"loadFilter(RECEIVER) failed"));
        // No further receiver is looked at.
        EXPECT_FALSE(loggedAfter(log(), L"addFilter failed: ", L"Guids this:"));
        EXPECT_FALSE(loggedAfter(log(), L"addFilter failed: ", L"Didn't find filter"));
    }
    {
        // The receiver does not take the tuner's stream and cannot be taken out again.
        lab::DeviceOverride receiver(kQamReceiver, L"fault.connect", L"yes");
        receiver.set(L"fault.leave", L"0x80004005");
        EXPECT_EQ(scan<sorvane::ClearQAMTuner>(kQamTuner).getResult(), TestResult::FAIL());
        EXPECT_TRUE(log().contains(L"IGraphBuilder::RemoveFilter(filter) failed: "));
        EXPECT_FALSE(loggedAfter(log(), L"IGraphBuilder::RemoveFilter(filter) failed: ", L"Guids this:"));
        EXPECT_FALSE(loggedAfter(log(), L"IGraphBuilder::RemoveFilter(filter) failed: ", L"Didn't find filter"));
    }
}

TEST_F(DigitalTunerLabTest, ClearQAMCallbackRefusedAndWaitsOnTheClock)
{
    setRange(2, 2);
    {
        const Apartment apartment;
        SampleGrabberFault refusal(FaultySampleGrabber::SET_CALLBACK, E_FAIL);
        ASSERT_TRUE(refusal.active());
        const CaptureException e = scan<sorvane::ClearQAMTuner>(kQamTuner);
        EXPECT_EQ(e.getResult(), TestResult::FAIL());
        EXPECT_TRUE(log().contains(L"ISampleGrabber::SetCallback failed: "));
        EXPECT_FALSE(log().contains(L"checkCurrentChannel"));
    }

    // The graph settles for 1000 ms, the tune for 1000 ms, then 500 ms of stream are collected.
    kel::Clock::clearRecordedSleeps();
    EXPECT_EQ(scan<sorvane::ClearQAMTuner>(kQamTuner).getResult(), TestResult::PASS());
    const std::vector<uint32_t> sleeps = clock.sleeps();
    ASSERT_GE(sleeps.size(), 3u);
    EXPECT_EQ(std::vector<uint32_t>(sleeps.begin(), sleeps.begin() + 3), (std::vector<uint32_t>{1000, 1000, 500}));

    // A tune that fails moves on to the next channel without a wait or a look at the stream.
    lab::DeviceOverride refused(kProvider, L"fault.put_TuneRequest", L"0x80004005");
    setRange(2, 4);
    kel::Clock::clearRecordedSleeps();
    const size_t before = logged(log(), L"put_TuneRequest failed: ");
    EXPECT_EQ(scan<sorvane::ClearQAMTuner>(kQamTuner).getResult(), TestResult::NOSIGNAL());
    // Three channels, two attempts.
    EXPECT_EQ(logged(log(), L"put_TuneRequest failed: "), before + 6);
    for (uint32_t sleep : clock.sleeps())
        EXPECT_NE(sleep, 500u);
}

TEST_F(DigitalTunerLabTest, SignalDecisionWithFailedTopologyReads)
{
    streamNotNeeded();
    setParameter("Country", ruvo::Value(kel::String(L"de")));
    setRange(9, 9);
    lab::DeviceOverride tuner(kDvbtTuner);
    // Every packet in error: the stream's quality is 0 and the statistics decide.
    tuner.set(L"fault.errors", L"100").set(L"signal.locked", L"1").set(L"signal.present", L"1");
    tuner.set(L"signal.quality", L"80");
    // A failed quality, lock or presence read ends the decision at the first node that has
    // statistics: one failure a question, although both nodes have them.
    const struct {
        const wchar_t *key;
        const wchar_t *logged;
    } reads[] = {
        {L"fault.get_SignalQuality", L"Topo sig qual failed: "},
        {L"fault.get_SignalLocked", L"Topo sig lock failed: "},
        {L"fault.get_SignalPresent", L"Topo sig present failed: "},
    };
    for (const auto &read : reads) {
        SCOPED_TRACE(kel::String(read.key).toUtf8());
        lab::DeviceOverride fault(kDvbtTuner, read.key, L"0x80004005");
        const size_t asked = logged(log(), L"Getting nodes types");
        const size_t failed = logged(log(), read.logged);
        EXPECT_EQ(scan<sorvane::DVBTuner>(kDvbtTuner).getResult(), TestResult::NOSIGNAL());
        EXPECT_GT(logged(log(), L"Getting nodes types"), asked);
        EXPECT_EQ(logged(log(), read.logged) - failed, logged(log(), L"Getting nodes types") - asked);
    }
    // Strength and sample time are only logged.
    lab::DeviceOverride strength(kDvbtTuner, L"fault.get_SignalStrength", L"0x80004005");
    strength.set(L"fault.get_SampleTime", L"0x80004005");
    EXPECT_EQ(scan<sorvane::DVBTuner>(kDvbtTuner).getResult(), TestResult::PASS());
    EXPECT_TRUE(log().contains(L"Topo sig strength failed: "));
    EXPECT_TRUE(log().contains(L"Topo sample time failed: "));
}

TEST_F(DigitalTunerLabTest, OcurWithoutTheMinorChannelTechniqueAsksTheStatistics)
{
    streamNotNeeded();
    setRange(2, 2);
    lab::DeviceOverride tuner(kOcurTuner, L"signal.present", L"0");
    struct Row {
        const char *what;
        const wchar_t *technique; // null: unset
        const wchar_t *faultKey;
        TestResult result;
    };
    const Row rows[] = {
        {"unset, no signal", nullptr, nullptr, TestResult::NOSIGNAL()},
        {"false, no signal", L"false", nullptr, TestResult::NOSIGNAL()},
        {"statistics unreadable", nullptr, L"fault.get_SignalPresent", TestResult::NOSIGNAL()},
    };
    for (const Row &row : rows) {
        SCOPED_TRACE(row.what);
        ruvo::DiagModule::unsetAllParameters();
        setParameter("CheckTVCable", ruvo::Value::fromBool(false));
        setRange(2, 2);
        if (row.technique)
            setParameter("UseMinorChannelTechnique", ruvo::Value::fromBool(false));
        std::unique_ptr<lab::DeviceOverride> fault;
        if (row.faultKey)
            fault.reset(new lab::DeviceOverride(kOcurTuner, row.faultKey, L"0x80004005"));
        EXPECT_EQ(scan<sorvane::OcurTuner>(kOcurTuner).getResult(), row.result);
    }
    EXPECT_FALSE(log().contains(L"Trying minor channel method"));
    EXPECT_TRUE(log().contains(L"Checking SigStats for signal present"));
    tuner.set(L"signal.present", L"1");
    EXPECT_EQ(scan<sorvane::OcurTuner>(kOcurTuner).getResult(), TestResult::PASS());

    // The minor-channel technique without a tune request to read: no signal.
    tuner.set(L"signal.present", L"1");
    setParameter("UseMinorChannelTechnique", ruvo::Value::fromBool(true));
    lab::DeviceOverride noRequest(kProvider, L"fault.get_TuneRequest", L"0x80004005");
    EXPECT_EQ(scan<sorvane::OcurTuner>(kOcurTuner).getResult(), TestResult::NOSIGNAL());
    EXPECT_TRUE(log().contains(L"Trying minor channel method"));
}

TEST_F(DigitalTunerLabTest, DVBTRangeFromTheCountryNarrowedByTheParameters)
{
    streamNotNeeded();
    // Germany: VHF channels 5 to 12 and UHF 21 to 69, 57 channels.
    setParameter("Country", ruvo::Value(kel::String(L"de")));
    lab::DeviceOverride silent(kDvbtTuner, L"fault.silence", L"yes");
    silent.set(L"signal.present", L"0").set(L"signal.locked", L"0").set(L"signal.quality", L"0");
    struct Row {
        const char *what;
        int start; // 0: unset
        int end;
        const wchar_t *channels;
    };
    const Row rows[] = {
        {"none set", 0, 0, L"channels 1 to 57"},
        {"start set", 50, 0, L"channels 50 to 57"},
        {"end set", 0, 3, L"channels 1 to 3"},
        {"both set", 4, 6, L"channels 4 to 6"},
    };
    for (const Row &row : rows) {
        SCOPED_TRACE(row.what);
        ruvo::DiagModule::unsetAllParameters();
        setParameter("CheckTVCable", ruvo::Value::fromBool(false));
        setParameter("Country", ruvo::Value(kel::String(L"de")));
        if (row.start)
            setParameter("DigitalStartChannel", ruvo::Value(static_cast<uint32_t>(row.start)));
        if (row.end)
            setParameter("DigitalEndChannel", ruvo::Value(static_cast<uint32_t>(row.end)));
        EXPECT_EQ(scan<sorvane::DVBTuner>(kDvbtTuner).getResult(), TestResult::NOSIGNAL());
        EXPECT_TRUE(log().contains(L"Set DVB-T Channel Range: 1-57"));
        EXPECT_TRUE(log().contains(row.channels));
    }

    // A start beyond the country's last channel is refused, naming the country's range.
    ruvo::DiagModule::unsetAllParameters();
    setParameter("Country", ruvo::Value(kel::String(L"de")));
    setParameter("DigitalStartChannel", ruvo::Value(58u));
    const CaptureException beyond = scan<sorvane::DVBTuner>(kDvbtTuner);
    EXPECT_EQ(beyond.getResult(), TestResult::BADPARAMS());
    EXPECT_EQ(beyond.getErrorEvent(), sorvane::g_badParametersRange);

    // A provider that knows no frequency of the country leaves nothing to scan.
    ruvo::DiagModule::unsetAllParameters();
    setParameter("CheckTVCable", ruvo::Value::fromBool(false));
    setParameter("Country", ruvo::Value(kel::String(L"de")));
    lab::DeviceOverride empty(kProvider, L"fault.frequencies", L"0");
    lab::clearJournal(kDvbtTuner);
    EXPECT_EQ(scan<sorvane::DVBTuner>(kDvbtTuner).getResult(), TestResult::NOSIGNAL());
    EXPECT_TRUE(log().contains(L"Set DVB-T Channel Range: 1-0"));
    EXPECT_TRUE(journalOf(kDvbtTuner, L"Tune ").empty());
}

TEST_F(DigitalTunerLabTest, DVBTProviderMissingAndCountriesReportedTwice)
{
    setParameter("Country", ruvo::Value(kel::String(L"de")));
    {
        const Apartment apartment;
        RefusedClass noProvider(CLSID_DVBTNetworkProvider, REGDB_E_CLASSNOTREG);
        const CaptureException e = scan<sorvane::DVBTuner>(kDvbtTuner);
        EXPECT_EQ(e.getResult(), TestResult::FAIL());
        EXPECT_EQ(e.getErrorEvent(), sorvane::g_errorCreatingFilterGraph);
        EXPECT_TRUE(log().contains(L"IBaseFilter::CoCreateInstance DVBT Network Provider failed: "));
    }
    // The dialog offers the countries the provider reports, each once.
    setParameter("Country", ruvo::Value(kel::String(L"UserDefined")));
    recorder().setPromptEnabled(true);
    lab::DeviceOverride codes(kProvider, L"country-codes", L"49, 44, 49, 44");
    sorvane::test::CountryDialogDriver driver(L"");
    EXPECT_EQ(scan<sorvane::DVBTuner>(kDvbtTuner).getResult(), TestResult::USERABORTED());
    EXPECT_EQ(driver.items().size(), 2u);
}

TEST_F(DigitalTunerLabTest, DTMBTuneFailuresAreNoSignalWithoutASettleWait)
{
    streamNotNeeded();
    setRange(24, 24);
    struct Row {
        const char *what;
        const wchar_t *device;
        const wchar_t *key;
        const wchar_t *value;
        const CLSID *refused;
        const wchar_t *logged;
    };
    const Row rows[] = {
        {"DVB tuning space", kSpaces, L"fault.IDVBTuningSpace2", L"afterSystemType", nullptr,
         L"ERROR: tuneToChannel()/QI of IDVBTuningSpace2 failed"},
        {"tune request", kSpaces, L"fault.CreateTuneRequest", L"0x80004005", nullptr,
         L"ERROR: tuneToChannel()/CreateTuneRequest failed: "},
        {"DVB tune request", kSpaces, L"fault.IDVBTuneRequest", L"yes", nullptr,
         L"ERROR: tuneToChannel()/QI for IDVBTuneRequest failed"},
        {"locator", nullptr, nullptr, nullptr, &CLSID_DVBTLocator, L"ERROR: tuneToChannel()/CoCreateInstance failed: "},
        {"frequency", kSpaces, L"fault.put_CarrierFrequency", L"0x80070057", nullptr,
         L"ERROR: tuneToChannel()/put_CarrierFrequency failed: "},
        {"locator refused", kSpaces, L"fault.put_Locator", L"0x80004005", nullptr,
         L"ERROR: tuneToChannel()/put_Locator failed: "},
        {"provider", kProvider, L"fault.put_TuneRequest", L"0x80004005", nullptr,
         L"ERROR: tuneToChannel()/put_TuneRequest failed: "},
    };
    for (const Row &row : rows) {
        SCOPED_TRACE(row.what);
        const RowFault fault(row.refused, row.device, row.key, row.value);
        kel::Clock::clearRecordedSleeps();
        EXPECT_EQ(scan<sorvane::DVBTuner>(kDtmbTuner).getResult(), TestResult::NOSIGNAL());
        EXPECT_TRUE(log().contains(row.logged));
        // Only the graph's settling, once an attempt; no tune settles.
        EXPECT_EQ(clock.sleeps(), (std::vector<uint32_t>{1000, 1000}));
    }
}

TEST_F(DigitalTunerLabTest, DTMBIsFoundByTheTunerFilterName)
{
    // The framework names the device without DTMB; its tuner filter has it.
    ruvo::DiagDevice record = bdaDevice(kDtmbTuner);
    record = ruvo::DiagDevice(kel::String(L"Digital stick"), record.description(), record.osLocator(),
                              record.deviceCapabilities());
    setRange(25, 25);
    EXPECT_EQ(
        outcomeOf([&] { sorvane::DVBTuner(record, kel::String(L"Digital lab test")).checkTVSignal(); }).getResult(),
        TestResult::PASS());
    EXPECT_TRUE(log().contains(L"***filterIsDTMB()--filter name = Lab DTMB Tuner"));
    EXPECT_TRUE(log().contains(L"DTMB tuner detected.  Setting channel range: 13-56"));
}

} // namespace

namespace {

// An ATSC tuner that also asks the tuner filter's name to be the framework's DigitalFriendlyName.
class NamedATSCTuner : public sorvane::ATSCTuner {
public:
    NamedATSCTuner(const ruvo::DiagDevice &record, const kel::String &title) : ATSCTuner(record, title) {}

protected:
    void setupDevice() override
    {
        static const wchar_t *const atsc[] = {L"ATSC"};
        doSetupDevice(true, true, true);
        chooseTuningSpace(atsc, 1);
    }
};

TEST_F(DigitalTunerLabTest, TheTunerFilterMustCarryTheDigitalFriendlyNameWhenAsked)
{
    streamNotNeeded();
    setRange(8, 8);
    const ruvo::DiagDevice found = bdaDevice(kQamTuner);
    ruvo::DiagDevice renamed = found;
    renamed.setProperty("DigitalFriendlyName", ruvo::Value(kel::String(L"Other Tuner")));
    const ruvo::DiagDevice unnamed(found.name(), found.description(), found.osLocator(), found.deviceCapabilities());
    const struct {
        const char *what;
        const ruvo::DiagDevice *record;
        const wchar_t *logged;
    } rows[] = {
        {"another name", &renamed,
         L"Mismatching name while enumerating: looking for \"Other Tuner\" , but found: \"Lab ATSC QAM Tuner\""},
        {"no name", &unnamed, L"The DigitalFriendlyName property is required, but wasn't found"},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(row.what);
        const CaptureException e =
            outcomeOf([&] { NamedATSCTuner(*row.record, kel::String(L"Digital lab test")).checkTVSignal(); });
        EXPECT_EQ(e.getResult(), TestResult::FAIL());
        EXPECT_TRUE(log().contains(row.logged));
        EXPECT_TRUE(log().contains(L"loadFilter(TUNER) failed"));
    }
    // With its own name the tuner is found.
    EXPECT_EQ(outcomeOf([&] { NamedATSCTuner(found, kel::String(L"Digital lab test")).checkTVSignal(); }).getResult(),
              TestResult::PASS());
}

} // namespace

namespace {

TEST_F(DigitalTunerLabTest, ALaterTuningSpaceOfTheNameReplacesAnEarlierOne)
{
    streamNotNeeded();
    setRange(2, 2);
    // Two spaces answer to "ATSCCable"; the provider's journal names the kind of the one tuned.
    const struct {
        const wchar_t *spaces;
        const wchar_t *tuned;
    } rows[] = {
        {L"ATSCCable, Digital Cable as ATSCCable", L"TuneRequest DigitalCable ATSCCable 55250 kHz"},
        {L"Digital Cable as ATSCCable, ATSCCable", L"TuneRequest ATSC ATSCCable 55250 kHz"},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(kel::String(row.spaces).toUtf8());
        spaces.set(L"spaces", row.spaces);
        lab::clearJournal(kProvider);
        const size_t matched = logged(log(), L"matched tuning space ATSCCable");
        scan<sorvane::ClearQAMTuner>(kQamTuner);
        EXPECT_GE(logged(log(), L"matched tuning space ATSCCable"), matched + 2);
        const std::vector<std::wstring> tunes = journalOf(kProvider, L"TuneRequest ");
        ASSERT_FALSE(tunes.empty());
        EXPECT_EQ(tunes.front().find(row.tuned), 0u) << tunes.front();
    }
}

TEST_F(DigitalTunerLabTest, ATunerWithoutATopologyForTheLibraryHasNoSignal)
{
    streamNotNeeded();
    setRange(8, 8);
    // Statistics only on the topology's nodes, all saying there is a signal.
    lab::DeviceOverride tuner(kQamTuner, L"statistics", L"nodes");
    tuner.set(L"signal.present", L"1").set(L"signal.locked", L"1").set(L"signal.quality", L"80");
    EXPECT_EQ(scan<sorvane::ATSCTuner>(kQamTuner).getResult(), TestResult::PASS());
    EXPECT_TRUE(log().contains(L"Found a valid signal"));

    // The provider still tunes through the topology; the library's query finds none.
    tuner.set(L"fault.IBDA_Topology", L"outside-changes");
    lab::clearJournal(kQamTuner);
    EXPECT_EQ(scan<sorvane::ATSCTuner>(kQamTuner).getResult(), TestResult::NOSIGNAL());
    EXPECT_TRUE(log().contains(L"getSignalStrength::Cannot Find IID_IBDA_Topology"));
    EXPECT_TRUE(contains(journalOf(kQamTuner, L"Tune "), L"Tune 183000 kHz 8VSB"));
    EXPECT_TRUE(journalOf(kQamTuner, L"Signal").empty());
}

// A cable tuner extended by a test module that puts the webcam's frame callback on the grabber
// in place of the packet buffer.
class FrameCallbackClearQAMTuner : public sorvane::ClearQAMTuner {
public:
    FrameCallbackClearQAMTuner(const ruvo::DiagDevice &record, const kel::String &title) : ClearQAMTuner(record, title)
    {
    }

protected:
    void setupDevice() override
    {
        ClearQAMTuner::setupDevice();
        m_sampleGrabberCallback = new sorvane::SampleGrabberCallback(0, 0);
        m_sampleGrabber->SetCallback(m_sampleGrabberCallback, 1);
    }
};

TEST_F(DigitalTunerLabTest, ClearQAMWithAnotherCallbackThanThePacketBufferFails)
{
    streamNotNeeded();
    setRange(2, 4);
    const ruvo::DiagDevice record = bdaDevice(kQamTuner);
    const CaptureException e =
        outcomeOf([&] { FrameCallbackClearQAMTuner(record, kel::String(L"Digital lab test")).checkTVSignal(); });
    EXPECT_EQ(e.getResult(), TestResult::FAIL());
    EXPECT_EQ(e.getErrorCode(), 0);
    const std::vector<sorvane::test::LogCapture::Line> lines =
        log().find(kel::String(L"dynamic_cast<SampleCallback*>(m_sampleGrabberCallback.p) failed!)"));
    ASSERT_EQ(lines.size(), 1u);
    EXPECT_EQ(lines[0].priority, kel::LOG_ERROR);
    // The first channel ends the test: no other is tuned.
    EXPECT_EQ(journalOf(kProvider, L"TuneRequest ").size(), 1u);
}

TEST_F(DigitalTunerLabTest, DVBTStreamQualityUnreadableDefersToTheStatistics)
{
    lab::DeviceOverride tuner(kDvbtTuner);
    tuner.set(L"signal.present", L"0").set(L"signal.locked", L"0").set(L"signal.quality", L"0");
    setParameter("Country", ruvo::Value(kel::String(L"de")));
    setRange(9, 9);
    struct Row {
        const char *what;
        FaultySampleGrabber::Method refused;
        HRESULT refusal;
        std::vector<const wchar_t *> logged;
    };
    const Row rows[] = {
        {"size unreadable", FaultySampleGrabber::GET_BUFFER_SIZE, E_FAIL, {L"Failed to get the buffer size"}},
        {"less than a packet", FaultySampleGrabber::SHORT_BUFFER, S_OK, {L"We were not receiving any stream data"}},
        {"bytes unreadable",
         FaultySampleGrabber::GET_BUFFER,
         E_OUTOFMEMORY,
         {L"Failed to get the sample grabber current buffer "}},
        {"no sample",
         FaultySampleGrabber::GET_BUFFER,
         VFW_E_WRONG_STATE,
         {L"Failed to get the sample grabber current buffer ", L"No signal present"}},
    };
    for (const Row &row : rows) {
        SCOPED_TRACE(row.what);
        const Apartment apartment;
        SampleGrabberFault fault(row.refused, row.refusal);
        ASSERT_TRUE(fault.active());
        std::vector<size_t> before;
        for (const wchar_t *text : row.logged)
            before.push_back(logged(log(), text));
        const size_t present = logged(log(), L"No signal present");
        const size_t measured = logged(log(), L"Signal Quality: ");
        const size_t asked = logged(log(), L"Getting nodes types");
        kel::Clock::clearRecordedSleeps();
        EXPECT_EQ(scan<sorvane::DVBTuner>(kDvbtTuner).getResult(), TestResult::NOSIGNAL());
        EXPECT_EQ(fault.grabbersMade(), 1);
        for (size_t i = 0; i < row.logged.size(); ++i)
            EXPECT_GT(logged(log(), row.logged[i]), before[i]) << kel::String(row.logged[i]).toUtf8();
        if (row.refusal != VFW_E_WRONG_STATE) {
            EXPECT_EQ(logged(log(), L"No signal present"), present);
        }
        EXPECT_EQ(logged(log(), L"Signal Quality: "), measured);
        // The statistics were asked after the failed measurement.
        EXPECT_GT(logged(log(), L"Getting nodes types"), asked);
        const std::vector<uint32_t> sleeps = clock.sleeps();
        EXPECT_NE(std::find(sleeps.begin(), sleeps.end(), 50u), sleeps.end());
    }
}

} // namespace
