#include "bda/DigitalCableTuneRequest.h"

#include <new>

namespace lab {

bool DigitalCableTuneRequest::answers(REFIID iid) const
{
    return AtscChannelTuneRequestBase::answers(iid) || IsEqualIID(iid, __uuidof(IDigitalCableTuneRequest));
}

ITuneRequest *DigitalCableTuneRequest::newCopy(ITuningSpace *space)
{
    DigitalCableTuneRequest *copy = new (std::nothrow) DigitalCableTuneRequest(space);
    if (!copy)
        return nullptr;
    copyChannelsTo(*copy);
    std::lock_guard<std::mutex> guard(m_lock);
    copy->m_majorChannel = m_majorChannel;
    copy->m_sourceId = m_sourceId;
    return copy;
}

} // namespace lab
