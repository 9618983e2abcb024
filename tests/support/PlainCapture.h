#pragma once

#include <CaptureBase.h>

namespace sorvane {
namespace test {

// A plain video-capture device as a test module would drive it through the base class,
// with the protected steps opened up so tests can call them one by one.
class PlainCapture : public CaptureBase {
public:
    PlainCapture(const ruvo::DiagDevice &device, const kel::String &title) : CaptureBase(device, title) {}

    using CaptureBase::addFilter;
    using CaptureBase::callMethodWithRetries;
    using CaptureBase::cleanUpAll;
    using CaptureBase::cleanUpWindow;
    using CaptureBase::isRecoverable;
    using CaptureBase::removeFilterByName;
    using CaptureBase::renderToScreen;
    using CaptureBase::resizeWindowForClient;
    using CaptureBase::run;
    using CaptureBase::setupDevice;
    using CaptureBase::setupGraph;
    using CaptureBase::setupSampleGrabber;
    using CaptureBase::setupWindow;

    IGraphBuilder *graph() const { return m_graphManager; }
    IBaseFilter *source() const { return m_srcFilter; }
    HWND window() const { return m_hwnd; }
    const kel::String &devicePath() const { return m_devicePath; }
    const kel::String &outputFile() const { return m_outputFile; }

protected:
    void doRenderToFile() override
    {
        const HRESULT hr =
            m_captureGraphBuilder->RenderStream(&PIN_CATEGORY_CAPTURE, &MEDIATYPE_Video, m_srcFilter, nullptr, m_mux);
        if (FAILED(hr))
            THROW_ERROR(ruvo::TestResult::FAIL(), hr, nullptr);
    }
};

// A framework device record for a capture device: its friendly name, description and
// identifier (the device path after "\\?\", upper-cased, "#" as "\").
ruvo::DiagDevice captureDevice(const kel::String &friendlyName, const kel::String &description,
                               const kel::String &locator);

} // namespace test
} // namespace sorvane
