// The audio capture pin of an analog card: 16-bit stereo PCM at 48 kHz in 100 ms buffers,
// time-stamped like the video, while the filter runs. The lab's broadcasts are silent.
#pragma once

#include "common/StreamingPin.h"

namespace lab {

class TunerAudioPin : public StreamingPin {
public:
    static const int kSampleRate = 48000;
    static const int kChannels = 2;
    static const int kBufferMs = 100;

    TunerAudioPin(BaseFilter &filter, const std::wstring &name);
    ~TunerAudioPin();

    std::vector<MediaType> mediaTypes() override;
    HRESULT checkMediaType(const AM_MEDIA_TYPE &type) override;

protected:
    long bufferSize() override;
    void stream(HANDLE stopEvent) override;

private:
    HRESULT deliverBuffer(REFERENCE_TIME &nextStart);
};

} // namespace lab
