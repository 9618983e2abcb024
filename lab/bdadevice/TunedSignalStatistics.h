// IBDA_SignalStatistics as the lab's tuners answer it, on the tuner filter or on a control node
// (per the device's "statistics" key): the values of the tuned signal (see BdaTuning). The
// statistics are the driver's to measure: the put_ methods are refused.
#pragma once

#include <windows.h>
#include <bdaiface.h>

#include "bdadevice/BdaTuning.h"

namespace lab {

class DeviceState;

class TunedSignalStatistics : public IBDA_SignalStatistics {
public:
    STDMETHODIMP put_SignalStrength(LONG) override { return E_NOTIMPL; }
    STDMETHODIMP get_SignalStrength(LONG *value) override;
    STDMETHODIMP put_SignalQuality(LONG) override { return E_NOTIMPL; }
    STDMETHODIMP get_SignalQuality(LONG *value) override;
    STDMETHODIMP put_SignalPresent(BOOLEAN) override { return E_NOTIMPL; }
    STDMETHODIMP get_SignalPresent(BOOLEAN *value) override;
    STDMETHODIMP put_SignalLocked(BOOLEAN) override { return E_NOTIMPL; }
    STDMETHODIMP get_SignalLocked(BOOLEAN *value) override;
    STDMETHODIMP put_SampleTime(LONG) override { return E_NOTIMPL; }
    STDMETHODIMP get_SampleTime(LONG *value) override;

protected:
    virtual ~TunedSignalStatistics() = default;
    virtual const BdaTuning &statisticsTuning() = 0;
    virtual DeviceState &statisticsDevice() = 0;

private:
    HRESULT readLong(BdaTuning::Statistic which, LONG *value);
    HRESULT readFlag(BdaTuning::Statistic which, BOOLEAN *value);
};

} // namespace lab
