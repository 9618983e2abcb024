// The capture graph core end to end against the lab: finding devices, preview with its
// window and question, recording, and the run failures that name who holds the device.
#include <sorvane-diag/AviFile.h>
#include "LabTest.h"
#include "ManualClock.h"
#include "Outcome.h"
#include "PlainCapture.h"
#include "ProgramCopies.h"
#include "RefusedClass.h"
#include "RunningProgram.h"
#include "SideThread.h"
#include "WindowWatcher.h"

#include <CaptureDevice.h>
#include <DeviceIdParser.h>
#include <SmartCoInitialize.h>
#include <ModuleRegistration.h>
#include <lab/FrameMark.h>
#include <lab/LabControl.h>

namespace {

using ruvo::TestResult;
using sorvane::CaptureException;
using sorvane::test::narrow;
using sorvane::test::outcomeOf;
using sorvane::test::PlainCapture;
using sorvane::test::WindowWatcher;

const wchar_t kCamera[] = L"Lab Webcam RGB24 Top-Down";
const wchar_t kCameraDescription[] = L"Lab USB camera, RGB24 top-down, no camera control";
const wchar_t kCameraPath[] =
    L"\\\\?\\usb#vid_046d&pid_0826&mi_00#7&1a2c&0&0000#{65e8773d-8f56-11d0-a3b9-00a0c9223196}\\global";
const wchar_t kCameraLocator[] =
    L"USB\\VID_046D&PID_0826&MI_00\\7&1A2C&0&0000\\{65E8773D-8F56-11D0-A3B9-00A0C9223196}\\GLOBAL";
const wchar_t kTitle[] = L"Capture core test";
const wchar_t *const kWindowClass = sorvane::test::kCaptureWindowClass;
const wchar_t kVideoInputInstances[] = L"Software\\Classes\\CLSID\\{860BB310-5D01-11D0-BD3B-00A0C911CE86}\\Instance";

class CaptureBaseTest : public sorvane::test::LabTest {
protected:
    void SetUp() override
    {
        LabTest::SetUp();
        lab::clearJournal(kCamera);
    }

    static ruvo::DiagDevice camera(const wchar_t *name = kCamera, const wchar_t *locator = kCameraLocator)
    {
        return sorvane::test::captureDevice(kel::String(name), kel::String(kCameraDescription), kel::String(locator));
    }

    int journalCount(const std::wstring &prefix) const
    {
        int count = 0;
        for (const std::wstring &entry : lab::journal(kCamera))
            count += entry.compare(0, prefix.size(), prefix) == 0;
        return count;
    }
};

TEST_F(CaptureBaseTest, FindsThePlainDeviceByFriendlyNameAndIdentifier)
{
    PlainCapture capture(camera(), kel::String(kTitle));
    capture.setupGraph();
    capture.setupDevice();
    ASSERT_NE(capture.source(), nullptr);
    EXPECT_EQ(narrow(capture.devicePath()), narrow(kel::String(kCameraPath)));
    CComPtr<IBaseFilter> named;
    ASSERT_EQ(capture.graph()->FindFilterByName(L"Video Capture", &named), S_OK);
    EXPECT_EQ(named.p, capture.source());
    named.Release();

    // A second add under the same name replaces the filter instead of adding a twin.
    capture.addFilter(CComPtr<IBaseFilter>(capture.source()), kel::String(L"Video Capture"));
    EXPECT_TRUE(log().contains(kel::String(L"removeFilterByName: removing Video Capture")));
    EXPECT_TRUE(log().contains(kel::String(L"binding to Lab Webcam RGB24 Top-Down @ USB\\VID_046D")));
    capture.cleanUpAll();
    EXPECT_EQ(capture.graph(), nullptr);
}

TEST_F(CaptureBaseTest, DeviceKnownOnlyByTheDefaultNameIsFoundByDescription)
{
    const kel::String defaultName = sorvane::g_defaultName->localizedString().toKELString();
    PlainCapture capture(camera(defaultName.c_str()), kel::String(kTitle));
    capture.setupGraph();
    capture.setupDevice();
    EXPECT_NE(capture.source(), nullptr);
    capture.cleanUpAll();
}

TEST_F(CaptureBaseTest, MissingDeviceIsNoDeviceWithAWarning)
{
    // Identifiers compare exactly: the same device under a lower-case locator is not it.
    const std::wstring lowerLocator = kel::String(kCameraLocator).toLower().c_str();
    for (const ruvo::DiagDevice &device :
         {camera(L"Lab Webcam That Is Not There"), camera(kCamera, lowerLocator.c_str())}) {
        PlainCapture capture(device, kel::String(kTitle));
        capture.setupGraph();
        const CaptureException e = outcomeOf([&] { capture.setupDevice(); });
        EXPECT_EQ(e.getResult(), TestResult::NODEVICE());
        EXPECT_EQ(e.getWarningEvent(), sorvane::g_warningDeviceNotFound);
        EXPECT_EQ(e.getErrorEvent(), nullptr);
        capture.cleanUpAll();
    }
}

// Every device discovery lists is found again by a capture given the record a test module
// builds from that listing (name, description and the listed identity as locator): the analog
// filter by its own device path (two cameras of one model each by theirs), the tuner filter of
// a card by the card's instance.
TEST_F(CaptureBaseTest, EveryListedDeviceIsFoundByTheIdentityDiscoveryGaveIt)
{
    kel::Array<sorvane::CaptureDevice> devices;
    {
        // Discovery runs in the caller's apartment; each capture enters one of its own.
        sorvane::SmartCoInitialize com;
        com.initialize();
        sorvane::CaptureDevice::enumerateDevices(devices);
    }
    ASSERT_FALSE(devices.isEmpty());
    int analogDevices = 0;
    for (int i = 0; i < devices.size(); ++i) {
        const sorvane::CaptureDevice &device = devices[i];
        SCOPED_TRACE(narrow(device.name()));
        for (int m = 0; m < device.monikers().size(); ++m) {
            const sorvane::DSMoniker &moniker = device.monikers()[m];
            if (moniker.captureStreamType() == sorvane::CaptureStreamType::DIGITAL()) {
                EXPECT_EQ(narrow(sorvane::DeviceIdParser::instanceKey(moniker.devicePath())),
                          narrow(sorvane::DeviceIdParser::instanceKey(device.guid())));
                continue;
            }
            PlainCapture capture(
                sorvane::test::captureDevice(moniker.filterName(), moniker.description(), device.guid()),
                kel::String(kTitle));
            const CaptureException e = outcomeOf([&] {
                capture.setupGraph();
                capture.setupDevice();
            });
            // A camera unplugged since it was listed is still found; only its binding fails.
            const TestResult expected =
                moniker.capabilities().isEmpty() ? TestResult::NOTSUPPORTED() : TestResult::PASS();
            EXPECT_EQ(e.getResult(), expected) << narrow(e.toString());
            EXPECT_EQ(narrow(capture.devicePath()), narrow(moniker.devicePath()));
            capture.cleanUpAll();
            ++analogDevices;
        }
    }
    EXPECT_GT(analogDevices, 0);
}

// Moves the video-input category's device keys aside for one test, so it is empty.
class EmptyVideoInputCategory {
public:
    EmptyVideoInputCategory() : m_moved(move(kVideoInputInstances, m_aside.c_str())) {}
    ~EmptyVideoInputCategory()
    {
        if (m_moved)
            move(m_aside.c_str(), kVideoInputInstances);
    }
    bool moved() const { return m_moved; }

private:
    static bool move(const wchar_t *from, const wchar_t *to)
    {
        HKEY target = nullptr;
        if (RegCreateKeyExW(HKEY_LOCAL_MACHINE, to, 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, &target, nullptr))
            return false;
        const bool copied = RegCopyTreeW(HKEY_LOCAL_MACHINE, from, target) == ERROR_SUCCESS;
        RegCloseKey(target);
        return copied && RegDeleteTreeW(HKEY_LOCAL_MACHINE, from) == ERROR_SUCCESS;
    }
    const std::wstring m_aside = std::wstring(kVideoInputInstances) + L".aside";
    bool m_moved;
};

TEST_F(CaptureBaseTest, EmptyCategoryIsNoDeviceWithAnError)
{
    PlainCapture capture(camera(), kel::String(kTitle));
    capture.setupGraph();
    CaptureException e(TestResult::PASS(), 0, nullptr, nullptr);
    {
        EmptyVideoInputCategory empty;
        ASSERT_TRUE(empty.moved());
        e = outcomeOf([&] { capture.setupDevice(); });
    }
    EXPECT_EQ(e.getResult(), TestResult::NODEVICE());
    EXPECT_EQ(e.getErrorEvent(), sorvane::g_warningDeviceNotFound);
    EXPECT_EQ(e.getWarningEvent(), nullptr);
    EXPECT_TRUE(log().contains(kel::String(L"CLSID_VideoInputDeviceCategory returned a NULL enumerator.")));
    capture.cleanUpAll();
}

TEST_F(CaptureBaseTest, PreviewShowsTheWindowUntilTheRunTimeIsPast)
{
    // "TestRunTime" unset, 1 and 0 seconds: the preview goes on while the elapsed time equals
    // the run time and stops at its first check after the time passed it.
    const struct {
        int runTime;
        uint64_t limitMs;
    } cases[] = {{-1, 3000}, {1, 1000}, {0, 0}};
    for (const auto &c : cases) {
        SCOPED_TRACE(c.runTime);
        ruvo::DiagModule::unsetAllParameters();
        if (c.runTime >= 0)
            setParameter("TestRunTime", static_cast<uint32_t>(c.runTime));
        lab::clearJournal(kCamera);
        sorvane::test::ManualClock clock;
        PlainCapture capture(camera(), kel::String(kTitle));
        WindowWatcher watcher(kWindowClass, kTitle);
        bool stoppedAtTheLimit = true;
        {
            sorvane::test::SideThread timekeeper([&](sorvane::test::SideThread &side) {
                if (!side.waitUntil([&] { return lab::samplesDelivered(kCamera) > 0; }))
                    return;
                clock.advance(c.limitMs);
                const long long seen = lab::samplesDelivered(kCamera);
                if (!side.waitUntil([seen] { return lab::samplesDelivered(kCamera) >= seen + 5; }))
                    return;
                stoppedAtTheLimit = journalCount(L"Stop") > 0;
                clock.advance(1);
            });
            capture.captureToScreen();
        }
        EXPECT_FALSE(stoppedAtTheLimit);
        EXPECT_TRUE(watcher.seenVisible());
        EXPECT_EQ(journalCount(L"Run"), 1);
        EXPECT_EQ(journalCount(L"Stop"), 1);
    }
}

// Answers the pass/fail question with `button` once its buttons carry their new labels.
struct QuestionAnswer {
    int button;
    std::wstring pass;
    std::wstring fail;
    std::wstring cancel;

    void operator()(HWND box)
    {
        for (int i = 0; i < 200 && WindowWatcher::itemText(box, IDYES) != L"Pass"; ++i)
            Sleep(10);
        pass = WindowWatcher::itemText(box, IDYES);
        fail = WindowWatcher::itemText(box, IDNO);
        cancel = WindowWatcher::itemText(box, IDCANCEL);
        WindowWatcher::press(box, button);
    }
};

TEST_F(CaptureBaseTest, InteractivePreviewAsksWithRelabelledButtons)
{
    setParameter("TestRunTime", 0u);
    setParameter("Interactive", ruvo::Value::fromBool(true));
    const struct {
        int button;
        TestResult result;
        ruvo::Event *event;
    } answers[] = {
        {IDYES, TestResult::PASS(), nullptr},
        {IDNO, TestResult::FAIL(), sorvane::g_userClickedFail},
        {IDCANCEL, TestResult::USERABORTED(), nullptr},
    };
    for (const auto &answer : answers) {
        SCOPED_TRACE(answer.button);
        PlainCapture capture(camera(), kel::String(kTitle));
        QuestionAnswer script{answer.button, L"", L"", L""};
        CaptureException e(TestResult::PASS(), 0, nullptr, nullptr);
        {
            WindowWatcher watcher(L"#32770", kTitle, std::ref(script));
            e = outcomeOf([&] { capture.captureToScreen(); });
        }
        EXPECT_EQ(e.getResult(), answer.result);
        EXPECT_EQ(e.getErrorEvent(), answer.event);
        EXPECT_EQ(script.pass, L"Pass");
        EXPECT_EQ(script.fail, L"Fail");
        EXPECT_FALSE(script.cancel.empty());
        // The user's verdict is final: no retry.
        EXPECT_FALSE(log().contains(kel::String(L"callMethodWithRetries, tryNum")));
        lab::clearJournal(kCamera);
    }
}

TEST_F(CaptureBaseTest, RecordingWritesTheLabsFramesToAnAviInTheTempFolder)
{
    wchar_t temp[MAX_PATH];
    GetTempPathW(MAX_PATH, temp);
    const std::wstring path = std::wstring(temp) + L"sorvane-core-recording.avi";
    {
        HANDLE stale = CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr);
        DWORD written = 0;
        WriteFile(stale, "stale", 5, &written, nullptr);
        CloseHandle(stale);
    }
    setParameter("TestRunTime", 10u);
    sorvane::test::ManualClock clock;
    PlainCapture capture(camera(), kel::String(kTitle));
    // The recording ignores the preview time: it goes on at three seconds and stops past them.
    bool stoppedAtThreeSeconds = true;
    {
        sorvane::test::SideThread timekeeper([&](sorvane::test::SideThread &side) {
            if (!side.waitUntil([] { return lab::samplesDelivered(kCamera) > 0; }))
                return;
            clock.advance(3000);
            const long long seen = lab::samplesDelivered(kCamera);
            if (!side.waitUntil([seen] { return lab::samplesDelivered(kCamera) >= seen + 5; }))
                return;
            stoppedAtThreeSeconds = journalCount(L"Stop") > 0;
            clock.advance(1);
        });
        capture.captureToFile(kel::String(L"sorvane-core-recording"));
    }
    EXPECT_FALSE(stoppedAtThreeSeconds);
    // It runs hidden.
    EXPECT_EQ(log().find(kel::String(L"> setupWindow")).size(), 0u);
    EXPECT_EQ(narrow(capture.outputFile()), narrow(kel::String(path.c_str())));

    const sorvane::diag::AviFile avi(path);
    ASSERT_TRUE(avi.valid()) << avi.problem();
    EXPECT_EQ(avi.format().biWidth, 320);
    EXPECT_EQ(std::abs(avi.format().biHeight), 240);
    EXPECT_GE(avi.frameCount(), 5);
    EXPECT_LE(avi.frameCount(), lab::samplesDelivered(kCamera));
    unsigned long previous = 0;
    for (int i = 0; i < avi.frameCount(); ++i) {
        const lab::FrameView frame{avi.frameData(i),         avi.frameLength(i), lab::PixelLayout::Rgb24, 320, 240,
                                   avi.format().biHeight > 0};
        unsigned long number = 0;
        ASSERT_TRUE(lab::readFrameNumber(frame, number)) << "frame " << i;
        if (i > 0) {
            EXPECT_GT(number, previous) << "frame " << i;
        }
        previous = number;
    }
    DeleteFileW(path.c_str());
}

// On the manual clock neither the preview nor the recording would ever reach its time: the
// stop request alone ends each, at its first look, with the graph stopped.
TEST_F(CaptureBaseTest, StopRequestEndsPreviewAndRecordingWithoutRetry)
{
    const struct {
        const char *mode;
        bool preview;
    } cases[] = {{"preview", true}, {"recording", false}};
    for (const auto &c : cases) {
        SCOPED_TRACE(c.mode);
        lab::clearJournal(kCamera);
        sorvane::test::ManualClock clock;
        recorder().stopChecks = 0;
        recorder().requestStopAtCheck(1);
        PlainCapture capture(camera(), kel::String(kTitle));

        const CaptureException e = outcomeOf([&] {
            if (c.preview)
                capture.captureToScreen();
            else
                capture.captureToFile(kel::String(L"sorvane-core-stopped"));
        });

        EXPECT_EQ(e.getResult(), TestResult::USERABORTED());
        EXPECT_EQ(e.getErrorEvent(), nullptr);
        EXPECT_EQ(e.getWarningEvent(), nullptr);
        EXPECT_EQ(e.getErrorCode(), 0);
        EXPECT_GE(recorder().stopChecks, 1);
        EXPECT_EQ(journalCount(L"Run"), 1);
        EXPECT_GE(journalCount(L"Stop"), 1);
        EXPECT_FALSE(log().contains(kel::String(L"callMethodWithRetries, tryNum")));
        EXPECT_EQ(capture.graph(), nullptr);
    }
    recorder().requestStopAtCheck(0);
    wchar_t temp[MAX_PATH];
    GetTempPathW(MAX_PATH, temp);
    DeleteFileW((std::wstring(temp) + L"sorvane-core-stopped.avi").c_str());
}

TEST_F(CaptureBaseTest, GraphEventsReachingTheWindowAreDrained)
{
    PlainCapture capture(camera(), kel::String(kTitle));
    capture.setupGraph();
    capture.setupDevice();
    capture.renderToScreen();
    CComPtr<IMediaEventSink> sink;
    ASSERT_EQ(CComPtr<IGraphBuilder>(capture.graph()).QueryInterface(&sink), S_OK);
    int checks = 0;
    // The first check raises three events; the window's notification drains them before the next.
    capture.run(
        [&] {
            if (checks++ > 0)
                return true;
            for (long code = EC_USER; code < EC_USER + 3; ++code)
                sink->Notify(code, 0, 0);
            return false;
        },
        true, false);

    CComPtr<IMediaEventEx> events;
    ASSERT_EQ(CComPtr<IGraphBuilder>(capture.graph()).QueryInterface(&events), S_OK);
    long code = 0;
    LONG_PTR first = 0;
    LONG_PTR second = 0;
    EXPECT_EQ(events->GetEvent(&code, &first, &second, 0), E_ABORT) << "event " << code << " left in the queue";
    EXPECT_FALSE(log().find(kel::String(L"> handleGraphEvent")).empty());
    sink.Release();
    events.Release();
    capture.cleanUpAll();
}

// Keeps this thread in a COM apartment across the library's own set-up and clean-up.
struct ComApartment {
    ComApartment() { CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED); }
    ~ComApartment() { CoUninitialize(); }
};

TEST_F(CaptureBaseTest, RecordingWithoutTempFolderOrOutputFileFailsEveryAttempt)
{
    sorvane::test::ManualClock clock;
    {
        // The temporary folder the system names does not exist.
        wchar_t saved[MAX_PATH] = L"";
        const bool hadTmp = GetEnvironmentVariableW(L"TMP", saved, MAX_PATH) > 0;
        SetEnvironmentVariableW(L"TMP", L"C:\\sorvane-no-such-folder\\");
        PlainCapture capture(camera(), kel::String(kTitle));
        const CaptureException e = outcomeOf([&] { capture.captureToFile(kel::String(L"sorvane-no-folder")); });
        SetEnvironmentVariableW(L"TMP", hadTmp ? saved : nullptr);
        EXPECT_EQ(e.getResult(), TestResult::FAIL());
        EXPECT_EQ(e.getWarningEvent(), sorvane::g_errorCreatingFilterGraph);
        EXPECT_EQ(e.getErrorEvent(), nullptr);
        EXPECT_EQ(log().find(kel::String(L"Windows temp file path does not exist C:\\sorvane-no-such-folder")).size(),
                  11u);
    }
    {
        // The multiplexer cannot be made, so no output file can be set.
        ComApartment apartment;
        sorvane::test::RefusedClass noMux(CLSID_AviDest, E_ACCESSDENIED);
        ASSERT_TRUE(noMux.active());
        PlainCapture capture(camera(), kel::String(kTitle));
        const CaptureException e = outcomeOf([&] { capture.captureToFile(kel::String(L"sorvane-no-mux")); });
        EXPECT_EQ(e.getResult(), TestResult::FAIL());
        EXPECT_EQ(e.getErrorEvent(), sorvane::g_errorCreatingFilterGraph);
        EXPECT_EQ(e.getErrorCode(), static_cast<long>(E_ACCESSDENIED));
        EXPECT_EQ(log().find(kel::String(L"Set output file AVI failed: ")).size(), 11u);
        EXPECT_EQ(noMux.refusals(), 11);
    }
    // Neither attempt started the camera; each was retried, 100 ms apart.
    EXPECT_EQ(journalCount(L"Pause"), 0);
    EXPECT_EQ(clock.sleeps(), std::vector<uint32_t>(20, 100));
}

TEST_F(CaptureBaseTest, RunRefusedBecauseTheDeviceIsInUseIsNotRetried)
{
    sorvane::test::ManualClock clock;
    // 0x800400AA: the low word 170 counts under any facility.
    for (const wchar_t *code : {L"0x800705AA", L"0x800700AA", L"0x80070057", L"0x800400AA"}) {
        SCOPED_TRACE(narrow(kel::String(code)));
        lab::DeviceOverride fault(kCamera, L"fault.run", code);
        PlainCapture capture(camera(), kel::String(kTitle));
        const CaptureException e = outcomeOf([&] { capture.captureToScreen(); });
        EXPECT_EQ(e.getResult(), TestResult::CANNOTRUN());
        EXPECT_EQ(e.getWarningEvent(), sorvane::g_errorDeviceInUse);
        uint64_t expected = 0;
        kel::String(code).toUInt(expected);
        EXPECT_EQ(static_cast<unsigned long>(e.getErrorCode()), static_cast<unsigned long>(expected));
        EXPECT_TRUE(clock.sleeps().empty());
        EXPECT_EQ(journalCount(L"Pause"), 1);
        lab::clearJournal(kCamera);
    }
}

TEST_F(CaptureBaseTest, RunRefusedWhileFastAccessRunsIsDeviceBusy)
{
    sorvane::test::ProgramCopies copies;
    sorvane::test::RunningProgram fastAccess(copies.copyAs(L"fatraymon.exe"));
    ASSERT_TRUE(fastAccess.started());
    sorvane::test::ManualClock clock;
    lab::DeviceOverride fault(kCamera, L"fault.run", L"0x8007001F");
    PlainCapture capture(camera(), kel::String(kTitle));
    const CaptureException e = outcomeOf([&] { capture.captureToScreen(); });
    EXPECT_EQ(e.getResult(), TestResult::DEVICEBUSY());
    EXPECT_EQ(e.getWarningEvent(), sorvane::g_fastAccessRunning);
    EXPECT_EQ(journalCount(L"Pause"), 1);
}

TEST_F(CaptureBaseTest, OtherRunFailuresAreRetriedTenTimesAndTheLastRethrown)
{
    sorvane::test::ManualClock clock;
    lab::DeviceOverride fault(kCamera, L"fault.run", L"0x8007001F");
    PlainCapture capture(camera(), kel::String(kTitle));
    const CaptureException e = outcomeOf([&] { capture.captureToScreen(); });
    EXPECT_EQ(e.getResult(), TestResult::FAIL());
    EXPECT_EQ(e.getErrorEvent(), sorvane::g_errorCreatingFilterGraph);
    EXPECT_EQ(static_cast<unsigned long>(e.getErrorCode()), 0x8007001Ful);
    EXPECT_EQ(journalCount(L"Pause"), 11);
    EXPECT_EQ(clock.sleeps(), std::vector<uint32_t>(10, 100));
}

TEST_F(CaptureBaseTest, RunningMediaCenterStopsTheTestBeforeAnyGraph)
{
    sorvane::test::ProgramCopies copies;
    sorvane::test::RunningProgram mediaCenter(copies.copyAs(L"ehshell.exe"));
    ASSERT_TRUE(mediaCenter.started());
    for (int toFile = 0; toFile < 2; ++toFile) {
        PlainCapture capture(camera(), kel::String(kTitle));
        const CaptureException e = outcomeOf([&] {
            if (toFile) {
                capture.captureToFile(kel::String(L"sorvane-never-written"));
            } else {
                capture.captureToScreen();
            }
        });
        EXPECT_EQ(e.getResult(), TestResult::CANNOTRUN());
        EXPECT_EQ(e.getWarningEvent(), sorvane::g_mediaCenterIsRunning);
    }
    EXPECT_TRUE(lab::journal(kCamera).empty());
}

} // namespace
