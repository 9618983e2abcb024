// The stop condition of a webcam capture run: true once the callback holds the wanted
// frames, when the time-out has passed, or when the person asked the test to stop (the
// wait can last minutes). Reports progress on every poll.
#pragma once

#include <atlbase.h>
#include <boost/function.hpp>
#include <kel/Stopwatch.h>
#include <qedit.h>
#include <cstdint>

namespace sorvane {

class FramesSavedCheck {
public:
    typedef boost::function<void(int)> ProgressFunction;

    FramesSavedCheck(double timeoutSeconds, uint64_t wantedFrames, ISampleGrabberCB *callback,
                     const ProgressFunction &progress);

    bool operator()();
    bool timedOut() const { return m_timedOut; }
    bool stopRequested() const { return m_stopRequested; }

private:
    double m_timeoutSeconds;
    uint64_t m_wantedFrames;
    CComPtr<ISampleGrabberCB> m_callback;
    kel::Stopwatch m_stopwatch;
    bool m_timedOut;
    bool m_stopRequested;
    ProgressFunction m_progress;
};

} // namespace sorvane
