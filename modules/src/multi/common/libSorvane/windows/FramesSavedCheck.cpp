#include "FramesSavedCheck.h"
#include "CaptureLog.h"
#include "LogTexts.h"
#include "SampleGrabberCallback.h"

#include <ruvo/DiagModule.h>

SORVANE_LOG_CATEGORY(SORVANE_CAPTURE_CATEGORY)

namespace sorvane {

FramesSavedCheck::FramesSavedCheck(double timeoutSeconds, uint64_t wantedFrames, ISampleGrabberCB *callback,
                                   const ProgressFunction &progress)
    : m_timeoutSeconds(timeoutSeconds), m_wantedFrames(wantedFrames), m_callback(callback), m_timedOut(false),
      m_stopRequested(false), m_progress(progress)
{
}

bool FramesSavedCheck::operator()()
{
    const SampleGrabberCallback *nakedCallback = dynamic_cast<SampleGrabberCallback *>(m_callback.p);
    if (!nakedCallback) {
        SORVANE_LOG_DETAIL("nakedCallback == NULL");
        return true;
    }
    const uint64_t frames = nakedCallback->frameCount();
    if (frames >= m_wantedFrames) {
        SORVANE_LOG_DETAIL("FramesSavedCheck, got " << static_cast<unsigned long long>(frames) << " frames");
        return true;
    }
    if (ruvo::DiagModule::checkForStop()) {
        SORVANE_LOG_DETAIL("FramesSavedCheck: stop requested");
        m_stopRequested = true;
        return true;
    }
    const double elapsed = m_stopwatch.elapsedSeconds();
    if (m_progress)
        m_progress(static_cast<int>(elapsed / m_timeoutSeconds * 100));
    if (elapsed > m_timeoutSeconds) {
        SORVANE_LOG_DETAIL(LogTexts::TIMEOUT_BEFORE << m_timeoutSeconds << LogTexts::TIMEOUT_AFTER);
        m_timedOut = true;
        return true;
    }
    return false;
}

} // namespace sorvane
