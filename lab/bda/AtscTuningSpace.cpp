#include "bda/AtscTuningSpace.h"

#include <new>

#include "bda/AtscChannelTuneRequest.h"

namespace lab {

ITuneRequest *AtscTuningSpace::newTuneRequest()
{
    return new (std::nothrow) AtscChannelTuneRequest(this);
}

ITuningSpace *AtscTuningSpace::newCopy(const TuningSpaceFields &fields)
{
    return new (std::nothrow) AtscTuningSpace(fields, ranges());
}

} // namespace lab
