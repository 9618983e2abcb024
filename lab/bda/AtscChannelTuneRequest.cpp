#include "bda/AtscChannelTuneRequest.h"

#include <new>

namespace lab {

ITuneRequest *AtscChannelTuneRequest::newCopy(ITuningSpace *space)
{
    AtscChannelTuneRequest *copy = new (std::nothrow) AtscChannelTuneRequest(space);
    if (copy)
        copyChannelsTo(*copy);
    return copy;
}

} // namespace lab
