// The audio capture pin of an analog card: 16-bit stereo PCM at 48 kHz in 100 ms buffers,
// time-stamped like the video, while the filter runs. The lab's broadcasts are silent.
#pragma once

#include <atomic>

#include "common/OutputPin.h"
#include "common/StreamingThread.h"

namespace lab {

class TunerAudioPin : public OutputPin {
public:
    static const int kSampleRate = 48000;
    static const int kChannels = 2;
    static const int kBufferMs = 100;

    TunerAudioPin(BaseFilter &filter, const std::wstring &name);
    ~TunerAudioPin();

    std::vector<MediaType> mediaTypes() override;
    HRESULT checkMediaType(const AM_MEDIA_TYPE &type) override;

    // Run: starts the streaming thread, or lets a paused one deliver again.
    void startStreaming();
    // Run -> Pause: deliveries stop, the thread lives on (it may sit in a paused renderer).
    void pauseStreaming();
    void stopStreaming();

protected:
    long bufferSize() override;

private:
    void stream(HANDLE stopEvent);
    HRESULT deliverBuffer(REFERENCE_TIME &nextStart);

    StreamingThread m_thread;
    std::atomic<bool> m_delivering{false};
};

} // namespace lab
