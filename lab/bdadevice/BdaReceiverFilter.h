// A simulated BDA receiver (capture) filter (device kind "bda-receiver",
// KSCATEGORY_BDA_RECEIVER_COMPONENT): its input connects to the card's tuner filter, its output
// carries the transport stream of what that tuner has tuned (see TransportStreamPin; the
// receiver's keys bitrate, packets-per-sample and the stream faults apply, added to the tuner's
// faults). Unconnected to a lab tuner it delivers nothing.
//
// Device keys: those of TransportStreamPin and StreamFaultKeys; fault.run = HRESULT.
// Journal: "Pause", "Run", "Stop", "Delivered <n>".
#pragma once

#include "bdadevice/LinkInputPin.h"
#include "bdadevice/TransportFeed.h"
#include "bdadevice/TransportStreamPin.h"
#include "common/DeviceFilter.h"

namespace lab {

class BdaReceiverFilter : public DeviceFilter, private TransportFeed {
public:
    BdaReceiverFilter();
    ~BdaReceiverFilter();

    int pinCount() override { return 2; }
    BasePin *pin(int index) override;

protected:
    HRESULT configure(const std::shared_ptr<DeviceState> &device) override;
    std::vector<StreamingPin *> streamingPins() override;
    bool isLiveSource() const override { return true; }

private:
    CComPtr<ITunedSignalSource> signalSource() override;
    std::shared_ptr<DeviceState> streamDevice() override { return device(); }
    bool streams() override { return true; }

    LinkInputPin m_input;
    TransportStreamPin m_output;
};

} // namespace lab
