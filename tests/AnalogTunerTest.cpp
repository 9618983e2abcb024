// The analog tuner on the lab's cards: inputs tried per channel, the signal decision, the
// crossbar route, the default country, unsupported hardware and the FM sweep.
#include "ManualClock.h"
#include "TunerLab.h"

#include <AnalogTuner.h>
#include <CaptureUtil.h>
#include <ModuleRegistration.h>
#include <cstdlib>
#include <limits>

namespace {

using ruvo::DeviceCapability;
using ruvo::TestResult;
using sorvane::AnalogTuner;
using sorvane::CaptureException;
using sorvane::test::journalOf;
using sorvane::test::kLabCaptureCard;
using sorvane::test::kLabTVCard;
using sorvane::test::outcomeOf;
using sorvane::test::tunedChannels;

const DeviceCapability kAnalogTV = DeviceCapability::VideoCapture() | DeviceCapability::AnalogTVTuner();

class AnalogTunerTest : public sorvane::test::TunerLabTest {
protected:
    void SetUp() override
    {
        TunerLabTest::SetUp();
        card.set(L"channels", L"").set(L"fm-stations", L"");
        // One pass over a range is enough here.
        setParameter("CheckTVCable", ruvo::Value::fromBool(false));
    }

    void setFMBand(double start, double end)
    {
        setParameter("FMRadioStartChannel", ruvo::Value::fromDouble(start));
        setParameter("FMRadioEndChannel", ruvo::Value::fromDouble(end));
    }

    CaptureException checkTV()
    {
        return outcomeOf([this] { tuner.checkTVSignal(); });
    }
    CaptureException checkFM()
    {
        return outcomeOf([this] { tuner.checkFMRadioSignal(); });
    }

    sorvane::test::ManualClock clock;
    AnalogTuner tuner{sorvane::test::labTVCard(), kel::String(L"Analog test")};
};

// The frequencies the FM sweep tuned, in hertz.
std::vector<long> tunedFrequencies()
{
    std::vector<long> frequencies;
    for (const std::wstring &entry : tunedChannels(kLabTVCard))
        frequencies.push_back(std::wcstol(entry.c_str() + 8, nullptr, 10));
    return frequencies;
}

void expectRaster(const std::vector<long> &tuned, const std::vector<long> &expected)
{
    ASSERT_EQ(tuned.size(), expected.size());
    for (size_t i = 0; i < tuned.size(); ++i)
        EXPECT_LE(std::labs(tuned[i] - expected[i]), 1) << "frequency " << i;
}

TEST_F(AnalogTunerTest, AntennaIsTriedBeforeCableOnEveryChannel)
{
    card.set(L"channels", L"3:cable");
    setTVRange(2, 3);

    EXPECT_EQ(checkTV().getResult(), TestResult::PASS());
    EXPECT_EQ(tunedChannels(kLabTVCard), (std::vector<std::wstring>{L"Channel 2 antenna TV", L"Channel 2 cable TV",
                                                                    L"Channel 3 antenna TV", L"Channel 3 cable TV"}));
    // Each tune selects the input type of the connected input and asks the tuner to fine-tune.
    EXPECT_EQ(journalOf(kLabTVCard, L"InputType ").size(), 4u);
    EXPECT_EQ(journalOf(kLabTVCard, L"AutoTune ").size(), 4u);
    EXPECT_EQ(journalOf(kLabTVCard, L"Mode "), (std::vector<std::wstring>{L"Mode TV"}));
}

TEST_F(AnalogTunerTest, SignalTypeLimitsTheInputsInAnyCase)
{
    card.set(L"channels", L"3:cable, 3:antenna");
    setTVRange(2, 3);
    struct Case {
        const char *signalType;
        std::vector<std::wstring> tuned;
    };
    const Case cases[] = {
        {"cable", {L"Channel 2 cable TV", L"Channel 3 cable TV"}},
        {"ANTENNA", {L"Channel 2 antenna TV", L"Channel 3 antenna TV"}},
        {"Both", {L"Channel 2 antenna TV", L"Channel 2 cable TV", L"Channel 3 antenna TV"}},
    };
    for (const Case &c : cases) {
        SCOPED_TRACE(c.signalType);
        lab::clearJournal(kLabTVCard);
        setParameter("SignalType", ruvo::Value(c.signalType));
        EXPECT_EQ(checkTV().getResult(), TestResult::PASS());
        EXPECT_EQ(tunedChannels(kLabTVCard), c.tuned);
    }
}

TEST_F(AnalogTunerTest, ChecksPerChannelAndWeakSignal)
{
    card.set(L"channels", L"2:antenna=2");
    setTVRange(2, 2);

    // A strength of 2 is not a signal, however often it is asked for.
    setParameter("ChecksPerChannel", ruvo::Value(uint32_t(3)));
    EXPECT_EQ(checkTV().getResult(), TestResult::NOSIGNAL());
    const std::vector<std::wstring> onePass = {L"SignalPresent 2", L"SignalPresent 2", L"SignalPresent 2",
                                               L"SignalPresent 0", L"SignalPresent 0", L"SignalPresent 0"};
    std::vector<std::wstring> twoPasses = onePass;
    twoPasses.insert(twoPasses.end(), onePass.begin(), onePass.end());
    EXPECT_EQ(journalOf(kLabTVCard, L"SignalPresent "), twoPasses);

    // No checks at all: every channel is without signal and the tuner is never asked.
    lab::clearJournal(kLabTVCard);
    card.set(L"channels", L"2:antenna");
    setParameter("ChecksPerChannel", ruvo::Value(uint32_t(0)));
    EXPECT_EQ(checkTV().getResult(), TestResult::NOSIGNAL());
    EXPECT_EQ(tunedChannels(kLabTVCard).size(), 4u);
    EXPECT_TRUE(journalOf(kLabTVCard, L"SignalPresent").empty());
}

TEST_F(AnalogTunerTest, RefusedTuneIsNoSignalOnThatChannel)
{
    card.set(L"channels", L"2:antenna").set(L"fault.put_Channel", L"0x80004005");
    setTVRange(2, 2);

    EXPECT_EQ(checkTV().getResult(), TestResult::NOSIGNAL());
    EXPECT_TRUE(journalOf(kLabTVCard, L"SignalPresent").empty());
    EXPECT_TRUE(log().contains(kel::String(L"Cannot tune to Antenna channel 2")));
    EXPECT_TRUE(log().contains(kel::String(L"Cannot tune to Cable channel 2")));
    // The graph settle, then a short pause after each refused tune.
    EXPECT_EQ(clock.sleeps(), (std::vector<uint32_t>{1000, 10, 10, 1000, 10, 10}));
}

TEST_F(AnalogTunerTest, DefaultCountryFromTheLocaleIsSet)
{
    card.set(L"channels", L"2:antenna");
    setTVRange(2, 2);

    EXPECT_EQ(checkTV().getResult(), TestResult::PASS());
    EXPECT_EQ(
        journalOf(kLabTVCard, L"CountryCode "),
        (std::vector<std::wstring>{L"CountryCode " + std::to_wstring(sorvane::CaptureUtil::getDefaultCountryCode())}));
}

TEST_F(AnalogTunerTest, CrossbarRoutesTheFirstTunerInputToTheFirstOutputThatTakesIt)
{
    card.set(L"channels", L"2:antenna").set(L"crossbar-inputs", L"composite, tuner, svideo, tuner, tuner-audio");
    setTVRange(2, 2);
    struct Case {
        const wchar_t *outputs;
        const wchar_t *refused;
        const wchar_t *route;
    };
    const Case cases[] = {
        {L"video-decoder, audio-decoder", L"", L"Route 0 1"},
        {L"audio-decoder, video-decoder", L"", L"Route 1 1"},
        {L"video-decoder, audio-decoder", L"1", L"Route 0 3"},
    };
    for (const Case &c : cases) {
        SCOPED_TRACE(std::string(c.outputs, c.outputs + wcslen(c.outputs)));
        lab::clearJournal(kLabTVCard);
        card.set(L"crossbar-outputs", c.outputs).set(L"fault.canroute", c.refused);
        EXPECT_EQ(checkTV().getResult(), TestResult::PASS());
        EXPECT_EQ(journalOf(kLabTVCard, L"Route "), (std::vector<std::wstring>{c.route}));
    }
}

TEST_F(AnalogTunerTest, HardwareWithoutAnalogTVIsNotSupported)
{
    setTVRange(2, 2);
    AnalogTuner withoutCapability(sorvane::test::LabDeviceRecord::find(kLabTVCard, DeviceCapability::VideoCapture()),
                                  kel::String(L"No TV"));
    AnalogTuner withoutTuner(sorvane::test::LabDeviceRecord::find(kLabCaptureCard, kAnalogTV),
                             kel::String(L"No tuner"));

    for (AnalogTuner *candidate : {&withoutCapability, &withoutTuner}) {
        const CaptureException e = outcomeOf([candidate] { candidate->checkTVSignal(); });
        EXPECT_EQ(e.getResult(), TestResult::NOTSUPPORTED());
        EXPECT_EQ(e.getErrorEvent(), nullptr);
        EXPECT_EQ(e.getWarningEvent(), sorvane::g_warnHardwareDoesNotSupportAnalogTVInput);
    }
    EXPECT_TRUE(tunedChannels(kLabTVCard).empty());
    EXPECT_TRUE(lab::journal(kLabTVCard).empty()) << "the card was opened without the capability";
}

TEST_F(AnalogTunerTest, RefusedModeFailsTheGraph)
{
    card.set(L"fault.put_Mode", L"0x80004005");
    setTVRange(2, 2);

    const CaptureException e = checkTV();

    EXPECT_EQ(e.getResult(), TestResult::FAIL());
    EXPECT_EQ(e.getErrorEvent(), sorvane::g_errorCreatingFilterGraph);
    EXPECT_EQ(e.getErrorCode(), static_cast<long>(E_FAIL));
}

TEST_F(AnalogTunerTest, RefusedInputSelectionIsNoSignalOnThatChannel)
{
    card.set(L"channels", L"2:antenna, 2:cable");
    setTVRange(2, 2);
    for (const wchar_t *fault : {L"fault.get_ConnectInput", L"fault.put_InputType"}) {
        SCOPED_TRACE(sorvane::test::narrow(kel::String(fault)));
        lab::clearJournal(kLabTVCard);
        lab::DeviceOverride refused(kLabTVCard, fault, L"0x80004005");

        EXPECT_EQ(checkTV().getResult(), TestResult::NOSIGNAL());
        // Neither input is tuned, so neither is asked for a signal.
        EXPECT_TRUE(tunedChannels(kLabTVCard).empty());
        EXPECT_TRUE(journalOf(kLabTVCard, L"SignalPresent").empty());
    }
    EXPECT_TRUE(log().contains(kel::String(L"get_ConnectInput failed: ")));
    EXPECT_TRUE(log().contains(kel::String(L"put_InputType failed: ")));
}

TEST_F(AnalogTunerTest, StopRequestBetweenChecksEndsTheChannelAtOnce)
{
    setTVRange(2, 5);
    setParameter("ChecksPerChannel", ruvo::Value(uint32_t(3)));
    // The first call is before the first tune; the second follows the antenna's first check.
    recorder().requestStopAtCheck(2);

    const CaptureException e = checkTV();

    EXPECT_EQ(e.getResult(), TestResult::USERABORTED());
    // One check per input instead of three, and no second channel.
    EXPECT_EQ(journalOf(kLabTVCard, L"SignalPresent "),
              (std::vector<std::wstring>{L"SignalPresent 0", L"SignalPresent 0"}));
    EXPECT_EQ(tunedChannels(kLabTVCard), (std::vector<std::wstring>{L"Channel 2 antenna TV", L"Channel 2 cable TV"}));
}

TEST_F(AnalogTunerTest, NothingRenderingFailsTheGraphAfterEveryChoiceWasTried)
{
    card.set(L"fault.connect", L"yes");
    setTVRange(2, 2);

    const CaptureException e = checkTV();

    EXPECT_EQ(e.getResult(), TestResult::FAIL());
    EXPECT_EQ(e.getErrorEvent(), sorvane::g_errorCreatingFilterGraph);
    EXPECT_NE(e.getErrorCode(), 0);
    EXPECT_TRUE(tunedChannels(kLabTVCard).empty());
    // Each choice is logged by its media type.
    for (const wchar_t *type : {L"MEDIATYPE_Interleaved", L"MEDIATYPE_Video", L"MEDIATYPE_Stream"}) {
        const kel::String line = kel::String(L"RenderStream(") + type + L", m_srcFilter, NULL, NULL) returns ";
        EXPECT_TRUE(log().contains(line)) << sorvane::test::narrow(line);
    }
    EXPECT_FALSE(log().contains(kel::String(L"RenderStream(PIN_CATEGORY_")));
}

TEST_F(AnalogTunerTest, FMSweepTunesHertzInFifthsOfAMegahertzAndFindsAStation)
{
    card.set(L"fm-stations", L"88.4");
    setFMBand(88.0, 89.0);

    EXPECT_EQ(checkFM().getResult(), TestResult::PASS());

    expectRaster(tunedFrequencies(), {88000000, 88200000, 88400000});
    for (const std::wstring &entry : tunedChannels(kLabTVCard))
        EXPECT_NE(entry.find(L" FM"), std::wstring::npos);
    EXPECT_EQ(journalOf(kLabTVCard, L"Mode "), (std::vector<std::wstring>{L"Mode FM"}));
    // The input is left alone: no input type, no fine-tuning, no crossbar route.
    EXPECT_TRUE(journalOf(kLabTVCard, L"InputType").empty());
    EXPECT_TRUE(journalOf(kLabTVCard, L"AutoTune").empty());
    EXPECT_TRUE(journalOf(kLabTVCard, L"Route").empty());
    EXPECT_EQ(recorder().progressTexts,
              (std::vector<kel::String>{kel::String(L"Testing channel 88.0"), kel::String(L"Testing channel 88.2"),
                                        kel::String(L"Testing channel 88.4")}));
    ASSERT_EQ(recorder().percents.size(), 2u);
    EXPECT_EQ(recorder().percents[0], 0);
    EXPECT_NEAR(recorder().percents[1], 20, 1);
    EXPECT_EQ(clock.sleeps(), (std::vector<uint32_t>{1000, 1000, 1000, 1000}));
    EXPECT_TRUE(log().contains(kel::String(L"Found FM signal at 88.4")));
}

TEST_F(AnalogTunerTest, FMSweepPastTheEndIsNoSignal)
{
    setFMBand(88.0, 88.4);

    const CaptureException e = checkFM();

    EXPECT_EQ(e.getResult(), TestResult::NOSIGNAL());
    EXPECT_EQ(e.getErrorEvent(), sorvane::g_errorNoSignal);
    expectRaster(tunedFrequencies(), {88000000, 88200000, 88400000});
}

TEST_F(AnalogTunerTest, FMStartAboveEndTestsTheStartOnly)
{
    setFMBand(90.0, 89.0);

    EXPECT_EQ(checkFM().getResult(), TestResult::NOSIGNAL());
    expectRaster(tunedFrequencies(), {90000000});
    EXPECT_EQ(recorder().percents, (std::vector<int>{0}));
}

TEST_F(AnalogTunerTest, FMStopRequestEndsTheSweep)
{
    setFMBand(88.0, 89.0);
    // The first frequency asks once before tuning and once after its failed check.
    recorder().requestStopAtCheck(3);

    const CaptureException e = checkFM();

    EXPECT_EQ(e.getResult(), TestResult::USERABORTED());
    EXPECT_EQ(e.getErrorEvent(), nullptr);
    expectRaster(tunedFrequencies(), {88000000});
}

// Whatever a caller sets, the sweep ends: frequencies no tuner can take are refused before the first tune.
TEST_F(AnalogTunerTest, FrequenciesNoTunerCanTakeAreRefusedBeforeAnyTune)
{
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const double inf = std::numeric_limits<double>::infinity();
    struct Case {
        double start;
        double end;
        const char *name;
    };
    // Above 2147 MHz the frequency in hertz overflows the tuner's int; a sweep from 1e17 by
    // 0.2 MHz would never move.
    for (const Case &c :
         {Case{nan, 108.0, "FMRadioStartChannel"}, Case{88.0, nan, "FMRadioEndChannel"},
          Case{inf, inf, "FMRadioStartChannel"}, Case{-inf, 88.0, "FMRadioStartChannel"},
          Case{88.0, inf, "FMRadioEndChannel"}, Case{1e17, 2e17, "FMRadioStartChannel"},
          Case{88.0, 1e300, "FMRadioEndChannel"}, Case{-0.1, 88.0, "FMRadioStartChannel"},
          Case{2147.5, 2148.0, "FMRadioStartChannel"}, Case{-2147483649.0, 88.0, "FMRadioStartChannel"}}) {
        SCOPED_TRACE(c.name);
        setFMBand(c.start, c.end);
        const CaptureException e = checkFM();
        EXPECT_EQ(e.getResult(), TestResult::BADPARAMS());
        EXPECT_EQ(e.getErrorEvent(), sorvane::g_badParametersRange);
        EXPECT_EQ(sorvane::test::eventVariable(e.getErrorEvent(), "ParameterName"), c.name);
        EXPECT_EQ(sorvane::test::eventVariable(e.getErrorEvent(), "RangeMin"), "0");
        EXPECT_EQ(sorvane::test::eventVariable(e.getErrorEvent(), "RangeMax"), "2147");
        EXPECT_TRUE(tunedFrequencies().empty());
    }
}

TEST_F(AnalogTunerTest, TheEndsOfTheTunableFrequenciesAreSweptAndEnd)
{
    for (const double megahertz : {0.0, 2147.0}) {
        SCOPED_TRACE(megahertz);
        lab::clearJournal(kLabTVCard);
        setFMBand(megahertz, megahertz);
        EXPECT_EQ(checkFM().getResult(), TestResult::NOSIGNAL());
        expectRaster(tunedFrequencies(), {static_cast<long>(megahertz * 1000000.0)});
    }
}

// The preview and the recording run on real time: the preview for "TestRunTime", the
// recording for three seconds.
class AnalogTunerCaptureTest : public sorvane::test::TunerLabTest {
protected:
    AnalogTuner tuner{sorvane::test::labTVCard(), kel::String(L"Analog capture test")};
};

TEST_F(AnalogTunerCaptureTest, PreviewAndRecordingShowTheTunerInput)
{
    setParameter("TestRunTime", ruvo::Value(uint32_t(1)));
    tuner.captureToScreen();
    EXPECT_EQ(journalOf(kLabTVCard, L"Mode "), (std::vector<std::wstring>{L"Mode TV"}));
    EXPECT_EQ(journalOf(kLabTVCard, L"Route "), (std::vector<std::wstring>{L"Route 0 1"}));
    EXPECT_GT(lab::samplesDelivered(kLabTVCard), 0);

    wchar_t folder[MAX_PATH] = L"";
    ASSERT_GT(GetTempPathW(MAX_PATH, folder), 0u);
    const std::wstring file = std::wstring(folder) + L"AnalogTunerRecording.avi";
    lab::clearJournal(kLabTVCard);
    tuner.captureToFile(kel::String(L"AnalogTunerRecording"));

    WIN32_FILE_ATTRIBUTE_DATA attributes = {};
    ASSERT_TRUE(GetFileAttributesExW(file.c_str(), GetFileExInfoStandard, &attributes));
    EXPECT_GT(attributes.nFileSizeLow, 320u * 240u * 3u) << "not even one frame recorded";
    EXPECT_EQ(journalOf(kLabTVCard, L"Route "), (std::vector<std::wstring>{L"Route 0 1"}));
    EXPECT_GT(lab::samplesDelivered(kLabTVCard), 0);
    DeleteFileW(file.c_str());
}

} // namespace
