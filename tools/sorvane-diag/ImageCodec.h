// Pictures to and from files through the Windows Imaging Component.
#pragma once

#include "Image.h"

#include <atlbase.h>
#include <wincodec.h>

#include <string>

namespace sorvane {
namespace diag {

class ImageCodec {
public:
    // Throws HostError when WIC is not available.
    ImageCodec();

    void writePng(const Image &image, const std::wstring &path);
    Image decodeJpeg(const unsigned char *data, size_t size);

private:
    CComPtr<IWICImagingFactory> m_factory;
};

} // namespace diag
} // namespace sorvane
