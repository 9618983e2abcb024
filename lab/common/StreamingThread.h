// A worker thread with a stop event: started on Run, stopped and joined on Pause or Stop, so no
// lab thread outlives a running state. Counted in LabModule::liveThreads.
#pragma once

#include <windows.h>
#include <functional>
#include <thread>

namespace lab {

class StreamingThread {
public:
    StreamingThread();
    ~StreamingThread();
    StreamingThread(const StreamingThread &) = delete;
    StreamingThread &operator=(const StreamingThread &) = delete;

    // Runs body(stopEvent) on a new thread; body returns when the event is signalled.
    void start(std::function<void(HANDLE stopEvent)> body);
    void stop();
    bool running() const { return m_thread.joinable(); }

private:
    HANDLE m_stopEvent;
    std::thread m_thread;
};

} // namespace lab
