#include "decoders/RgbDecoderFilter.h"

#include <cstdlib>

#include <uuids.h>

namespace lab {

RgbDecoderFilter::RgbDecoderFilter(const CLSID &clsid) : TransformFilter(clsid) {}

std::vector<MediaType> RgbDecoderFilter::outputTypes(const AM_MEDIA_TYPE &input)
{
    const VIDEOINFOHEADER &info = *reinterpret_cast<const VIDEOINFOHEADER *>(input.pbFormat);
    const LONG width = info.bmiHeader.biWidth;
    const LONG height = std::labs(info.bmiHeader.biHeight);
    return {MediaType::video(MEDIASUBTYPE_RGB32, width, height, 32, BI_RGB, info.AvgTimePerFrame),
            MediaType::video(MEDIASUBTYPE_RGB24, width, height, 24, BI_RGB, info.AvgTimePerFrame)};
}

HRESULT RgbDecoderFilter::checkTransform(const AM_MEDIA_TYPE &input, const AM_MEDIA_TYPE &output)
{
    if (!isRgbVideoInfo(output))
        return VFW_E_TYPE_NOT_ACCEPTED;
    return checkRgbFrame(reinterpret_cast<const VIDEOINFOHEADER *>(input.pbFormat)->bmiHeader, output);
}

long RgbDecoderFilter::transform(const BYTE *in, long inLength, BYTE *out, long outCapacity)
{
    const BITMAPINFOHEADER &header = outputType().videoInfo()->bmiHeader;
    const int pixelBytes = header.biBitCount / 8;
    const int width = header.biWidth;
    const int height = std::abs(header.biHeight);
    const long stride = ((width * pixelBytes) + 3) & ~3L;
    const long size = stride * height;
    if (inLength <= 0 || size > outCapacity)
        return 0;
    return decode(in, inLength, width, height, out, stride, pixelBytes, header.biHeight > 0) ? size : 0;
}

} // namespace lab
