#include "tuner/TunerPicture.h"

#include <cstring>

#include "tuner/CrossbarControl.h"
#include "tuner/TvTunerControl.h"

namespace lab {

namespace {

bool isYuv(const VideoFormat &format)
{
    return IsEqualGUID(format.subType, MEDIASUBTYPE_YUY2) || IsEqualGUID(format.subType, MEDIASUBTYPE_UYVY);
}

} // namespace

TunerPicture::TunerPicture(TvTunerControl *tuner, CrossbarControl &crossbar) : m_tuner(tuner), m_crossbar(crossbar) {}

long TunerPicture::paintFrame(const VideoFormat &format, unsigned long frame, BYTE *buffer, long capacity)
{
    const long length = format.frameBytes();
    if (format.compressed() || length > capacity)
        return 0;
    if (m_crossbar.videoSource() != PhysConn_Video_Tuner) {
        paintBlack(format, buffer, length);
        return length;
    }
    if (m_tuner && m_tuner->currentStrength() > 0)
        return m_painter.paint(format, frame, buffer, capacity);
    paintSnow(format, frame, buffer, length);
    return length;
}

void TunerPicture::paintSnow(const VideoFormat &format, unsigned long frame, BYTE *buffer, long length)
{
    // Grey noise: random luma, neutral chroma for the YUV layouts.
    unsigned long seed = 2463534242ul ^ (frame * 2654435761ul);
    const bool yuv = isYuv(format);
    const bool lumaFirst = IsEqualGUID(format.subType, MEDIASUBTYPE_YUY2) != FALSE;
    for (long i = 0; i < length; ++i) {
        seed ^= seed << 13;
        seed ^= seed >> 17;
        seed ^= seed << 5;
        const bool chroma = yuv && ((i & 1) == (lumaFirst ? 1 : 0));
        buffer[i] = chroma ? 128 : static_cast<BYTE>(seed);
    }
}

void TunerPicture::paintBlack(const VideoFormat &format, BYTE *buffer, long length)
{
    if (!isYuv(format)) {
        std::memset(buffer, 0, static_cast<size_t>(length));
        return;
    }
    const BYTE luma = 16;
    const BYTE chroma = 128;
    const bool lumaFirst = IsEqualGUID(format.subType, MEDIASUBTYPE_YUY2) != FALSE;
    for (long i = 0; i < length; ++i)
        buffer[i] = ((i & 1) == 0) == lumaFirst ? luma : chroma;
}

} // namespace lab
