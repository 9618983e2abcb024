#include "broadcast/Multiplex.h"

namespace lab {

namespace {

const long kToleranceKhz = 250;

// The 6 MHz band of an ATSC (North American broadcast) physical channel.
bool atscBand(int channel, long &lowKhz, long &highKhz)
{
    if (channel >= 2 && channel <= 4)
        lowKhz = 54000 + (channel - 2) * 6000L;
    else if (channel >= 5 && channel <= 6)
        lowKhz = 76000 + (channel - 5) * 6000L;
    else if (channel >= 7 && channel <= 13)
        lowKhz = 174000 + (channel - 7) * 6000L;
    else if (channel >= 14 && channel <= 83)
        lowKhz = 470000 + (channel - 14) * 6000L;
    else
        return false;
    highKhz = lowKhz + 6000;
    return true;
}

} // namespace

bool Multiplex::receives(long kHz) const
{
    if (frequencyKhz > 0)
        return kHz >= frequencyKhz - kToleranceKhz && kHz <= frequencyKhz + kToleranceKhz;
    long low = 0;
    long high = 0;
    return network == "atsc" && atscBand(channel, low, high) && kHz > low && kHz < high;
}

bool Multiplex::locksWith(const std::string &tunedModulation) const
{
    return modulation.empty() || tunedModulation.empty() || tunedModulation == modulation;
}

} // namespace lab
