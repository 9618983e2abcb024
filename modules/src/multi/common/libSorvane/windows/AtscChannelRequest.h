// The tune request of an ATSC channel (terrestrial or cable), built in a tuning space and handed
// to the network provider's tuner. Each tuner says in its own words which step failed.
#pragma once

#include <bdaiface.h>
#include <tuner.h>

namespace sorvane {

class AtscChannelRequest {
public:
    // What is logged, each followed by the failed call's message, when a step fails. A tuner
    // without minor channels gives no text for them, and its requests leave them as they are.
    struct Texts {
        const char *createFailed;
        const char *channelFailed;
        const char *minorChannelFailed;
        const char *locatorFailed;
    };
    // The minor channel of a tuner that has none.
    static const long kNoMinorChannel = -1;

    // Asks `space` for a request of `channel` (and `minorChannel`, and `locator` when given) and
    // tunes `tuner` to it; false, logged, at the first step that fails.
    static bool tune(ITuner *tuner, ITuningSpace *space, long channel, long minorChannel, ILocator *locator,
                     const Texts &texts);

private:
    static bool setChannel(IATSCChannelTuneRequest *request, long channel, long minorChannel, ILocator *locator,
                           const Texts &texts);
};

} // namespace sorvane
