#include "ChannelName.h"

#include <ATSCChannelPlan.h>
#include <CableFrequencyPlan.h>

#include <cwchar>

namespace sorvane {
namespace diag {

namespace {

// The European DVB-T rasters: UHF channels 21 to 69, 8 MHz apart from 474 MHz (centre), and
// VHF band III channels 5 to 12, 7 MHz apart from 177.5 MHz.
const uint32_t kUhfBaseKHz = 306000;
const uint32_t kUhfStepKHz = 8000;
const int kFirstUhf = 21;
const int kLastUhf = 69;
const uint32_t kVhfBaseKHz = 142500;
const uint32_t kVhfStepKHz = 7000;
const int kFirstVhf = 5;
const int kLastVhf = 12;

bool onRaster(uint32_t kHz, uint32_t base, uint32_t step, int first, int last, int &channel)
{
    if (kHz <= base || (kHz - base) % step != 0)
        return false;
    channel = static_cast<int>((kHz - base) / step);
    return channel >= first && channel <= last;
}

} // namespace

std::wstring ChannelName::megahertz(uint32_t kHz)
{
    wchar_t text[32];
    // Cable picture carriers need two decimals (55.25), broadcast centres one (474.0).
    swprintf(text, 32, kHz % 100 ? L"%.2f MHz" : L"%.1f MHz", kHz / 1000.0);
    return text;
}

ChannelName::Place ChannelName::of(CaptureClasses::DigitalKind kind, int channel,
                                   const CaptureClasses::StreamReport &stream)
{
    const uint32_t listed = channel >= 0 && static_cast<size_t>(channel) < stream.channelFrequencies.size()
                                ? stream.channelFrequencies[static_cast<size_t>(channel)]
                                : 0;
    switch (kind) {
    case CaptureClasses::DigitalKind::ATSC:
        return atsc(channel);
    case CaptureClasses::DigitalKind::CLEARQAM:
        return cable(channel);
    case CaptureClasses::DigitalKind::DVBT:
        return stream.isDTMB ? dtmb(channel, listed) : terrestrialDvb(listed);
    case CaptureClasses::DigitalKind::OCUR:
        break;
    }
    // The receiver's channel map decides; the standard cable plan is where a plain map puts it.
    Place place = cable(channel);
    place.text = L"virtual channel " + std::to_wstring(channel) +
                 L", which the receiver's channel map places on the cable (the standard plan's " + place.physical +
                 L" is at " + megahertz(place.frequencyKHz) + L")";
    return place;
}

ChannelName::Place ChannelName::terrestrialDvb(uint32_t kHz)
{
    Place place = {std::wstring(), kHz, std::wstring()};
    if (!kHz) {
        place.text = L"frequency unknown";
        return place;
    }
    int number = 0;
    if (onRaster(kHz, kUhfBaseKHz, kUhfStepKHz, kFirstUhf, kLastUhf, number))
        place.physical = L"UHF channel " + std::to_wstring(number);
    else if (onRaster(kHz, kVhfBaseKHz, kVhfStepKHz, kFirstVhf, kLastVhf, number))
        place.physical = L"VHF channel " + std::to_wstring(number);
    place.text = (place.physical.empty() ? std::wstring() : place.physical + L", ") + megahertz(kHz);
    return place;
}

ChannelName::Place ChannelName::atsc(int channel)
{
    const uint32_t kHz = ATSCChannelPlan::frequencyKHz(channel);
    Place place = {L"RF channel " + std::to_wstring(channel), kHz, std::wstring()};
    place.text = place.physical + (kHz ? L", " + megahertz(kHz) + L" (centre)" : std::wstring());
    return place;
}

ChannelName::Place ChannelName::cable(int channel)
{
    const uint32_t kHz = CableFrequencyPlan::frequencyKHz(channel);
    Place place = {L"cable channel " + std::to_wstring(channel), kHz, std::wstring()};
    place.text = place.physical + (kHz ? L", " + megahertz(kHz) + L" (picture carrier)" : std::wstring());
    return place;
}

ChannelName::Place ChannelName::dtmb(int channel, uint32_t kHz)
{
    Place place = {L"DTMB channel DS-" + std::to_wstring(channel), kHz, std::wstring()};
    place.text = place.physical + (kHz ? L", " + megahertz(kHz) : std::wstring());
    return place;
}

} // namespace diag
} // namespace sorvane
