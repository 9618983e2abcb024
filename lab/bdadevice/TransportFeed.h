// What a transport-stream pin asks of its filter: the tuner whose signal it carries, the device
// whose rate, faults and journal apply, and whether it streams at all (a tuner with a separate
// receiver leaves the streaming to the receiver).
#pragma once

#include <memory>

#include <atlbase.h>

#include "bdadevice/TunedSignalSource.h"

namespace lab {

class DeviceState;

class TransportFeed {
public:
    virtual CComPtr<ITunedSignalSource> signalSource() = 0;
    virtual std::shared_ptr<DeviceState> streamDevice() = 0;
    virtual bool streams() = 0;

protected:
    ~TransportFeed() = default;
};

} // namespace lab
