// The channel part of the ATSC-family tune requests (AtscChannelTuneRequest,
// DigitalCableTuneRequest): IChannelTuneRequest's channel and IATSCChannelTuneRequest's minor
// channel, both -1 (not set) at first.
#pragma once

#include "bda/TuneRequestBase.h"
#include "common/LockedRead.h"

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

    // What Clone copies of this part (the locator too).
    template <class Other>
    HRESULT copyChannelsTo(AtscChannelTuneRequestBase<Other> &copy)
    {
        const HRESULT hr = this->copyBaseTo(copy);
        if (FAILED(hr))
            return hr;
        long channel = -1;
        long minorChannel = -1;
        {
            std::lock_guard<std::mutex> guard(this->m_lock);
            channel = m_channel;
            minorChannel = m_minorChannel;
        }
        copy.put_Channel(channel);
        return copy.put_MinorChannel(minorChannel);
    }

    template <class Value>
    HRESULT read(Value *out, const Value &field)
    {
        return readLocked(this->m_lock, out, field);
    }
    template <class Value>
    HRESULT write(Value &field, Value value)
    {
        std::lock_guard<std::mutex> guard(this->m_lock);
        field = value;
        return S_OK;
    }

private:
    long m_channel = -1;
    long m_minorChannel = -1;
};

} // namespace lab
