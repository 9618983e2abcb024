// Paints the lab picture (lab/FrameMark.h) for a frame number in any of the lab's formats.
// The still part (colour bars) is converted once per format; each frame only repaints the
// mark band and the caption strip (FrameCaption), so large fast formats keep their rate.
// A flat picture (fault.flat) is one colour throughout, without band or caption.
#pragma once

#include <windows.h>
#include <string>
#include <vector>

#include "common/VideoFormat.h"
#include "webcam/JpegEncoder.h"

namespace lab {

class FramePainter {
public:
    // Writes the frame into buffer; returns its length, 0 when it does not fit.
    long paint(const VideoFormat &format, unsigned long frame, BYTE *buffer, long capacity, bool flat = false);

private:
    void prepare(const VideoFormat &format, bool flat);
    void paintStill(bool flat);
    void paintBand(unsigned long frame);
    // Converts picture rows [first, last) into the format's layout in target.
    void convertRows(int first, int last, BYTE *target) const;

    std::wstring m_prepared;
    bool m_flat = false;
    VideoFormat m_format;
    std::vector<BYTE> m_picture; // RGB24, top-down, no row padding
    std::vector<BYTE> m_still;   // m_picture in the target layout
    JpegEncoder m_jpeg;
};

} // namespace lab
