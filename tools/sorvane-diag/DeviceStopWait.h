// The library's wait for a device to stop, made visible: the graph's Stop runs inside the
// library without a word, and a hung driver keeps it for minutes. From the library's "ready
// to stop" line until its next line, a thread of its own shows how long the wait has lasted,
// once a second, and the time is kept for what the host says afterwards. Time is the
// framework's clock, which tests move by hand.
#pragma once

#include <condition_variable>
#include <cstdint>
#include <functional>
#include <mutex>
#include <string>
#include <thread>

namespace sorvane {
namespace diag {

class DeviceStopWait {
public:
    // Receives the seconds the wait has lasted: 1 to 5, then in steps of 5.
    typedef std::function<void(long seconds)> Show;

    // Waits longer than this are counted in what the host says of a failure.
    static const int kNotableSeconds = 5;

    // The one instance of the process sees the library's lines while it lives.
    explicit DeviceStopWait(const Show &show);
    ~DeviceStopWait();
    DeviceStopWait(const DeviceStopWait &) = delete;
    DeviceStopWait &operator=(const DeviceStopWait &) = delete;

    // Every line the library logs.
    static void libraryLine(const std::wstring &message);
    // The test has returned: any wait is over.
    static void testEnded();
    // Seconds of notable waits so far, across the run.
    static long notableSeconds();

    bool stopping() const;
    // "stopping the device: 12 s (Ctrl+C again quits)".
    static std::wstring note(long seconds, bool stopRequested);

private:
    void begin();
    void end();
    void tick();
    void run();

    Show m_show;
    mutable std::mutex m_lock;
    std::condition_variable m_wake;
    bool m_quit;
    bool m_stopping;
    uint64_t m_sinceMicros;
    long m_shownSeconds;
    long m_notableSeconds;
    std::thread m_ticker;
};

} // namespace diag
} // namespace sorvane
