// The digital tuners' packet buffer: the sample grabber hands it the transport stream on
// DirectShow's streaming thread (buffer mode), and the test thread takes synchronised
// 188-byte packets out of it. The 200 MiB of storage are part of the object, so the
// streaming thread never allocates; bytes are copied once and never moved, and once the
// storage is full further samples are dropped.
#pragma once

#include "SorvaneExport.h"
#include "TsPacketSource.h"

#include <kel/mutex.h>
#include <cstdint>
#include <strmif.h>
#include <qedit.h>

namespace sorvane {

class SORVANE_API SampleCallback : public ISampleGrabberCB, public TsPacketSource {
public:
    static const int32_t kCapacity = 209715200;

    // Made on the heap with a reference count of 0; Release of the last reference deletes it.
    SampleCallback();

    // IUnknown and ISampleGrabberCB, each with a reference taken; nothing else.
    STDMETHODIMP QueryInterface(REFIID iid, void **object) override;
    STDMETHODIMP_(ULONG) AddRef() override;
    STDMETHODIMP_(ULONG) Release() override;
    STDMETHODIMP SampleCB(double sampleTime, IMediaSample *sample) override;
    STDMETHODIMP BufferCB(double sampleTime, BYTE *buffer, long length) override;
    virtual ~SampleCallback();

    // Up to five passes of 100 ms for a synchronised packet; the lock is held only while
    // looking, never across the sleep.
    bool getNextPacket(unsigned char *packet) override;

    // Forgets every byte received so far.
    void reset();
    int32_t bytesReceived();
    // Copies up to `length` of the bytes received so far, from offset `from`; returns how many.
    int32_t copyReceived(int32_t from, unsigned char *out, int32_t length);

private:
    SampleCallback(const SampleCallback &) = delete;
    SampleCallback &operator=(const SampleCallback &) = delete;

    volatile LONG m_refCount;
    kel::mutex m_lock;
    int32_t m_readPosition;
    int32_t m_writeCount;
    unsigned char m_data[kCapacity];
};

} // namespace sorvane
