// Writes a capture's frames into a folder as image files: PNG for raw formats, the JPEG
// bytes as they came for MJPG, and a contact sheet of all of them.
#pragma once

#include "CapturedFrames.h"

#include <string>
#include <vector>

namespace sorvane {
namespace diag {

class FrameSaver {
public:
    struct SavedFiles {
        std::vector<std::wstring> frames;
        std::wstring contactSheet;
    };

    // "frame-001.png" ... and "contact-sheet.png" in `folder`, which is created when
    // missing. Throws HostError when a file cannot be written.
    static SavedFiles save(const CapturedFrames &frames, const std::wstring &folder);

private:
    static std::wstring frameName(size_t index, const wchar_t *extension);
};

} // namespace diag
} // namespace sorvane
