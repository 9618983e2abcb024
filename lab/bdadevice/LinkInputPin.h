// An input pin that only links filters: the tuner's antenna input (from the network provider)
// and the receiver's input (from the tuner) carry no samples in the lab, as the kernel-streaming
// bridges of a real card carry theirs past DirectShow. It accepts its major type with any of the
// listed subtypes (none listed: any) and drops whatever it is sent.
#pragma once

#include <memory>
#include <vector>

#include "common/DeviceState.h"
#include "common/InputPin.h"

namespace lab {

class LinkInputPin : public InputPin {
public:
    LinkInputPin(BaseFilter &filter, const std::wstring &name, const GUID &majorType, std::vector<GUID> subTypes);

    HRESULT checkMediaType(const AM_MEDIA_TYPE &type) override;
    std::vector<MediaType> mediaTypes() override;

    // The filter upstream of the connection, or null.
    CComPtr<IBaseFilter> upstreamFilter();
    // The device whose fault.connect makes this input take no connection.
    void useDevice(const std::shared_ptr<DeviceState> &device);

protected:
    HRESULT receive(IMediaSample *) override { return S_OK; }

private:
    const GUID m_majorType;
    const std::vector<GUID> m_subTypes;
    std::shared_ptr<DeviceState> m_device;
};

} // namespace lab
