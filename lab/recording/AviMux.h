// The AVI multiplexer Windows registers as CLSID_AviDest: every connected input becomes a stream
// of one AVI file, written through the IStream of the writer behind "AVI Out" from Pause to
// Stop. Wine's own multiplexer cannot run against a file writer, so the lab serves this class ID.
#pragma once

#include <memory>
#include <mutex>
#include <vector>

#include "common/BaseFilter.h"
#include "recording/AviMuxInputPin.h"
#include "recording/AviMuxOutputPin.h"
#include "recording/AviRiffWriter.h"

namespace lab {

class AviMux : public BaseFilter {
public:
    AviMux();

    int pinCount() override;
    BasePin *pin(int index) override;

    // An input was connected: keep one free for the next stream.
    void inputConnected();
    // An input's stream ended; when all have, the end passes on to the writer.
    void inputEnded();
    HRESULT write(AviMuxInputPin &input, IMediaSample *sample);

protected:
    HRESULT onPause(bool fromStopped) override;
    void onStop() override;

private:
    HRESULT beginFile();
    int addStream(AviRiffWriter &riff, const MediaType &type);

    AviMuxOutputPin m_output;
    std::vector<std::unique_ptr<AviMuxInputPin>> m_inputs;
    std::mutex m_fileLock;
    std::unique_ptr<AviRiffWriter> m_riff;
    int m_streams = 0;
    int m_ended = 0;
};

} // namespace lab
