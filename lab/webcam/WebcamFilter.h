// A simulated USB webcam: one capture pin with the device's capabilities (see CapturePin),
// IAMCameraControl with the privacy shutter when the device has one, and its settings read from
// the moniker's property bag when the device enumerator binds it.
//
// Device keys (description file):
//   format = <VideoFormat>   one line per capability, in GetStreamCaps order
//   privacy = none | unsupported | 0 | 1
//            none: no IAMCameraControl; unsupported: the interface without the privacy
//            property; 0/1: privacy supported, starting off/on
//   fault.run = <HRESULT>    Run of the filter fails with it (device in use ...)
//   fault.bind = <HRESULT>   IPersistPropertyBag::Load fails, so binding the moniker fails
//   fault.flat = yes         every frame is one colour (no mark band, bars or caption)
// and the capture pin's faults.
#pragma once

#include "common/CapturePin.h"
#include "common/DeviceFilter.h"
#include "common/FrameSource.h"
#include "webcam/FramePainter.h"

namespace lab {

class WebcamFilter : public DeviceFilter, public IAMCameraControl, public FrameSource {
public:
    WebcamFilter();
    ~WebcamFilter();

    STDMETHODIMP QueryInterface(REFIID iid, void **out) override { return DeviceFilter::QueryInterface(iid, out); }
    STDMETHODIMP_(ULONG) AddRef() override { return DeviceFilter::AddRef(); }
    STDMETHODIMP_(ULONG) Release() override { return DeviceFilter::Release(); }

    // IAMCameraControl
    STDMETHODIMP GetRange(long property, long *min, long *max, long *step, long *defaultValue, long *flags) override;
    STDMETHODIMP Set(long property, long value, long flags) override;
    STDMETHODIMP Get(long property, long *value, long *flags) override;

    int pinCount() override { return 1; }
    BasePin *pin(int index) override;

    long paintFrame(const VideoFormat &format, unsigned long frame, BYTE *buffer, long capacity) override;

protected:
    void *queryExtra(REFIID iid) override;
    std::vector<StreamingPin *> streamingPins() override;
    void onStop() override;
    bool isLiveSource() const override { return true; }
    HRESULT configure(const std::shared_ptr<DeviceState> &device) override;

private:
    enum class Privacy { None, Unsupported, Supported };

    CapturePin m_pin;
    FramePainter m_painter;
    Privacy m_privacy = Privacy::Supported;
    long m_privacyValue = 0;
    long m_privacyFlags = CameraControl_Flags_Manual;
};

} // namespace lab
