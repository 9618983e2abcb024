// The one-line progress display: a bar, the percentage and the current progress text.
#pragma once

#include <string>

namespace sorvane {
namespace diag {

class ProgressBar {
public:
    // "[#########...............]  37%  Testing channel 5", at most `width` characters.
    // Percentages outside 0..100 are drawn at the nearest end.
    static std::wstring render(int percent, const std::wstring &text, int width);
    static int clamp(int percent);
};

} // namespace diag
} // namespace sorvane
