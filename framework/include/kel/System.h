#pragma once

#include <kel/Export.h>
#include <cstdint>

namespace kel {

class KEL_API System {
public:
    // Sleeps on kel::Clock: real time, or an instant advance of the manual clock.
    static void mssleep(uint32_t milliseconds);
};

} // namespace kel
