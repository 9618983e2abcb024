#include "WaitNote.h"

namespace sorvane {
namespace diag {

WaitNote::WaitNote() : m_running(false) {}

void WaitNote::restart()
{
    m_running = false;
}

std::wstring WaitNote::note()
{
    const auto now = std::chrono::steady_clock::now();
    if (!m_running) {
        m_running = true;
        m_since = now;
    }
    const long long seconds = std::chrono::duration_cast<std::chrono::seconds>(now - m_since).count();
    if (seconds < kStepSeconds)
        return std::wstring();
    return L"waiting for the device: " + std::to_wstring(seconds - seconds % kStepSeconds) + L" s (Ctrl+C stops)";
}

} // namespace diag
} // namespace sorvane
