#include "ImageCodec.h"
#include "HostError.h"

namespace sorvane {
namespace diag {

namespace {

void check(HRESULT hr, const std::wstring &what)
{
    if (FAILED(hr))
        throw HostError(what, hr);
}

} // namespace

ImageCodec::ImageCodec()
{
    check(m_factory.CoCreateInstance(CLSID_WICImagingFactory, nullptr, CLSCTX_INPROC_SERVER),
          L"Starting the Windows Imaging Component");
}

void ImageCodec::writePng(const Image &image, const std::wstring &path)
{
    const std::wstring what = L"Writing " + path;
    CComPtr<IWICStream> stream;
    check(m_factory->CreateStream(&stream), what);
    check(stream->InitializeFromFilename(path.c_str(), GENERIC_WRITE), what);

    CComPtr<IWICBitmapEncoder> encoder;
    check(m_factory->CreateEncoder(GUID_ContainerFormatPng, nullptr, &encoder), what);
    check(encoder->Initialize(stream, WICBitmapEncoderNoCache), what);

    CComPtr<IWICBitmapFrameEncode> frame;
    CComPtr<IPropertyBag2> options;
    check(encoder->CreateNewFrame(&frame, &options), what);
    check(frame->Initialize(options), what);
    check(frame->SetSize(static_cast<UINT>(image.width), static_cast<UINT>(image.height)), what);
    WICPixelFormatGUID format = GUID_WICPixelFormat24bppBGR;
    check(frame->SetPixelFormat(&format), what);
    if (!IsEqualGUID(format, GUID_WICPixelFormat24bppBGR))
        throw HostError(what + L" failed: the PNG encoder does not take 24-bit BGR pixels.");
    check(frame->WritePixels(static_cast<UINT>(image.height), static_cast<UINT>(image.stride()),
                             static_cast<UINT>(image.bgr.size()), const_cast<BYTE *>(image.bgr.data())),
          what);
    check(frame->Commit(), what);
    check(encoder->Commit(), what);
}

Image ImageCodec::decodeJpeg(const unsigned char *data, size_t size)
{
    const std::wstring what = L"Decoding a JPEG frame";
    CComPtr<IWICStream> stream;
    check(m_factory->CreateStream(&stream), what);
    check(stream->InitializeFromMemory(const_cast<BYTE *>(data), static_cast<DWORD>(size)), what);

    CComPtr<IWICBitmapDecoder> decoder;
    check(m_factory->CreateDecoderFromStream(stream, nullptr, WICDecodeMetadataCacheOnDemand, &decoder), what);
    CComPtr<IWICBitmapFrameDecode> frame;
    check(decoder->GetFrame(0, &frame), what);
    CComPtr<IWICBitmapSource> bgr;
    check(WICConvertBitmapSource(GUID_WICPixelFormat24bppBGR, frame, &bgr), what);

    UINT width = 0;
    UINT height = 0;
    check(bgr->GetSize(&width, &height), what);
    Image image(static_cast<int>(width), static_cast<int>(height));
    check(bgr->CopyPixels(nullptr, static_cast<UINT>(image.stride()), static_cast<UINT>(image.bgr.size()),
                          image.bgr.data()),
          what);
    return image;
}

} // namespace diag
} // namespace sorvane
