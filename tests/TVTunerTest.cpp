// Channel iteration end to end on the lab's analog TV card: the range, progress and percent
// reports, the settle and picture sleeps, the cable question and its second pass, range
// checks and stop requests.
#include "ManualClock.h"
#include "TunerLab.h"

#include <AnalogTuner.h>
#include <ModuleRegistration.h>
#include <ruvo/MessageCatalog.h>
#include <algorithm>

namespace {

using ruvo::TestResult;
using sorvane::AnalogTuner;
using sorvane::CaptureException;
using sorvane::test::kLabTVCard;
using sorvane::test::tunedChannels;

const std::vector<std::wstring> kChannels2To3Twice = {
    L"Channel 2 antenna TV", L"Channel 2 cable TV", L"Channel 3 antenna TV", L"Channel 3 cable TV",
    L"Channel 2 antenna TV", L"Channel 2 cable TV", L"Channel 3 antenna TV", L"Channel 3 cable TV",
};

class TVTunerTest : public sorvane::test::TunerLabTest {
protected:
    void SetUp() override
    {
        TunerLabTest::SetUp();
        card.set(L"channels", L"");
        recorder().setPromptEnabled(true);
    }

    CaptureException checkFails()
    {
        return sorvane::test::outcomeOf([this] { tuner.checkTVSignal(); });
    }

    sorvane::test::ManualClock clock;
    AnalogTuner tuner{sorvane::test::labTVCard(), kel::String(L"Tuner test")};
};

TEST_F(TVTunerTest, SignalInRangePassesWithProgressPercentAndSleeps)
{
    card.set(L"channels", L"4:antenna, 9:cable");
    setTVRange(2, 5);

    tuner.checkTVSignal();

    EXPECT_EQ(tunedChannels(kLabTVCard),
              (std::vector<std::wstring>{L"Channel 2 antenna TV", L"Channel 2 cable TV", L"Channel 3 antenna TV",
                                         L"Channel 3 cable TV", L"Channel 4 antenna TV"}));
    EXPECT_EQ(recorder().progressTexts,
              (std::vector<kel::String>{kel::String(L"Testing channel 2"), kel::String(L"Testing channel 3"),
                                        kel::String(L"Testing channel 4")}));
    EXPECT_EQ(recorder().percents, (std::vector<int>{33, 67}));
    EXPECT_EQ(recorder().percentResets, 1);
    // Graph settle, one settle per tune, and the picture left on screen.
    EXPECT_EQ(clock.sleeps(), (std::vector<uint32_t>{1000, 1000, 1000, 1000, 1000, 1000, 5000}));
    EXPECT_TRUE(recorder().prompts.empty());
    EXPECT_TRUE(log().contains(kel::String(L"found signal on channel 4")));
}

TEST_F(TVTunerTest, SingleChannelRangeAtBothLimitsIsAccepted)
{
    card.set(L"channels", L"2:cable, 60:antenna");
    setTVRange(2, 2);
    tuner.checkTVSignal();
    setTVRange(60, 60);
    tuner.checkTVSignal();

    EXPECT_EQ(tunedChannels(kLabTVCard),
              (std::vector<std::wstring>{L"Channel 2 antenna TV", L"Channel 2 cable TV", L"Channel 60 antenna TV"}));
    // Start equal to end: the first channel with signal reports no percent at all.
    EXPECT_TRUE(recorder().percents.empty());
}

TEST_F(TVTunerTest, RangeWithoutSignalAsksAboutTheCableThenEndsWithNoSignalWithTip)
{
    setTVRange(2, 3);
    setParameter("MsgBoxTimeout", ruvo::Value(uint32_t(30)));
    recorder().queueAnswer(1);

    const CaptureException e = checkFails();

    EXPECT_EQ(e.getResult(), TestResult::NOSIGNAL());
    EXPECT_EQ(e.getErrorEvent(), sorvane::g_errorNoSignalWithTip);
    EXPECT_EQ(sorvane::test::eventVariable(e.getErrorEvent(), "startchannel"), "2");
    EXPECT_EQ(sorvane::test::eventVariable(e.getErrorEvent(), "endchannel"), "3");
    EXPECT_EQ(tunedChannels(kLabTVCard), kChannels2To3Twice);
    EXPECT_EQ(recorder().percentResets, 2);
    // Each pass counts from its first channel; past the last one the fraction exceeds 1.
    EXPECT_EQ(recorder().percents, (std::vector<int>{100, 200, 100, 200}));

    ASSERT_EQ(recorder().prompts.size(), 1u);
    const ruvo::RecordingBackend::Prompt &prompt = recorder().prompts[0];
    EXPECT_EQ(prompt.title, kel::String(L"Tuner test"));
    EXPECT_EQ(prompt.text, ruvo::MessageCatalog::text(kel::String(L"CheckCableConnectedMessage")));
    EXPECT_EQ(prompt.type, 0);
    EXPECT_EQ(prompt.options, 1);
    EXPECT_EQ(prompt.looks, 0);
    EXPECT_TRUE(prompt.flag);
    EXPECT_EQ(prompt.waitMilliseconds, 30000u);

    e.postEvents();
    ASSERT_EQ(postedKeys(), (std::vector<std::string>{"ErrorNoSignalWithTip"}));
    EXPECT_EQ(recorder().events[0].message,
              kel::String(L"No signal was found on channels 2 to 3. Check that the antenna or cable is connected."));
}

// Notes, when the cable question is shown, whether the capture window is up and the card runs.
class QuestionObserver : public ruvo::RecordingBackend {
public:
    bool displayMessageBox(ruvo::MessageBox2 &box) override
    {
        for (HWND window : sorvane::test::WindowWatcher::findInThisProcess(L"KEL_CaptureBase_Window"))
            visibleWindows += IsWindowVisible(window) ? 1 : 0;
        journalAtQuestion = lab::journal(kLabTVCard);
        return RecordingBackend::displayMessageBox(box);
    }

    int visibleWindows = 0;
    std::vector<std::wstring> journalAtQuestion;
};

TEST_F(TVTunerTest, CableQuestionComesWithThePictureUpAndTheCardStillRunning)
{
    setTVRange(2, 3);
    QuestionObserver observer;
    observer.setPromptEnabled(true);
    observer.queueAnswer(1);
    ruvo::DiagModule::setBackend(&observer);
    const CaptureException e = checkFails();
    ruvo::DiagModule::setBackend(&recorder());

    EXPECT_EQ(e.getResult(), TestResult::NOSIGNAL());
    ASSERT_EQ(observer.prompts.size(), 1u);
    EXPECT_EQ(observer.visibleWindows, 1);
    // The question follows the last check of the first pass; the card was never stopped.
    ASSERT_FALSE(observer.journalAtQuestion.empty());
    EXPECT_EQ(observer.journalAtQuestion.back(), L"SignalPresent 0");
    EXPECT_EQ(std::count(observer.journalAtQuestion.begin(), observer.journalAtQuestion.end(), L"Stop"), 0);
    // The second pass goes on in the same running graph, which stops once, at the end.
    EXPECT_EQ(sorvane::test::journalOf(kLabTVCard, L"Run"), (std::vector<std::wstring>{L"Run"}));
    EXPECT_EQ(sorvane::test::journalOf(kLabTVCard, L"Stop"), (std::vector<std::wstring>{L"Stop"}));
    EXPECT_EQ(tunedChannels(kLabTVCard), kChannels2To3Twice);
}

TEST_F(TVTunerTest, OneChannelWithoutSignalReportsNoProgress)
{
    setTVRange(5, 5);
    setParameter("CheckTVCable", ruvo::Value::fromBool(false));

    EXPECT_EQ(checkFails().getResult(), TestResult::NOSIGNAL());
    // End equal to start leaves no width to measure progress by: 0 after each pass.
    EXPECT_EQ(recorder().percents, (std::vector<int>{0, 0}));
}

TEST_F(TVTunerTest, CableQuestionOffGivesASilentSecondPass)
{
    setTVRange(2, 3);
    setParameter("CheckTVCable", ruvo::Value::fromBool(false));

    EXPECT_EQ(checkFails().getResult(), TestResult::NOSIGNAL());
    EXPECT_TRUE(recorder().prompts.empty());
    EXPECT_EQ(tunedChannels(kLabTVCard), kChannels2To3Twice);
}

TEST_F(TVTunerTest, CableQuestionNotShownOrNotAnsweredStillTriesAgain)
{
    setTVRange(2, 3);
    recorder().queueAnswer(0, true, false);
    EXPECT_EQ(checkFails().getResult(), TestResult::NOSIGNAL());
    EXPECT_EQ(recorder().prompts.size(), 1u);
    EXPECT_EQ(tunedChannels(kLabTVCard), kChannels2To3Twice);
    EXPECT_TRUE(log().contains(kel::String(L"DisplayRetryDialog()--MessageBox2::wait() returned false")));

    lab::clearJournal(kLabTVCard);
    recorder().setPromptEnabled(false);
    EXPECT_EQ(checkFails().getResult(), TestResult::NOSIGNAL());
    EXPECT_EQ(tunedChannels(kLabTVCard), kChannels2To3Twice);
}

TEST_F(TVTunerTest, AbortAnswersToTheCableQuestionEndWithUserAborted)
{
    setTVRange(2, 2);
    for (int answer : {5, 6}) {
        SCOPED_TRACE(answer);
        lab::clearJournal(kLabTVCard);
        recorder().queueAnswer(answer);

        const CaptureException e = checkFails();

        EXPECT_EQ(e.getResult(), TestResult::USERABORTED());
        EXPECT_EQ(e.getErrorEvent(), nullptr);
        EXPECT_EQ(e.getWarningEvent(), nullptr);
        EXPECT_EQ(tunedChannels(kLabTVCard),
                  (std::vector<std::wstring>{L"Channel 2 antenna TV", L"Channel 2 cable TV"}));
    }
}

TEST_F(TVTunerTest, ChannelOutsideTheLimitsIsABadParameter)
{
    struct Case {
        uint32_t start;
        uint32_t end;
        const char *name;
        const char *value;
    };
    // Whatever a caller sets, the scan ends: the extremes of the parameter's type are refused too.
    for (const Case &c :
         {Case{1, 5, "TVStartChannel", "1"}, Case{2, 61, "TVEndChannel", "61"}, Case{0, 60, "TVStartChannel", "0"},
          Case{4294967295u, 4294967295u, "TVStartChannel", "4294967295"},
          Case{2, 4294967295u, "TVEndChannel", "4294967295"}, Case{2147483648u, 2, "TVStartChannel", "2147483648"}}) {
        SCOPED_TRACE(c.value);
        setTVRange(c.start, c.end);

        const CaptureException e = checkFails();

        EXPECT_EQ(e.getResult(), TestResult::BADPARAMS());
        EXPECT_EQ(e.getErrorEvent(), sorvane::g_badParametersRange);
        EXPECT_EQ(sorvane::test::eventVariable(e.getErrorEvent(), "ParameterName"), c.name);
        EXPECT_EQ(sorvane::test::eventVariable(e.getErrorEvent(), "ParameterValue"), c.value);
        EXPECT_EQ(sorvane::test::eventVariable(e.getErrorEvent(), "RangeMin"), "2");
        EXPECT_EQ(sorvane::test::eventVariable(e.getErrorEvent(), "RangeMax"), "60");
    }
    EXPECT_TRUE(tunedChannels(kLabTVCard).empty());
    EXPECT_TRUE(recorder().prompts.empty());
}

TEST_F(TVTunerTest, EndBelowStartIsABadParameterWithoutEvent)
{
    setTVRange(5, 4);

    const CaptureException e = checkFails();

    EXPECT_EQ(e.getResult(), TestResult::BADPARAMS());
    EXPECT_EQ(e.getErrorEvent(), nullptr);
    EXPECT_EQ(e.getWarningEvent(), nullptr);
    EXPECT_TRUE(tunedChannels(kLabTVCard).empty());
}

TEST_F(TVTunerTest, StopRequestBetweenChannelsEndsBeforeTheNextTune)
{
    card.set(L"channels", L"3:antenna");
    setTVRange(2, 5);
    setParameter("SignalType", ruvo::Value("antenna"));
    // Channel 2 asks once before tuning and once after its one failed check.
    recorder().requestStopAtCheck(3);

    const CaptureException e = checkFails();

    EXPECT_EQ(e.getResult(), TestResult::USERABORTED());
    EXPECT_EQ(e.getErrorEvent(), nullptr);
    EXPECT_EQ(tunedChannels(kLabTVCard), (std::vector<std::wstring>{L"Channel 2 antenna TV"}));
    EXPECT_TRUE(recorder().prompts.empty());
}

TEST_F(TVTunerTest, StopRequestDuringTheLastChannelStillEndsThePassWithoutSignal)
{
    setTVRange(2, 3);
    setParameter("SignalType", ruvo::Value("antenna"));
    setParameter("CheckTVCable", ruvo::Value::fromBool(false));
    // Asked before channel 2, after its check, before channel 3, and after channel 3's check:
    // the range has ended by then, so the pass ends without signal and the second pass begins.
    recorder().requestStopAtCheck(4);

    const CaptureException e = checkFails();

    EXPECT_EQ(e.getResult(), TestResult::USERABORTED());
    EXPECT_EQ(e.getErrorEvent(), nullptr);
    EXPECT_EQ(recorder().percentResets, 2);
    // The second pass stops before its first tune.
    EXPECT_EQ(tunedChannels(kLabTVCard), (std::vector<std::wstring>{L"Channel 2 antenna TV", L"Channel 3 antenna TV"}));
}

} // namespace
