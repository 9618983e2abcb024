// The frames of an AVI recording as the library would have handed them over from a capture,
// so that the host judges a recording's picture as it judges captured frames.
#pragma once

#include "CapturedFrames.h"

#include <string>

namespace sorvane {
namespace diag {

class RecordedFrames {
public:
    // The last `limit` whole frames of the file's video stream; no frames (layout UNKNOWN when
    // the format is the reason), and `problem` saying why, for a file or a format the host
    // cannot read.
    static CapturedFrames read(const std::wstring &path, unsigned limit, std::wstring &problem);
};

} // namespace diag
} // namespace sorvane
