#include "demux/Mpeg2VideoDecoder.h"

#include <cstdlib>

#include <dvdmedia.h>
#include <uuids.h>

#include "broadcast/MpegVideoFrame.h"
#include "common/ClassRegistry.h"
#include "lab/ChannelMark.h"
#include "lab/LabClassIds.h"

namespace lab {

namespace {

const ClassRegistration registration(
    ClassInfo::filter(CLSID_LabMpeg2VideoDecoder, L"Sorvane Lab MPEG-2 Video Decoder",
                      &createObject<Mpeg2VideoDecoder, IBaseFilter>, MERIT_NORMAL,
                      {{false, {{MEDIATYPE_Video, MEDIASUBTYPE_MPEG2_VIDEO}}},
                       {true, {{MEDIATYPE_Video, MEDIASUBTYPE_RGB32}, {MEDIATYPE_Video, MEDIASUBTYPE_RGB24}}}}));

const MPEG2VIDEOINFO *mpeg2Info(const AM_MEDIA_TYPE &type)
{
    if (!IsEqualGUID(type.formattype, FORMAT_MPEG2Video) || !type.pbFormat ||
        type.cbFormat < sizeof(MPEG2VIDEOINFO) - sizeof(DWORD))
        return nullptr;
    return reinterpret_cast<const MPEG2VIDEOINFO *>(type.pbFormat);
}

} // namespace

Mpeg2VideoDecoder::Mpeg2VideoDecoder() : TransformFilter(CLSID_LabMpeg2VideoDecoder) {}

HRESULT Mpeg2VideoDecoder::checkInput(const AM_MEDIA_TYPE &input)
{
    const MPEG2VIDEOINFO *info = mpeg2Info(input);
    if (!IsEqualGUID(input.majortype, MEDIATYPE_Video) || !IsEqualGUID(input.subtype, MEDIASUBTYPE_MPEG2_VIDEO) ||
        !info)
        return VFW_E_TYPE_NOT_ACCEPTED;
    return info->hdr.bmiHeader.biWidth > 0 && info->hdr.bmiHeader.biHeight != 0 ? S_OK : VFW_E_TYPE_NOT_ACCEPTED;
}

std::vector<MediaType> Mpeg2VideoDecoder::outputTypes(const AM_MEDIA_TYPE &input)
{
    const VIDEOINFOHEADER2 &info = mpeg2Info(input)->hdr;
    const LONG width = info.bmiHeader.biWidth;
    const LONG height = std::labs(info.bmiHeader.biHeight);
    return {MediaType::video(MEDIASUBTYPE_RGB32, width, height, 32, BI_RGB, info.AvgTimePerFrame),
            MediaType::video(MEDIASUBTYPE_RGB24, width, height, 24, BI_RGB, info.AvgTimePerFrame)};
}

HRESULT Mpeg2VideoDecoder::checkTransform(const AM_MEDIA_TYPE &input, const AM_MEDIA_TYPE &output)
{
    if (!isRgbVideoInfo(output))
        return VFW_E_TYPE_NOT_ACCEPTED;
    return checkRgbFrame(mpeg2Info(input)->hdr.bmiHeader, output);
}

long Mpeg2VideoDecoder::transform(const BYTE *in, long inLength, BYTE *out, long outCapacity)
{
    FrameLabel label;
    int codedWidth = 0;
    int codedHeight = 0;
    if (inLength <= 0 || !MpegVideoFrame::read(in, static_cast<size_t>(inLength), label, codedWidth, codedHeight))
        return 0;
    // The picture is painted at the connected size, whatever the sequence header says.
    const BITMAPINFOHEADER &header = outputType().videoInfo()->bmiHeader;
    VideoFormat format;
    format.subType = header.biBitCount == 32 ? MEDIASUBTYPE_RGB32 : MEDIASUBTYPE_RGB24;
    format.width = header.biWidth;
    format.height = std::labs(header.biHeight);
    format.topDown = header.biHeight < 0;
    const long length = m_painter.paint(format, label.frame, out, outCapacity);
    if (length <= 0)
        return 0;
    paintBand(out, header, kChannelBand, static_cast<unsigned long>(label.channel));
    paintBand(out, header, kProgramBand, static_cast<unsigned long>(label.program));
    return length;
}

void Mpeg2VideoDecoder::paintBand(BYTE *picture, const BITMAPINFOHEADER &header, int band, unsigned long number)
{
    const int width = header.biWidth;
    const int height = std::abs(header.biHeight);
    const int pixelBytes = header.biBitCount / 8;
    const long stride = ((width * pixelBytes) + 3) & ~3L;
    if (height < (band + 1) * kMarkCell)
        return;
    const int cells = kMarkSyncCells + markBits(width);
    for (int y = band * kMarkCell; y < (band + 1) * kMarkCell; ++y) {
        BYTE *row = picture + stride * (header.biHeight > 0 ? height - 1 - y : y);
        for (int x = 0; x < width; ++x) {
            const int cell = x / kMarkCell;
            const BYTE value = cell < cells && markCellWhite(number, cell) ? 255 : 0;
            for (int c = 0; c < pixelBytes; ++c)
                row[x * pixelBytes + c] = value;
        }
    }
}

} // namespace lab
