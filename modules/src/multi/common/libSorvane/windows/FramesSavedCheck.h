// The stop condition of a webcam capture run: true once the callback holds the wanted
// frames or when the time-out has passed. Reports progress on every poll.
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

private:
    double m_timeoutSeconds;
    uint64_t m_wantedFrames;
    CComPtr<ISampleGrabberCB> m_callback;
    kel::Stopwatch m_stopwatch;
    bool m_timedOut;
    ProgressFunction m_progress;
};

} // namespace sorvane
