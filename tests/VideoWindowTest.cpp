// The video window on the lab's camera: its class, the video following the window's size,
// the size fitted to a picture, the user closing it, and runs whose window cannot be set up.
#include "LabDeviceRecord.h"
#include "LabTest.h"
#include "ManualClock.h"
#include "Outcome.h"
#include "PlainCapture.h"
#include "SideThread.h"
#include "WindowCreationRefusal.h"
#include "WindowWatcher.h"

#include <ModuleRegistration.h>
#include <lab/LabControl.h>

namespace {

using ruvo::TestResult;
using sorvane::CaptureException;
using sorvane::test::PlainCapture;
using sorvane::test::SideThread;
using sorvane::test::WindowWatcher;

const wchar_t kCamera[] = L"Lab Webcam RGB24 Top-Down";
const wchar_t kTitle[] = L"Video window test";
const wchar_t *const kWindowClass = sorvane::test::kCaptureWindowClass;

class VideoWindowTest : public sorvane::test::LabTest {
protected:
    // Discovery binds the camera before the journal is cleared for the first test.
    static void SetUpTestSuite() { sorvane::test::LabDeviceRecord::discover(); }

    void SetUp() override
    {
        LabTest::SetUp();
        lab::clearJournal(kCamera);
    }

    void TearDown() override
    {
        capture.cleanUpAll();
        LabTest::TearDown();
    }

    size_t logCount(const wchar_t *text) { return log().find(kel::String(text)).size(); }
    bool journalHas(const std::wstring &entry) const { return lab::journalHas(kCamera, entry); }
    // A graph with the camera rendered to the default video renderer, as a preview has it.
    void buildPreview()
    {
        capture.setupGraph();
        capture.setupDevice();
        capture.renderToScreen();
    }
    CComPtr<IVideoWindow> videoWindow() const
    {
        CComPtr<IVideoWindow> video;
        if (capture.graph())
            CComPtr<IGraphBuilder>(capture.graph()).QueryInterface(&video);
        return video;
    }

    PlainCapture capture{sorvane::test::LabDeviceRecord::find(kCamera, ruvo::DeviceCapability::VideoCapture()),
                         kel::String(kTitle)};
};

bool samplesArrived()
{
    return lab::samplesDelivered(kCamera) > 0;
}

TEST_F(VideoWindowTest, VideoFillsTheWindowOnceTheWindowKnowsItsObject)
{
    buildPreview();
    capture.setupWindow();
    ASSERT_NE(capture.window(), nullptr);
    EXPECT_NE(GetClassLongPtrW(capture.window(), GCLP_HICON), 0) << "the class has the library's icon 100";
    // CreateWindow sends WM_SIZE before the object is stored: it goes straight to DefWindowProc.
    EXPECT_EQ(logCount(L"resizeVideoWindow to "), 0u);

    ASSERT_TRUE(SetWindowPos(capture.window(), nullptr, 0, 0, 500, 400, SWP_NOMOVE | SWP_NOZORDER));
    RECT client = {};
    GetClientRect(capture.window(), &client);
    long left = -1, top = -1, width = 0, height = 0;
    // The size is what the window was given; Wine reports the position shifted by the frame
    // its renderer window keeps, so only the size is compared.
    ASSERT_EQ(videoWindow()->GetWindowPosition(&left, &top, &width, &height), S_OK);
    EXPECT_EQ(width, client.right);
    EXPECT_EQ(height, client.bottom);
    EXPECT_EQ(logCount(L"resizeVideoWindow to "), 1u);
}

TEST_F(VideoWindowTest, FittingTheWindowToAPictureMeasuresTwiceOnlyAboveTheMinimumWidth)
{
    buildPreview();
    capture.setupWindow();
    const HWND window = capture.window();
    const auto fits = [this] { return logCount(L"> resizeWindowForClient"); };
    // A height that keeps the outer height as it is, so only the width can ask for a second look.
    const auto sameOuterHeight = [window] {
        RECT client = {};
        GetClientRect(window, &client);
        return static_cast<int>(client.bottom) - GetSystemMetrics(SM_CYBORDER);
    };

    capture.resizeWindowForClient(320, 240);
    RECT client = {};
    GetClientRect(window, &client);
    EXPECT_EQ(client.right, 320);
    EXPECT_EQ(fits(), 2u) << "the outer size changed: measured again";

    size_t before = fits();
    capture.resizeWindowForClient(GetSystemMetrics(SM_CXMIN) - 1, sameOuterHeight());
    EXPECT_EQ(fits() - before, 1u) << "below the minimum width a differing width is not measured again";

    before = fits();
    capture.resizeWindowForClient(GetSystemMetrics(SM_CXMIN) + 80, sameOuterHeight());
    EXPECT_EQ(fits() - before, 2u);
    GetClientRect(window, &client);
    EXPECT_EQ(client.right, GetSystemMetrics(SM_CXMIN) + 80);
}

TEST_F(VideoWindowTest, ClosingTheWindowReleasesTheGraphAtOnceAndThePreviewEndsOnTime)
{
    sorvane::test::ManualClock clock;
    setParameter("TestRunTime", 2u);
    bool stoppedBeforeTheTime = false;
    {
        SideThread user([&](SideThread &side) {
            HWND window = nullptr;
            if (!side.waitUntil([&] {
                    const std::vector<HWND> windows = WindowWatcher::findInThisProcess(kWindowClass);
                    window = windows.empty() ? nullptr : windows[0];
                    return window && IsWindowVisible(window) && samplesArrived();
                }))
                return;
            PostMessageW(window, WM_CLOSE, 0, 0);
            stoppedBeforeTheTime = side.waitUntil([this] { return journalHas(L"Stop"); });
            clock.advance(2001);
        });
        const CaptureException e = sorvane::test::outcomeOf([&] { capture.captureToScreen(); });
        EXPECT_EQ(e.getResult(), TestResult::PASS());
    }
    EXPECT_TRUE(stoppedBeforeTheTime);
    EXPECT_EQ(logCount(L"callMethodWithRetries catches"), 0u);
}

TEST_F(VideoWindowTest, WindowSetUpFailuresRaiseTheWindowWarning)
{
    // No window can be made.
    buildPreview();
    {
        sorvane::test::WindowCreationRefusal refused(kWindowClass);
        ASSERT_TRUE(refused.active());
        const CaptureException e = sorvane::test::outcomeOf([&] { capture.setupWindow(); });
        EXPECT_EQ(e.getResult(), TestResult::FAIL());
        EXPECT_EQ(e.getWarningEvent(), sorvane::g_warningWindowSetupProblem);
        EXPECT_EQ(e.getErrorEvent(), nullptr);
    }
    EXPECT_EQ(logCount(L"CreateWindow failed."), 1u);
    capture.cleanUpAll();

    // A graph without a renderer has no video window to give an owner.
    capture.setupGraph();
    capture.setupDevice();
    const CaptureException e = sorvane::test::outcomeOf([&] { capture.setupWindow(); });
    EXPECT_EQ(e.getResult(), TestResult::FAIL());
    EXPECT_EQ(e.getWarningEvent(), sorvane::g_warningWindowSetupProblem);
    EXPECT_EQ(logCount(L"put_Owner failed: "), 1u);
}

TEST_F(VideoWindowTest, RunWithoutItsWindowStopsBeforeTheGraphOrGoesOnHidden)
{
    buildPreview();
    sorvane::test::WindowCreationRefusal refused(kWindowClass);

    const CaptureException e = sorvane::test::outcomeOf([&] { capture.run(&samplesArrived, true, false); });
    EXPECT_EQ(e.getWarningEvent(), sorvane::g_warningWindowSetupProblem);
    EXPECT_FALSE(journalHas(L"Pause")) << "the graph was started";

    capture.run(&samplesArrived, true, true);
    EXPECT_EQ(logCount(L"unable to setupWindow, continuing"), 1u);
    EXPECT_TRUE(journalHas(L"Run"));
    EXPECT_EQ(capture.window(), nullptr);
}

} // namespace
