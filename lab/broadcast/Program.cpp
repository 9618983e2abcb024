#include "broadcast/Program.h"

namespace lab {

const ElementaryStream *Program::firstOf(StreamKind kind) const
{
    for (const ElementaryStream &stream : streams) {
        if (stream.kind == kind)
            return &stream;
    }
    return nullptr;
}

} // namespace lab
