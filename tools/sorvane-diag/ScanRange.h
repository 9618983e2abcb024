// The host's check of a scan's range before the library runs, so that a BADPARAMS always
// names the parameters, their values and what is allowed. The library refuses a TV range
// whose end is below its start without saying why, and takes any FM range: a reversed one
// silently becomes a scan of the start frequency alone.
#pragma once

#include <string>

namespace sorvane {
namespace diag {

class ScanRange {
public:
    // The lowest and highest FM frequencies a tuner sweeps (Japan's band starts at 76 MHz).
    static const double kLowestFmMHz;
    static const double kHighestFmMHz;

    // Empty when the channel range is usable, otherwise why not.
    static std::wstring channelProblem(const std::wstring &startKey, const std::wstring &endKey);
    static std::wstring frequencyProblem(const std::wstring &startKey, const std::wstring &endKey);

private:
    static bool inBand(double megahertz);
    // False when the parameter is unset.
    static bool read(const std::wstring &key, double &value);
    static std::wstring number(double value, int decimals);
};

} // namespace diag
} // namespace sorvane
