#include "CaptureBase.h"

#include "CaptureLog.h"
#include "CaptureUtil.h"
#include "ComRelease.h"
#include "DeviceIdParser.h"
#include "ErrorHandler.h"
#include "LibraryModule.h"
#include "LogTexts.h"
#include "ModuleRegistration.h"
#include "MonikerProperty.h"
#include "PassFailQuestion.h"
#include "ScopeExit.h"
#include "SdkGuids.h"
#include "resources/CaptureWindowIds.h"

#include <boost/bind/bind.hpp>
#include <kel/AssertionFailure.h>
#include <kel/FileSystem.h>
#include <kel/Stopwatch.h>
#include <kel/System.h>
#include <ruvo/DiagModule.h>

SORVANE_LOG_CATEGORY(SORVANE_CAPTURE_CATEGORY)

namespace sorvane {

using ruvo::DeviceCapability;
using ruvo::TestResult;

namespace {

const wchar_t kWindowClass[] = L"KEL_CaptureBase_Window";
const DWORD kWindowStyle = WS_CLIPCHILDREN | WS_DLGFRAME;
const int kWindowWidth = 640;
const int kWindowHeight = 480;
const int kMaxRetries = 10;
const uint32_t kRetryDelayMs = 100;
const double kRecordingSeconds = 3.0;
const long kOperationAborted = 995;
const int kRunInfoPriority = 2;
const int kRunWarningPriority = 3;

bool isElapsed(const kel::Stopwatch *watch, double limitSeconds)
{
    return watch->elapsedSeconds() > limitSeconds;
}

// A preview or recording also ends early when the person asks the test to stop.
bool isElapsedOrStopped(const kel::Stopwatch *watch, double limitSeconds)
{
    return ruvo::DiagModule::checkForStop() || isElapsed(watch, limitSeconds);
}

void throwIfStopRequested()
{
    if (ruvo::DiagModule::checkForStop())
        THROW_ERROR(TestResult::USERABORTED(), 0, nullptr);
}

// Run failures that mean another program holds the device.
bool isDeviceInUse(HRESULT hr)
{
    const unsigned lowWord = static_cast<unsigned>(hr) & 0xFFFF;
    return hr == E_INVALIDARG || lowWord == ERROR_NO_SYSTEM_RESOURCES || lowWord == ERROR_BUSY;
}

} // namespace

CaptureBase::CaptureBase(const ruvo::DiagDevice &device, const kel::String &windowTitle)
    : m_device(device), m_windowTitle(windowTitle), m_hwnd(nullptr)
{
    KEL_ASSERT(m_device.intersectCapability(DeviceCapability::VideoCapture()));
    SetThreadExecutionState(ES_CONTINUOUS | ES_SYSTEM_REQUIRED | ES_DISPLAY_REQUIRED | ES_AWAYMODE_REQUIRED);
}

CaptureBase::CaptureBase(const CaptureBase &other) = default;
CaptureBase &CaptureBase::operator=(const CaptureBase &other) = default;

CaptureBase::~CaptureBase()
{
    SetThreadExecutionState(ES_CONTINUOUS);
    // Interfaces still held go before the apartment they live in: released after
    // CoUninitialize, they would call into a torn-down apartment (or an unloaded DLL).
    m_outputFile = kel::String();
    m_sinkFilter.Release();
    m_sampleGrabber.Release();
    m_sampleGrabberFilter.Release();
    m_mux.Release();
    m_fileSink.Release();
    m_mediaEvent.Release();
    m_videoWindow.Release();
    m_mediaControl.Release();
    m_srcFilter.Release();
    m_captureGraphBuilder.Release();
    m_graphManager.Release();
    m_coInit.uninitialize();
}

void CaptureBase::captureToScreen()
{
    SORVANE_TRACE();
    callMethodWithRetries(boost::bind(&CaptureBase::doCaptureToScreen, this));
}

void CaptureBase::captureToFile(const kel::String &fileName)
{
    SORVANE_TRACE();
    callMethodWithRetries(boost::bind(&CaptureBase::doCaptureToFile, this, fileName));
}

void CaptureBase::callMethodWithRetries(boost::function<void()> method)
{
    SORVANE_TRACE();
    CaptureException lastOutcome(TestResult::PASS(), 0, nullptr, nullptr);
    for (int tryNum = 0;;) {
        if (tryNum > 0) {
            SORVANE_LOG_DETAIL("callMethodWithRetries, tryNum " << tryNum);
            kel::System::mssleep(kRetryDelayMs);
        }
        try {
            method();
            lastOutcome = CaptureException(TestResult::PASS(), 0, nullptr, nullptr);
            break;
        } catch (const CaptureException &e) {
            SORVANE_LOG_DETAIL("callMethodWithRetries catches: " << e.toString());
            lastOutcome = e;
            ++tryNum;
            const bool final =
                e == TestResult::CANNOTRUN() || e == TestResult::DEVICEBUSY() || e == TestResult::USERABORTED();
            if (tryNum > kMaxRetries || final || !isRecoverable(e))
                break;
        }
    }
    if (lastOutcome == TestResult::PASS())
        return;
    SORVANE_LOG_DETAIL("callMethodWithRetries rethrows: " << lastOutcome.toString());
    throw CaptureException(lastOutcome);
}

bool CaptureBase::isRecoverable(const CaptureException &e)
{
    SORVANE_TRACE();
    if (e == TestResult::CANNOTRUN() || e == TestResult::DEVICEBUSY() || e == TestResult::USERABORTED())
        return false;
    if (e.getErrorCode() == kOperationAborted)
        return false;
    return e.getErrorEvent() != g_userClickedFail;
}

void CaptureBase::doCaptureToScreen()
{
    SORVANE_TRACE();
    if (CaptureUtil::mediaCenterIsRunning())
        THROW_WARNING(TestResult::CANNOTRUN(), 0, g_mediaCenterIsRunning);
    ScopeExit cleanUp(boost::bind(&CaptureBase::cleanUpAll, this));

    setupGraph();
    setupDevice();
    renderToScreen();

    const double limit = g_testRunTime->isset() ? static_cast<double>(g_testRunTime->value().valueUint32()) : 3.0;
    kel::Stopwatch watch;
    run(boost::bind(&isElapsedOrStopped, &watch, limit), true, false);
    throwIfStopRequested();

    if (g_interactive->isset() && g_interactive->value().valueBool())
        askWhetherTestPassed();
}

void CaptureBase::askWhetherTestPassed()
{
    SORVANE_TRACE();
    const int answer = PassFailQuestion::ask(m_windowTitle);
    if (answer == IDCANCEL)
        THROW_ERROR(TestResult::USERABORTED(), 0, nullptr);
    if (answer == IDNO)
        THROW_ERROR(TestResult::FAIL(), 0, g_userClickedFail);
}

void CaptureBase::doCaptureToFile(const kel::String &fileName)
{
    SORVANE_TRACE();
    if (CaptureUtil::mediaCenterIsRunning())
        THROW_WARNING(TestResult::CANNOTRUN(), 0, g_mediaCenterIsRunning);
    ScopeExit cleanUp(boost::bind(&CaptureBase::cleanUpAll, this));

    setupGraph();
    setupDevice();
    renderToFile(fileName);

    // A recording always lasts the same, whatever the preview time is set to.
    kel::Stopwatch watch;
    run(boost::bind(&isElapsedOrStopped, &watch, kRecordingSeconds), false, true);
    throwIfStopRequested();
}

void CaptureBase::setupGraph()
{
    SORVANE_TRACE();
    m_coInit.initialize();

    m_graphManager.Release();
    HRESULT hr = m_graphManager.CoCreateInstance(CLSID_FilterGraph, nullptr, CLSCTX_INPROC_SERVER);
    if (FAILED(hr))
        SORVANE_GRAPH_FAILED("CLSID_FilterGraph failed: ", hr);

    m_captureGraphBuilder.Release();
    hr = m_captureGraphBuilder.CoCreateInstance(CLSID_CaptureGraphBuilder2, nullptr, CLSCTX_INPROC_SERVER);
    if (FAILED(hr))
        SORVANE_GRAPH_FAILED("CLSID_CaptureGraphBuilder2 failed: ", hr);

    m_mediaControl.Release();
    hr = m_graphManager.QueryInterface(&m_mediaControl);
    if (FAILED(hr))
        SORVANE_GRAPH_FAILED("IID_IMediaControl failed: ", hr);

    m_mediaEvent.Release();
    hr = m_graphManager.QueryInterface(&m_mediaEvent);
    if (FAILED(hr))
        SORVANE_GRAPH_FAILED("QI for IID_IMediaEventEx failed: ", hr);
    if (m_mediaEvent) {
        hr = m_captureGraphBuilder->SetFiltergraph(m_graphManager);
        if (FAILED(hr))
            SORVANE_GRAPH_FAILED("SetFiltergraph failed: ", hr);
    }
}

void CaptureBase::setupDevice()
{
    SORVANE_TRACE();
    m_srcFilter.Release();

    const kel::String name = m_device.property("AnalogFriendlyName").toKELString();
    const kel::String description = m_device.description();
    const kel::String locator = m_device.osLocator();
    SORVANE_LOG_DETAIL("kelDeviceName: " << name << ", kelDeviceDesc: " << description << ", locator: " << locator);

    const CComPtr<IEnumMoniker> monikers = videoInputMonikers();
    // A device the framework could only call by the default name is known by its description.
    const bool byDescription = name == g_defaultName->localizedString().toKELString();
    bindDeviceFilter(monikers, byDescription ? description : name, byDescription, locator);

    addFilter(m_srcFilter, kel::String(L"Video Capture"));
    SORVANE_LOG_DETAIL("CaptureBase::setupDevice() added m_srcFilter (" << CaptureUtil::filterName(m_srcFilter) << ")"
                                                                        << "\ngraph:\n"
                                                                        << graphText());
}

CComPtr<IEnumMoniker> CaptureBase::videoInputMonikers()
{
    CComPtr<ICreateDevEnum> deviceEnumerator;
    HRESULT hr = deviceEnumerator.CoCreateInstance(CLSID_SystemDeviceEnum, nullptr, CLSCTX_INPROC_SERVER);
    if (FAILED(hr))
        SORVANE_THROW_FAILED("CLSID_SystemDeviceEnum failed: ", hr, TestResult::FAIL(), g_warningDeviceNotFound);
    CComPtr<IEnumMoniker> monikers;
    hr = deviceEnumerator->CreateClassEnumerator(CLSID_VideoInputDeviceCategory, &monikers, 0);
    if (FAILED(hr))
        SORVANE_THROW_FAILED("CLSID_VideoInputDeviceCategory failed: ", hr, TestResult::FAIL(),
                             g_warningDeviceNotFound);
    if (!monikers) {
        // S_FALSE: the category is empty.
        SORVANE_LOG_DETAIL("CLSID_VideoInputDeviceCategory returned a NULL enumerator.");
        THROW_ERROR(TestResult::NODEVICE(), 0, g_warningDeviceNotFound);
    }
    return monikers;
}

// Binds the first moniker with the wanted name and the locator as identifier into m_srcFilter.
void CaptureBase::bindDeviceFilter(IEnumMoniker *monikers, const kel::String &wantedName, bool byDescription,
                                   const kel::String &locator)
{
    bool found = false;
    HRESULT bindResult = S_OK;
    CComPtr<IMoniker> moniker;
    while (!found && monikers->Next(1, &moniker, nullptr) == S_OK) {
        CComPtr<IPropertyBag> bag;
        if (SUCCEEDED(moniker->BindToStorage(nullptr, nullptr, IID_PPV_ARGS(&bag)))) {
            const kel::String path = MonikerProperty::read(bag, L"DevicePath");
            SORVANE_LOG_DETAIL("DevicePath from propertybag: " << path);
            const kel::String identifier = DeviceIdParser::pathIdentifier(path);
            const kel::String monikerName =
                MonikerProperty::read(bag, byDescription ? L"Description" : L"FriendlyName");
            SORVANE_LOG_DETAIL("compare " << monikerName << " @ " << identifier << " against " << wantedName << " @ "
                                          << locator);
            if (monikerName == wantedName && identifier == locator) {
                SORVANE_LOG_DETAIL("binding to " << monikerName << " @ " << identifier);
                m_devicePath = path;
                found = true;
                bindResult = moniker->BindToObject(nullptr, nullptr, IID_PPV_ARGS(&m_srcFilter));
            }
        }
        moniker.Release();
    }

    if (FAILED(bindResult))
        THROW_WARNING(TestResult::NOTSUPPORTED(), bindResult, g_warningDeviceNotFound);
    if (!found)
        THROW_WARNING(TestResult::NODEVICE(), 0, g_warningDeviceNotFound);
}

void CaptureBase::setupSampleGrabber()
{
    SORVANE_TRACE();
    m_sampleGrabberFilter.Release();
    HRESULT hr = m_sampleGrabberFilter.CoCreateInstance(CLSID_SampleGrabber, nullptr, CLSCTX_INPROC_SERVER);
    if (FAILED(hr))
        SORVANE_GRAPH_FAILED("Cannot create a SampleGrabber instance: ", hr);
    addFilter(m_sampleGrabberFilter, kel::String(L"SampleGrabber"));

    m_sampleGrabber.Release();
    hr = m_sampleGrabberFilter.QueryInterface(&m_sampleGrabber);
    if (FAILED(hr))
        SORVANE_GRAPH_FAILED("Cannot get a SampleGrabber interface: ", hr);
    SORVANE_LOG_DETAIL("graph:\n" << graphText());
}

void CaptureBase::renderToScreen()
{
    SORVANE_TRACE();
    KEL_ASSERT(m_graphManager);
    KEL_ASSERT(m_srcFilter);
    const HRESULT hr =
        m_captureGraphBuilder->RenderStream(&PIN_CATEGORY_CAPTURE, &MEDIATYPE_Video, m_srcFilter, nullptr, nullptr);
    if (FAILED(hr)) {
        SORVANE_THROW_LOGGED("RenderStream(PIN_CATEGORY_CAPTURE, MEDIATYPE_Video, m_srcFilter, NULL, NULL) returns: "
                                 << ErrorHandler::errorMessageFromHr(hr) << "\ngraph:\n"
                                 << graphText(),
                             TestResult::FAIL(), hr, g_errorCreatingFilterGraph);
    }
}

void CaptureBase::renderToFile(const kel::String &fileName)
{
    SORVANE_TRACE();
    KEL_ASSERT(m_graphManager);
    KEL_ASSERT(m_srcFilter);

    wchar_t tempPath[MAX_PATH];
    if (GetTempPathW(MAX_PATH, tempPath) == 0) {
        const DWORD error = GetLastError();
        SORVANE_WARN_FAILED("GetTempPath failed: ", error, TestResult::FAIL(), g_errorCreatingFilterGraph);
    }
    m_outputFile = kel::String(tempPath);
    if (!kel::FileSystem::exists(m_outputFile)) {
        const DWORD error = GetLastError();
        SORVANE_WARN_LOGGED("Windows temp file path does not exist " << m_outputFile, TestResult::FAIL(), error,
                            g_errorCreatingFilterGraph);
    }
    m_outputFile += fileName + L".avi";
    if (kel::FileSystem::exists(m_outputFile))
        kel::FileSystem::removeFile(m_outputFile);

    m_mux.Release();
    m_fileSink.Release();
    const HRESULT hr =
        m_captureGraphBuilder->SetOutputFileName(&MEDIASUBTYPE_Avi, m_outputFile.c_str(), &m_mux, &m_fileSink);
    if (FAILED(hr))
        SORVANE_GRAPH_FAILED("Set output file AVI failed: ", hr);
    doRenderToFile();
}

void CaptureBase::run(boost::function<bool()> stopCondition, bool withWindow, bool continueWithoutWindow)
{
    SORVANE_TRACE();
    if (withWindow) {
        try {
            setupWindow();
        } catch (const CaptureException &) {
            if (!continueWithoutWindow)
                throw;
            SORVANE_LOG_DETAIL("unable to setupWindow, continuing");
            cleanUpWindow();
        }
    }
    SORVANE_LOG(kRunInfoPriority, "Ready to run, graph:\n" << graphText());

    const HRESULT hr = m_mediaControl->Run();
    if (FAILED(hr))
        throwIfRunFailed(hr);
    if (withWindow)
        showVideoWindow();

    pumpMessagesUntil(stopCondition);

    SORVANE_LOG_DETAIL("ready to stop");
    // Closing the window releases the graph while the loop goes on.
    if (m_mediaControl)
        m_mediaControl->Stop();
}

void CaptureBase::throwIfRunFailed(HRESULT hr)
{
    SORVANE_TRACE();
    if (isDeviceInUse(hr)) {
        SORVANE_LOG(kRunWarningPriority, "CaptureBase::run(), device in use");
        THROW_WARNING(TestResult::CANNOTRUN(), hr, g_errorDeviceInUse);
    }
    if (CaptureUtil::fastAccessCheck(hr)) {
        SORVANE_LOG(kRunWarningPriority, "CaptureBase::run(), device busy");
        THROW_WARNING(TestResult::DEVICEBUSY(), hr, g_fastAccessRunning);
    }
    SORVANE_THROW_LOGGED(LogTexts::RUN_FAILED << ErrorHandler::errorMessageFromHr(hr) << "\ngraph:\n"
                                              << graphText(),
                         TestResult::FAIL(), hr, g_errorCreatingFilterGraph);
}

// Spins between message batches without sleeping, so the condition is seen at once.
void CaptureBase::pumpMessagesUntil(const boost::function<bool()> &stopCondition)
{
    for (;;) {
        MSG message;
        while (PeekMessageW(&message, nullptr, 0, 0, PM_NOREMOVE)) {
            GetMessageW(&message, nullptr, 0, 0);
            TranslateMessage(&message);
            DispatchMessageW(&message);
        }
        if (stopCondition())
            return;
    }
}

void CaptureBase::handleGraphEvent()
{
    SORVANE_TRACE();
    long code = 0;
    LONG_PTR first = 0;
    LONG_PTR second = 0;
    while (m_mediaEvent && SUCCEEDED(m_mediaEvent->GetEvent(&code, &first, &second, 1))) {
        m_mediaEvent->FreeEventParams(code, first, second);
    }
}

void CaptureBase::addFilter(CComPtr<IBaseFilter> filter, const kel::String &name)
{
    SORVANE_TRACE();
    SORVANE_LOG_DETAIL("add filter " << name);
    if (!m_graphManager) {
        SORVANE_GRAPH_REFUSED("addFilter, m_graphManager == NULL");
    }
    removeFilterByName(name);
    const HRESULT hr = m_graphManager->AddFilter(filter, name.c_str());
    if (FAILED(hr))
        SORVANE_GRAPH_FAILED("Cannot add '" << name << "' filter: ", hr);
}

void CaptureBase::removeFilterByName(const kel::String &name)
{
    SORVANE_TRACE();
    if (!m_graphManager)
        return;
    CComPtr<IBaseFilter> filter;
    if (FAILED(m_graphManager->FindFilterByName(name.c_str(), &filter)) || !filter)
        return;
    SORVANE_LOG_DETAIL("removeFilterByName: removing " << name);
    m_graphManager->RemoveFilter(filter);
    const ULONG count = releaseWithCount(filter);
    SORVANE_LOG_DETAIL("Removed filter " << name << ",  Refcount after release: " << count);
}

void CaptureBase::removeAllFilters()
{
    SORVANE_TRACE();
    if (!m_graphManager)
        return;
    CComPtr<IEnumFilters> filters;
    if (FAILED(m_graphManager->EnumFilters(&filters)) || !filters)
        return;
    CComPtr<IBaseFilter> filter;
    while (filters->Next(1, &filter, nullptr) == S_OK) {
        const kel::String name = CaptureUtil::filterName(filter);
        const HRESULT hr = m_graphManager->RemoveFilter(filter);
        if (FAILED(hr)) {
            // A filter that refuses to go (one left running) is stepped over: starting again
            // from the top would find it again forever. The graph's release takes it.
            SORVANE_LOG_ERROR("RemoveFilter " << name << " failed: " << ErrorHandler::errorMessageFromHr(hr));
            filter.Release();
            continue;
        }
        // Removing a filter invalidates the enumeration.
        filters->Reset();
        const ULONG count = releaseWithCount(filter);
        SORVANE_LOG_DETAIL("Removed filter: " << name << ", refcount after release: " << count);
    }
}

void CaptureBase::cleanUpCOMInterfaces()
{
    SORVANE_TRACE();
    if (m_mediaControl)
        m_mediaControl->Stop();
    if (m_mediaEvent)
        m_mediaEvent->SetNotifyWindow(0, WM_GRAPHNOTIFY, 0);
    if (m_videoWindow) {
        m_videoWindow->put_Visible(OAFALSE);
        m_videoWindow->put_Owner(0);
    }
    m_fileSink.Release();
    m_mux.Release();
    m_srcFilter.Release();
    m_mediaControl.Release();
    m_mediaEvent.Release();
    m_videoWindow.Release();
    m_sampleGrabber.Release();
    m_sinkFilter.Release();
    m_sampleGrabberFilter.Release();
    removeAllFilters();
    m_graphManager.Release();
    m_captureGraphBuilder.Release();
}

void CaptureBase::cleanUpAll()
{
    SORVANE_TRACE();
    cleanUpWindow();
    cleanUpCOMInterfaces();
    m_coInit.uninitialize();
}

void CaptureBase::setupWindow()
{
    SORVANE_TRACE();
    const HINSTANCE instance = LibraryModule::instance();
    registerWindowClass(instance);
    createWindow(instance);

    KEL_ASSERT(m_graphManager);
    m_videoWindow.Release();
    HRESULT hr = m_graphManager.QueryInterface(&m_videoWindow);
    if (FAILED(hr))
        SORVANE_GRAPH_FAILED("IID_IVideoWindow failed: ", hr);
    bindVideoWindow();

    hr = m_mediaEvent->SetNotifyWindow(reinterpret_cast<OAHWND>(m_hwnd), WM_GRAPHNOTIFY, 0);
    if (FAILED(hr))
        SORVANE_GRAPH_FAILED("SetNotifyWindow failed: ", hr);

    SetLastError(0);
    if (!SetWindowLongPtrW(m_hwnd, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this)) && GetLastError() != 0) {
        const DWORD error = GetLastError();
        SORVANE_THROW_LOGGED("SetWindowLongPtr GLWP_USERDATA failed.", TestResult::FAIL(), error,
                             g_errorCreatingFilterGraph);
    }
}

void CaptureBase::registerWindowClass(HINSTANCE instance)
{
    WNDCLASSW windowClass = {};
    windowClass.lpfnWndProc = &CaptureBase::windowsMsgCallback;
    windowClass.hInstance = instance;
    windowClass.hCursor = LoadCursorW(nullptr, IDC_ARROW);
    windowClass.hIcon = LoadIconW(instance, MAKEINTRESOURCEW(IDI_CAPTURE_WINDOW));
    windowClass.lpszClassName = kWindowClass;
    if (RegisterClassW(&windowClass))
        return;
    // Several capture objects share the class.
    const DWORD error = GetLastError();
    if (error != ERROR_CLASS_ALREADY_EXISTS)
        SORVANE_WARN_LOGGED("RegisterClass failed.", TestResult::FAIL(), error, g_warningWindowSetupProblem);
}

void CaptureBase::createWindow(HINSTANCE instance)
{
    // A tuner's second attempt finds the first attempt's window, with the renderer's window
    // inside it, still up: it is bound again rather than replaced.
    if (!m_hwnd) {
        m_hwnd = CreateWindowExW(0, kWindowClass, m_windowTitle.c_str(), kWindowStyle, CW_USEDEFAULT, CW_USEDEFAULT,
                                 kWindowWidth, kWindowHeight, nullptr, nullptr, instance, nullptr);
    }
    if (!m_hwnd) {
        const DWORD error = GetLastError();
        SORVANE_WARN_LOGGED("CreateWindow failed.", TestResult::FAIL(), error, g_warningWindowSetupProblem);
    }
}

// Makes the renderer draw as a hidden child of the capture window.
void CaptureBase::bindVideoWindow()
{
    SORVANE_TRACE();
    HRESULT hr = m_videoWindow->put_Owner(reinterpret_cast<OAHWND>(m_hwnd));
    if (FAILED(hr))
        SORVANE_WARN_FAILED("put_Owner failed: ", hr, TestResult::FAIL(), g_warningWindowSetupProblem);
    hr = m_videoWindow->put_WindowStyle(WS_CHILD);
    if (FAILED(hr))
        SORVANE_WARN_FAILED("put_WindowStyle failed: ", hr, TestResult::FAIL(), g_warningWindowSetupProblem);
    hr = m_videoWindow->put_Visible(OATRUE);
    if (FAILED(hr))
        SORVANE_WARN_FAILED("put_Visible failed: ", hr, TestResult::FAIL(), g_warningWindowSetupProblem);
}

LRESULT CALLBACK CaptureBase::windowsMsgCallback(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    SORVANE_TRACE();
    CaptureBase *capture = reinterpret_cast<CaptureBase *>(GetWindowLongPtrW(window, GWLP_USERDATA));
    if (message == WM_DESTROY) {
        PostQuitMessage(0);
        return 0;
    }
    if (capture) {
        switch (message) {
        case WM_SIZE:
            capture->resizeVideoWindow();
            break;
        case WM_CLOSE:
            // Closing the window stops and releases the graph at once.
            capture->hideVideoWindow();
            capture->cleanUpCOMInterfaces();
            break;
        case WM_GRAPHNOTIFY:
            capture->handleGraphEvent();
            break;
        default:
            break;
        }
        if (capture->m_videoWindow) {
            capture->m_videoWindow->NotifyOwnerMessage(reinterpret_cast<OAHWND>(window), message, wParam, lParam);
        }
    }
    return DefWindowProcW(window, message, wParam, lParam);
}

void CaptureBase::showVideoWindow()
{
    SORVANE_TRACE();
    if (m_hwnd)
        ShowWindow(m_hwnd, SW_SHOW);
}

void CaptureBase::hideVideoWindow()
{
    SORVANE_TRACE();
    if (m_hwnd)
        ShowWindow(m_hwnd, SW_HIDE);
}

void CaptureBase::resizeVideoWindow()
{
    SORVANE_TRACE();
    if (!m_videoWindow)
        return;
    RECT client;
    GetClientRect(m_hwnd, &client);
    SORVANE_LOG_DETAIL("resizeVideoWindow to " << client.right << " by " << client.bottom);
    m_videoWindow->SetWindowPosition(0, 0, client.right, client.bottom);
}

void CaptureBase::resizeWindowForClient(int width, int height)
{
    SORVANE_TRACE();
    // Shared by every capture object; only the window's own thread comes here.
    static int depth = 0;
    ++depth;

    RECT window;
    RECT client;
    GetWindowRect(m_hwnd, &window);
    GetClientRect(m_hwnd, &client);
    const int oldWidth = window.right - window.left;
    const int oldHeight = window.bottom - window.top;
    const int frameWidth = oldWidth - (client.right - client.left);
    const int frameHeight = oldHeight - (client.bottom - client.top) + GetSystemMetrics(SM_CYBORDER);
    const int newWidth = width + frameWidth;
    const int newHeight = height + frameHeight;
    SetWindowPos(m_hwnd, nullptr, 0, 0, newWidth, newHeight, SWP_NOZORDER | SWP_NOMOVE);

    // The frame may change with the size (a menu bar wrapping, say): measure once more.
    if (depth == 1 && ((newWidth != oldWidth && width > GetSystemMetrics(SM_CXMIN)) || newHeight != oldHeight)) {
        resizeWindowForClient(width, height);
    }
    --depth;
}

void CaptureBase::cleanUpWindow()
{
    SORVANE_TRACE();
    if (!m_hwnd)
        return;
    DestroyWindow(m_hwnd);
    m_hwnd = nullptr;
}

kel::String CaptureBase::graphText() const
{
    return CaptureUtil::graphToString(m_graphManager);
}

} // namespace sorvane
