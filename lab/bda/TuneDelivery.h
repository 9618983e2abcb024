// Hands a tuning to the BDA tuner filter behind the provider's antenna pin, through the filter's
// standard BDA interfaces: IBDA_DeviceControl::StartChanges; for each node type of
// IBDA_Topology::GetNodeTypes, the control node GetControlNode(0, 1, type) as
// IBDA_FrequencyFilter (put_FrequencyMultiplier(1000), put_Frequency(kHz), put_Bandwidth(MHz))
// and as IBDA_DigitalDemodulator (put_ModulationType); then CheckChanges and CommitChanges.
// The first failing call ends the delivery with its HRESULT.
#pragma once

#include <windows.h>
#include <dshow.h>

#include "bda/TuneParameters.h"

namespace lab {

class TuneDelivery {
public:
    static HRESULT deliver(IPin *tunerInput, const TuneParameters &tuning);

private:
    static HRESULT tuneNodes(IUnknown *filter, const TuneParameters &tuning);
    static HRESULT tuneNode(IUnknown *node, const TuneParameters &tuning);
};

} // namespace lab
