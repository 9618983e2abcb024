// How a lab filter downstream of a simulated BDA tuner (the receiver, or the tuner's own
// transport pin) learns what the tuner has tuned: a lab-private interface on the tuner filter,
// found through the pin connection as a driver's receiver is fed through its bridge to the tuner.
#pragma once

#include <windows.h>
#include <unknwn.h>

#include "bdadevice/TunedSignal.h"

namespace lab {

class ITunedSignalSource : public IUnknown {
public:
    // What is tuned now, and the stream faults the tuner's device adds to its multiplex's.
    virtual void STDMETHODCALLTYPE currentSignal(TunedSignal &signal, StreamFaults &faults) = 0;
};

} // namespace lab

// {0D1B8E27-6C3F-4A5E-9B70-F2C4A81D3E95}
__CRT_UUID_DECL(lab::ITunedSignalSource, 0x0d1b8e27, 0x6c3f, 0x4a5e, 0x9b, 0x70, 0xf2, 0xc4, 0xa8, 0x1d, 0x3e, 0x95)
