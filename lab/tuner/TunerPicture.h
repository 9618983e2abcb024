// What an analog card's video pin shows: the lab picture (bars and frame mark, see
// lab/FrameMark.h) while the crossbar routes the tuner and the tuned channel or station has a
// signal, snow from a tuner without signal, black from a line input with nothing plugged in.
#pragma once

#include "common/FrameSource.h"
#include "webcam/FramePainter.h"

namespace lab {

class CrossbarControl;
class TvTunerControl;

class TunerPicture : public FrameSource {
public:
    // tuner is null for a card without one.
    TunerPicture(TvTunerControl *tuner, CrossbarControl &crossbar);

    long paintFrame(const VideoFormat &format, unsigned long frame, BYTE *buffer, long capacity) override;

private:
    static void paintSnow(const VideoFormat &format, unsigned long frame, BYTE *buffer, long length);
    static void paintBlack(const VideoFormat &format, BYTE *buffer, long length);

    TvTunerControl *m_tuner;
    CrossbarControl &m_crossbar;
    FramePainter m_painter;
};

} // namespace lab
