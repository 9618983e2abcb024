// A camera that starts and then delivers nothing, too little or empty samples: the library
// waits its whole time-out (a minute and five seconds a frame), retries on the next
// capability, and in the end posts the event a refused start posts too. What the console
// host says about each is checked here, in-process, so that the waits run on the framework's
// manual clock instead of the wall clock.
#include "FrameworkTest.h"
#include "LabDeviceRecord.h"
#include "ManualClock.h"
#include "SideThread.h"

#include <CaptureException.h>
#include <Webcam.h>
#include <lab/LabControl.h>

#include <sorvane-diag/FailureExplanation.h>
#include <sorvane-diag/LibraryErrors.h>

#include <gtest/gtest.h>

namespace {

using sorvane::diag::FailureExplanation;
using sorvane::diag::LibraryErrors;

const wchar_t kSilent[] = L"Lab Webcam Silent";
const wchar_t kYuy2[] = L"Lab Webcam YUY2";

const wchar_t kTimedOut[] = L"What happened: the device started but did not deliver the 2 frames asked for within "
                            L"the library's time-out of 70 seconds: a camera that sends nothing, or stops sending, "
                            L"looks like this.";

class SilentCameraExplanationTest : public sorvane::test::FrameworkTest {
protected:
    // Discovery binds every camera before a test reads a journal.
    static void SetUpTestSuite() { sorvane::test::LabDeviceRecord::discover(); }

    void SetUp() override
    {
        FrameworkTest::SetUp();
        // The host's own observer of the library's log, as it runs during a command.
        LibraryErrors::start();
    }
    void TearDown() override
    {
        LibraryErrors::stop();
        FrameworkTest::TearDown();
    }

    // Captures two frames as the host's webcam command does and gathers what the host
    // would explain the failure from. A camera that sends something gets to send it before
    // the clock jumps past the time-out.
    enum class Sends { Nothing, Samples };
    FailureExplanation::Facts capture(const wchar_t *camera, Sends sends)
    {
        sorvane::test::ManualClock clock;
        lab::clearJournal(camera);
        const ruvo::DiagDevice device =
            sorvane::test::LabDeviceRecord::find(camera, ruvo::DeviceCapability::VideoCapture());
        sorvane::Webcam webcam(device, kel::String(L"Explained camera"), 0);
        const size_t errorsBefore = LibraryErrors::count();
        const size_t eventsBefore = recorder().events.size();
        FailureExplanation::Facts facts;
        facts.phase = L"capture";
        {
            // Each time the camera runs, the clock moves past the 60 + 2 x 5 seconds two frames may take.
            sorvane::test::SideThread timeOut([camera, sends](sorvane::test::SideThread &side) {
                size_t seen = 0;
                long long runs = 0;
                while (side.waitUntil([camera, seen] { return lab::journal(camera).size() > seen; })) {
                    const std::vector<std::wstring> entries = lab::journal(camera);
                    for (; seen < entries.size(); ++seen) {
                        if (entries[seen] != L"Run")
                            continue;
                        // Every run of a camera that sends delivers one sample at least.
                        ++runs;
                        if (sends == Sends::Samples &&
                            !side.waitUntil([camera, runs] { return lab::samplesDelivered(camera) >= runs; }))
                            return;
                        kel::Clock::advanceMilliseconds(71000);
                    }
                }
            });
            try {
                webcam.captureFrames(2);
                ADD_FAILURE() << "the capture passed";
            } catch (const sorvane::CaptureException &failure) {
                failure.postEvents();
                facts.result = failure.getResult();
                facts.errorCode = static_cast<long>(failure.getErrorCode());
            }
        }
        facts.events.assign(recorder().events.begin() + static_cast<std::ptrdiff_t>(eventsBefore),
                            recorder().events.end());
        facts.libraryErrors = LibraryErrors::since(errorsBefore);
        return facts;
    }
};

} // namespace

TEST_F(SilentCameraExplanationTest, ACameraThatNeverDeliversIsToldFromARefusedStart)
{
    const FailureExplanation::Facts facts = capture(kSilent, Sends::Nothing);
    EXPECT_EQ(ruvo::TestResult::FAIL(), facts.result);
    // The time-out is retried on the next capability; after the last one only the shortfall is posted.
    ASSERT_EQ(1u, facts.events.size());
    EXPECT_EQ(sorvane::test::narrow(facts.events.front().key), "ErrorCapturingFrames");
    EXPECT_EQ(FailureExplanation::of(facts), kTimedOut);
}

TEST_F(SilentCameraExplanationTest, ACameraThatStopsOrSendsEmptySamplesIsSaidSo)
{
    {
        lab::DeviceOverride stops(kYuy2, L"fault.stopafter", L"1");
        const FailureExplanation::Facts facts = capture(kYuy2, Sends::Samples);
        EXPECT_EQ(ruvo::TestResult::FAIL(), facts.result);
        // A timed-out attempt keeps none of its frames: the one frame sent is not counted.
        EXPECT_EQ(FailureExplanation::of(facts), kTimedOut);
    }
    {
        lab::DeviceOverride empty(kYuy2, L"fault.zerolength", L"yes");
        const FailureExplanation::Facts facts = capture(kYuy2, Sends::Samples);
        EXPECT_EQ(ruvo::TestResult::FAIL(), facts.result);
        EXPECT_EQ(FailureExplanation::of(facts),
                  L"What happened: the device sent samples with nothing in them, so no frame could be kept.");
        // One line however many empty samples came.
        size_t emptyLines = 0;
        for (const std::wstring &line : facts.libraryErrors)
            emptyLines += line.find(L"GetActualDataLength returned <= 0.") != std::wstring::npos;
        EXPECT_EQ(1u, emptyLines);
    }
}
