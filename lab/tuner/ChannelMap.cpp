#include "tuner/ChannelMap.h"

#include <cmath>
#include <cstdlib>
#include <cwctype>
#include <vector>

namespace lab {

namespace {

std::wstring trimmed(const std::wstring &text)
{
    size_t first = 0;
    while (first < text.size() && std::iswspace(text[first]))
        ++first;
    size_t last = text.size();
    while (last > first && std::iswspace(text[last - 1]))
        --last;
    return text.substr(first, last - first);
}

std::vector<std::wstring> entries(const std::wstring &text)
{
    std::vector<std::wstring> out;
    size_t start = 0;
    while (start <= text.size()) {
        size_t comma = text.find(L',', start);
        if (comma == std::wstring::npos)
            comma = text.size();
        std::wstring entry = trimmed(text.substr(start, comma - start));
        if (!entry.empty())
            out.push_back(entry);
        start = comma + 1;
    }
    return out;
}

bool parseLong(const std::wstring &text, long &value)
{
    std::wstring digits = trimmed(text);
    if (digits.empty())
        return false;
    wchar_t *end = nullptr;
    value = std::wcstol(digits.c_str(), &end, 10);
    return *end == 0;
}

bool parseMegahertz(const std::wstring &text, long &hertz)
{
    std::wstring number = trimmed(text);
    if (number.empty())
        return false;
    wchar_t *end = nullptr;
    double megahertz = std::wcstod(number.c_str(), &end);
    if (*end != 0 || megahertz <= 0 || megahertz > 2000)
        return false;
    hertz = std::lround(megahertz * 1000000.0);
    return true;
}

// Splits "what=strength"; the strength defaults to a plain signal.
bool splitStrength(const std::wstring &entry, std::wstring &what, long &strength)
{
    size_t equals = entry.find(L'=');
    what = trimmed(entry.substr(0, equals));
    strength = AMTUNER_SIGNALPRESENT;
    return equals == std::wstring::npos || parseLong(entry.substr(equals + 1), strength);
}

bool parseInput(const std::wstring &name, TunerInputType &input)
{
    if (name == L"antenna")
        input = TunerInputAntenna;
    else if (name == L"cable")
        input = TunerInputCable;
    else
        return false;
    return true;
}

} // namespace

long ChannelMap::channelStrength(long channel, TunerInputType input) const
{
    auto found = m_channels.find(channel);
    if (found == m_channels.end())
        return AMTUNER_NOSIGNAL;
    return input == TunerInputAntenna ? found->second.antenna : found->second.cable;
}

long ChannelMap::stationStrength(long frequencyHz) const
{
    auto above = m_stations.lower_bound(frequencyHz - kStationHalfWidthHz + 1);
    if (above == m_stations.end() || above->first >= frequencyHz + kStationHalfWidthHz)
        return AMTUNER_NOSIGNAL;
    return above->second;
}

bool ChannelMap::parseChannels(const std::wstring &text, std::wstring &error)
{
    std::map<long, Strengths> parsed;
    for (const std::wstring &entry : entries(text)) {
        std::wstring what;
        long strength = 0;
        size_t colon = entry.find(L':');
        long channel = 0;
        TunerInputType input = TunerInputCable;
        bool valid = colon != std::wstring::npos && parseLong(entry.substr(0, colon), channel) && channel > 0 &&
                     splitStrength(entry.substr(colon + 1), what, strength) && parseInput(what, input);
        if (!valid) {
            error = L"bad channel entry \"" + entry + L"\" (expected channel:antenna|cable[=strength])";
            return false;
        }
        Strengths &strengths = parsed[channel];
        (input == TunerInputAntenna ? strengths.antenna : strengths.cable) = strength;
    }
    m_channels.swap(parsed);
    return true;
}

bool ChannelMap::parseStations(const std::wstring &text, std::wstring &error)
{
    std::map<long, long> parsed;
    for (const std::wstring &entry : entries(text)) {
        std::wstring what;
        long strength = 0;
        long hertz = 0;
        if (!splitStrength(entry, what, strength) || !parseMegahertz(what, hertz)) {
            error = L"bad FM station \"" + entry + L"\" (expected megahertz[=strength])";
            return false;
        }
        parsed[hertz] = strength;
    }
    m_stations.swap(parsed);
    return true;
}

} // namespace lab
