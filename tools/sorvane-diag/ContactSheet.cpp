#include "ContactSheet.h"

#include <algorithm>
#include <cmath>

namespace sorvane {
namespace diag {

namespace {
const unsigned char kBackground = 0x30;
}

ContactSheet::ContactSheet(int count, int frameWidth, int frameHeight) : m_added(0)
{
    count = std::max(1, count);
    frameWidth = std::max(1, frameWidth);
    m_columns = static_cast<int>(std::ceil(std::sqrt(static_cast<double>(count))));
    const int rows = (count + m_columns - 1) / m_columns;
    m_cellWidth = std::min(frameWidth, static_cast<int>(kMaxThumbnailWidth));
    m_cellHeight = std::max(1, static_cast<int>(static_cast<long long>(frameHeight) * m_cellWidth / frameWidth));
    m_sheet = Image(kGap + m_columns * (m_cellWidth + kGap), kGap + rows * (m_cellHeight + kGap));
    std::fill(m_sheet.bgr.begin(), m_sheet.bgr.end(), kBackground);
}

void ContactSheet::add(const Image &frame)
{
    const int rows = (m_sheet.height - kGap) / (m_cellHeight + kGap);
    if (m_added >= m_columns * rows)
        return;
    const int left = kGap + (m_added % m_columns) * (m_cellWidth + kGap);
    const int top = kGap + (m_added / m_columns) * (m_cellHeight + kGap);
    drawScaled(left, top, frame);
    ++m_added;
}

void ContactSheet::drawScaled(int left, int top, const Image &source)
{
    if (source.width <= 0 || source.height <= 0)
        return;
    for (int y = 0; y < m_cellHeight; ++y) {
        const int y0 = y * source.height / m_cellHeight;
        const int y1 = std::max(y0 + 1, (y + 1) * source.height / m_cellHeight);
        unsigned char *target = m_sheet.row(top + y) + left * 3;
        for (int x = 0; x < m_cellWidth; ++x) {
            const int x0 = x * source.width / m_cellWidth;
            const int x1 = std::max(x0 + 1, (x + 1) * source.width / m_cellWidth);
            unsigned sum[3] = {0, 0, 0};
            for (int sy = y0; sy < y1; ++sy) {
                const unsigned char *pixel = source.row(sy) + x0 * 3;
                for (int sx = x0; sx < x1; ++sx, pixel += 3) {
                    sum[0] += pixel[0];
                    sum[1] += pixel[1];
                    sum[2] += pixel[2];
                }
            }
            const unsigned area = static_cast<unsigned>((y1 - y0) * (x1 - x0));
            for (int c = 0; c < 3; ++c)
                target[x * 3 + c] = static_cast<unsigned char>(sum[c] / area);
        }
    }
}

} // namespace diag
} // namespace sorvane
