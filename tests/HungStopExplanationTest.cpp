// A camera whose driver hangs when the capture stops: the library waits in the graph's Stop
// without a word. What the console host shows during that wait, and what it says afterwards,
// is checked here in-process, so that the frame time-out runs on the framework's manual clock
// and the driver's hang ends as soon as the test has seen what it waits for.
#include "FrameworkTest.h"
#include "LabDeviceRecord.h"
#include "ManualClock.h"
#include "SideThread.h"

#include <CaptureException.h>
#include <Webcam.h>
#include <lab/LabControl.h>

#include <sorvane-diag/DeviceStopWait.h>
#include <sorvane-diag/FailureExplanation.h>
#include <sorvane-diag/LibraryErrors.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <mutex>

namespace {

using sorvane::diag::DeviceStopWait;
using sorvane::diag::FailureExplanation;
using sorvane::diag::LibraryErrors;

const wchar_t kHung[] = L"Lab Webcam Hung";

// The notes a person would see on the bar, in order.
class ShownNotes {
public:
    void add(long seconds)
    {
        std::lock_guard<std::mutex> hold(m_lock);
        m_notes.push_back(DeviceStopWait::note(seconds, false));
    }
    std::vector<std::wstring> notes() const
    {
        std::lock_guard<std::mutex> hold(m_lock);
        return m_notes;
    }
    bool shows(const std::wstring &note) const
    {
        const std::vector<std::wstring> all = notes();
        return !all.empty() && all.back() == note;
    }

private:
    mutable std::mutex m_lock;
    std::vector<std::wstring> m_notes;
};

class HungStopExplanationTest : public sorvane::test::FrameworkTest {
protected:
    // Discovery binds every camera before the test reads the journal.
    static void SetUpTestSuite() { sorvane::test::LabDeviceRecord::discover(); }

    void SetUp() override
    {
        FrameworkTest::SetUp();
        LibraryErrors::start();
        LibraryErrors::setListener(&DeviceStopWait::libraryLine);
    }
    void TearDown() override
    {
        LibraryErrors::setListener(LibraryErrors::Listener());
        LibraryErrors::stop();
        FrameworkTest::TearDown();
    }
};

} // namespace

TEST_F(HungStopExplanationTest, TheWaitForADeviceToStopIsShownAndCounted)
{
    sorvane::test::ManualClock clock;
    lab::clearJournal(kHung);
    ShownNotes shown;
    DeviceStopWait stopWait([&shown](long seconds) { shown.add(seconds); });
    const ruvo::DiagDevice device = sorvane::test::LabDeviceRecord::find(kHung, ruvo::DeviceCapability::VideoCapture());
    sorvane::Webcam webcam(device, kel::String(L"Hung camera"), 0);
    const size_t errorsBefore = LibraryErrors::count();
    const size_t eventsBefore = recorder().events.size();
    FailureExplanation::Facts facts;
    facts.phase = L"capture";
    // Lifted once the notes were seen; kept until the capture has cleaned up.
    std::unique_ptr<lab::DeviceOverride> released;
    {
        sorvane::test::SideThread driver([&](sorvane::test::SideThread &side) {
            // Past the 70 s two frames may take: the library gives up and stops the camera.
            if (!side.waitUntil([] {
                    const std::vector<std::wstring> entries = lab::journal(kHung);
                    return std::find(entries.begin(), entries.end(), L"Run") != entries.end();
                }))
                return;
            clock.advance(71000);
            if (!side.waitUntil([&stopWait] { return stopWait.stopping(); }))
                return;
            // The driver keeps Stop for two minutes: the bar counts them.
            long shownSeconds = 0;
            for (const long seconds : {1, 2, 5, 120}) {
                clock.advance(static_cast<uint64_t>(seconds - shownSeconds) * 1000);
                shownSeconds = seconds;
                if (!side.waitUntil([&shown, seconds] { return shown.shows(DeviceStopWait::note(seconds, false)); }))
                    return;
            }
            released.reset(new lab::DeviceOverride(kHung, L"fault.stopdelay", L"0"));
        });
        try {
            webcam.captureFrames(2);
            ADD_FAILURE() << "the capture passed";
        } catch (const sorvane::CaptureException &failure) {
            DeviceStopWait::testEnded();
            failure.postEvents();
            facts.result = failure.getResult();
            facts.errorCode = static_cast<long>(failure.getErrorCode());
        }
    }
    EXPECT_EQ((std::vector<std::wstring>{L"stopping the device: 1 s (Ctrl+C twice quits)",
                                         L"stopping the device: 2 s (Ctrl+C twice quits)",
                                         L"stopping the device: 5 s (Ctrl+C twice quits)",
                                         L"stopping the device: 120 s (Ctrl+C twice quits)"}),
              shown.notes());
    EXPECT_EQ(L"stopping the device: 7 s (Ctrl+C again quits)", DeviceStopWait::note(7, true));

    facts.events.assign(recorder().events.begin() + static_cast<std::ptrdiff_t>(eventsBefore), recorder().events.end());
    facts.libraryErrors = LibraryErrors::since(errorsBefore);
    facts.stoppingSeconds = DeviceStopWait::notableSeconds();
    EXPECT_EQ(120, facts.stoppingSeconds);
    EXPECT_EQ(FailureExplanation::of(facts),
              L"What happened: the device started but did not deliver the 2 frames asked for within the library's "
              L"time-out of 70 seconds: a camera that sends nothing, or stops sending, looks like this. Stopping the "
              L"device then took 120 s: its driver hangs when the capture stops (a second Ctrl+C quits without "
              L"waiting for it).");
}
