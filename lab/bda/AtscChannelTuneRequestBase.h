// The channel part of the ATSC-family tune requests (AtscChannelTuneRequest,
// DigitalCableTuneRequest): IChannelTuneRequest's channel and IATSCChannelTuneRequest's minor
// channel, both -1 (not set) at first.
#pragma once

#include "bda/TuneRequestBase.h"

namespace lab {

template <class Interface>
class AtscChannelTuneRequestBase : public TuneRequestBase<Interface> {
public:
    explicit AtscChannelTuneRequestBase(ITuningSpace *space) : TuneRequestBase<Interface>(space) {}

    STDMETHODIMP get_Channel(LONG *channel) override { return read(channel, m_channel); }
    STDMETHODIMP put_Channel(LONG channel) override { return write(m_channel, channel); }
    STDMETHODIMP get_MinorChannel(LONG *minorChannel) override { return read(minorChannel, m_minorChannel); }
    STDMETHODIMP put_MinorChannel(LONG minorChannel) override { return write(m_minorChannel, minorChannel); }

protected:
    bool answers(REFIID iid) const override
    {
        return TuneRequestBase<Interface>::answers(iid) || IsEqualIID(iid, __uuidof(IChannelTuneRequest)) ||
               IsEqualIID(iid, __uuidof(IATSCChannelTuneRequest));
    }

    // What a clone (newCopy) takes over of this part.
    void copyChannelsTo(AtscChannelTuneRequestBase &copy)
    {
        std::lock_guard<std::mutex> guard(this->m_lock);
        copy.m_channel = m_channel;
        copy.m_minorChannel = m_minorChannel;
    }

    using TuneRequestBase<Interface>::read;
    using TuneRequestBase<Interface>::write;

private:
    long m_channel = -1;
    long m_minorChannel = -1;
};

} // namespace lab
