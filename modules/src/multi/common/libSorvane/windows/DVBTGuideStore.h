// The DVB-T channels of the chosen country: channel n (from 1) is the n-th frequency of the
// network provider's default frequency map for that country, with the bandwidth of its band.
// Tunes a channel with a DVB-T tune request carrying the stored frequency and bandwidth.
#pragma once

#include "SorvaneExport.h"

#include <atlbase.h>
#include <kel/Array.h>
#include <tuner.h>
#include <cstdint>

namespace sorvane {

class SORVANE_API DVBTGuideStore {
public:
    DVBTGuideStore();

    // Replaces the channels with those of the list; returns how many channels the store
    // holds, counting the unused channel 0.
    int loadGuideData(int countryCode, const kel::Array<uint32_t> &frequenciesKHz);
    int channelCount() const;
    int countryCode() const { return m_countryCode; }
    // 0 for a channel the store does not hold.
    uint32_t frequencyKHz(int channel) const;
    int bandwidthMHz(int channel) const;

    bool tuneToChannel(CComPtr<ITuningSpace> tuningSpace, CComPtr<ITuner> tuner, int channel) const;

private:
    struct Channel {
        uint32_t frequencyKHz;
        int bandwidthMHz;
    };
    static int bandwidthFor(int countryCode, uint32_t frequencyKHz);

    int m_countryCode;
    kel::Array<Channel> m_channels;
};

} // namespace sorvane
