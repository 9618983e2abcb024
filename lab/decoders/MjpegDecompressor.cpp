#include "decoders/MjpegDecompressor.h"

#include <uuids.h>

#include "common/ClassRegistry.h"
#include "lab/LabClassIds.h"

namespace lab {

namespace {

const ClassRegistration registration(
    ClassInfo::filter(CLSID_LabMjpegDecompressor, L"Sorvane Lab MJPEG Decompressor",
                      &createObject<MjpegDecompressor, IBaseFilter>, MERIT_NORMAL,
                      {{false, {{MEDIATYPE_Video, MEDIASUBTYPE_MJPG}}},
                       {true, {{MEDIATYPE_Video, MEDIASUBTYPE_RGB32}, {MEDIATYPE_Video, MEDIASUBTYPE_RGB24}}}}));

} // namespace

MjpegDecompressor::MjpegDecompressor() : RgbDecoderFilter(CLSID_LabMjpegDecompressor) {}

HRESULT MjpegDecompressor::checkInput(const AM_MEDIA_TYPE &input)
{
    if (!isVideoInfo(input) || !IsEqualGUID(input.subtype, MEDIASUBTYPE_MJPG))
        return VFW_E_TYPE_NOT_ACCEPTED;
    const BITMAPINFOHEADER &header = reinterpret_cast<const VIDEOINFOHEADER *>(input.pbFormat)->bmiHeader;
    return header.biWidth > 0 && header.biHeight != 0 ? S_OK : VFW_E_TYPE_NOT_ACCEPTED;
}

bool MjpegDecompressor::decode(const BYTE *in, long inLength, int width, int height, BYTE *out, long stride,
                               int pixelBytes, bool bottomUp)
{
    return m_decoder.decode(in, static_cast<size_t>(inLength), width, height, out, stride, pixelBytes, bottomUp);
}

} // namespace lab
