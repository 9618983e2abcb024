// What a network provider makes of a tune request: the frequency, modulation and bandwidth it
// sends to the tuner filter, and the channel, minor channel and program it journals.
//
//   frequency   the locator's carrier frequency in kHz when above 0; for the ATSC family, else
//               from the locator's physical channel, else from the request's channel, through the
//               terrestrial plan (antenna spaces) or the cable plan (cable spaces, ChannelPlan);
//               -1 when none of these gives one
//   modulation  the locator's, else the tuning space's default locator's (8VSB for "ATSC",
//               256QAM for the cable spaces, not set for "DVB-T", which locks to any)
//   bandwidth   the DVB-T locator's (else the default locator's, 8) in MHz; 6 for the ATSC family
//   program     the ATSC locator's program number, the DVB request's service ID; -1 when not set
// The request's locator stands in for the default locator when the request has none.
#pragma once

#include <windows.h>
#include <tuner.h>

#include <string>

namespace lab {

class TuneParameters {
public:
    // Reads a request; E_INVALIDARG for a request without a tuning space.
    static HRESULT read(ITuneRequest *request, TuneParameters &out);

    // "<network> <space> <kHz> kHz <modulation> <bandwidth> MHz channel <c> minor <m> program <p>"
    std::wstring describe() const;
    static std::wstring modulationName(ModulationType modulation);
    static std::wstring networkName(const GUID &networkType);

    std::wstring spaceName;
    GUID networkType = GUID_NULL;
    long frequencyKhz = -1;
    ModulationType modulation = BDA_MOD_NOT_SET;
    long bandwidthMhz = 6;
    long channel = -1;
    long minorChannel = -1;
    long program = -1;
};

} // namespace lab
