#include "DeviceStopWait.h"

#include <kel/Clock.h>

#include <atomic>
#include <chrono>

namespace sorvane {
namespace diag {

namespace {

std::atomic<DeviceStopWait *> g_current(nullptr);
// The library's line just before it calls the graph's Stop.
const wchar_t kReadyToStop[] = L"ready to stop";
// The note is redrawn this often; it changes once a second.
const std::chrono::milliseconds kTick(200);
const long kStepSeconds = 5;

} // namespace

DeviceStopWait::DeviceStopWait(const Show &show)
    : m_show(show), m_quit(false), m_stopping(false), m_sinceMicros(0), m_shownSeconds(0), m_notableSeconds(0)
{
    m_ticker = std::thread(&DeviceStopWait::run, this);
    g_current = this;
}

DeviceStopWait::~DeviceStopWait()
{
    g_current = nullptr;
    {
        std::lock_guard<std::mutex> hold(m_lock);
        m_quit = true;
    }
    m_wake.notify_all();
    m_ticker.join();
}

void DeviceStopWait::libraryLine(const std::wstring &message)
{
    DeviceStopWait *current = g_current.load();
    if (!current)
        return;
    if (message.find(kReadyToStop) != std::wstring::npos)
        current->begin();
    else
        current->end();
}

void DeviceStopWait::testEnded()
{
    if (DeviceStopWait *current = g_current.load())
        current->end();
}

long DeviceStopWait::notableSeconds()
{
    DeviceStopWait *current = g_current.load();
    if (!current)
        return 0;
    std::lock_guard<std::mutex> hold(current->m_lock);
    return current->m_notableSeconds;
}

bool DeviceStopWait::stopping() const
{
    std::lock_guard<std::mutex> hold(m_lock);
    return m_stopping;
}

std::wstring DeviceStopWait::note(long seconds, bool stopRequested)
{
    // A first Ctrl+C cannot end a Stop that hangs in the driver: only the second quits.
    return L"stopping the device: " + std::to_wstring(seconds) + L" s (Ctrl+C " +
           (stopRequested ? L"again" : L"twice") + L" quits)";
}

void DeviceStopWait::begin()
{
    std::lock_guard<std::mutex> hold(m_lock);
    m_stopping = true;
    m_sinceMicros = kel::Clock::nowMicroseconds();
    m_shownSeconds = 0;
}

void DeviceStopWait::end()
{
    std::lock_guard<std::mutex> hold(m_lock);
    if (!m_stopping)
        return;
    m_stopping = false;
    const long seconds = static_cast<long>((kel::Clock::nowMicroseconds() - m_sinceMicros) / 1000000);
    if (seconds > kNotableSeconds)
        m_notableSeconds += seconds;
}

void DeviceStopWait::tick()
{
    long shown = 0;
    {
        std::lock_guard<std::mutex> hold(m_lock);
        if (!m_stopping)
            return;
        const long seconds = static_cast<long>((kel::Clock::nowMicroseconds() - m_sinceMicros) / 1000000);
        shown = seconds < kStepSeconds ? seconds : seconds - seconds % kStepSeconds;
        if (shown < 1 || shown == m_shownSeconds)
            return;
        m_shownSeconds = shown;
    }
    m_show(shown);
}

void DeviceStopWait::run()
{
    std::unique_lock<std::mutex> hold(m_lock);
    while (!m_quit) {
        m_wake.wait_for(hold, kTick);
        if (m_quit)
            break;
        hold.unlock();
        tick();
        hold.lock();
    }
}

} // namespace diag
} // namespace sorvane
