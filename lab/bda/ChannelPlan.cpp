#include "bda/ChannelPlan.h"

#include <cstddef>

namespace lab {

namespace {

// A run of channels spaced evenly: channels first..last from firstKhz on, stepKhz apart.
struct ChannelRun {
    long first;
    long last;
    long firstKhz;
    long stepKhz;
};

const ChannelRun kTerrestrial[] = {
    {2, 4, 57000, 6000},
    {5, 6, 79000, 6000},
    {7, 13, 177000, 6000},
    {14, 69, 473000, 6000},
};

const ChannelRun kCable[] = {
    {1, 1, 73250, 6000},    {2, 4, 55250, 6000},    {5, 6, 77250, 6000},   {7, 13, 175250, 6000},
    {14, 22, 121250, 6000}, {23, 94, 217250, 6000}, {95, 99, 91250, 6000}, {100, 158, 649250, 6000},
};

template <std::size_t Size>
long lookUp(const ChannelRun (&runs)[Size], long channel)
{
    for (const ChannelRun &run : runs) {
        if (channel >= run.first && channel <= run.last)
            return run.firstKhz + (channel - run.first) * run.stepKhz;
    }
    return -1;
}

} // namespace

long ChannelPlan::terrestrialKhz(long channel)
{
    return lookUp(kTerrestrial, channel);
}

long ChannelPlan::cableKhz(long channel)
{
    return lookUp(kCable, channel);
}

} // namespace lab
