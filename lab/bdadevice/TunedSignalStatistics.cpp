#include "bdadevice/TunedSignalStatistics.h"

namespace lab {

HRESULT TunedSignalStatistics::readLong(BdaTuning::Statistic which, LONG *value)
{
    if (!value)
        return E_POINTER;
    return statisticsTuning().statistic(statisticsDevice(), which, *value);
}

HRESULT TunedSignalStatistics::readFlag(BdaTuning::Statistic which, BOOLEAN *value)
{
    if (!value)
        return E_POINTER;
    LONG read = 0;
    const HRESULT hr = statisticsTuning().statistic(statisticsDevice(), which, read);
    if (SUCCEEDED(hr))
        *value = read != 0 ? TRUE : FALSE;
    return hr;
}

STDMETHODIMP TunedSignalStatistics::get_SignalStrength(LONG *value)
{
    return readLong(BdaTuning::Statistic::Strength, value);
}

STDMETHODIMP TunedSignalStatistics::get_SignalQuality(LONG *value)
{
    return readLong(BdaTuning::Statistic::Quality, value);
}

STDMETHODIMP TunedSignalStatistics::get_SignalPresent(BOOLEAN *value)
{
    return readFlag(BdaTuning::Statistic::Present, value);
}

STDMETHODIMP TunedSignalStatistics::get_SignalLocked(BOOLEAN *value)
{
    return readFlag(BdaTuning::Statistic::Locked, value);
}

STDMETHODIMP TunedSignalStatistics::get_SampleTime(LONG *value)
{
    return readLong(BdaTuning::Statistic::SampleTime, value);
}

} // namespace lab
