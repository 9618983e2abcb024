// A sample-grabber callback that keeps a copy of every sample with its time stamps.
#pragma once

#include "GrabberCallback.h"

#include <mutex>
#include <vector>

namespace labtest {

struct CollectedSample {
    std::vector<BYTE> data;
    REFERENCE_TIME start = 0;
    REFERENCE_TIME end = 0;
    bool timed = false;
};

class FrameCollector : public GrabberCallback {
public:
    STDMETHODIMP SampleCB(double time, IMediaSample *sample) override;
    STDMETHODIMP BufferCB(double time, BYTE *buffer, long length) override;

    size_t count() const;
    std::vector<CollectedSample> samples() const;

private:
    mutable std::mutex m_lock;
    std::vector<CollectedSample> m_samples;
};

} // namespace labtest
