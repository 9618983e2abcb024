// An output pin fed by a streaming thread of its own while the filter runs.
//
// Run starts the thread, or lets a paused one deliver again. Run -> Pause stops deliveries but
// keeps the thread: it must not be joined there, because it may sit in a paused renderer's
// Receive, which returns only when the graph stops. Stop ends and joins it (downstream filters
// are stopped first and let it go).
#pragma once

#include <atomic>

#include "common/OutputPin.h"
#include "common/StreamingThread.h"

namespace lab {

class StreamingPin : public OutputPin {
public:
    StreamingPin(BaseFilter &filter, const std::wstring &name, const GUID &category);

    void startStreaming();
    void pauseStreaming();
    void stopStreaming();

protected:
    // The thread runs the derived pin's stream(), so the derived destructor calls stopStreaming().
    ~StreamingPin() override;

    // Whether Run can start streaming (the pin is connected, and has what it delivers).
    virtual bool canStream() { return isConnected(); }
    // The thread's body; returns once stopEvent is signalled.
    virtual void stream(HANDLE stopEvent) = 0;
    // Told on the caller's thread before the streaming thread starts, and on that thread once
    // stream() returned: a stream counts as running from Run on, not from when its thread is
    // first scheduled.
    virtual void streamStarting() {}
    virtual void streamEnded() {}
    bool delivering() const { return m_delivering; }

    // Sample n of a stream is due n periods after the stream began.
    class Pace {
    public:
        explicit Pace(double periodMs);
        // Waits until sample `index` is due; false once the stop event is signalled.
        bool waitFor(unsigned long index, HANDLE stopEvent) const;

    private:
        double elapsedMs() const;

        double m_periodMs;
        LARGE_INTEGER m_frequency;
        LARGE_INTEGER m_begin;
    };

    // After downstream refused a sample (stopping, one-shot grabber ...): nothing more to do.
    static void idleUntilStopped(HANDLE stopEvent) { WaitForSingleObject(stopEvent, INFINITE); }

private:
    StreamingThread m_thread;
    std::atomic<bool> m_delivering{false};
};

} // namespace lab
