// A video capture pin as a camera driver's proxy presents it: PIN_CATEGORY_CAPTURE through
// IKsPropertySet, IAMStreamConfig over the device's capabilities, and a streaming thread that
// delivers time-stamped frames at the configured rate while the filter runs.
//
// The device's faults apply here (keys of the description file):
//   fault.setformat       capability indices SetFormat refuses ("1, 3")
//   fault.getstreamcaps   capability index whose GetStreamCaps fails
//   fault.capssize        capability size GetNumberOfCapabilities reports
//   fault.nosamples       "yes": run without delivering anything
//   fault.stopafter       deliver this many samples per run, then nothing
//   fault.zerolength      "yes": deliver samples with no data
//   fault.garbage         "yes": deliver noise of the frame's length instead of the picture
//   fault.frozen          "yes": deliver the picture of frame 0 again and again
#pragma once

#include <memory>
#include <vector>

#include "common/DeviceState.h"
#include "common/FrameSource.h"
#include "common/StreamingPin.h"
#include "common/VideoFormat.h"

namespace lab {

class CapturePin : public StreamingPin, public IAMStreamConfig {
public:
    CapturePin(BaseFilter &filter, const std::wstring &name, FrameSource &source);
    ~CapturePin();

    STDMETHODIMP QueryInterface(REFIID iid, void **out) override { return OutputPin::QueryInterface(iid, out); }
    STDMETHODIMP_(ULONG) AddRef() override { return OutputPin::AddRef(); }
    STDMETHODIMP_(ULONG) Release() override { return OutputPin::Release(); }

    // IAMStreamConfig
    STDMETHODIMP SetFormat(AM_MEDIA_TYPE *type) override;
    STDMETHODIMP GetFormat(AM_MEDIA_TYPE **type) override;
    STDMETHODIMP GetNumberOfCapabilities(int *count, int *size) override;
    STDMETHODIMP GetStreamCaps(int index, AM_MEDIA_TYPE **type, BYTE *caps) override;

    // The device whose capabilities, faults and journal this pin uses.
    void setDevice(const std::shared_ptr<DeviceState> &device, const std::vector<VideoFormat> &formats);

    std::vector<MediaType> mediaTypes() override;
    HRESULT checkMediaType(const AM_MEDIA_TYPE &type) override;

protected:
    void *queryExtra(REFIID iid) override;
    long bufferSize() override;
    bool canStream() override { return isConnected() && !m_formats.empty(); }
    void stream(HANDLE stopEvent) override;

private:
    int formatIndex(const AM_MEDIA_TYPE &type) const;
    HRESULT reconnectWith(const MediaType &type);
    // The format frames are delivered in: the connection's, else the one set, else the first.
    VideoFormat streamFormat() const;
    HRESULT deliverFrame(const VideoFormat &format, unsigned long frame, REFERENCE_TIME &nextStart);

    FrameSource &m_source;
    std::shared_ptr<DeviceState> m_device;
    std::vector<VideoFormat> m_formats;
    MediaType m_setFormat;
};

} // namespace lab
