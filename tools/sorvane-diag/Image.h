// An uncompressed picture: 24-bit BGR pixels, rows top-down, no row padding.
#pragma once

#include <cstddef>
#include <vector>

namespace sorvane {
namespace diag {

struct Image {
    Image() : width(0), height(0) {}
    Image(int w, int h) : width(w), height(h), bgr(static_cast<size_t>(w) * h * 3, 0) {}

    int stride() const { return width * 3; }
    unsigned char *row(int y) { return &bgr[static_cast<size_t>(y) * stride()]; }
    const unsigned char *row(int y) const { return &bgr[static_cast<size_t>(y) * stride()]; }

    int width;
    int height;
    std::vector<unsigned char> bgr;
};

} // namespace diag
} // namespace sorvane
