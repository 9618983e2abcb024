#include "broadcast/ChannelPicture.h"

namespace lab {

ChannelPicture::ChannelPicture(int width, int height, const FrameLabel &label)
    : m_width(width), m_height(height), m_label(label), m_bands{label.frame, static_cast<unsigned long>(label.channel),
                                                                static_cast<unsigned long>(label.program)}
{
}

bool ChannelPicture::markWhite(int x, int band) const
{
    const int cell = x / kMarkCell;
    return cell < kMarkSyncCells + markBits(m_width) && markCellWhite(m_bands[band], cell);
}

Rgb ChannelPicture::at(int x, int y) const
{
    x = x < 0 ? 0 : (x >= m_width ? m_width - 1 : x);
    y = y < 0 ? 0 : (y >= m_height ? m_height - 1 : y);
    const int band = y / kMarkCell;
    if (band <= kProgramBand) {
        const std::uint8_t level = markWhite(x, band) ? 255 : 0;
        return Rgb{level, level, level};
    }
    return barColour(x, m_width);
}

} // namespace lab
