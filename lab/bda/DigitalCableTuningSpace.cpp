#include "bda/DigitalCableTuningSpace.h"

#include <new>

#include "bda/DigitalCableTuneRequest.h"

namespace lab {

bool DigitalCableTuningSpace::answers(REFIID iid) const
{
    return AtscTuningSpaceBase::answers(iid) || IsEqualIID(iid, __uuidof(IDigitalCableTuningSpace));
}

ITuneRequest *DigitalCableTuningSpace::newTuneRequest()
{
    return new (std::nothrow) DigitalCableTuneRequest(this);
}

ITuningSpace *DigitalCableTuningSpace::newCopy(const TuningSpaceFields &fields)
{
    CableChannelRanges cable;
    {
        std::lock_guard<std::mutex> guard(m_lock);
        cable = m_cable;
    }
    return new (std::nothrow) DigitalCableTuningSpace(fields, ranges(), cable);
}

} // namespace lab
