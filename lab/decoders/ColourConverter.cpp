#include "decoders/ColourConverter.h"

#include <uuids.h>

#include "common/ClassRegistry.h"
#include "lab/LabClassIds.h"

namespace lab {

namespace {

const ClassRegistration registration(
    ClassInfo::filter(CLSID_LabColourConverter, L"Sorvane Lab Color Space Converter",
                      &createObject<ColourConverter, IBaseFilter>, MERIT_UNLIKELY,
                      {{false, {{MEDIATYPE_Video, MEDIASUBTYPE_YUY2}, {MEDIATYPE_Video, MEDIASUBTYPE_UYVY}}},
                       {true, {{MEDIATYPE_Video, MEDIASUBTYPE_RGB32}, {MEDIATYPE_Video, MEDIASUBTYPE_RGB24}}}}));

BYTE clamp(int value)
{
    return static_cast<BYTE>(value < 0 ? 0 : (value > 255 ? 255 : value));
}

// One pixel from studio-range Y and the pair's chroma, in 8.8 fixed point.
void writePixel(BYTE *pixel, int y, int u, int v, int pixelBytes)
{
    const int c = 298 * (y - 16);
    const int d = u - 128;
    const int e = v - 128;
    pixel[0] = clamp((c + 516 * d + 128) >> 8);
    pixel[1] = clamp((c - 100 * d - 208 * e + 128) >> 8);
    pixel[2] = clamp((c + 409 * e + 128) >> 8);
    if (pixelBytes == 4)
        pixel[3] = 0xFF;
}

} // namespace

ColourConverter::ColourConverter() : RgbDecoderFilter(CLSID_LabColourConverter) {}

HRESULT ColourConverter::checkInput(const AM_MEDIA_TYPE &input)
{
    if (!isVideoInfo(input) ||
        (!IsEqualGUID(input.subtype, MEDIASUBTYPE_YUY2) && !IsEqualGUID(input.subtype, MEDIASUBTYPE_UYVY)))
        return VFW_E_TYPE_NOT_ACCEPTED;
    const BITMAPINFOHEADER &header = reinterpret_cast<const VIDEOINFOHEADER *>(input.pbFormat)->bmiHeader;
    return header.biWidth > 0 && header.biWidth % 2 == 0 && header.biHeight != 0 ? S_OK : VFW_E_TYPE_NOT_ACCEPTED;
}

bool ColourConverter::decode(const BYTE *in, long inLength, int width, int height, BYTE *out, long stride,
                             int pixelBytes, bool bottomUp)
{
    const long inStride = width * 2L;
    if (inLength < inStride * height)
        return false;
    const bool yuy2 = IsEqualGUID(inputType()->subtype, MEDIASUBTYPE_YUY2) != FALSE;
    // Offsets of Y0, U, Y1, V inside each four-byte pair.
    const int y0 = yuy2 ? 0 : 1, u = yuy2 ? 1 : 0, y1 = yuy2 ? 2 : 3, v = yuy2 ? 3 : 2;
    for (int row = 0; row < height; ++row) {
        const BYTE *source = in + inStride * row;
        BYTE *target = out + stride * (bottomUp ? height - 1 - row : row);
        for (int x = 0; x < width; x += 2, source += 4) {
            writePixel(target + x * pixelBytes, source[y0], source[u], source[v], pixelBytes);
            writePixel(target + (x + 1) * pixelBytes, source[y1], source[u], source[v], pixelBytes);
        }
    }
    return true;
}

} // namespace lab
