#include "ScanRange.h"

#include <ruvo/DiagModule.h>

namespace sorvane {
namespace diag {

const double ScanRange::kLowestFmMHz = 76.0;
const double ScanRange::kHighestFmMHz = 108.0;

std::wstring ScanRange::channelProblem(const std::wstring &startKey, const std::wstring &endKey)
{
    double start = 0;
    double end = 0;
    if (!read(startKey, start) || !read(endKey, end) || end >= start)
        return std::wstring();
    return endKey + L" (" + number(end, 0) + L") is below " + startKey + L" (" + number(start, 0) +
           L"): the scan goes up from the start channel, so the end must be at or above it.";
}

std::wstring ScanRange::frequencyProblem(const std::wstring &startKey, const std::wstring &endKey)
{
    double start = 0;
    double end = 0;
    if (!read(startKey, start) || !read(endKey, end))
        return std::wstring();
    const std::wstring allowed =
        L"the FM band is " + number(kLowestFmMHz, 1) + L" to " + number(kHighestFmMHz, 1) + L" MHz.";
    // Written so that a value that is no number at all (NaN) is outside too.
    if (!inBand(start))
        return startKey + L" (" + number(start, 1) + L" MHz) is outside the FM band: " + allowed;
    if (!inBand(end))
        return endKey + L" (" + number(end, 1) + L" MHz) is outside the FM band: " + allowed;
    if (end < start)
        return endKey + L" (" + number(end, 1) + L" MHz) is below " + startKey + L" (" + number(start, 1) +
               L" MHz): the sweep goes up from the start, and the library would sweep the start frequency "
               L"alone. Give the lower frequency as the start.";
    return std::wstring();
}

bool ScanRange::inBand(double megahertz)
{
    return megahertz >= kLowestFmMHz && megahertz <= kHighestFmMHz;
}

bool ScanRange::read(const std::wstring &key, double &value)
{
    ruvo::Parameter *parameter = ruvo::DiagModule::findParameter(kel::String(key));
    if (!parameter || !parameter->isset())
        return false;
    const ruvo::Value &set = parameter->value();
    value = set.type() == ruvo::DataType::DOUBLE ? set.valueDouble() : static_cast<double>(set.valueUint32());
    return true;
}

std::wstring ScanRange::number(double value, int decimals)
{
    // A value far outside any band is shown as 1e+300, not as its three hundred digits.
    const bool sane = value > -1e9 && value < 1e9;
    return kel::String::fromDouble(value, sane ? decimals : -1).wstr();
}

} // namespace diag
} // namespace sorvane
