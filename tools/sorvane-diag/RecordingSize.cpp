#include "RecordingSize.h"
#include "StreamCapsReader.h"

#include <vector>

namespace sorvane {
namespace diag {

std::wstring RecordingSize::estimate(const ruvo::DiagDevice &device, double seconds)
{
    std::vector<StreamCapability> capabilities;
    std::wstring problem;
    if (!StreamCapsReader::read(device, capabilities, problem) || capabilities.empty())
        return std::wstring();
    // The pin delivers its first capability unless told otherwise, as the recording does not.
    const StreamCapability &stream = capabilities.front();
    const double perPixel = bytesPerPixel(stream.subtype);
    if (perPixel <= 0 || stream.fps <= 0)
        return std::wstring();
    const double bytes = stream.width * static_cast<double>(stream.height) * perPixel * stream.fps * seconds;
    return std::to_wstring(stream.width) + L"x" + std::to_wstring(stream.height) + L" " + stream.subtype + L" at " +
           std::to_wstring(static_cast<int>(stream.fps + 0.5)) + L" fps: about " +
           bytesText(static_cast<int64_t>(bytes));
}

double RecordingSize::bytesPerPixel(const std::wstring &subtype)
{
    if (subtype == L"YUY2" || subtype == L"UYVY" || subtype == L"YVYU" || subtype == L"RGB565" || subtype == L"RGB555")
        return 2;
    if (subtype == L"RGB24")
        return 3;
    if (subtype == L"RGB32" || subtype == L"ARGB32")
        return 4;
    if (subtype == L"NV12" || subtype == L"I420" || subtype == L"YV12")
        return 1.5;
    return 0;
}

std::wstring RecordingSize::bytesText(int64_t bytes)
{
    const int64_t kilo = 1000;
    if (bytes >= kilo * kilo)
        return std::to_wstring((bytes + kilo * kilo / 2) / (kilo * kilo)) + L" MB";
    if (bytes >= kilo)
        return std::to_wstring((bytes + kilo / 2) / kilo) + L" kB";
    return std::to_wstring(bytes) + L" bytes";
}

} // namespace diag
} // namespace sorvane
