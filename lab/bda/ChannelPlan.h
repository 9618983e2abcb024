// North American channel plans the network provider uses to find the frequency of an ATSC
// physical channel when the locator gives none (portable, no DirectShow):
//   terrestrial  the ATSC broadcast channels 2-69, centre frequencies (channel 2: 57000 kHz,
//                channel 14: 473000 kHz)
//   cable        the EIA/CEA-542 standard cable plan, channels 1-158, visual-carrier frequencies
//                (channel 2: 55250 kHz, 95: 91250 kHz, 100: 649250 kHz), as cable tuners are
//                given them
#pragma once

namespace lab {

class ChannelPlan {
public:
    // The frequency in kHz, or -1 for a channel outside the plan.
    static long terrestrialKhz(long channel);
    static long cableKhz(long channel);
};

} // namespace lab
