// What reaches a simulated tuner card: per TV channel a signal strength on the antenna and on the
// cable input, and the FM stations by frequency. A strength is what IAMTuner::SignalPresent
// answers: 0 (AMTUNER_NOSIGNAL) nothing, 1 (AMTUNER_SIGNALPRESENT) a signal, other values (a weak
// 2, say) are answered as they are.
//
// Text form, as the description file writes it:
//   channels:   "4:antenna, 7:cable, 9:antenna, 9:cable, 11:antenna=2"
//   fm-stations: "88.1, 94.5, 101.3=2"    (megahertz)
#pragma once

#include <windows.h>
#include <strmif.h>
#include <map>
#include <string>

namespace lab {

class ChannelMap {
public:
    // A receiver tuned this close to a station hears it; the FM raster is 100 kHz.
    static const long kStationHalfWidthHz = 50000;

    long channelStrength(long channel, TunerInputType input) const;

    long stationStrength(long frequencyHz) const;

    // Each replaces the channels or the stations; false with a reason when the text is malformed.
    bool parseChannels(const std::wstring &text, std::wstring &error);
    bool parseStations(const std::wstring &text, std::wstring &error);

private:
    struct Strengths {
        long antenna = 0;
        long cable = 0;
    };

    std::map<long, Strengths> m_channels;
    std::map<long, long> m_stations;
};

} // namespace lab
