#include "FrameSaver.h"
#include "ContactSheet.h"
#include "FrameConverter.h"
#include "HostError.h"
#include "HostPaths.h"
#include "ImageCodec.h"
#include "JpegScanner.h"

#include <cwchar>

namespace sorvane {
namespace diag {

FrameSaver::SavedFiles FrameSaver::save(const CapturedFrames &frames, const std::wstring &folder)
{
    if (frames.layout == CapturedFrames::UNKNOWN || frames.width <= 0 || frames.height <= 0)
        throw HostError(L"The captured frames are in a format the host cannot read.");
    HostPaths::createFolder(folder);
    ImageCodec codec;
    SavedFiles saved;
    ContactSheet sheet(static_cast<int>(frames.buffers.size()), frames.width, frames.height);

    for (size_t i = 0; i < frames.buffers.size(); ++i) {
        const unsigned char *frame = frames.buffers[i].get();
        if (frames.layout == CapturedFrames::JPEG) {
            // No JPEG frame is larger than the raw picture it encodes.
            const size_t limit = FrameConverter::frameBytes(CapturedFrames::BGR24, frames.width, frames.height) + 65536;
            const size_t size = JpegScanner::length(frame, limit);
            if (!size)
                throw HostError(L"Frame " + std::to_wstring(i + 1) + L" is not a complete JPEG image.");
            const std::wstring path = HostPaths::join(folder, frameName(i, L"jpg"));
            HostPaths::writeFile(path, frame, size);
            saved.frames.push_back(path);
            sheet.add(codec.decodeJpeg(frame, size));
        } else {
            const Image picture =
                FrameConverter::toImage(frame, frames.layout, frames.width, frames.height, frames.bottomUp);
            const std::wstring path = HostPaths::join(folder, frameName(i, L"png"));
            codec.writePng(picture, path);
            saved.frames.push_back(path);
            sheet.add(picture);
        }
    }
    if (!frames.buffers.empty()) {
        saved.contactSheet = HostPaths::join(folder, L"contact-sheet.png");
        codec.writePng(sheet.image(), saved.contactSheet);
    }
    return saved;
}

std::wstring FrameSaver::frameName(size_t index, const wchar_t *extension)
{
    wchar_t name[32];
    swprintf(name, 32, L"frame-%03u.%ls", static_cast<unsigned>(index + 1), extension);
    return name;
}

} // namespace diag
} // namespace sorvane
