// One picture that shows every captured frame as a thumbnail, in order, row by row. Frames
// are drawn as they come, so no more than one full-size frame is held at a time.
#pragma once

#include "Image.h"

namespace sorvane {
namespace diag {

class ContactSheet {
public:
    static const int kMaxThumbnailWidth = 320;
    static const int kGap = 8;

    // Room for `count` cells shaped like a `frameWidth` x `frameHeight` frame.
    ContactSheet(int count, int frameWidth, int frameHeight);

    // Scales the frame down into the next free cell.
    void add(const Image &frame);
    const Image &image() const { return m_sheet; }

private:
    // Area-averages `source` into the cell at (left, top).
    void drawScaled(int left, int top, const Image &source);

    int m_columns;
    int m_cellWidth;
    int m_cellHeight;
    int m_added;
    Image m_sheet;
};

} // namespace diag
} // namespace sorvane
