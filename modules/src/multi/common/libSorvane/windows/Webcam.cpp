#include "Webcam.h"
#include "CaptureLog.h"
#include "CaptureUtil.h"
#include "ErrorHandler.h"
#include "FramesSavedCheck.h"
#include "InPlaceMediaType.h"
#include "LogTexts.h"
#include "ModuleRegistration.h"
#include "SampleGrabberCallback.h"
#include "ScopeExit.h"
#include "SdkGuids.h"

#include <boost/bind/bind.hpp>
#include <boost/ref.hpp>
#include <kel/AssertionFailure.h>
#include <kelmodule/WinNameManager.h>
#include <ruvo/DiagModule.h>
#include <amvideo.h>
#include <ks.h>
#include <ksmedia.h>
#include <algorithm>
#include <cstdlib>
#include <map>

SORVANE_LOG_CATEGORY(SORVANE_CAPTURE_CATEGORY)

namespace sorvane {

namespace {

using boost::placeholders::_1;

// Capabilities of one subtype, keyed by the subtype's name.
typedef std::vector<MediaTypeOwner> CapabilityGroup;
typedef std::map<kel::String, CapabilityGroup> CapabilityGroups;

// Pixel formats in the order they are preferred; only the first one the camera offers is used.
const GUID *const kPreferredSubtypes[] = {&MEDIASUBTYPE_RGB24, &MEDIASUBTYPE_YUY2, &MEDIASUBTYPE_UYVY,
                                          &MEDIASUBTYPE_MJPG};

const VIDEOINFOHEADER *videoInfo(const AM_MEDIA_TYPE *mediaType)
{
    if (!mediaType || !IsEqualGUID(mediaType->formattype, FORMAT_VideoInfo) || !mediaType->pbFormat ||
        mediaType->cbFormat < sizeof(VIDEOINFOHEADER))
        return nullptr;
    return reinterpret_cast<const VIDEOINFOHEADER *>(mediaType->pbFormat);
}

bool isSubtype(const AM_MEDIA_TYPE *mediaType, const GUID &subtype)
{
    return mediaType && IsEqualGUID(mediaType->subtype, subtype);
}

// A copy for the copy constructor: both objects close their own handle.
HANDLE duplicateHandle(HANDLE handle)
{
    if (!handle || handle == INVALID_HANDLE_VALUE)
        return INVALID_HANDLE_VALUE;
    HANDLE copy = INVALID_HANDLE_VALUE;
    if (!DuplicateHandle(GetCurrentProcess(), handle, GetCurrentProcess(), &copy, 0, FALSE, DUPLICATE_SAME_ACCESS)) {
        SORVANE_LOG_ERROR(
            "DuplicateHandle failed: " << ErrorHandler::errorMessageFromHr(HRESULT_FROM_WIN32(GetLastError())));
        return INVALID_HANDLE_VALUE;
    }
    return copy;
}

const void *handleText(const ScopedHandle &handle)
{
    return handle.get();
}

CapabilityGroups readCapabilities(IAMStreamConfig *streamConfig, int count)
{
    CapabilityGroups groups;
    for (int i = 0; i < count; ++i) {
        MediaTypeOwner capability;
        VIDEO_STREAM_CONFIG_CAPS caps;
        if (FAILED(streamConfig->GetStreamCaps(i, capability.receive(), reinterpret_cast<BYTE *>(&caps)))) {
            SORVANE_LOG_DETAIL("Failed to fetch capability " << i);
            continue;
        }
        // Other format types are dropped here; their owner frees them.
        if (!videoInfo(capability.get()))
            continue;
        groups[CaptureUtil::subTypeToString(capability->subtype)].push_back(std::move(capability));
    }
    return groups;
}

void sortCapabilities(CapabilityGroups &groups)
{
    kel::String text;
    for (CapabilityGroups::iterator group = groups.begin(); group != groups.end(); ++group) {
        std::sort(group->second.begin(), group->second.end(), [](const MediaTypeOwner &a, const MediaTypeOwner &b) {
            return Webcam::compareCapabilities(a.get(), b.get());
        });
        for (const MediaTypeOwner &capability : group->second)
            text += CaptureUtil::mediaTypeToString(capability.get()) + L"\n";
    }
    SORVANE_LOG_DETAIL("capabilities: \n" << text);
}

const CapabilityGroup *preferredGroup(const CapabilityGroups &groups)
{
    for (const GUID *subtype : kPreferredSubtypes) {
        const CapabilityGroups::const_iterator group = groups.find(CaptureUtil::subTypeToString(*subtype));
        if (group != groups.end() && !group->second.empty())
            return &group->second;
    }
    return nullptr;
}

} // namespace

Webcam::FrameInfo::FrameInfo() : width(0), height(0), format(FORMAT_UNKNOWN), isJpeg(false), bottomUp(false) {}

Webcam::Webcam(const ruvo::DiagDevice &device, const kel::String &name, unsigned int captureDelay)
    : CaptureBase(device, name), m_srcHandle(INVALID_HANDLE_VALUE), m_captureDelay(captureDelay),
      privacySupported(false), m_privacyRestoreValue(0), m_privacyRestoreFlags(1)
{
}

Webcam::Webcam(const Webcam &other) : CaptureBase(other), m_srcHandle(INVALID_HANDLE_VALUE)
{
    copyFrom(other);
}

Webcam &Webcam::operator=(const Webcam &other)
{
    if (this != &other) {
        CaptureBase::operator=(other);
        copyFrom(other);
    }
    return *this;
}

Webcam::~Webcam() {}

void Webcam::copyFrom(const Webcam &other)
{
    m_srcHandle.reset(duplicateHandle(other.m_srcHandle.get()));
    m_sampleGrabberCallback = other.m_sampleGrabberCallback;
    m_mediaType.reset(CaptureUtil::createMediaType(other.m_mediaType.get()));
    m_frames = other.m_frames;
    m_captureDelay = other.m_captureDelay;
    privacySupported = other.privacySupported;
    m_privacyRestoreValue = other.m_privacyRestoreValue;
    m_privacyRestoreFlags = other.m_privacyRestoreFlags;
}

void Webcam::captureFrames(unsigned long long count)
{
    SORVANE_TRACE();
    callMethodWithRetries(boost::bind(&Webcam::doCaptureFrames, this, count));
}

Webcam::FrameList Webcam::getFrames(FrameInfo &info)
{
    kel::TraceLogger trace(sorvaneLogger(), "WebCamCapture::getFrames", __FILE__, __LINE__);
    const VIDEOINFOHEADER *video = videoInfo(m_mediaType.get());
    if (!video) {
        SORVANE_LOG_DETAIL("Unsupported format type: " << (m_mediaType
                                                               ? CaptureUtil::subTypeToString(m_mediaType->subtype)
                                                               : kel::String(L"none")));
        return FrameList();
    }
    info.width = video->bmiHeader.biWidth;
    info.height = std::abs(video->bmiHeader.biHeight);
    info.format = FrameInfo::FORMAT_UNKNOWN;
    info.isJpeg = false;
    info.bottomUp = false;
    if (isSubtype(m_mediaType.get(), MEDIASUBTYPE_YUY2)) {
        info.format = FrameInfo::FORMAT_YUY2;
    } else if (isSubtype(m_mediaType.get(), MEDIASUBTYPE_UYVY)) {
        info.format = FrameInfo::FORMAT_UYVY;
    } else if (isSubtype(m_mediaType.get(), MEDIASUBTYPE_RGB24)) {
        info.format = FrameInfo::FORMAT_RGB24;
        info.bottomUp = video->bmiHeader.biHeight > 0;
    } else if (isSubtype(m_mediaType.get(), MEDIASUBTYPE_MJPG)) {
        info.format = FrameInfo::FORMAT_RGB24;
        info.isJpeg = true;
    }
    return m_frames;
}

bool Webcam::compareCapabilities(const AM_MEDIA_TYPE *a, const AM_MEDIA_TYPE *b)
{
    const BITMAPINFOHEADER &first = reinterpret_cast<const VIDEOINFOHEADER *>(a->pbFormat)->bmiHeader;
    const BITMAPINFOHEADER &second = reinterpret_cast<const VIDEOINFOHEADER *>(b->pbFormat)->bmiHeader;
    if (first.biWidth != second.biWidth)
        return first.biWidth > second.biWidth;
    return first.biHeight > second.biHeight;
}

void Webcam::doCaptureFrames(unsigned long long count)
{
    SORVANE_TRACE();
    if (CaptureUtil::mediaCenterIsRunning())
        THROW_WARNING(ruvo::TestResult::CANNOTRUN(), 0, g_mediaCenterIsRunning);
    ScopeExit cleanUp(boost::bind(&Webcam::cleanUpAll, this));
    setupGraph();
    setupDevice();

    // Kept across the rebuilds below: every capability is set through this first source filter.
    CComPtr<IAMStreamConfig> streamConfig = findStreamConfig();
    CapabilityGroups groups = readCapabilities(streamConfig, capabilityCount(streamConfig));
    sortCapabilities(groups);
    const CapabilityGroup *group = preferredGroup(groups);
    if (!group) {
        SORVANE_LOG_DETAIL("No supported capability found.");
        THROW_ERROR(ruvo::TestResult::CANNOTRUN(), 0, g_errorCreatingFilterGraph);
    }

    std::vector<kel::String> failedCapabilities;
    for (size_t k = 0; m_frames.size() < count && k < group->size(); ++k) {
        const AM_MEDIA_TYPE *capability = (*group)[k].get();
        try {
            captureWithCapability(streamConfig, capability, count, group->size(), k);
        } catch (const CaptureException &e) {
            SORVANE_LOG_DETAIL("doCaptureFrames capability loop caught: " << e.toString());
            failedCapabilities.push_back(CaptureUtil::mediaTypeToString(capability));
            if (!isRecoverable(e))
                throw;
            SORVANE_LOG_DETAIL("retrying after rebuilding the DirectShow/COM universe...");
            cleanUpAll();
            setupGraph();
            setupDevice();
        }
    }

    if (!failedCapabilities.empty()) {
        SORVANE_LOG_DETAIL("Failed to capture frames for capabilities:");
        for (const kel::String &text : failedCapabilities)
            SORVANE_LOG_DETAIL(text);
    }
    if (m_frames.size() < count) {
        SORVANE_LOG_DETAIL(LogTexts::SHORTFALL_BEFORE << count << LogTexts::SHORTFALL_AFTER
                                                      << static_cast<unsigned long long>(m_frames.size()));
        THROW_ERROR(ruvo::TestResult::FAIL(), 0, g_errorCapturingFrames);
    }
    SORVANE_LOG_DETAIL("returning " << static_cast<unsigned long long>(m_frames.size()) << " frames");
}

CComPtr<IAMStreamConfig> Webcam::findStreamConfig()
{
    SORVANE_TRACE();
    CComPtr<IAMStreamConfig> streamConfig;
    const HRESULT hr = m_captureGraphBuilder->FindInterface(&PIN_CATEGORY_CAPTURE, &MEDIATYPE_Video, m_srcFilter,
                                                            IID_PPV_ARGS(&streamConfig));
    if (FAILED(hr) || !streamConfig) {
        SORVANE_GRAPH_FAILED("FindInterface (IAMStreamConfig) failed: ", hr);
    }
    return streamConfig;
}

int Webcam::capabilityCount(IAMStreamConfig *streamConfig)
{
    SORVANE_TRACE();
    int count = 0;
    int size = 0;
    const HRESULT hr = streamConfig->GetNumberOfCapabilities(&count, &size);
    if (FAILED(hr))
        SORVANE_GRAPH_FAILED("GetNumberOfCapabilities failed: ", hr);
    if (size != sizeof(VIDEO_STREAM_CONFIG_CAPS)) {
        SORVANE_GRAPH_REFUSED("Capability size != sizeof(VIDEO_STREAM_CONFIG_CAPS)");
    }
    return count;
}

void Webcam::captureWithCapability(IAMStreamConfig *streamConfig, const AM_MEDIA_TYPE *capability,
                                   unsigned long long count, unsigned long long groupSize, unsigned long long index)
{
    SORVANE_TRACE();
    ScopeExit detach(boost::bind(&Webcam::detachCallback, this));

    SORVANE_LOG_DETAIL("SetFormat to " << CaptureUtil::mediaTypeToString(capability));
    const HRESULT hr = streamConfig->SetFormat(const_cast<AM_MEDIA_TYPE *>(capability));
    if (FAILED(hr))
        SORVANE_GRAPH_FAILED(LogTexts::SET_FORMAT_FAILED, hr);
    m_mediaType.reset(CaptureUtil::createMediaType(capability));
    if (!m_mediaType) {
        SORVANE_THROW_LOGGED("createMediaType failed", ruvo::TestResult::FAIL(), E_OUTOFMEMORY,
                             g_errorCreatingFilterGraph);
    }
    renderToSaver();
    attachCallback(count);

    // Whole seconds of the settling delay (the fraction is dropped), five per frame and a minute to start.
    const double timeoutSeconds = static_cast<double>(m_captureDelay / 1000) + 5.0 * count + 60.0;
    m_frames.clear();
    FramesSavedCheck check(timeoutSeconds, count, m_sampleGrabberCallback,
                           boost::bind(&Webcam::percentCallback, this, groupSize, index, _1));
    run(boost::ref(check), false, true);
    if (check.stopRequested())
        THROW_ERROR(ruvo::TestResult::USERABORTED(), 0, nullptr);
    if (check.timedOut()) {
        SORVANE_LOG_DETAIL("doCaptureFrames timed out");
        THROW_ERROR(ruvo::TestResult::FAIL(), 0, g_errorNoSignal);
    }
    takeFramesFromCallback(count);
}

void Webcam::attachCallback(unsigned long long count)
{
    SORVANE_TRACE();
    SORVANE_LOG_DETAIL("create sampleGrabberCallback");
    m_sampleGrabberCallback = new SampleGrabberCallback(m_captureDelay, count);
    const HRESULT hr = m_sampleGrabber->SetCallback(m_sampleGrabberCallback, 0);
    SORVANE_LOG_DETAIL("set sampleGrabberCallback: " << ErrorHandler::errorMessageFromHr(hr));
    if (FAILED(hr))
        SORVANE_GRAPH_FAILED("SetCallback failed: ", hr);
}

void Webcam::detachCallback()
{
    SORVANE_TRACE();
    SORVANE_LOG_DETAIL("clear sampleGrabberCallback");
    if (m_sampleGrabber)
        m_sampleGrabber->SetCallback(nullptr, 0);
    m_sampleGrabberCallback.Release();
}

void Webcam::takeFramesFromCallback(unsigned long long count)
{
    SORVANE_TRACE();
    const SampleGrabberCallback *callback = dynamic_cast<SampleGrabberCallback *>(m_sampleGrabberCallback.p);
    if (!callback) {
        SORVANE_GRAPH_REFUSED("dynamic_cast<SampleGrabberCallback*>(m_sampleGrabberCallback.p) failed!");
    }
    SORVANE_LOG_DETAIL("SampleGrabberCallback saw " << static_cast<unsigned long long>(callback->samplesSeen())
                                                    << " frames");
    m_frames = callback->frames();
    SORVANE_LOG_DETAIL("Got " << static_cast<unsigned long long>(m_frames.size()) << " of " << count << " frames");

    InPlaceMediaType connected;
    const HRESULT hr = m_sampleGrabber->GetConnectedMediaType(connected.receive());
    if (FAILED(hr))
        SORVANE_THROW_FAILED("GetConnectedMediaType failed: ", hr, ruvo::TestResult::FAIL(), g_errorCapturingFrames);
    m_mediaType.reset(CaptureUtil::createMediaType(&connected.get()));
    if (!m_mediaType) {
        SORVANE_THROW_LOGGED("createMediaType failed", ruvo::TestResult::FAIL(), E_OUTOFMEMORY, g_errorCapturingFrames);
    }
    SORVANE_LOG_DETAIL("SampleGrabber used format = " << CaptureUtil::mediaTypeToString(m_mediaType.get()));
    if (m_frames.size() < count)
        THROW_ERROR(ruvo::TestResult::FAIL(), 0, g_errorCapturingFrames);
}

void Webcam::percentCallback(unsigned long long groupSize, unsigned long long index, int percent)
{
    // No trace: called on every poll of the run loop.
    // percent / share (not times share) is intended: the bar's first half fills in steps of share.
    const double share = 100.0 / static_cast<double>(groupSize);
    ruvo::DiagModule::percentDone(static_cast<int>((percent / share + static_cast<double>(index) * share) * 0.5));
}

void Webcam::setupDevice()
{
    SORVANE_TRACE();
    CaptureBase::setupDevice();
    m_srcHandle.reset(kelmodule::WinNameManager::openDevice(m_devicePath, GENERIC_READ | GENERIC_WRITE));
    SORVANE_LOG_DETAIL("opened m_srcHandle = " << handleText(m_srcHandle));
}

void Webcam::setupSampleGrabber()
{
    SORVANE_TRACE();
    CaptureBase::setupSampleGrabber();

    // An MJPG camera is asked for RGB24 so that the graph places a decoder before the grabber.
    AM_MEDIA_TYPE wanted = AM_MEDIA_TYPE();
    if (isSubtype(m_mediaType.get(), MEDIASUBTYPE_MJPG)) {
        wanted.majortype = MEDIATYPE_Video;
        wanted.subtype = MEDIASUBTYPE_RGB24;
        wanted.formattype = FORMAT_VideoInfo;
    } else if (m_mediaType) {
        wanted = *m_mediaType.get(); // the grabber copies what it needs; the format block stays ours
    }
    HRESULT hr = m_sampleGrabber->SetMediaType(&wanted);
    if (FAILED(hr))
        SORVANE_GRAPH_FAILED("SampleGrabber SetMediaType failed:", hr);
    hr = m_sampleGrabber->SetOneShot(FALSE);
    if (FAILED(hr))
        SORVANE_GRAPH_FAILED("SetOneShot failed:", hr);
    hr = m_sampleGrabber->SetBufferSamples(FALSE);
    if (FAILED(hr))
        SORVANE_GRAPH_FAILED("SetBufferSamples failed: ", hr);
}

void Webcam::renderToSaver()
{
    kel::TraceLogger trace(sorvaneLogger(), "Webcam::renderToSaver", __FILE__, __LINE__);
    KEL_ASSERT(m_graphManager);
    KEL_ASSERT(m_srcFilter);
    if (!m_graphManager || !m_srcFilter)
        THROW_ERROR(ruvo::TestResult::FAIL(), E_POINTER, g_errorCreatingFilterGraph);

    // Each capability gets a grabber set up for its own media type.
    setupSampleGrabber();
    if (!m_sinkFilter) {
        const HRESULT hr = m_sinkFilter.CoCreateInstance(CLSID_NullRenderer, nullptr, CLSCTX_INPROC_SERVER);
        if (FAILED(hr))
            SORVANE_GRAPH_FAILED("Unable to create NullRenderer:", hr);
        addFilter(m_sinkFilter, kel::String(L"NullRenderer"));
    }

    if (isSubtype(m_mediaType.get(), MEDIASUBTYPE_MJPG)) {
        renderThroughRenderStream();
        return;
    }
    SORVANE_LOG_DETAIL("using ConnectDirect");
    if (!connectDirect()) {
        SORVANE_LOG_DETAIL("Trying RenderStream as fallback");
        renderThroughRenderStream();
    }
}

bool Webcam::connectDirect()
{
    SORVANE_TRACE();
    CComPtr<IPin> srcOut;
    CComPtr<IPin> grabberIn;
    CComPtr<IPin> grabberOut;
    CComPtr<IPin> sinkIn;
    m_captureGraphBuilder->FindPin(m_srcFilter, PINDIR_OUTPUT, &PIN_CATEGORY_CAPTURE, &MEDIATYPE_Video, TRUE, 0,
                                   &srcOut);
    m_captureGraphBuilder->FindPin(m_sampleGrabberFilter, PINDIR_INPUT, nullptr, nullptr, TRUE, 0, &grabberIn);
    m_captureGraphBuilder->FindPin(m_sampleGrabberFilter, PINDIR_OUTPUT, nullptr, nullptr, TRUE, 0, &grabberOut);
    m_captureGraphBuilder->FindPin(m_sinkFilter, PINDIR_INPUT, nullptr, nullptr, TRUE, 0, &sinkIn);
    if (!srcOut)
        SORVANE_LOG_ERROR("srcOut == NULL");
    if (!grabberIn)
        SORVANE_LOG_ERROR("grabberIn == NULL");
    if (!grabberOut)
        SORVANE_LOG_ERROR("grabberOut == NULL");
    if (!sinkIn)
        SORVANE_LOG_ERROR("sinkIn == NULL");
    if (!srcOut || !grabberIn || !grabberOut || !sinkIn)
        return false;

    HRESULT hr = m_graphManager->ConnectDirect(srcOut, grabberIn, m_mediaType.get());
    SORVANE_LOG_DETAIL("ConnectDirect(srcOut, grabberIn) returned: " << ErrorHandler::errorMessageFromHr(hr));
    if (FAILED(hr)) {
        SORVANE_LOG_ERROR("ConnectDirect src->grabber failed.");
        return false;
    }
    hr = m_graphManager->ConnectDirect(grabberOut, sinkIn, nullptr);
    SORVANE_LOG_DETAIL("ConnectDirect(grabberOut, sinkIn) returned: " << ErrorHandler::errorMessageFromHr(hr));
    if (FAILED(hr)) {
        SORVANE_LOG_ERROR("ConnectDirect grabber->sink failed");
        // The fallback needs the source's capture pin free again.
        m_graphManager->Disconnect(srcOut);
        m_graphManager->Disconnect(grabberIn);
        return false;
    }
    return true;
}

void Webcam::renderThroughRenderStream()
{
    SORVANE_TRACE();
    SORVANE_LOG_DETAIL("using RenderStream");
    const HRESULT hr = m_captureGraphBuilder->RenderStream(&PIN_CATEGORY_CAPTURE, &MEDIATYPE_Video, m_srcFilter,
                                                           m_sampleGrabberFilter, m_sinkFilter);
    SORVANE_LOG_DETAIL("RenderStream(PIN_CATEGORY_CAPTURE, MEDIATYPE_Video, m_srcFilter, m_sampleGrabberFilter, "
                       "m_sinkFilter) returns: "
                       << ErrorHandler::errorMessageFromHr(hr));
    if (FAILED(hr))
        THROW_ERROR(ruvo::TestResult::FAIL(), hr, g_errorCreatingFilterGraph);
}

void Webcam::doRenderToFile()
{
    SORVANE_TRACE();
    SORVANE_LOG_DETAIL("Webcam::doRenderToFile()");
    const HRESULT hr =
        m_captureGraphBuilder->RenderStream(&PIN_CATEGORY_CAPTURE, &MEDIATYPE_Video, m_srcFilter, nullptr, m_mux);
    SORVANE_LOG_DETAIL("RenderStream(PIN_CATEGORY_CAPTURE, MEDIATYPE_Video, m_srcFilter, NULL, m_mux) returns"
                       << ErrorHandler::errorMessageFromHr(hr));
    // A failure is only logged: the run that follows decides how the recording ends.
}

void Webcam::cleanUpCOMInterfaces()
{
    SORVANE_TRACE();
    // Leaves a camera whose privacy shutter was found open.
    setPrivacy(m_privacyRestoreValue, m_privacyRestoreFlags);
    CaptureBase::cleanUpCOMInterfaces();
    m_sinkFilter.Release();
    SORVANE_LOG_DETAIL("closing m_srcHandle = " << handleText(m_srcHandle));
    m_srcHandle.reset(INVALID_HANDLE_VALUE);
}

// Frames missing after a completed run will be missing on the next capability too.
bool Webcam::isRecoverable(const CaptureException &e)
{
    SORVANE_TRACE();
    if (e.getErrorEvent() == g_errorCapturingFrames)
        return false;
    return CaptureBase::isRecoverable(e);
}

void Webcam::getPrivacy(long &value, long &flags)
{
    SORVANE_TRACE();
    SORVANE_LOG_DETAIL("query IAMCameraControl on m_srcFilter");
    CComQIPtr<IAMCameraControl> cameraControl(static_cast<IUnknown *>(m_srcFilter.p));
    if (cameraControl) {
        SORVANE_LOG_DETAIL("Web Camera Control supported");
        long currentValue = 0;
        long currentFlags = 0;
        if (SUCCEEDED(cameraControl->Get(KSPROPERTY_CAMERACONTROL_PRIVACY, &currentValue, &currentFlags))) {
            value = currentValue;
            flags = currentFlags;
            privacySupported = true;
            SORVANE_LOG_DETAIL("KSPROPERTY_CAMERACONTROL_PRIVACY, value = " << value << ", flags = " << flags);
        } else {
            SORVANE_LOG_DETAIL("KSPROPERTY_CAMERACONTROL_PRIVACY not supported");
        }
    } else {
        SORVANE_LOG_DETAIL("Web Camera Control not supported");
    }
    SORVANE_LOG_DETAIL("Webcam::getPrivacy, value = " << value);
}

void Webcam::setPrivacy(long value, long flags)
{
    SORVANE_TRACE();
    SORVANE_LOG_DETAIL("setPrivacy(" << value << ", " << flags << ")");
    if (!privacySupported) {
        SORVANE_LOG_DETAIL("setPrivacy: the camera has no privacy control, nothing set");
        return;
    }
    CComQIPtr<IAMCameraControl> cameraControl(static_cast<IUnknown *>(m_srcFilter.p));
    if (!cameraControl) {
        SORVANE_LOG_DETAIL("setPrivacy: no camera filter in a graph, nothing set");
        return;
    }
    const HRESULT hr = cameraControl->Set(KSPROPERTY_CAMERACONTROL_PRIVACY, value, flags);
    SORVANE_LOG_DETAIL("set privacy mode result: " << ErrorHandler::errorMessageFromHr(hr));
}

} // namespace sorvane
