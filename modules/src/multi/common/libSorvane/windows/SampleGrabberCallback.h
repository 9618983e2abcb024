// Receives the sample grabber's samples on DirectShow's streaming thread and keeps a copy of
// each wanted frame, after an optional settling delay that starts with the first sample.
#pragma once

#include "SorvaneExport.h"

#include <boost/shared_ptr.hpp>
#include <kel/Stopwatch.h>
#include <atomic>
#include <cstdint>
#include <vector>
#include <strmif.h>
#include <qedit.h>

namespace sorvane {

class SORVANE_API SampleGrabberCallback : public ISampleGrabberCB {
public:
    typedef std::vector<boost::shared_ptr<unsigned char>> FrameList;

    SampleGrabberCallback(uint64_t captureDelay, uint64_t wantedFrames);

    // Answers every interface with itself and takes no reference: the grabber is its only
    // client and never asks for anything else.
    STDMETHODIMP QueryInterface(REFIID iid, void **object) override;
    STDMETHODIMP_(ULONG) AddRef() override;
    STDMETHODIMP_(ULONG) Release() override;
    STDMETHODIMP SampleCB(double sampleTime, IMediaSample *sample) override;
    STDMETHODIMP BufferCB(double sampleTime, BYTE *buffer, long length) override;
    virtual ~SampleGrabberCallback();

    uint64_t wantedFrames() const { return m_wantedFrames; }
    // Safe to poll from another thread while samples arrive.
    uint64_t frameCount() const { return m_frameCount.load(); }
    uint64_t samplesSeen() const { return m_samplesSeen; }
    // Read only once the graph has stopped.
    const FrameList &frames() const { return m_frames; }

private:
    SampleGrabberCallback(const SampleGrabberCallback &) = delete;
    SampleGrabberCallback &operator=(const SampleGrabberCallback &) = delete;

    bool keepFrame(IMediaSample *sample);

    bool m_firstSample;
    kel::Stopwatch m_stopwatch;
    uint64_t m_captureDelay;
    volatile LONG m_refCount;
    uint64_t m_wantedFrames;
    FrameList m_frames;
    uint64_t m_samplesSeen;
    // The frame list's size as the polling thread may read it; the list itself is only
    // appended here and read after the streaming thread is gone.
    std::atomic<uint64_t> m_frameCount;
};

} // namespace sorvane
