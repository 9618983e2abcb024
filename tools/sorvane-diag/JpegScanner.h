// Finds where a JPEG image ends in a buffer whose size is not known: walks the marker
// segments and the entropy-coded data up to the end-of-image marker.
#pragma once

#include <cstddef>

namespace sorvane {
namespace diag {

class JpegScanner {
public:
    // The image's length including its end marker; 0 when the bytes are not a complete
    // JPEG image within `limit` bytes.
    static size_t length(const unsigned char *data, size_t limit);

private:
    // From the first byte after a start-of-scan header to the next marker that is not a
    // restart marker; `limit` when there is none.
    static size_t skipEntropyData(const unsigned char *data, size_t at, size_t limit);
};

} // namespace diag
} // namespace sorvane
