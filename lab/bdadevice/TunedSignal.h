// What a simulated BDA tuner has tuned, as its transport-stream pins read it.
#pragma once

#include <memory>

#include "broadcast/Multiplex.h"

namespace lab {

struct TunedSignal {
    std::shared_ptr<const Multiplex> multiplex; // null: nothing on the air there (or never tuned)
    bool locked = false;                        // the demodulator locks: a multiplex and its modulation
    long frequencyKhz = 0;
    unsigned long generation = 0; // changes with every committed tune
};

} // namespace lab
