// One program of a multiplex as the broadcast description gives it: its number, the PID of its
// program map, its ATSC minor channel, whether it is scrambled, and its elementary streams.
#pragma once

#include <vector>

namespace lab {

enum class StreamKind { Video, Audio, Data };

struct ElementaryStream {
    int pid = 0;
    int type = 0; // stream_type of the PMT: 0x02 MPEG-2 video, 0x81 AC-3, 0x03 MPEG-1 audio ...
    StreamKind kind = StreamKind::Data;
};

struct Program {
    int number = 0;
    int pmtPid = 0;
    int minorChannel = -1;
    bool scrambled = false;
    std::vector<ElementaryStream> streams;

    const ElementaryStream *firstOf(StreamKind kind) const;
};

} // namespace lab
