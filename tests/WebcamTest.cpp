// Webcam frame capture end to end on the lab's simulated cameras: the capability chosen, the
// frames and their description, the settling delay, time-outs and rebuilds, the graph wiring,
// the privacy shutter, and everything released afterwards.
#include "LabTest.h"
#include "LabDeviceRecord.h"
#include "Outcome.h"
#include "ManualClock.h"
#include "ProgramCopies.h"
#include "RefusedClass.h"
#include "SampleGrabberFault.h"
#include "RunningProgram.h"
#include "SideThread.h"

#include <ModuleRegistration.h>
#include <SdkGuids.h>
#include <Webcam.h>
#include <lab/FrameMark.h>
#include <lab/LabClassIds.h>
#include <lab/LabControl.h>

#include <boost/weak_ptr.hpp>
#include <atomic>
#include <functional>
#include <string>
#include <thread>

namespace {

using ruvo::TestResult;
using sorvane::CaptureException;
using sorvane::Webcam;

const wchar_t kRgb24Camera[] = L"Lab Webcam RGB24";
const wchar_t kTopDownCamera[] = L"Lab Webcam RGB24 Top-Down";
const wchar_t kYuy2Camera[] = L"Lab Webcam YUY2";
const wchar_t kUyvyCamera[] = L"Lab Webcam UYVY";
const wchar_t kMjpgCamera[] = L"Lab Webcam MJPG";
const wchar_t kYuy2MjpgCamera[] = L"Lab Webcam YUY2 MJPG";

kel::String text(const wchar_t *value)
{
    return kel::String(value);
}

// The framework's record of the lab camera with this friendly name, as an enumerator makes it.
ruvo::DiagDevice labWebcam(const wchar_t *friendlyName)
{
    return sorvane::test::LabDeviceRecord::find(friendlyName, ruvo::DeviceCapability::VideoCapture() |
                                                                  ruvo::DeviceCapability::Webcam());
}

// The camera's journal entries that begin with `prefix`, in order.
std::vector<std::wstring> journalOf(const std::wstring &device, const std::wstring &prefix)
{
    std::vector<std::wstring> entries;
    for (const std::wstring &entry : lab::journal(device)) {
        if (entry.compare(0, prefix.size(), prefix) == 0)
            entries.push_back(entry);
    }
    return entries;
}

lab::PixelLayout layoutOf(const Webcam::FrameInfo &info)
{
    switch (info.format) {
    case Webcam::FrameInfo::FORMAT_YUY2:
        return lab::PixelLayout::Yuy2;
    case Webcam::FrameInfo::FORMAT_UYVY:
        return lab::PixelLayout::Uyvy;
    default:
        return lab::PixelLayout::Rgb24;
    }
}

// The lab's frame numbers of the frames, in order; -1 for a frame without the lab's mark.
std::vector<long> frameNumbers(const Webcam::FrameList &frames, const Webcam::FrameInfo &info)
{
    std::vector<long> numbers;
    for (const boost::shared_ptr<unsigned char> &frame : frames) {
        lab::FrameView view = {frame.get(), 0, layoutOf(info), info.width, info.height, info.bottomUp};
        view.length = view.stride() * info.height;
        unsigned long number = 0;
        numbers.push_back(lab::readFrameNumber(view, number) ? static_cast<long>(number) : -1);
    }
    return numbers;
}

std::vector<long> consecutiveFrom(long first, size_t count)
{
    std::vector<long> numbers;
    for (size_t i = 0; i < count; ++i)
        numbers.push_back(first + static_cast<long>(i));
    return numbers;
}

// A webcam as a test module that looks inside would derive it: it reads the privacy shutter
// once the camera is found, notes the filters of each graph it wires, and can cut a run short.
class ObservedWebcam : public Webcam {
public:
    ObservedWebcam(const ruvo::DiagDevice &device, unsigned int captureDelay = 0)
        : Webcam(device, kel::String(L"Webcam test"), captureDelay)
    {
    }

    bool readPrivacy = false;
    long privacyValue = -1;
    long privacyFlags = -1;
    // The class IDs of the filters in the graph after each wiring.
    std::vector<std::vector<CLSID>> wiredGraphs;
    // Ends each run once the camera delivered this many samples; 0 leaves runs alone.
    long long stopRunAfterSamples = 0;
    // Makes the grabber take RGB24 only, whatever the camera sends.
    bool grabberTakesOnlyRgb24 = false;

    using Webcam::doCaptureFrames;
    using Webcam::isRecoverable;

protected:
    void setupDevice() override
    {
        Webcam::setupDevice();
        if (readPrivacy)
            getPrivacy(privacyValue, privacyFlags);
    }

    void setupSampleGrabber() override
    {
        Webcam::setupSampleGrabber();
        if (!grabberTakesOnlyRgb24)
            return;
        AM_MEDIA_TYPE rgb24 = {};
        rgb24.majortype = MEDIATYPE_Video;
        rgb24.subtype = MEDIASUBTYPE_RGB24;
        m_sampleGrabber->SetMediaType(&rgb24);
    }

    void renderToSaver() override
    {
        Webcam::renderToSaver();
        wiredGraphs.push_back(filterClasses());
    }

    void run(boost::function<bool()> stopCondition, bool withWindow, bool continueWithoutWindow) override
    {
        if (stopRunAfterSamples == 0)
            return Webcam::run(stopCondition, withWindow, continueWithoutWindow);
        const std::wstring device = m_device.name().c_str();
        const long long enough = stopRunAfterSamples;
        Webcam::run([device, enough] { return lab::samplesDelivered(device) >= enough; }, withWindow,
                    continueWithoutWindow);
    }

private:
    std::vector<CLSID> filterClasses() const
    {
        std::vector<CLSID> classes;
        CComPtr<IEnumFilters> filters;
        if (FAILED(m_graphManager->EnumFilters(&filters)))
            return classes;
        CComPtr<IBaseFilter> filter;
        while (filters->Next(1, &filter, nullptr) == S_OK) {
            CLSID id = GUID_NULL;
            filter->GetClassID(&id);
            classes.push_back(id);
            filter.Release();
        }
        return classes;
    }
};

bool contains(const std::vector<CLSID> &classes, const CLSID &wanted)
{
    for (const CLSID &id : classes) {
        if (IsEqualCLSID(id, wanted))
            return true;
    }
    return false;
}

using sorvane::test::SideThread;

class WebcamTest : public sorvane::test::ComLabTest {
protected:
    // Discovery binds every camera before the journals are cleared for the first test.
    static void SetUpTestSuite() { sorvane::test::LabDeviceRecord::discover(); }

    void SetUp() override
    {
        ComLabTest::SetUp();
        for (const wchar_t *camera :
             {kRgb24Camera, kTopDownCamera, kYuy2Camera, kUyvyCamera, kMjpgCamera, kYuy2MjpgCamera})
            lab::clearJournal(camera);
    }

    // Captures and returns the frames; fails the test on an exception.
    Webcam::FrameList capture(Webcam &webcam, unsigned long long count, Webcam::FrameInfo &info)
    {
        try {
            webcam.captureFrames(count);
        } catch (const CaptureException &e) {
            ADD_FAILURE() << "captureFrames threw " << sorvane::test::narrow(e.toString());
        }
        return webcam.getFrames(info);
    }

    // The exception the capture ends with; a PASS result when there was none.
    CaptureException captureFailure(Webcam &webcam, unsigned long long count)
    {
        return sorvane::test::outcomeOf([&] { webcam.captureFrames(count); });
    }

    CaptureException captureFailure(const wchar_t *camera, unsigned long long count)
    {
        Webcam webcam(labWebcam(camera), text(L"Webcam test"), 0);
        return captureFailure(webcam, count);
    }

    size_t logCount(const wchar_t *message) { return log().find(text(message)).size(); }
};

struct FormatCase {
    const wchar_t *camera;
    int32_t width;
    int32_t height;
    int32_t format;
    bool bottomUp;
    const wchar_t *firstFormatSet;
};

TEST_F(WebcamTest, FramesOfEachFormatComeBackInOrderFromTheLargestCapability)
{
    const FormatCase cases[] = {
        {kRgb24Camera, 640, 480, Webcam::FrameInfo::FORMAT_RGB24, true, L"SetFormat RGB24 640x480"},
        {kTopDownCamera, 320, 240, Webcam::FrameInfo::FORMAT_RGB24, false, L"SetFormat RGB24 320x240"},
        {kYuy2Camera, 640, 480, Webcam::FrameInfo::FORMAT_YUY2, false, L"SetFormat YUY2 640x480"},
        {kUyvyCamera, 640, 480, Webcam::FrameInfo::FORMAT_UYVY, false, L"SetFormat UYVY 640x480"},
    };
    for (const FormatCase &c : cases) {
        SCOPED_TRACE(sorvane::test::narrow(text(c.camera)));
        Webcam webcam(labWebcam(c.camera), text(L"Webcam test"), 0);
        Webcam::FrameInfo info;
        const Webcam::FrameList frames = capture(webcam, 5, info);

        EXPECT_EQ(info.width, c.width);
        EXPECT_EQ(info.height, c.height);
        EXPECT_EQ(info.format, c.format);
        EXPECT_FALSE(info.isJpeg);
        EXPECT_EQ(info.bottomUp, c.bottomUp);
        // Without a settling delay the run's very first sample is kept.
        EXPECT_EQ(frameNumbers(frames, info), consecutiveFrom(0, 5));
        const std::vector<std::wstring> formatsSet = journalOf(c.camera, L"SetFormat");
        ASSERT_EQ(formatsSet.size(), 1u);
        EXPECT_EQ(formatsSet[0].compare(0, wcslen(c.firstFormatSet), c.firstFormatSet), 0) << formatsSet[0].c_str();
    }
    EXPECT_TRUE(recorder().events.empty());
}

TEST_F(WebcamTest, YuvIsPreferredToMotionJpegAndOnlyItsGroupIsTried)
{
    {
        Webcam webcam(labWebcam(kYuy2MjpgCamera), text(L"Webcam test"), 0);
        Webcam::FrameInfo info;
        const Webcam::FrameList frames = capture(webcam, 3, info);
        EXPECT_EQ(info.format, Webcam::FrameInfo::FORMAT_YUY2);
        EXPECT_EQ(info.width, 320);
        EXPECT_EQ(frameNumbers(frames, info), consecutiveFrom(0, 3));
    }
    // The one YUY2 capability refused: the capture fails although MJPG was on offer.
    lab::clearJournal(kYuy2MjpgCamera);
    lab::DeviceOverride refuse(kYuy2MjpgCamera, L"fault.setformat", L"1");
    const CaptureException failure = captureFailure(kYuy2MjpgCamera, 3);
    EXPECT_EQ(failure.getResult(), TestResult::FAIL());
    EXPECT_EQ(failure.getErrorEvent(), sorvane::g_errorCapturingFrames);
    EXPECT_EQ(journalOf(kYuy2MjpgCamera, L"SetFormat"),
              std::vector<std::wstring>{L"SetFormat refused YUY2 320x240 30fps"});
    EXPECT_EQ(logCount(L"callMethodWithRetries, tryNum"), 0u);
}

TEST_F(WebcamTest, CaptureDelayDropsTheFirstFramesAndFramesBeyondTheCountAreNotKept)
{
    ObservedWebcam webcam(labWebcam(kYuy2Camera), 500);
    Webcam::FrameInfo info;
    const Webcam::FrameList frames = capture(webcam, 4, info);
    const std::vector<long> numbers = frameNumbers(frames, info);
    ASSERT_EQ(numbers.size(), 4u);
    // Half a second at 30 frames a second goes by before the first frame is kept.
    EXPECT_GE(numbers[0], 12);
    EXPECT_EQ(numbers, consecutiveFrom(numbers[0], 4));
    EXPECT_TRUE(log().contains(text(L"SampleGrabberCallback ctor, captureDelay = 500")));
    EXPECT_TRUE(log().contains(text(L"Got 4 of 4 frames")));
}

TEST_F(WebcamTest, CountZeroTriesNoCapabilityAndKeepsTheEarlierFrames)
{
    Webcam webcam(labWebcam(kRgb24Camera), text(L"Webcam test"), 0);
    Webcam::FrameInfo info;
    const Webcam::FrameList first = capture(webcam, 2, info);
    lab::clearJournal(kRgb24Camera);

    const Webcam::FrameList again = capture(webcam, 0, info);
    EXPECT_EQ(again, first);
    EXPECT_TRUE(journalOf(kRgb24Camera, L"SetFormat").empty());
    EXPECT_TRUE(log().contains(text(L"returning 2 frames")));
}

TEST_F(WebcamTest, TimedOutCapabilityIsFollowedByARebuiltGraphAndTheNextCapability)
{
    sorvane::test::ManualClock clock;
    lab::DeviceOverride silent(kYuy2Camera, L"fault.nosamples", L"yes");
    Webcam webcam(labWebcam(kYuy2Camera), text(L"Webcam test"), 0);
    Webcam::FrameInfo info;
    Webcam::FrameList frames;
    {
        // Once the camera runs, the clock moves past the 60 + 3 x 5 seconds three frames may
        // take; once that run has stopped, the camera delivers again.
        SideThread timeOut([](SideThread &side) {
            if (!side.waitUntil([] { return lab::journalHas(kYuy2Camera, L"Run"); }))
                return;
            kel::Clock::advanceMilliseconds(76000);
            if (!side.waitUntil([] { return lab::journalHas(kYuy2Camera, L"Stop"); }))
                return;
            LabSetOverride(kYuy2Camera, L"fault.nosamples", nullptr);
        });
        frames = capture(webcam, 3, info);
    }
    EXPECT_EQ(info.width, 320);
    EXPECT_EQ(frameNumbers(frames, info), consecutiveFrom(0, 3));
    EXPECT_EQ(journalOf(kYuy2Camera, L"SetFormat"),
              (std::vector<std::wstring>{L"SetFormat YUY2 640x480 30fps", L"SetFormat YUY2 320x240 30fps"}));
    EXPECT_TRUE(log().contains(text(L"FramesSavedCheck: 75 second timeout hit")));
    EXPECT_TRUE(log().contains(text(L"doCaptureFrames timed out")));
    EXPECT_TRUE(log().contains(text(L"retrying after rebuilding the DirectShow/COM universe...")));
    EXPECT_EQ(logCount(L"callMethodWithRetries, tryNum"), 0u);
    // Each of the two capabilities owns a quarter of the bar, counted as progress / 50: the
    // first never gets past 1 %, the second starts at 25 %.
    ASSERT_FALSE(recorder().percents.empty());
    EXPECT_LE(recorder().percents.front(), 1);
    EXPECT_EQ(recorder().percents.back(), 25);
    for (int percent : recorder().percents)
        EXPECT_TRUE(percent <= 1 || percent == 25) << percent;
}

TEST_F(WebcamTest, ShortfallAfterACompletedRunEndsTheCaptureAtOnce)
{
    ObservedWebcam webcam(labWebcam(kYuy2Camera));
    webcam.stopRunAfterSamples = 2;
    const CaptureException failure = captureFailure(webcam, 30);
    EXPECT_EQ(failure.getResult(), TestResult::FAIL());
    EXPECT_EQ(failure.getErrorEvent(), sorvane::g_errorCapturingFrames);
    // Neither the next capability nor a second attempt.
    EXPECT_EQ(journalOf(kYuy2Camera, L"SetFormat").size(), 1u);
    EXPECT_EQ(logCount(L"callMethodWithRetries, tryNum"), 0u);
    Webcam::FrameInfo info;
    EXPECT_LT(webcam.getFrames(info).size(), 30u);
}

TEST_F(WebcamTest, EveryCapabilityFailingEndsWithErrorCapturingFrames)
{
    lab::DeviceOverride refuse(kYuy2Camera, L"fault.setformat", L"0, 1");
    const CaptureException failure = captureFailure(kYuy2Camera, 3);
    EXPECT_EQ(failure.getResult(), TestResult::FAIL());
    EXPECT_EQ(failure.getErrorEvent(), sorvane::g_errorCapturingFrames);
    EXPECT_EQ(journalOf(kYuy2Camera, L"SetFormat refused").size(), 2u);
    EXPECT_EQ(logCount(L"retrying after rebuilding the DirectShow/COM universe..."), 2u);
    EXPECT_TRUE(log().contains(text(L"Failed to capture frames for capabilities:")));
    EXPECT_TRUE(log().contains(text(L"Unable to capture 3 frames, got 0")));
}

TEST_F(WebcamTest, CapabilitiesOfEqualWidthAreTriedTallestFirst)
{
    lab::DeviceOverride formats(kYuy2Camera, L"format", L"YUY2 640x360 30\nYUY2 320x240 30\nYUY2 640x480 30");
    Webcam webcam(labWebcam(kYuy2Camera), text(L"Webcam test"), 0);
    Webcam::FrameInfo info;
    ASSERT_EQ(capture(webcam, 2, info).size(), 2u);
    EXPECT_EQ(journalOf(kYuy2Camera, L"SetFormat"), (std::vector<std::wstring>{L"SetFormat YUY2 640x480 30fps"}));
    EXPECT_EQ(info.height, 480);
}

TEST_F(WebcamTest, NullRendererThatCannotBeMadeFailsEveryCapabilityAndEndsTheCapture)
{
    sorvane::test::RefusedClass noRenderer(CLSID_NullRenderer, E_OUTOFMEMORY);
    ASSERT_TRUE(noRenderer.active());
    const CaptureException failure = captureFailure(kRgb24Camera, 2);

    // Each of the camera's two capabilities is tried on a rebuilt graph; the shortfall after
    // the loop is final.
    EXPECT_EQ(noRenderer.refusals(), 2);
    EXPECT_EQ(logCount(L"Unable to create NullRenderer:"), 2u);
    EXPECT_EQ(logCount(L"retrying after rebuilding the DirectShow/COM universe..."), 2u);
    EXPECT_EQ(failure.getResult(), TestResult::FAIL());
    EXPECT_EQ(failure.getErrorEvent(), sorvane::g_errorCapturingFrames);
    EXPECT_EQ(logCount(L"callMethodWithRetries, tryNum"), 0u);
    EXPECT_TRUE(journalOf(kRgb24Camera, L"Run").empty());
}

TEST_F(WebcamTest, GrabberSetUpFailuresFailEachCapabilityAndThenTheCapture)
{
    using sorvane::test::FaultySampleGrabber;
    const struct {
        FaultySampleGrabber::Method method;
        const wchar_t *logged;
    } cases[] = {
        {FaultySampleGrabber::SET_MEDIA_TYPE, L"SampleGrabber SetMediaType failed:"},
        {FaultySampleGrabber::SET_ONE_SHOT, L"SetOneShot failed:"},
        {FaultySampleGrabber::SET_BUFFER_SAMPLES, L"SetBufferSamples failed: "},
        {FaultySampleGrabber::SET_CALLBACK, L"SetCallback failed: "},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(sorvane::test::narrow(text(c.logged)));
        const size_t loggedBefore = logCount(c.logged);
        lab::clearJournal(kRgb24Camera);
        sorvane::test::SampleGrabberFault fault(c.method, E_UNEXPECTED);
        ASSERT_TRUE(fault.active());

        const CaptureException failure = captureFailure(kRgb24Camera, 2);

        // Both capabilities are tried, each with a grabber of its own, and neither runs.
        EXPECT_EQ(fault.grabbersMade(), 2);
        EXPECT_EQ(logCount(c.logged) - loggedBefore, 2u);
        EXPECT_EQ(failure.getResult(), TestResult::FAIL());
        EXPECT_EQ(failure.getErrorEvent(), sorvane::g_errorCapturingFrames);
        EXPECT_TRUE(journalOf(kRgb24Camera, L"Run").empty());
    }
}

TEST_F(WebcamTest, AbortedCodeAndTheUsersFailAnswerAreNotRetriedOnTheNextCapability)
{
    ObservedWebcam webcam(labWebcam(kRgb24Camera));
    // 995 is compared as the plain Win32 number, whatever the result and event.
    EXPECT_FALSE(
        webcam.isRecoverable(CaptureException(TestResult::FAIL(), 995, sorvane::g_errorCreatingFilterGraph, nullptr)));
    EXPECT_TRUE(webcam.isRecoverable(
        CaptureException(TestResult::FAIL(), HRESULT_FROM_WIN32(995), sorvane::g_errorCreatingFilterGraph, nullptr)));
    EXPECT_FALSE(webcam.isRecoverable(CaptureException(TestResult::FAIL(), 0, sorvane::g_userClickedFail, nullptr)));
    EXPECT_FALSE(
        webcam.isRecoverable(CaptureException(TestResult::FAIL(), 0, sorvane::g_errorCapturingFrames, nullptr)));
    EXPECT_FALSE(
        webcam.isRecoverable(CaptureException(TestResult::DEVICEBUSY(), 0, nullptr, sorvane::g_fastAccessRunning)));
    // A time-out goes on to the next capability.
    EXPECT_TRUE(webcam.isRecoverable(CaptureException(TestResult::FAIL(), 0, sorvane::g_errorNoSignal, nullptr)));
}

TEST_F(WebcamTest, NoUsableCapabilityCannotRun)
{
    lab::DeviceOverride formats(kYuy2Camera, L"format", L"RGB32 640x480 30");
    const CaptureException failure = captureFailure(kYuy2Camera, 3);
    EXPECT_EQ(failure.getResult(), TestResult::CANNOTRUN());
    EXPECT_EQ(failure.getErrorEvent(), sorvane::g_errorCreatingFilterGraph);
    EXPECT_TRUE(log().contains(text(L"No supported capability found.")));
    EXPECT_TRUE(journalOf(kYuy2Camera, L"SetFormat").empty());
    EXPECT_EQ(logCount(L"callMethodWithRetries, tryNum"), 0u);
}

TEST_F(WebcamTest, CameraHeldElsewhereOrMediaCenterRunningCannotRun)
{
    {
        // Starting the camera fails: no other capability and no other attempt is tried.
        lab::DeviceOverride held(kYuy2Camera, L"fault.run", L"0x800705AA");
        const CaptureException failure = captureFailure(kYuy2Camera, 3);
        EXPECT_EQ(failure.getResult(), TestResult::CANNOTRUN());
        EXPECT_EQ(failure.getWarningEvent(), sorvane::g_errorDeviceInUse);
        EXPECT_EQ(journalOf(kYuy2Camera, L"SetFormat").size(), 1u);
        EXPECT_EQ(logCount(L"callMethodWithRetries, tryNum"), 0u);
    }
    lab::clearJournal(kYuy2Camera);
    sorvane::test::ProgramCopies copies;
    sorvane::test::RunningProgram mediaCenter(copies.copyAs(L"ehshell.exe"));
    ASSERT_TRUE(mediaCenter.started());
    const CaptureException failure = captureFailure(kYuy2Camera, 3);
    EXPECT_EQ(failure.getResult(), TestResult::CANNOTRUN());
    EXPECT_EQ(failure.getWarningEvent(), sorvane::g_mediaCenterIsRunning);
    EXPECT_TRUE(lab::journal(kYuy2Camera).empty());
}

TEST_F(WebcamTest, StreamConfigurationFailuresBeforeTheLoop)
{
    sorvane::test::ManualClock clock;
    {
        // A wrong capability size fails the attempt, and each retry again.
        lab::DeviceOverride size(kYuy2Camera, L"fault.capssize", L"100");
        const CaptureException failure = captureFailure(kYuy2Camera, 3);
        EXPECT_EQ(failure.getResult(), TestResult::FAIL());
        EXPECT_EQ(failure.getErrorEvent(), sorvane::g_errorCreatingFilterGraph);
        EXPECT_EQ(logCount(L"Capability size != sizeof(VIDEO_STREAM_CONFIG_CAPS)"), 11u);
        EXPECT_EQ(clock.sleeps(), std::vector<uint32_t>(10, 100));
    }
    {
        // A capability that cannot be read is skipped.
        lab::DeviceOverride unreadable(kYuy2Camera, L"fault.getstreamcaps", L"0");
        Webcam webcam(labWebcam(kYuy2Camera), text(L"Webcam test"), 0);
        Webcam::FrameInfo info;
        EXPECT_EQ(capture(webcam, 2, info).size(), 2u);
        EXPECT_EQ(info.width, 320);
        EXPECT_TRUE(log().contains(text(L"Failed to fetch capability 0")));
    }
}

TEST_F(WebcamTest, PrivacyIsReadAndLeftOffWhereTheCameraHasIt)
{
    {
        lab::DeviceOverride closed(kRgb24Camera, L"privacy", L"1");
        ObservedWebcam webcam(labWebcam(kRgb24Camera));
        webcam.readPrivacy = true;
        Webcam::FrameInfo info;
        EXPECT_EQ(capture(webcam, 2, info).size(), 2u);
        EXPECT_EQ(webcam.privacyValue, 1);
        EXPECT_EQ(journalOf(kRgb24Camera, L"Privacy"), std::vector<std::wstring>{L"Privacy 0 1"});
    }
    // No camera control at all, and camera control without the privacy property.
    for (const wchar_t *camera : {kTopDownCamera, kYuy2Camera}) {
        SCOPED_TRACE(sorvane::test::narrow(text(camera)));
        ObservedWebcam webcam(labWebcam(camera));
        webcam.readPrivacy = true;
        Webcam::FrameInfo info;
        EXPECT_EQ(capture(webcam, 2, info).size(), 2u);
        EXPECT_EQ(webcam.privacyValue, -1);
        EXPECT_EQ(webcam.privacyFlags, -1);
        EXPECT_TRUE(journalOf(camera, L"Privacy").empty());
    }
    EXPECT_TRUE(log().contains(text(L"Web Camera Control not supported")));
    EXPECT_TRUE(log().contains(text(L"KSPROPERTY_CAMERACONTROL_PRIVACY not supported")));
}

TEST_F(WebcamTest, UncompressedCapabilitiesAreWiredByTwoDirectConnections)
{
    ObservedWebcam webcam(labWebcam(kYuy2Camera));
    Webcam::FrameInfo info;
    capture(webcam, 2, info);
    ASSERT_EQ(webcam.wiredGraphs.size(), 1u);
    EXPECT_EQ(webcam.wiredGraphs[0].size(), 3u);
    EXPECT_TRUE(contains(webcam.wiredGraphs[0], CLSID_NullRenderer));
    EXPECT_TRUE(contains(webcam.wiredGraphs[0], CLSID_SampleGrabber));
    EXPECT_TRUE(contains(webcam.wiredGraphs[0], lab::CLSID_LabWebcam));
    EXPECT_TRUE(log().contains(text(L"using ConnectDirect")));
    EXPECT_FALSE(log().contains(text(L"using RenderStream")));
}

TEST_F(WebcamTest, MotionJpegIsDecodedForAGrabberThatAsksForRgb24)
{
    ObservedWebcam webcam(labWebcam(kMjpgCamera));
    Webcam::FrameInfo info;
    const Webcam::FrameList frames = capture(webcam, 3, info);
    // The frames are described as the grabber received them: decoded.
    EXPECT_EQ(info.format, Webcam::FrameInfo::FORMAT_RGB24);
    EXPECT_FALSE(info.isJpeg);
    EXPECT_EQ(info.width, 640);
    EXPECT_EQ(info.height, 480);
    EXPECT_EQ(frameNumbers(frames, info), consecutiveFrom(0, 3));
    ASSERT_EQ(webcam.wiredGraphs.size(), 1u);
    EXPECT_TRUE(contains(webcam.wiredGraphs[0], lab::CLSID_LabMjpegDecompressor));
    EXPECT_TRUE(log().contains(text(L"using RenderStream")));
    EXPECT_FALSE(log().contains(text(L"using ConnectDirect")));
    EXPECT_TRUE(log().contains(text(L"SampleGrabber used format = MEDIATYPE_Video, MEDIASUBTYPE_RGB24")));
}

TEST_F(WebcamTest, RefusedDirectConnectionFallsBackToRenderStreamOnce)
{
    ObservedWebcam webcam(labWebcam(kYuy2Camera));
    webcam.grabberTakesOnlyRgb24 = true;
    Webcam::FrameInfo info;
    const Webcam::FrameList frames = capture(webcam, 3, info);
    EXPECT_EQ(info.format, Webcam::FrameInfo::FORMAT_RGB24);
    EXPECT_EQ(info.width, 640);
    EXPECT_EQ(frameNumbers(frames, info), consecutiveFrom(0, 3));
    ASSERT_EQ(webcam.wiredGraphs.size(), 1u);
    EXPECT_TRUE(contains(webcam.wiredGraphs[0], lab::CLSID_LabColourConverter));
    EXPECT_EQ(logCount(L"ConnectDirect src->grabber failed."), 1u);
    EXPECT_EQ(logCount(L"Trying RenderStream as fallback"), 1u);
    EXPECT_EQ(logCount(L"using RenderStream"), 1u);
}

TEST_F(WebcamTest, RecordingRendersTheCaptureStreamIntoTheMultiplexer)
{
    sorvane::test::ManualClock clock;
    Webcam webcam(labWebcam(kYuy2Camera), text(L"Webcam test"), 0);
    {
        // The recording's three seconds pass once the camera has delivered a few frames.
        SideThread stopper([](SideThread &side) {
            if (side.waitUntil([] { return lab::samplesDelivered(kYuy2Camera) >= 5; }))
                kel::Clock::advanceMilliseconds(3100);
        });
        try {
            webcam.captureToFile(text(L"WebcamTest"));
        } catch (const CaptureException &e) {
            ADD_FAILURE() << "captureToFile threw " << sorvane::test::narrow(e.toString());
        }
    }
    EXPECT_TRUE(log().contains(text(L"Webcam::doRenderToFile()")));
    wchar_t temp[MAX_PATH];
    ASSERT_NE(GetTempPathW(MAX_PATH, temp), 0u);
    const std::wstring path = std::wstring(temp) + L"WebcamTest.avi";
    HANDLE file = CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr);
    ASSERT_NE(file, INVALID_HANDLE_VALUE);
    char header[12] = {};
    DWORD read = 0;
    ReadFile(file, header, sizeof(header), &read, nullptr);
    CloseHandle(file);
    DeleteFileW(path.c_str());
    ASSERT_EQ(read, sizeof(header));
    EXPECT_EQ(std::string(header, 4), "RIFF");
    EXPECT_EQ(std::string(header + 8, 4), "AVI ");
}

TEST_F(WebcamTest, AStopRequestEndsTheWaitForFramesWithoutARetry)
{
    // The camera never delivers: only the person's stop can end the wait before its minute.
    lab::DeviceOverride silent(kYuy2Camera, L"fault.nosamples", L"yes");
    lab::clearJournal(kYuy2Camera);
    recorder().requestStopAtCheck(1);

    const CaptureException e = captureFailure(kYuy2Camera, 3);

    EXPECT_EQ(e.getResult(), TestResult::USERABORTED());
    EXPECT_EQ(e.getErrorEvent(), nullptr);
    EXPECT_EQ(e.getErrorCode(), 0);
    EXPECT_TRUE(log().contains(text(L"FramesSavedCheck: stop requested")));
    // Neither the next capability nor another attempt is tried.
    EXPECT_EQ(journalOf(kYuy2Camera, L"Run").size(), 1u);
    EXPECT_EQ(journalOf(kYuy2Camera, L"SetFormat").size(), 1u);
    EXPECT_EQ(logCount(L"callMethodWithRetries, tryNum"), 0u);
}

TEST_F(WebcamTest, RecordingWhoseStreamDoesNotRenderIsLeftToTheRun)
{
    sorvane::test::ManualClock clock;
    lab::DeviceOverride unconnectable(kYuy2Camera, L"fault.connect", L"yes");
    Webcam webcam(labWebcam(kYuy2Camera), text(L"Webcam test"), 0);

    const CaptureException e = sorvane::test::outcomeOf([&] { webcam.captureToFile(text(L"WebcamTestUnrendered")); });

    // The failed rendering is only logged; the multiplexer without input then refuses to
    // start, and that is what ends each attempt.
    const std::vector<sorvane::test::LogCapture::Line> lines =
        log().find(text(L"RenderStream(PIN_CATEGORY_CAPTURE, MEDIATYPE_Video, m_srcFilter, NULL, m_mux) returns"));
    ASSERT_EQ(lines.size(), 11u);
    EXPECT_EQ(lines[0].message.find(text(L"returns ")), kel::String::npos) << "no blank after \"returns\"";
    EXPECT_EQ(e.getResult(), TestResult::FAIL());
    EXPECT_EQ(e.getErrorEvent(), sorvane::g_errorCreatingFilterGraph);
    EXPECT_EQ(e.getErrorCode(), static_cast<long>(VFW_E_NOT_CONNECTED));
    EXPECT_EQ(log().find(text(L"IMediaControl::Run() failed: ")).size(), 11u);
    EXPECT_TRUE(journalOf(kYuy2Camera, L"Run").empty());
    wchar_t temp[MAX_PATH];
    ASSERT_NE(GetTempPathW(MAX_PATH, temp), 0u);
    DeleteFileW((std::wstring(temp) + L"WebcamTestUnrendered.avi").c_str());
}

TEST_F(WebcamTest, FramesAreFreedWithTheirLastOwner)
{
    std::vector<boost::weak_ptr<unsigned char>> watched;
    boost::shared_ptr<unsigned char> kept;
    {
        Webcam webcam(labWebcam(kRgb24Camera), text(L"Webcam test"), 0);
        Webcam::FrameInfo info;
        const Webcam::FrameList frames = capture(webcam, 3, info);
        ASSERT_EQ(frames.size(), 3u);
        watched.assign(frames.begin(), frames.end());
        kept = frames[1];
        // A copy shares the frames rather than copying them.
        Webcam copy(webcam);
        Webcam::FrameInfo copyInfo;
        EXPECT_EQ(copy.getFrames(copyInfo), frames);
        EXPECT_EQ(copyInfo.width, info.width);
    }
    EXPECT_TRUE(watched[0].expired());
    EXPECT_FALSE(watched[1].expired());
    EXPECT_TRUE(watched[2].expired());
    kept.reset();
    EXPECT_TRUE(watched[1].expired());
}

TEST_F(WebcamTest, NothingCapturedYetGivesNoFramesAndLeavesTheDescription)
{
    Webcam webcam(labWebcam(kRgb24Camera), text(L"Webcam test"), 0);
    Webcam::FrameInfo info;
    info.width = 7;
    EXPECT_TRUE(webcam.getFrames(info).empty());
    EXPECT_EQ(info.width, 7);
    EXPECT_TRUE(log().contains(text(L"Unsupported format type: ")));
}

} // namespace
