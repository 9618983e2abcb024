// The abstract base of every capture device class: one DirectShow filter graph for one
// framework device, its set-up, run loop with retries, preview, recording and video window.
#pragma once

#include "CaptureException.h"
#include "SmartCoInitialize.h"
#include "SorvaneExport.h"

#include <atlbase.h>
#include <boost/function.hpp>
#include <dshow.h>
#include <dshowuuids.h>
#include <kel/String.h>
#include <qedit.h>
#include <ruvo/DiagDevice.h>

namespace sorvane {

class SORVANE_API CaptureBase {
public:
    // Message the graph posts to the video window for its events.
    static const UINT WM_GRAPHNOTIFY = WM_APP + 1;

    CaptureBase(const ruvo::DiagDevice &device, const kel::String &windowTitle);
    CaptureBase(const CaptureBase &other);
    CaptureBase &operator=(const CaptureBase &other);

    // The virtual operations below keep this order; subclasses append theirs after them.
    virtual ~CaptureBase();
    virtual void captureToScreen();
    virtual void captureToFile(const kel::String &fileName);

protected:
    virtual void callMethodWithRetries(boost::function<void()> method);
    virtual void doCaptureToScreen();
    virtual void doCaptureToFile(const kel::String &fileName);
    virtual void setupGraph();
    virtual void setupDevice();
    virtual void setupSampleGrabber();
    virtual void renderToScreen();
    virtual void renderToFile(const kel::String &fileName);
    virtual void run(boost::function<bool()> stopCondition, bool withWindow, bool continueWithoutWindow);
    virtual void doRenderToFile() = 0;
    virtual void resizeWindowForClient(int width, int height);
    virtual void handleGraphEvent();
    virtual void resizeVideoWindow();
    virtual void hideVideoWindow();
    virtual void showVideoWindow();
    virtual void addFilter(CComPtr<IBaseFilter> filter, const kel::String &name);
    virtual void removeFilterByName(const kel::String &name);
    virtual void removeAllFilters();
    virtual void cleanUpWindow();
    virtual void cleanUpCOMInterfaces();
    virtual void cleanUpAll();
    virtual bool isRecoverable(const CaptureException &e);

    void setupWindow();
    static LRESULT CALLBACK windowsMsgCallback(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

    ruvo::DiagDevice m_device;
    kel::String m_windowTitle;
    kel::String m_devicePath;
    HWND m_hwnd;
    SmartCoInitialize m_coInit;
    CComPtr<IGraphBuilder> m_graphManager;
    CComPtr<ICaptureGraphBuilder2> m_captureGraphBuilder;
    CComPtr<IBaseFilter> m_srcFilter;
    CComPtr<IMediaControl> m_mediaControl;
    CComPtr<IVideoWindow> m_videoWindow;
    CComPtr<IMediaEventEx> m_mediaEvent;
    CComPtr<IFileSinkFilter> m_fileSink;
    CComPtr<IBaseFilter> m_mux;
    CComPtr<IBaseFilter> m_sampleGrabberFilter;
    CComPtr<ISampleGrabber> m_sampleGrabber;
    CComPtr<IBaseFilter> m_sinkFilter;
    kel::String m_outputFile;

private:
    CComPtr<IEnumMoniker> videoInputMonikers();
    void bindDeviceFilter(IEnumMoniker *monikers, const kel::String &wantedName, bool byDescription,
                          const kel::String &locator);
    void throwIfRunFailed(HRESULT hr);
    void pumpMessagesUntil(const boost::function<bool()> &stopCondition);
    void askWhetherTestPassed();
    void registerWindowClass(HINSTANCE instance);
    // The capture window, or the one an earlier attempt left up.
    void createWindow(HINSTANCE instance);
    void bindVideoWindow();
    kel::String graphText() const;
};

} // namespace sorvane
