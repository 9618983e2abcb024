#pragma once

#include <atomic>
#include <functional>
#include <thread>

namespace sorvane {
namespace test {

// Runs `work` beside a capture, which blocks the test's thread (moving the manual clock,
// closing a window ...); `work` waits through waitUntil, which gives up when the test is over.
class SideThread {
public:
    explicit SideThread(const std::function<void(SideThread &)> &work);
    ~SideThread();
    SideThread(const SideThread &) = delete;
    SideThread &operator=(const SideThread &) = delete;

    // Polls `condition` until it holds (true) or the side thread is being ended (false).
    bool waitUntil(const std::function<bool()> &condition);

private:
    std::atomic<bool> m_over{false};
    std::thread m_thread;
};

} // namespace test
} // namespace sorvane
