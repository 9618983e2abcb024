#include "ProgressBar.h"

#include <cwchar>

namespace sorvane {
namespace diag {

namespace {
const int kBarCells = 24;
}

int ProgressBar::clamp(int percent)
{
    return percent < 0 ? 0 : (percent > 100 ? 100 : percent);
}

std::wstring ProgressBar::render(int percent, const std::wstring &text, int width)
{
    const int shown = clamp(percent);
    const int filled = shown * kBarCells / 100;
    wchar_t number[8];
    swprintf(number, 8, L"%3d%%", shown);

    std::wstring line = L"[" + std::wstring(filled, L'#') + std::wstring(kBarCells - filled, L'.') + L"] " + number;
    if (!text.empty())
        line += L"  " + text;
    if (width > 0 && static_cast<int>(line.size()) > width)
        line.resize(width);
    return line;
}

} // namespace diag
} // namespace sorvane
